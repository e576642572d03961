// Objects that the manager makes: names, types, ids drawn, and which curves a block collects.

#include "manager/fixture.h"
#include "manager/identifiers.h"

#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSpotLight.h>

#include <OSGTransform3D.h>

#include <memory>

using namespace kv::test;

namespace {

class Creating : public SceneTest {
  protected:
    Creating() {
        transform = addNode(root, osg::Transform3D::create());
        geometry = addNode(transform, osg::Geometry::create());
    }

    /// Blocks own the curves that they collect, so these come without an owner.
    kvAnimationCurve* looseCurve(const std::string& attribute, const osg::NodePtr& node) {
        kvAnimationCurve* made = newCurve(attribute, {{2, 1}, {8, 1}});
        made->setAppropriateNode(node);
        manager.addCurve(made);
        return made;
    }

    osg::NodePtr transform;
    osg::NodePtr geometry;
};

TEST_F(Creating, createBlockIsNullWithoutCurvesAndDrawsNothing) {
    const std::size_t before = kv::detail::identifierStore().issued().size();
    EXPECT_EQ(manager.createBlock(transform, false), nullptr);
    EXPECT_EQ(manager.createBlock(transform, "Door", true), nullptr);
    EXPECT_TRUE(manager.getBlocks()->empty());
    EXPECT_EQ(kv::detail::identifierStore().issued().size(), before);
}

TEST_F(Creating, blocksAreNamedByTheSizeOfTheBlockListPlusOne) {
    registeredCurve("a", {});
    EXPECT_EQ(keep(manager.createBlock(transform, false))->getBlockName(), "AnimBlock1");
    EXPECT_EQ(keep(manager.createBlock(transform, false))->getBlockName(), "AnimBlock2");
    EXPECT_EQ(keep(manager.createBlock(transform, "Door", false))->getBlockName(), "Door_Block_3");
    EXPECT_EQ(keep(manager.createBlock(transform, "", false))->getBlockName(), "_Block_4");
    EXPECT_EQ(manager.getBlocks()->size(), 4U);
}

TEST_F(Creating, aCreatedBlockIsRegisteredWithTheIdDrawnLast) {
    registeredCurve("a", {});
    kvAnimationBlock* made = keep(manager.createBlock(transform, false));
    EXPECT_EQ(manager.getLastInsertedBlock(), made);
    EXPECT_EQ(made->getId(), kv::detail::identifierStore().issued().back());
    EXPECT_TRUE(made->getAppropriateNode() == transform);
    EXPECT_TRUE(manager.getSceneBlocks().empty());
}

TEST_F(Creating, aBlockCollectsTheCurvesOfTheSameAnimationNodeInListOrder) {
    kvAnimationCurve* first = looseCurve("translateX", geometry); // stands for the transform
    kvAnimationCurve* elsewhere = registeredCurve("translateX", {});
    elsewhere->setAppropriateNode(root);
    kvAnimationCurve* second = looseCurve("translateY", transform);
    kvAnimationBlock* made = keep(manager.createBlock(geometry, false));
    EXPECT_EQ(made->getBlockCurves(), (std::vector<kvAnimationCurve*>{first, second}));
    EXPECT_EQ(made->getStartFrame(), 2.0F);
    EXPECT_EQ(made->getEndFrame(), 8.0F);
    EXPECT_EQ(manager.getAnimCurves()->size(), 3U) << "the curves stay in the curve list";
}

TEST_F(Creating, curvesWhoseNodeIsGoneAreLeftOut) {
    const osg::NodePtr gone = addNode(root, osg::Group::create());
    registeredCurve("a", {})->setAppropriateNode(gone);
    registeredCurve("b", {}); // never had a node
    removeNode(root, gone);
    kvAnimationBlock* made = keep(manager.createBlock(osg::NullFC, false));
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->getBlockCurves().empty());
}

TEST_F(Creating, theAnimatedTypeTellsLightsApartAndCamerasFirst) {
    registeredCurve("a", {});
    const osg::NodePtr spot = addNode(root, osg::SpotLight::create());
    const osg::NodePtr point = addNode(root, osg::PointLight::create());
    const osg::NodePtr directional = addNode(root, osg::DirectionalLight::create());
    const auto typeOf = [&](const osg::NodePtr& node, bool camera) {
        return static_cast<int>(keep(manager.createBlock(node, camera))->getAnimatedType());
    };
    EXPECT_EQ(typeOf(transform, false), 1);
    EXPECT_EQ(typeOf(osg::NullFC, false), 1);
    EXPECT_EQ(typeOf(spot, false), 2);
    EXPECT_EQ(typeOf(point, false), 3);
    EXPECT_EQ(typeOf(directional, false), 4);
    EXPECT_EQ(typeOf(spot, true), 5);
}

TEST_F(Creating, theCameraFlagIsWhatWasAskedFor) {
    registeredCurve("a", {});
    EXPECT_TRUE(keep(manager.createBlock(transform, true))->isCameraBlock());
    EXPECT_FALSE(keep(manager.createBlock(transform, false))->isCameraBlock());
    EXPECT_TRUE(keep(manager.createBlock(transform, "x", true))->isCameraBlock());
}

TEST_F(Creating, aBlockOfGivenCurvesHasThatNameAndThoseCurvesWithoutTheNulls) {
    kvAnimationCurve* first = newCurve("a", {{0, 0}, {4, 0}});
    kvAnimationCurve* second = newCurve("b", {{1, 0}, {9, 0}});
    const osg::NodePtr spot = addNode(root, osg::SpotLight::create());
    // The curve list is empty: unlike its sisters this form does not mind.
    kvAnimationBlock* made = keep(manager.createBlock(
        spot, std::string("Lamp"), std::vector<kvAnimationCurve*>{first, nullptr, second}));
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getBlockName(), "Lamp");
    EXPECT_EQ(made->getBlockCurves(), (std::vector<kvAnimationCurve*>{first, second}));
    EXPECT_EQ(made->getStartFrame(), 0.0F);
    EXPECT_EQ(made->getEndFrame(), 9.0F);
    EXPECT_EQ(static_cast<int>(made->getAnimatedType()), 2);
    EXPECT_FALSE(made->isCameraBlock());
    EXPECT_EQ(manager.getLastInsertedBlock(), made);
    EXPECT_EQ(made->getId(), kv::detail::identifierStore().issued().back());
}

TEST_F(Creating, aBlockCopyIsDeepAndStandsInBothLists) {
    kvAnimationBlock* source = block("original", 0, 10);
    source->setRepeat(true);
    kvAnimationBlock* copy = keep(manager.createBlockCopy(source));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getBlockName(), "original");
    EXPECT_TRUE(copy->getRepeat());
    EXPECT_EQ(*manager.getBlocks(), (std::vector<kvAnimationBlock*>{copy}));
    EXPECT_EQ(manager.getSceneBlocks(), (std::vector<kvAnimationBlock*>{copy}));
    EXPECT_EQ(copy->getId(), kv::detail::identifierStore().issued().back());
    ASSERT_EQ(copy->getBlockCurves().size(), 1U);
    EXPECT_NE(copy->getBlockCurves()[0], source->getBlockCurves()[0]);
    EXPECT_EQ(copy->getBlockCurves()[0]->getCPs().size(), 2U);
    EXPECT_EQ(manager.createBlockCopy(nullptr), nullptr);
}

TEST_F(Creating, aCopyDrawsForItselfItsCurvesAndItsRegistration) {
    kvAnimationBlock* source = block("original", 0, 10);
    source->addCurve(newCurve("second", {}));
    // Drawing can collide, which records more values; counted by the generator's own bookkeeping
    // this is exact only without a collision, so compare with the same draws from a store of its
    // own.
    std::srand(4711);
    kv::detail::IdentifierStore reference(&std::rand);
    const std::uint64_t block1 = reference.create();
    const std::uint64_t curve1 = reference.create();
    const std::uint64_t curve2 = reference.create();
    const std::uint64_t block2 = reference.create();
    (void)block1;
    std::srand(4711);
    kvAnimationBlock* copy = keep(manager.createBlockCopy(source));
    EXPECT_EQ(copy->getBlockCurves()[0]->getId(), curve1);
    EXPECT_EQ(copy->getBlockCurves()[1]->getId(), curve2);
    EXPECT_EQ(copy->getId(), block2);
}

TEST_F(Creating, newClipsAreRegisteredAndAnEmptyNameIsNumbered) {
    kvAnimationClip* first = keep(manager.newClip(""));
    kvAnimationClip* named = keep(manager.newClip("Walk"));
    kvAnimationClip* third = keep(manager.newClip(""));
    EXPECT_EQ(first->getName(), "Clip1");
    EXPECT_EQ(named->getName(), "Walk");
    EXPECT_EQ(third->getName(), "Clip3");
    EXPECT_EQ(*manager.getClips(), (std::vector<kvAnimationClip*>{first, named, third}));
    EXPECT_EQ(third->getId(), kv::detail::identifierStore().issued().back());
}

TEST_F(Creating, createAnimationRegistersACurveOfThatAttribute) {
    manager.createAnimation("translateX");
    std::unique_ptr<kvAnimationCurve> made(manager.getLastInsertedCurve());
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getAnimatedAttribute(), "translateX");
    EXPECT_TRUE(made->getCPs().empty());
    EXPECT_EQ(made->getId(), kv::detail::identifierStore().issued().back());
}

} // namespace
