// Nodes as the manager sees them: the node behind a node, kinds of nodes, the actual node, the
// scene's blocks, and keys made from the current state.

#include "manager/fixture.h"

#include <kvAnimationAttachmentInteraction.h>

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGLightEnv.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGPerspectiveCamera.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSpotLight.h>
#include <OpenSG/OSGSwitch.h>
#include <OpenSG/OSGTransform.h>

#include <OSGAnimationAttachment.h>
#include <OSGTransform3D.h>

#include <limits>
#include <memory>

using namespace kv::test;

namespace {

using Manager = kvAnimationManager2;
using Scene = SceneTest;

// --- the node behind a node -------------------------------------------------------------------

TEST_F(Scene, aGeometryUnderATransform3DIsAnimatedThroughItsParent) {
    const osg::NodePtr transform = addNode(root, osg::Transform3D::create());
    const osg::NodePtr geometry = addNode(transform, osg::Geometry::create());
    EXPECT_TRUE(Manager::getAnimationNode(geometry) == transform);
    EXPECT_TRUE(Manager::getAnimationNode(transform) == transform);
}

TEST_F(Scene, aGeometryUnderAnyOtherNodeIsAnimatedItself) {
    const osg::NodePtr underGroup = addNode(root, osg::Geometry::create());
    EXPECT_TRUE(Manager::getAnimationNode(underGroup) == underGroup);
    const osg::NodePtr plain = addNode(root, osg::Transform::create());
    const osg::NodePtr underPlain = addNode(plain, osg::Geometry::create());
    EXPECT_TRUE(Manager::getAnimationNode(underPlain) == underPlain);
    const osg::NodePtr component = addNode(root, osg::ComponentTransform::create());
    const osg::NodePtr underComponent = addNode(component, osg::Geometry::create());
    EXPECT_TRUE(Manager::getAnimationNode(underComponent) == underComponent);
}

TEST_F(Scene, aGeometryAtTheTopIsAnimatedItself) {
    osg::NodePtr alone = osg::Node::create();
    osg::addRefCP(alone);
    alone->setCore(osg::Geometry::create());
    EXPECT_TRUE(Manager::getAnimationNode(alone) == alone);
    EXPECT_TRUE(Manager::resolveTransformNode(alone) == osg::NullFC);
    osg::subRefCP(alone);
}

TEST_F(Scene, otherNodesUnderATransform3DAreAnimatedThemselves) {
    const osg::NodePtr transform = addNode(root, osg::Transform3D::create());
    const osg::NodePtr group = addNode(transform, osg::Group::create());
    EXPECT_TRUE(Manager::getAnimationNode(group) == group);
}

TEST_F(Scene, nullAndCorelessNodesHaveNoAnimationNode) {
    const osg::NodePtr coreless = addNode(root, osg::NullFC);
    EXPECT_TRUE(Manager::getAnimationNode(osg::NullFC) == osg::NullFC);
    EXPECT_TRUE(Manager::getAnimationNode(coreless) == osg::NullFC);
}

TEST_F(Scene, aTransformOfAnyKindIsItsOwnTransformNode) {
    for (const osg::NodeCorePtr& core : {osg::NodeCorePtr(osg::Transform::create()),
                                         osg::NodeCorePtr(osg::ComponentTransform::create()),
                                         osg::NodeCorePtr(osg::Transform3D::create())}) {
        const osg::NodePtr node = addNode(root, core);
        EXPECT_TRUE(Manager::resolveTransformNode(node) == node);
        const osg::NodePtr child = addNode(node, osg::Group::create());
        EXPECT_TRUE(Manager::resolveTransformNode(child) == node);
        const osg::NodePtr grandchild = addNode(child, osg::Group::create());
        EXPECT_TRUE(Manager::resolveTransformNode(grandchild) == osg::NullFC)
            << "only one level up is looked at";
    }
    EXPECT_TRUE(Manager::resolveTransformNode(osg::NullFC) == osg::NullFC);
    EXPECT_TRUE(Manager::resolveTransformNode(root) == osg::NullFC);
}

// --- kinds of nodes ---------------------------------------------------------------------------

TEST_F(Scene, theTypeNameOfTheCoreTellsTheKindOfANode) {
    const auto kind = [&](const osg::NodeCorePtr& core) {
        return Access::nodeType(addNode(root, core));
    };
    EXPECT_EQ(kind(osg::Geometry::create()), Manager::Geometry);
    EXPECT_EQ(kind(osg::SpotLight::create()), Manager::Light);
    EXPECT_EQ(kind(osg::PointLight::create()), Manager::Light);
    EXPECT_EQ(kind(osg::DirectionalLight::create()), Manager::Light);
    EXPECT_EQ(kind(osg::LightEnv::create()), Manager::Light);
    EXPECT_EQ(kind(osg::Group::create()), Manager::Group);
    EXPECT_EQ(kind(osg::Transform::create()), Manager::Transform);
    EXPECT_EQ(kind(osg::ComponentTransform::create()), Manager::Transform);
    EXPECT_EQ(kind(osg::Switch::create()), Manager::Other);
    EXPECT_EQ(kind(osg::MaterialGroup::create()), Manager::Other);
    EXPECT_EQ(kind(osg::Transform3D::create()), Manager::Other)
        << "names are compared, not derivation";
    EXPECT_EQ(Access::nodeType(osg::NullFC), Manager::Other);
    EXPECT_EQ(Access::nodeType(addNode(root, osg::NullFC)), Manager::Other);
    EXPECT_EQ(static_cast<int>(Manager::Geometry), 1);
    EXPECT_EQ(static_cast<int>(Manager::Other), 5);
}

TEST_F(Scene, lightsAndGeometriesHaveKeyableAttributesOtherNodesNone) {
    const auto keyable = [&](const osg::NodeCorePtr& core) {
        std::vector<std::string> names;
        for (const char* name : manager.getKeyableAttributes(addNode(root, core)))
            names.emplace_back(name);
        return names;
    };
    using Names = std::vector<std::string>;
    const Names light{"translateX", "translateY", "translateZ", "rotateX", "rotateY", "rotateZ"};
    const Names geometry{"translateX", "translateY", "translateZ", "scaleX", "scaleY",
                         "scaleZ",     "rotateX",    "rotateY",    "rotateZ"};
    EXPECT_EQ(keyable(osg::SpotLight::create()), light);
    EXPECT_EQ(keyable(osg::LightEnv::create()), light);
    EXPECT_EQ(keyable(osg::Geometry::create()), geometry);
    EXPECT_EQ(keyable(osg::ComponentTransform::create()), Names());
    EXPECT_EQ(keyable(osg::Group::create()), Names());
    EXPECT_TRUE(manager.getKeyableAttributes(osg::NullFC).empty());
}

// --- the actual node --------------------------------------------------------------------------

constexpr const char* kInvalidNode =
    "!!! kvAnimationManager2::getActualNode: detected invalid last selected node!\n";

TEST_F(Scene, theActualNodeIsWhatWasSetLast) {
    const osg::NodePtr node = addNode(root, osg::Group::create());
    ::testing::internal::CaptureStderr();
    EXPECT_TRUE(manager.getActualNode() == osg::NullFC);
    manager.setActualNode(node);
    EXPECT_TRUE(manager.getActualNode() == node);
    manager.setActualNode(osg::NullFC);
    EXPECT_TRUE(manager.getActualNode() == osg::NullFC);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST_F(Scene, aDestroyedActualNodeIsReportedOncePerCall) {
    const osg::NodePtr node = addNode(root, osg::Group::create());
    manager.setActualNode(node);
    removeNode(root, node);
    ::testing::internal::CaptureStderr();
    EXPECT_TRUE(manager.getActualNode() == osg::NullFC);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), kInvalidNode);
    ::testing::internal::CaptureStderr();
    EXPECT_TRUE(manager.getActualNode() == osg::NullFC);
    EXPECT_TRUE(manager.getActualNode() == osg::NullFC);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), std::string(kInvalidNode) + kInvalidNode);
}

TEST_F(Scene, anActualNodeThatIsAnotherKindOfContainerIsReported) {
    Access::actualNode(manager) = osg::getContainerId(root->getCore());
    ::testing::internal::CaptureStderr();
    EXPECT_TRUE(manager.getActualNode() == osg::NullFC);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), kInvalidNode);
}

// --- scene blocks -----------------------------------------------------------------------------

class SceneBlocks : public SceneTest {
  protected:
    SceneBlocks() {
        transform = addNode(root, osg::Transform3D::create());
        geometry = addNode(transform, osg::Geometry::create());
    }

    ~SceneBlocks() override {
        for (const osg::NodePtr& node : {root, transform, geometry})
            kvAnimationAttachmentInteraction::cleanAnimationAttachment(node, false);
        for (kvAnimationBlock* each : Manager::_animationBlocks)
            keep(each);
        Manager::_animationBlocks.clear();
    }

    kvAnimationBlock* sceneBlock(const std::string& name, const osg::NodePtr& node) {
        kvAnimationBlock* made = newBlock(name, 0, 10);
        made->setAppropriateNode(node);
        made->getLastInsertedCurve()->setAppropriateNode(node);
        Manager::_animationBlocks.push_back(made);
        return made;
    }

    static std::vector<std::string> names(const std::vector<kvAnimationBlock*>& blocks) {
        std::vector<std::string> result;
        for (const kvAnimationBlock* each : blocks)
            result.push_back(each->getBlockName());
        return result;
    }

    using Names = std::vector<std::string>;

    osg::NodePtr transform;
    osg::NodePtr geometry;
};

TEST_F(SceneBlocks, aNodesBlocksAreThoseOfExactlyThatNode) {
    kvAnimationBlock* first = sceneBlock("a", transform);
    sceneBlock("b", geometry);
    kvAnimationBlock* second = sceneBlock("c", transform);
    Manager::_animationBlocks.push_back(nullptr);
    EXPECT_EQ(manager.getNodeBlocks(transform), (std::vector<kvAnimationBlock*>{first, second}));
    EXPECT_EQ(names(manager.getNodeBlocks(geometry)), (Names{"b"}));
    EXPECT_TRUE(manager.getNodeBlocks(root).empty());
}

TEST_F(SceneBlocks, collectingGoesThroughTheAnimationNodeAndAllowsDuplicates) {
    sceneBlock("a", transform);
    sceneBlock("b", geometry);
    manager.collectBlocks(geometry);
    EXPECT_EQ(names(*manager.getBlocks()), (Names{"a"})) << "the geometry stands for its transform";
    manager.collectBlocks(transform);
    EXPECT_EQ(names(*manager.getBlocks()), (Names{"a", "a"}));
    const unsigned int id = manager.getBlocks()->front()->getId();
    manager.collectBlocks(root);
    EXPECT_EQ(manager.getBlocks()->size(), 2U);
    EXPECT_EQ(manager.getBlocks()->front()->getId(), id) << "collecting gives no ids";
}

TEST_F(SceneBlocks, collectingForACameraGoesThroughItsBeacon) {
    sceneBlock("a", transform);
    osg::PerspectiveCameraPtr camera = osg::PerspectiveCamera::create();
    osg::addRefCP(camera);
    manager.collectBlocks(osg::CameraPtr(camera));
    EXPECT_TRUE(manager.getBlocks()->empty()) << "it has no beacon yet";
    camera->setBeacon(geometry);
    manager.collectBlocks(osg::CameraPtr(camera));
    EXPECT_EQ(names(*manager.getBlocks()), (Names{"a"}));
    manager.collectBlocks(osg::CameraPtr());
    EXPECT_EQ(manager.getBlocks()->size(), 1U);
    osg::subRefCP(camera);
}

TEST_F(SceneBlocks, oneBlockOfANodeIsMadeTheActiveOne) {
    kvAnimationBlock* first = sceneBlock("a", transform);
    kvAnimationBlock* second = sceneBlock("b", transform);
    kvAnimationBlock* elsewhere = sceneBlock("c", geometry);
    manager.setActiveNodeBlock(transform, second);
    EXPECT_FALSE(first->getActive());
    EXPECT_TRUE(second->getActive());
    EXPECT_TRUE(elsewhere->getActive());
    manager.setActiveNodeBlock(transform, first);
    EXPECT_TRUE(first->getActive());
    EXPECT_FALSE(second->getActive());
}

TEST_F(SceneBlocks, aNullOrForeignActiveBlockDeactivatesAllOfTheNode) {
    kvAnimationBlock* first = sceneBlock("a", transform);
    kvAnimationBlock* elsewhere = sceneBlock("c", geometry);
    manager.setActiveNodeBlock(transform, nullptr);
    EXPECT_FALSE(first->getActive());
    first->setActive(true);
    elsewhere->setActive(false);
    manager.setActiveNodeBlock(transform, elsewhere);
    EXPECT_FALSE(first->getActive());
    EXPECT_FALSE(elsewhere->getActive()) << "a foreign block is not switched on";
}

TEST_F(SceneBlocks, theListIsBuiltDepthFirstFromTheAttachments) {
    sceneBlock("onGeometry", geometry);
    sceneBlock("onRoot1", root);
    sceneBlock("onRoot2", root);
    // Stored on the nodes themselves, not through getAnimationNode.
    for (kvAnimationBlock* each : Manager::_animationBlocks) {
        keep(each);
        kvAnimationAttachmentInteraction::createNewAnimationAttachment(each->getAppropriateNode(),
                                                                       false);
        kvAnimationAttachmentInteraction::addBlockToAnimAttachment(each->getAppropriateNode(), each,
                                                                   false);
    }
    Manager::_animationBlocks.clear();
    Manager::buildAnimationBlockList(root);
    EXPECT_EQ(names(manager.getSceneBlocks()), (Names{"onRoot1", "onRoot2", "onGeometry"}));
    EXPECT_TRUE(manager.getSceneBlocks()[2]->getAppropriateNode() == geometry);
    Manager::buildAnimationBlockList(root);
    EXPECT_EQ(manager.getSceneBlocks().size(), 3U) << "reading has emptied the attachments";
}

TEST_F(SceneBlocks, builtTwiceWithAnExportBetweenEveryBlockIsListedTwice) {
    sceneBlock("a", transform);
    sceneBlock("b", transform);
    manager.exportAnimationBlocks();
    Manager::buildAnimationBlockList(root);
    EXPECT_EQ(names(manager.getSceneBlocks()), (Names{"a", "b", "a", "b"}));
}

TEST_F(SceneBlocks, aNullRootAndNodesWithoutCoreAreSteppedOver) {
    Manager::buildAnimationBlockList(osg::NullFC);
    const osg::NodePtr coreless = addNode(root, osg::NullFC);
    kvAnimationAttachmentInteraction::createNewAnimationAttachment(coreless, false);
    std::unique_ptr<kvAnimationBlock> made(newBlock("a", 0, 1));
    kvAnimationAttachmentInteraction::addBlockToAnimAttachment(coreless, made.get(), false);
    Manager::buildAnimationBlockList(root);
    EXPECT_TRUE(manager.getSceneBlocks().empty()) << "a node without a core is not read";
    EXPECT_EQ(Access::animationBlocks(osg::NullFC), osg::Action::Continue);
    EXPECT_EQ(Access::animationBlocks(root), osg::Action::Continue);
}

// --- keys from the current state --------------------------------------------------------------

class CurrentState : public ManagerTest {
  protected:
    static std::vector<std::pair<double, double>> keysOf(const kvAnimationCurve* curve) {
        std::vector<std::pair<double, double>> result;
        for (const kvControlPoint& key : curve->getCPs())
            result.emplace_back(key.getPoint().x, key.getPoint().y);
        return result;
    }
    using Points = std::vector<std::pair<double, double>>;
};

TEST_F(CurrentState, theValueAtTheCurrentFrameBecomesAKey) {
    kvAnimationCurve* made = curve("a", {{0, 1}, {10, 2}});
    Manager::setActualFrame(4);
    manager.convertCurveValueToCP(made);
    EXPECT_EQ(keysOf(made), (Points{{0, 1}, {4, 1}, {10, 2}}));
}

TEST_F(CurrentState, onTheFirstOrLastKeyThatKeyIsReplaced) {
    kvAnimationCurve* made = curve("a", {{0, 1}, {10, 2}});
    const int lastId = made->getCPs().back().getId();
    Manager::setActualFrame(10);
    manager.convertCurveValueToCP(made);
    EXPECT_EQ(keysOf(made), (Points{{0, 1}, {10, 2}}));
    EXPECT_NE(made->getCPs().back().getId(), lastId);
    EXPECT_EQ(made->getCPs().back().getTangentType(), 5);

    kvAnimationCurve* other = curve("b", {{0, 1}, {10, 2}});
    const int firstId = other->getCPs().front().getId();
    Manager::setActualFrame(0);
    manager.convertCurveValueToCP(other);
    EXPECT_EQ(keysOf(other), (Points{{0, 1}, {10, 2}}));
    EXPECT_NE(other->getCPs().front().getId(), firstId);
    EXPECT_EQ(other->getCPs().front().getTangentType(), 5);
}

TEST_F(CurrentState, outsideTheKeyRangeNothingHappens) {
    kvAnimationCurve* made = curve("a", {{0, 1}, {10, 2}});
    for (const float frame : {-0.001F, 10.001F, std::numeric_limits<float>::quiet_NaN()}) {
        Manager::setActualFrame(frame);
        manager.convertCurveValueToCP(made);
        EXPECT_EQ(made->getCPs().size(), 2U) << frame;
    }
    manager.convertCurveValueToCP(nullptr);
    manager.convertCurveValueToCP(curve("b", {}));
}

TEST_F(CurrentState, aCurveWithoutAValueThereGetsNoKey) {
    kvAnimationCurve* single = curve("a", {{5, 1}});
    Manager::setActualFrame(5);
    manager.convertCurveValueToCP(single);
    EXPECT_EQ(single->getCPs().size(), 1U);
    EXPECT_EQ(single->getCPs()[0].getTangentType(), 6) << "the key was not replaced";
}

TEST_F(CurrentState, convertQuatToEulerLeavesItsArgumentsAlone) {
    float x = 1;
    float y = 2;
    float z = 3;
    manager.convertQuatToEuler(osg::NullFC, x, y, z);
    EXPECT_EQ(x, 1);
    EXPECT_EQ(y, 2);
    EXPECT_EQ(z, 3);
}

} // namespace
