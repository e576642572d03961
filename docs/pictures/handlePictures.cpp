// Writes the scene that the guide's pictures of handles are drawn from (docs/pictures/draw.sh): one
// node with one curve for each tangent type and each handle length.
#include <OpenSG/OSGConfig.h>

#include <kvAnimationAttachmentInteraction.h>
#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGSceneFileHandler.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <cstdio>
#include <iterator>
#include <memory>
#include <vector>

namespace {

struct Picture {
    const char* name;
    kvControlPoint::TangentType type;
    kvControlPointManager::TangentLengthMode length;
};

constexpr Picture kPictures[] = {
    {"collapsed", kvControlPoint::Collapsed, kvControlPointManager::Half},
    {"constant", kvControlPoint::Constant, kvControlPointManager::Half},
    {"aimed", kvControlPoint::Aimed, kvControlPointManager::Half},
    {"smooth", kvControlPoint::Smooth, kvControlPointManager::Half},
    {"flat", kvControlPoint::Flat, kvControlPointManager::Half},
    {"auto", kvControlPoint::Auto, kvControlPointManager::Half},
    {"user", kvControlPoint::User, kvControlPointManager::Half},
    {"lengthFixed", kvControlPoint::Smooth, kvControlPointManager::Fixed},
    {"lengthHalf", kvControlPoint::Smooth, kvControlPointManager::Half},
    {"lengthThird", kvControlPoint::Smooth, kvControlPointManager::Third},
};

osg::NodePtr addNode(const osg::NodePtr& parent, const char* name, const osg::NodeCorePtr& core) {
    const osg::NodePtr node = osg::Node::create();
    osg::setName(node, name);
    node->setCore(core);
    if (parent != osg::NullFC) parent->addChild(node);
    return node;
}

std::unique_ptr<kvAnimationCurve> curveOf(const Picture& picture, const osg::NodePtr& node) {
    auto curve = std::make_unique<kvAnimationCurve>("translateX");
    curve->setAppropriateNode(node);
    for (const auto& [frame, value] : {std::pair{0.0, 2.0}, {10.0, 8.0}, {22.0, 5.0}, {40.0, 6.0}})
        curve->insertCP(frame, value);
    curve->selectAllCPs();
    curve->setTangentLength(picture.length);
    if (picture.type == kvControlPoint::User) {
        // Pulled by hand: long on one side, short and turned on the other.
        kvControlPoint& key = curve->getCPs()[1];
        key.setInTangent({6.0, 4.0});
        key.setOutTangent({11.0, 11.0});
    } else {
        curve->computeTangents(picture.type);
    }
    // Reading a file places handles anew, Half long; those of type User stay as they were drawn.
    for (kvControlPoint& key : curve->getCPs())
        key.setTangentType(kvControlPoint::User);
    return curve;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: handlePictures SCENE.osg\n");
        return 2;
    }
    if (!osg::osgInit(1, argv)) return 1;
    osg::NodePtr root = addNode(osg::NullFC, "handles", osg::Group::create());
    osg::addRefCP(root);
    std::vector<std::unique_ptr<kvAnimationCurve>> curves;
    for (const Picture& picture : kPictures) {
        const osg::NodePtr node = addNode(root, picture.name, osg::ComponentTransform::create());
        curves.push_back(curveOf(picture, node));
        kvAnimationAttachmentInteraction::createNewAnimationAttachment(node, false);
        kvAnimationAttachmentInteraction::addToAnimationAttachment(node, curves.back().get(),
                                                                   false);
    }
    const bool written = osg::SceneFileHandler::the().write(root, argv[1]);
    for (osg::UInt32 i = 0; i < root->getNChildren(); ++i)
        kvAnimationAttachmentInteraction::cleanAnimationAttachment(root->getChild(i), false);
    osg::subRefCP(root);
    return written ? 0 : 1;
}
