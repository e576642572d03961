// Scenes, objects and records for the tests of persistence, and their proper end.

#include "persistence/persistenceFixture.h"

#include <OSGCameraSetting.h>

#include <OpenSG/OSGFieldContainerFactory.h>

namespace kv::test {

PersistenceFixture::PersistenceFixture() {
    manager().clear(true);
    node = makeTransform();
}

PersistenceFixture::~PersistenceFixture() {
    for (kvAnimationCurve* curve : *manager().getAnimCurves())
        keep(curve);
    for (kvAnimationBlock* block : *manager().getBlocks())
        keep(block);
    for (kvAnimationClip* clip : *manager().getClips())
        keep(clip);
    manager().clear(true);
    for (const std::uint32_t id : _nodes) {
        osg::NodePtr held =
            osg::NodePtr::dcast(osg::FieldContainerFactory::the()->getContainer(id));
        Interaction::cleanAnimationAttachment(held, false);
        osg::subRefCP(held);
    }
}

osg::NodePtr PersistenceFixture::makeNode(const osg::NodeCorePtr& core, const osg::NodePtr& under) {
    osg::NodePtr made = osg::Node::create();
    osg::addRefCP(made);
    _nodes.push_back(osg::getContainerId(made));
    made->setCore(core);
    if (under != osg::NullFC) under->addChild(made);
    return made;
}

osg::NodePtr PersistenceFixture::makeTransform(const osg::NodePtr& under) {
    return makeNode(osg::ComponentTransform::create(), under);
}

osg::NodePtr PersistenceFixture::makeGroup(const osg::NodePtr& under) {
    return makeNode(osg::Group::create(), under);
}

osg::NodePtr PersistenceFixture::makeCamera() {
    return makeNode(osg::CameraSetting::create(), osg::NullFC);
}

kvAnimationCurve* PersistenceFixture::keep(kvAnimationCurve* curve) {
    _curves.emplace_back(curve);
    return curve;
}

kvAnimationBlock* PersistenceFixture::keep(kvAnimationBlock* block) {
    _blocks.emplace_back(block);
    return block;
}

kvAnimationClip* PersistenceFixture::keep(kvAnimationClip* clip) {
    _clips.emplace_back(clip);
    return clip;
}

kvAnimationCurve* PersistenceFixture::makeCurve(const osg::NodePtr& animated,
                                                const std::string& attribute,
                                                const std::vector<float>& frames) {
    auto* const curve = new kvAnimationCurve(attribute);
    curve->setAppropriateNode(animated);
    for (const float f : frames) {
        curve->importControlPoint(f, 10.0F * f, f - 1.0F, 10.0F * f, f + 1.0F, 10.0F * f, 6);
    }
    return curve;
}

kvAnimationBlock* PersistenceFixture::makeBlock(const osg::NodePtr& animated,
                                                const std::string& name,
                                                const std::vector<float>& frames) {
    auto* const block = new kvAnimationBlock(animated, name);
    block->addCurve(makeCurve(animated, "translateX", frames));
    return block;
}

osg::AnimationCurvePtr PersistenceFixture::curveRecord(const osg::NodePtr& animated,
                                                       const std::string& attribute,
                                                       const std::vector<float>& frames) {
    const osg::AnimationCurvePtr curve = osg::AnimationCurveBase::create();
    curve->setBelongs2Attribute(attribute);
    curve->setAppropriateNode(animated);
    curve->setId(4711);
    for (const float f : frames) {
        const osg::AnimationControlPointPtr key = osg::AnimationControlPointBase::create();
        key->setControlPoint(osg::Vec2f(f, 10.0F * f));
        key->setInTangent(osg::Vec2f(f - 1.0F, 10.0F * f));
        key->setOutTangent(osg::Vec2f(f + 1.0F, 10.0F * f));
        key->setTangentType(6);
        curve->addCurvePoint(key);
    }
    return curve;
}

osg::AnimationBlockPtr PersistenceFixture::blockRecord(const osg::NodePtr& animated,
                                                       const std::string& name) {
    const osg::AnimationBlockPtr block = osg::AnimationBlockBase::create();
    block->setName(name);
    block->setAppropriateNode(animated);
    block->setId(4711);
    return block;
}

osg::AnimationAttachmentPtr PersistenceFixture::attachment(const osg::NodePtr& animated) {
    Interaction::createNewAnimationAttachment(animated, false);
    return Interaction::getAnimationAttachment(animated, false);
}

} // namespace kv::test
