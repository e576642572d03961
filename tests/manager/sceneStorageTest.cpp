// Which object goes to which node when the registry is stored, and what comes back. How objects are
// stored is tested with the attachment operations.

#include "manager/fixture.h"

#include <kvAnimationAttachmentInteraction.h>

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>

#include <OSGAnimationAttachment.h>
#include <OSGTransform3D.h>

using namespace kv::test;

namespace {

using Storage = kvAnimationAttachmentInteraction;

class Storing : public SceneTest {
  protected:
    Storing() {
        transform = addNode(root, osg::Transform3D::create());
        geometry = addNode(transform, osg::Geometry::create());
        group = addNode(root, osg::Group::create());
        under = addNode(transform, osg::Group::create());
    }

    ~Storing() override {
        for (const osg::NodePtr& node : {root, transform, geometry, group, under})
            Storage::cleanAnimationAttachment(node, false);
        if (!_loaded) return;
        for (kvAnimationCurve* each : *manager.getAnimCurves())
            keep(each);
        for (kvAnimationBlock* each : *manager.getBlocks())
            keep(each);
        for (kvAnimationClip* each : *manager.getClips())
            keep(each);
    }

    kvAnimationCurve* curveOf(const osg::NodePtr& node, const std::string& attribute) {
        kvAnimationCurve* made = registeredCurve(attribute, {{0, 1}, {5, 2}});
        made->setAppropriateNode(node);
        return made;
    }

    kvAnimationBlock* blockOf(const osg::NodePtr& node, const std::string& name) {
        kvAnimationBlock* made = block(name, 0, 5);
        made->setAppropriateNode(node);
        manager.addAnimationBlock(made);
        return made;
    }

    /// The registry is emptied; what is loaded from now on belongs to the test's end.
    void forgetAndOwnWhatIsLoaded() {
        manager.clear(true);
        _loaded = true;
    }

    using Names = std::vector<std::string>;

    static Names storedCurves(const osg::NodePtr& node) {
        Names result;
        const auto attachment = Storage::getAnimationAttachment(node, false);
        if (attachment == osg::NullFC) return result;
        for (osg::UInt32 i = 0; i < attachment->getCurves().size(); ++i)
            result.push_back(attachment->getCurves(i)->getBelongs2Attribute());
        return result;
    }

    static Names storedBlocks(const osg::NodePtr& node) {
        Names result;
        const auto attachment = Storage::getAnimationAttachment(node, false);
        if (attachment == osg::NullFC) return result;
        for (osg::UInt32 i = 0; i < attachment->getBlocks().size(); ++i)
            result.push_back(attachment->getBlocks(i)->getName());
        return result;
    }

    static Names storedClips(const osg::NodePtr& node) {
        Names result;
        const auto attachment = Storage::getAnimationAttachment(node, false);
        if (attachment == osg::NullFC) return result;
        for (osg::UInt32 i = 0; i < attachment->getClips().size(); ++i)
            result.push_back(attachment->getClips(i)->getName());
        return result;
    }

    static bool hasAttachment(const osg::NodePtr& node) {
        return Storage::getAnimationAttachment(node, false) != osg::NullFC;
    }

    osg::NodePtr transform;
    osg::NodePtr geometry;
    osg::NodePtr group;
    osg::NodePtr under;

  private:
    bool _loaded = false;
};

TEST_F(Storing, curvesGoToTheAnimationNodeOfTheirNode) {
    curveOf(geometry, "onTransform");
    curveOf(group, "onGroup");
    manager.exportCurves();
    EXPECT_EQ(storedCurves(transform), (Names{"onTransform"}));
    EXPECT_EQ(storedCurves(group), (Names{"onGroup"}));
    EXPECT_FALSE(hasAttachment(geometry));
}

TEST_F(Storing, curvesWithoutALivingNodeAreNotStored) {
    const osg::NodePtr gone = addNode(root, osg::Group::create());
    curveOf(gone, "gone");
    removeNode(root, gone);
    registeredCurve("never", {{0, 1}, {5, 2}});
    manager.getAnimCurves()->push_back(nullptr);
    manager.exportCurves();
    manager.exportCurves(osg::NullFC, false);
    EXPECT_FALSE(hasAttachment(root));
    EXPECT_FALSE(hasAttachment(group));
}

TEST_F(Storing, exportForOneNodeStoresTheObjectsOfItsAnimationNodeOnly) {
    curveOf(geometry, "a");
    curveOf(transform, "b");
    curveOf(group, "c");
    blockOf(geometry, "A");
    blockOf(group, "C");
    manager.exportCurves(transform, false);
    manager.exportBlocks(geometry, false);
    EXPECT_EQ(storedCurves(transform), (Names{"a", "b"}));
    EXPECT_EQ(storedBlocks(transform), (Names{"A"}));
    EXPECT_FALSE(hasAttachment(group));
    manager.exportBlocks(osg::NullFC, false);
}

TEST_F(Storing, resolvingSendsTheObjectsOfANodeToItsTransformNode) {
    curveOf(under, "a");
    blockOf(under, "A");
    manager.exportCurves(under, true);
    manager.exportBlocks(under, true);
    EXPECT_EQ(storedCurves(transform), (Names{"a"}));
    EXPECT_EQ(storedBlocks(transform), (Names{"A"}));
    EXPECT_FALSE(hasAttachment(under));
}

TEST_F(Storing, blocksGoToTheAnimationNodeOfTheirNode) {
    blockOf(geometry, "onTransform");
    blockOf(group, "onGroup");
    blockOf(osg::NullFC, "nowhere");
    manager.getBlocks()->push_back(nullptr);
    manager.exportBlocks();
    EXPECT_EQ(storedBlocks(transform), (Names{"onTransform"}));
    EXPECT_EQ(storedBlocks(group), (Names{"onGroup"}));
    EXPECT_FALSE(hasAttachment(geometry));
}

TEST_F(Storing, sceneBlocksAreStoredApartFromTheBlockList) {
    kvAnimationBlock* scene = block("scene", 0, 1);
    scene->setAppropriateNode(geometry);
    kvAnimationManager2::_animationBlocks = {nullptr, scene};
    blockOf(group, "listed");
    manager.exportAnimationBlocks();
    EXPECT_EQ(storedBlocks(transform), (Names{"scene"}));
    EXPECT_FALSE(hasAttachment(group));
}

TEST_F(Storing, clipsReplaceTheOnesStoredOnTheRoot) {
    manager.addClip(clip("first"));
    manager.addClip(clip("second"));
    manager.getClips()->push_back(nullptr);
    manager.exportClips(root, false);
    EXPECT_EQ(storedClips(root), (Names{"first", "second"}));
    manager.exportClips(root, false);
    EXPECT_EQ(storedClips(root), (Names{"first", "second"})) << "not twice";
}

TEST_F(Storing, exportingClipsWithResolveErasesOnTheNodeItselfAndWritesToItsTransform) {
    manager.addClip(clip("c"));
    manager.exportClips(under, true);
    manager.exportClips(under, true);
    EXPECT_EQ(storedClips(transform), (Names{"c", "c"}))
        << "the transform's old clips are not erased";
    EXPECT_FALSE(hasAttachment(under));
}

TEST_F(Storing, exportAnimationsPutsAllCurvesAndBlocksOnTheRoot) {
    curveOf(geometry, "a");
    registeredCurve("b", {{0, 1}, {5, 2}});
    blockOf(group, "A");
    manager.exportAnimations(root);
    EXPECT_EQ(storedCurves(root), (Names{"a", "b"}));
    EXPECT_EQ(storedBlocks(root), (Names{"A"}));
    EXPECT_FALSE(hasAttachment(transform));
    manager.exportAnimations(osg::NullFC);
}

TEST_F(Storing, whatWasStoredComesBackThroughTheAnimationNode) {
    curveOf(geometry, "translateX");
    blockOf(geometry, "A");
    manager.exportCurves();
    manager.exportBlocks();
    forgetAndOwnWhatIsLoaded();
    manager.importCurves(geometry, false);
    manager.importBlocks(geometry, false);
    ASSERT_EQ(manager.getAnimCurves()->size(), 1U);
    EXPECT_EQ(manager.getAnimCurves()->front()->getAnimatedAttribute(), "translateX");
    EXPECT_TRUE(manager.getAnimCurves()->front()->getAppropriateNode() == geometry);
    ASSERT_EQ(manager.getBlocks()->size(), 1U);
    EXPECT_EQ(manager.getBlocks()->front()->getBlockName(), "A");
    EXPECT_EQ(manager.getBlocks()->front()->getEndFrame(), 5.0F);
}

TEST_F(Storing, clipsComeBackFromTheNodeItself) {
    kvAnimationClip* made = clip("Walk");
    made->addSequence(newSequence("step", 3, 4));
    manager.addClip(made);
    manager.exportClips(root, false);
    forgetAndOwnWhatIsLoaded();
    manager.importClips(root, osg::NullFC, false);
    ASSERT_EQ(manager.getClips()->size(), 1U);
    EXPECT_EQ(manager.getClips()->front()->getName(), "Walk");
    EXPECT_EQ(manager.getClips()->front()->getSequences(false, false).size(), 1U);
}

TEST_F(Storing, readingLooksOnTheTransformNodeOnlyWhenAskedTo) {
    curveOf(under, "translateX");
    blockOf(under, "A");
    kvAnimationClip* walk = clip("Walk");
    manager.addClip(walk);
    manager.exportCurves(under, true);
    manager.exportBlocks(under, true);
    manager.exportClips(under, true);
    ASSERT_FALSE(hasAttachment(under)) << "all is stored on the transform above";
    forgetAndOwnWhatIsLoaded();
    manager.importCurves(under, false);
    manager.importBlocks(under, false);
    manager.importClips(under, osg::NullFC, false);
    EXPECT_TRUE(manager.getAnimCurves()->empty());
    EXPECT_TRUE(manager.getBlocks()->empty());
    EXPECT_TRUE(manager.getClips()->empty());
    manager.importCurves(under, true);
    manager.importBlocks(under, true);
    manager.importClips(under, osg::NullFC, true);
    EXPECT_EQ(manager.getAnimCurves()->size(), 1U);
    EXPECT_EQ(manager.getBlocks()->size(), 1U);
    EXPECT_EQ(manager.getClips()->size(), 1U);
}

TEST_F(Storing, clipsAreReadFromAGeometryItselfAndNotFromItsTransform) {
    manager.addClip(clip("Walk"));
    manager.exportClips(transform, false);
    manager.clear(true);
    manager.addClip(clip("Run"));
    manager.exportClips(geometry, false);
    forgetAndOwnWhatIsLoaded();
    manager.importClips(geometry, osg::NullFC, false);
    ASSERT_EQ(manager.getClips()->size(), 1U);
    EXPECT_EQ(manager.getClips()->front()->getName(), "Run");
}

TEST_F(Storing, importingFromNothingAddsNothing) {
    manager.importCurves(osg::NullFC, true);
    manager.importBlocks(osg::NullFC, true);
    manager.importClips(osg::NullFC, osg::NullFC, true);
    manager.importCurves(root, false);
    manager.importBlocks(root, false);
    manager.importClips(root, root, false);
    EXPECT_TRUE(manager.getAnimCurves()->empty());
    EXPECT_TRUE(manager.getBlocks()->empty());
    EXPECT_TRUE(manager.getClips()->empty());
}

TEST_F(Storing, cameraAnimationsAreSharedWithTheOtherNode) {
    curveOf(group, "from");
    blockOf(group, "A");
    manager.exportCurves();
    manager.exportBlocks();
    manager.importCameraAnimations(group, osg::NullFC);
    manager.importCameraAnimations(osg::NullFC, group);
    manager.importCameraAnimations(group, group);
    EXPECT_EQ(storedCurves(group), (Names{"from"})) << "to the same node nothing is added";
    EXPECT_EQ(storedBlocks(group), (Names{"A"}));
    manager.importCameraAnimations(group, transform);
    EXPECT_EQ(storedCurves(transform), (Names{"from"}));
    EXPECT_EQ(storedBlocks(transform), (Names{"A"}));
    EXPECT_EQ(storedCurves(group), (Names{"from"})) << "the source keeps its lists";
    EXPECT_TRUE(
        Storage::getAnimationAttachment(transform, false)->getCurves(0)->getAppropriateNode() ==
        transform);
    // Re-targeting never releases what the curve and the block held of their former node.
    for (int i = 0; i < 2; ++i) {
        osg::NodePtr surplus = group;
        osg::subRefCP(surplus);
    }
}

} // namespace
