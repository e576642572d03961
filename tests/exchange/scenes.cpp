// The scenes that are exchanged: one matter each, so that a loss can be told from another.
#include "exchange/scenes.h"

#include <kvAnimationAttachmentInteraction.h>
#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>
#include <kvAnimationUtils2.h>
#include <kvControlPoint.h>
#include <OSGAnimationAttachment.h>
#include <OSGAnimAttachment.h>
#include <OSGAnimBlock.h>
#include <OSGAnimClip.h>
#include <OSGAnimCurve.h>
#include <OSGAnimNode.h>
#include <OSGCameraSetting.h>
#include <OSGLightGeoAttachment.h>
#include <OSGTransform3D.h>
#include <OSGTransformAttachment.h>
#include <OSGUberMaterial.h>

#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGSimpleAttachments.h>
#include <OpenSG/OSGSimpleMaterial.h>

#include <cstring>
#include <memory>

namespace exchange {
namespace {

using osg::NodePtr;

NodePtr makeNode(const osg::NodeCorePtr& core, const char* name) {
    const NodePtr node = osg::makeNodeFor(core);
    if (name != nullptr) osg::setName(node, name);
    return node;
}

NodePtr addNode(const NodePtr& parent, const osg::NodeCorePtr& core, const char* name) {
    const NodePtr node = makeNode(core, name);
    parent->addChild(node);
    return node;
}

NodePtr makeRoot() {
    NodePtr root = makeNode(osg::Group::create(), "root");
    osg::addRefCP(root);
    return root;
}

// --- animation ----------------------------------------------------------------------------------

/// A number in quarters: seven digits hold it. In thirds they do not.
float quarter(int i) {
    return 0.25F * static_cast<float>(i);
}
float third(int i) {
    return static_cast<float>(i) / 3.0F;
}

using Number = float (*)(int);

kvAnimationBlock* makeBlock(const NodePtr& node, const char* name, int first, Number number) {
    auto* const block = new kvAnimationBlock(node, name);
    for (const char* attribute : {"translateX", "scaleY"}) {
        auto* const curve = new kvAnimationCurve(attribute);
        curve->setAppropriateNode(node);
        kvAnimationUtils2::createAnimationField(curve);
        for (int i = 0; i < 4; ++i) {
            const float x = static_cast<float>(first + 10 * i), y = number(7 * i + first);
            curve->importControlPoint(x, y, x - 2.5F, y + number(1), x + 2.5F, y - number(2),
                                      kvControlPoint::User);
        }
        block->addCurve(curve);
    }
    return block;
}

std::unique_ptr<kvAnimationClip> makeClip(const NodePtr& node, const std::string& name, int depth) {
    auto clip = std::make_unique<kvAnimationClip>(name);
    clip->setRepeat(depth == 1);
    clip->setMotionBlur(depth == 2);
    for (int i = 0; i < 2; ++i) {
        const int index = clip->createTrack();
        clip->getTrack(index)->setActive(i == 0);
        clip->insertBlock(makeBlock(node, i == 0 ? "walk" : "turn", 100 * i, quarter), index);
        auto* const sequence = new kvAnimationSequence2("light on");
        sequence->setStartFrame(quarter(10));
        sequence->setEndFrame(quarter(81));
        clip->insertSequence(sequence, index);
        if (depth > 0 && i == 0)
            clip->insertSubclip(makeClip(node, name + "-inner", depth - 1).release(), index);
    }
    clip->updateBounds();
    return clip;
}

/// Stores the animation of a scene in its attachments, as a host does.
void store(const NodePtr& root, const std::vector<kvAnimationBlock*>& blocks,
           std::unique_ptr<kvAnimationClip> clip) {
    kvAnimationManager2& manager = kvAnimationManager2::_the;
    manager.clear(true);
    for (kvAnimationBlock* block : blocks)
        kvAnimationManager2::_animationBlocks.push_back(block);
    manager.exportAnimationBlocks();
    if (clip != nullptr) {
        manager.getClips()->push_back(clip.get());
        manager.exportClips(root, false);
    }
    manager.clear(true);
    // Plain blocks, never sequences, so that the destructor may be non-virtual.
    for (kvAnimationBlock* block : blocks)
        std::default_delete<kvAnimationBlock>{}(block);
}

NodePtr nestedClips() {
    const NodePtr root = makeRoot();
    const NodePtr arm = addNode(root, osg::Transform3D::create(), "arm");
    store(root, {}, makeClip(arm, "dance", 2));
    return root;
}

NodePtr blocksWith(Number number) {
    const NodePtr root = makeRoot();
    const NodePtr arm = addNode(root, osg::Transform3D::create(), "arm");
    const NodePtr leg = addNode(root, osg::ComponentTransform::create(), "leg");
    store(root,
          {makeBlock(arm, "wave", 0, number), makeBlock(leg, "step", 5, number),
           makeBlock(arm, "point", 50, number)},
          nullptr);
    return root;
}

// --- every container of the host ----------------------------------------------------------------

/// Gives every field of a container that holds a value another value than a new container has.
class Filler {
  public:
    void fill(const osg::FieldContainerPtr& container) {
        osg::FieldContainerType& type = container->getType();
        // The fields of the base classes stay as they are: a core's matrix belongs to its parts.
        const osg::FieldContainerType* const parent = type.getParent();
        const osg::UInt32 inherited = parent == nullptr ? 0 : parent->getNumFieldDescs();
        for (osg::UInt32 i = inherited + 1; i <= type.getNumFieldDescs(); ++i)
            set(*container->getField(type.getFieldDescription(i)->getCName()));
        osg::endEditCP(container, osg::FieldBits::AllFields);
    }

  private:
    void set(osg::Field& field) {
        ++_count;
        const std::string type = field.getType().getCName();
        if (type.find("Ptr") != std::string::npos) return;
        const int numbers = type.find('2') != std::string::npos   ? 2
                            : type.find('3') != std::string::npos ? 3
                            : type.find('4') != std::string::npos ? 4
                                                                  : 1;
        const bool many = field.getCardinality() == osg::FieldType::MULTI_FIELD;
        for (int element = 0; element < (many ? 3 : 1); ++element)
            field.pushValueByStr(textFor(type, numbers).c_str());
    }

    std::string textFor(const std::string& type, int numbers) {
        if (type == "SFString") return "text " + std::to_string(_count);
        if (type == "SFBool") return "TRUE";
        if (type == "SFIdent64") return "18446744073709551615";
        if (type.find("Int") != std::string::npos) return std::to_string(100 + _count);
        std::string text;
        for (int i = 0; i < numbers; ++i)
            text += std::to_string(_count) + '.' + std::to_string(25 * (i + 1)) + ' ';
        return text;
    }

    int _count = 0;
};

NodePtr hostContainers() {
    const NodePtr root = makeRoot();
    Filler filler;

    const NodePtr arm = addNode(root, osg::Transform3D::create(), "arm");
    // Angles, their order and the rotation that they make belong together.
    const osg::Transform3DPtr turned = osg::Transform3DPtr::dcast(arm->getCore());
    turned->setRotationAngles(osg::Vec3f(10, 20, 30), osg::TransformAttachment::ZYX);
    osg::endEditCP(turned, osg::Transform3D::EulerRFieldMask | osg::Transform3D::RotationFieldMask);
    const osg::LightGeoAttachmentPtr light = osg::LightGeoAttachment::create();
    filler.fill(light);
    arm->addAttachment(light);

    const NodePtr camera = addNode(root, osg::CameraSetting::create(), "camera");
    filler.fill(camera->getCore());

    const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
    const osg::UberMaterialPtr material = osg::UberMaterial::create();
    filler.fill(material);
    group->setMaterial(material);
    addNode(root, group, "painted");

    const osg::AnimationAttachmentPtr stored = osg::AnimationAttachment::create();
    root->addAttachment(stored);
    const auto curveOf = [&](const NodePtr& node) {
        const osg::AnimationCurvePtr curve = osg::AnimationCurve::create();
        filler.fill(curve);
        curve->setAppropriateNode(node);
        curve->setAFAppNode(node);
        for (int i = 0; i < 3; ++i) {
            const osg::AnimationControlPointPtr key = osg::AnimationControlPoint::create();
            filler.fill(key);
            curve->addCurvePoint(key);
        }
        return curve;
    };
    const auto blockOf = [&](const NodePtr& node) {
        const osg::AnimationBlockPtr block = osg::AnimationBlock::create();
        filler.fill(block);
        block->setAppropriateNode(node);
        block->addCurve(curveOf(node));
        return block;
    };
    const auto clipOf = [&](const osg::AnimationClipPtr& nested) {
        const osg::AnimationClipPtr clip = osg::AnimationClip::create();
        const osg::AnimationTrackPtr track = osg::AnimationTrack::create();
        filler.fill(clip);
        filler.fill(track);
        track->addBlock(blockOf(arm));
        track->addSequence(blockOf(camera));
        if (nested != osg::NullFC) track->addClip(nested);
        clip->addTrack(track);
        clip->addBlock(blockOf(camera));
        return clip;
    };
    stored->addCurve(curveOf(arm));
    stored->addBlock(blockOf(camera));
    const osg::AnimationClipPtr old = clipOf(osg::NullFC);
    const osg::AnimationClipPtr clip = clipOf(clipOf(osg::NullFC));
    clip->addSubclip(old);
    stored->addClip(clip);

    const osg::AnimAttachmentPtr nodes = osg::AnimAttachment::create();
    arm->addAttachment(nodes);
    const osg::AnimNodePtr block = osg::AnimNode::create();
    block->setCore(osg::AnimBlock::create());
    filler.fill(block->getCore());
    const osg::AnimNodePtr curve = osg::AnimNode::create();
    curve->setCore(osg::AnimCurve::create());
    filler.fill(curve->getCore());
    block->addChild(curve);
    nodes->addAnimation(block);
    const osg::AnimNodePtr clipNode = osg::AnimNode::create();
    clipNode->setCore(osg::AnimClip::create());
    filler.fill(clipNode->getCore());
    nodes->addAnimation(clipNode);
    return root;
}

// --- sharing, names, texts ----------------------------------------------------------------------

NodePtr sharedParts() {
    const NodePtr root = makeRoot();
    const osg::Transform3DPtr core = osg::Transform3D::create();
    osg::setName(core, "shared_core");
    const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
    osg::setName(material, "shared_material");
    const osg::LightGeoAttachmentPtr attachment = osg::LightGeoAttachment::create();
    for (const char* name : {"one", "two", "three"}) {
        const NodePtr node = addNode(root, core, name);
        node->addAttachment(attachment);
        const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
        group->setMaterial(material);
        addNode(node, group, nullptr);
    }
    return root;
}

/// Nodes of this name that are animated, and so referred to from outside the tree.
NodePtr named(const char* name, int nodes) {
    const NodePtr root = makeRoot();
    std::vector<kvAnimationBlock*> blocks;
    for (int i = 0; i < nodes; ++i) {
        const NodePtr node = addNode(root, osg::Transform3D::create(), name);
        node->setTravMask(static_cast<osg::UInt32>(i + 1));
        blocks.push_back(makeBlock(node, "move", 10 * i, quarter));
    }
    addNode(root, osg::Group::create(), "last");
    store(root, blocks, nullptr);
    return root;
}

/// The name of a block is a text that nothing refers to.
NodePtr blockNamed(const char* name) {
    const NodePtr root = makeRoot();
    const NodePtr arm = addNode(root, osg::Transform3D::create(), "arm");
    store(root, {makeBlock(arm, name, 0, quarter)}, nullptr);
    return root;
}

/// Stored animation holds the nodes that hold it.
void clearAnimation(const NodePtr& node) {
    const osg::AnimationAttachmentPtr stored = osg::AnimationAttachmentPtr::dcast(
        node->findAttachment(osg::AnimationAttachment::getClassType()));
    if (stored != osg::NullFC) stored->clear();
    for (osg::UInt32 i = 0; i < node->getNChildren(); ++i)
        clearAnimation(node->getChild(i));
}

} // namespace

AllScenes::~AllScenes() {
    for (NamedScene& scene : *this) {
        clearAnimation(scene.root);
        osg::subRefCP(scene.root);
    }
}

AllScenes::AllScenes() {
    static_cast<std::vector<NamedScene>&>(*this) = {
        {"blocks", blocksWith(quarter)},
        {"thirds", blocksWith(third)},
        {"nested-clips", nestedClips()},
        {"host-containers", hostContainers()},
        {"shared-parts", sharedParts()},
        {"name-plain", named("left_arm", 1)},
        {"name-utf8", named("\xC3\x84rmel", 1)},
        {"name-blank", named("left arm", 1)},
        {"name-dot", named("arm.001", 1)},
        {"name-quotes", named("the \"arm\"", 1)},
        {"name-digit", named("1st_arm", 1)},
        {"name-empty", named("", 1)},
        {"name-none", named(nullptr, 1)},
        {"names-equal", named("arm", 2)},
        {"text-blanks", blockNamed("two  blanks, a\ttab, two\nlines")},
        {"text-quotes", blockNamed("say \"hi\"")},
        {"text-backslash", blockNamed("C:\\dir\\file")},
        {"text-utf8", blockNamed("\xE6\x89\x8B \xC3\xA4")},
    };
}

} // namespace exchange
