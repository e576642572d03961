// Finding the light behind a light geometry.

#include "manager/fixture.h"

#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGLight.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSpotLight.h>

#include <OSGLightGeoAttachment.h>

using namespace kv::test;

namespace {

using Manager = kvAnimationManager2;

class LightSearch : public SceneTest {
  protected:
    LightSearch() {
        beacon = addNode(root, osg::Group::create());
        holder = addNode(beacon, osg::Group::create());
        picture = addNode(holder, osg::Geometry::create());
        mark(picture, true);
    }

    static void mark(const osg::NodePtr& node, bool isLightGeometry) {
        osg::LightGeoAttachmentPtr attachment = osg::LightGeoAttachment::create();
        attachment->setIsLightGeometry(isLightGeometry);
        osg::beginEditCP(node, osg::Node::AttachmentsFieldMask);
        node->addAttachment(attachment);
        osg::endEditCP(node, osg::Node::AttachmentsFieldMask);
    }

    template <class LightCore>
    osg::NodePtr addLight(const osg::NodePtr& parent, const osg::NodePtr& itsBeacon) {
        const auto light = LightCore::create();
        light->setBeacon(itsBeacon);
        return addNode(parent, light);
    }

    osg::NodePtr found() { return Manager::resolveLightNode(picture, root); }

    osg::NodePtr beacon;
    osg::NodePtr holder;
    osg::NodePtr picture;
};

TEST_F(LightSearch, aLightOfEachKindIsFoundByItsBeacon) {
    addLight<osg::PointLight>(root, holder); // another light
    const osg::NodePtr spot = addLight<osg::SpotLight>(root, beacon);
    EXPECT_TRUE(found() == spot);
    removeNode(root, spot);
    const osg::NodePtr point = addLight<osg::PointLight>(root, beacon);
    EXPECT_TRUE(found() == point);
    removeNode(root, point);
    const osg::NodePtr directional = addLight<osg::DirectionalLight>(root, beacon);
    EXPECT_TRUE(found() == directional);
}

TEST_F(LightSearch, theFirstMatchInDepthFirstOrderIsFound) {
    const osg::NodePtr first = addLight<osg::PointLight>(root, beacon);
    addLight<osg::PointLight>(first, beacon);
    addLight<osg::SpotLight>(root, beacon);
    EXPECT_TRUE(found() == first);
}

TEST_F(LightSearch, inactiveNodesAreSkippedWithAllBelowThem) {
    const osg::NodePtr group = addNode(root, osg::Group::create());
    const osg::NodePtr hidden = addLight<osg::PointLight>(group, beacon);
    const osg::NodePtr other = addLight<osg::PointLight>(root, beacon);
    osg::beginEditCP(group, osg::Node::TravMaskFieldMask);
    group->setActive(false);
    osg::endEditCP(group, osg::Node::TravMaskFieldMask);
    EXPECT_TRUE(found() == other);
    EXPECT_TRUE(hidden->getActive());
}

TEST_F(LightSearch, onlyMarkedGeometriesStandForALight) {
    addLight<osg::PointLight>(root, beacon);
    const osg::NodePtr unmarked = addNode(holder, osg::Geometry::create());
    EXPECT_TRUE(Manager::resolveLightNode(unmarked, root) == osg::NullFC);
    mark(unmarked, false);
    EXPECT_TRUE(Manager::resolveLightNode(unmarked, root) == osg::NullFC);
    const osg::NodePtr group = addNode(holder, osg::Group::create());
    mark(group, true);
    EXPECT_TRUE(Manager::resolveLightNode(group, root) == osg::NullFC);
    const osg::NodePtr coreless = addNode(holder, osg::NullFC);
    mark(coreless, true);
    EXPECT_TRUE(Manager::resolveLightNode(coreless, root) == osg::NullFC);
    EXPECT_TRUE(Manager::resolveLightNode(osg::NullFC, root) == osg::NullFC);
}

TEST_F(LightSearch, aLightGeometryWithoutAParentHasNoLight) {
    osg::NodePtr alone = osg::Node::create();
    osg::addRefCP(alone);
    alone->setCore(osg::Geometry::create());
    mark(alone, true);
    addLight<osg::PointLight>(root, beacon);
    EXPECT_TRUE(found() != osg::NullFC);
    EXPECT_TRUE(Manager::resolveLightNode(alone, root) == osg::NullFC)
        << "nothing is searched, so the last light is not answered either";
    osg::subRefCP(alone);
}

TEST_F(LightSearch, aFailedSearchAnswersTheLightFoundLast) {
    EXPECT_TRUE(found() == osg::NullFC) << "nothing was ever found";
    const osg::NodePtr light = addLight<osg::PointLight>(root, beacon);
    EXPECT_TRUE(found() == light);
    const osg::NodePtr otherHolder = addNode(holder, osg::Group::create());
    const osg::NodePtr otherPicture = addNode(otherHolder, osg::Geometry::create());
    mark(otherPicture, true); // its beacon is `holder`, which no light has
    EXPECT_TRUE(Manager::resolveLightNode(otherPicture, root) == light);
    EXPECT_TRUE(Manager::resolveLightNode(picture, osg::NullFC) == light);
}

TEST_F(LightSearch, aLightFoundLastAndDestroyedSinceIsNotAnswered) {
    const osg::NodePtr light = addLight<osg::PointLight>(root, beacon);
    EXPECT_TRUE(found() == light);
    removeNode(root, light);
    EXPECT_TRUE(found() == osg::NullFC);
}

TEST_F(LightSearch, aPictureWithoutAGrandparentMatchesNoLight) {
    // Lights without a beacon and a search without one do not match each other.
    osg::NodePtr parent = osg::Node::create();
    osg::addRefCP(parent);
    parent->setCore(osg::Group::create());
    const osg::NodePtr shallow = addNode(parent, osg::Geometry::create());
    mark(shallow, true);
    addLight<osg::PointLight>(root, osg::NullFC);
    EXPECT_TRUE(Manager::resolveLightNode(shallow, root) == osg::NullFC);
    osg::subRefCP(parent);
}

TEST_F(LightSearch, theStepAnswersForEachKindOfNode) {
    Access::lookForBeacon(beacon);
    EXPECT_EQ(Manager::findLight(osg::NullFC), osg::Action::Continue);
    EXPECT_EQ(Manager::findLight(addNode(root, osg::NullFC)), osg::Action::Continue);
    EXPECT_EQ(Manager::findLight(root), osg::Action::Continue);
    const osg::NodePtr other = addLight<osg::PointLight>(root, holder);
    EXPECT_EQ(Manager::findLight(other), osg::Action::Continue);
    const osg::NodePtr light = addLight<osg::SpotLight>(root, beacon);
    EXPECT_EQ(Manager::findLight(light), osg::Action::Quit);
    EXPECT_TRUE(Access::appropriateLight() == light);
    light->setActive(false);
    EXPECT_EQ(Manager::findLight(light), osg::Action::Skip);
    const osg::NodePtr hiddenCoreless = addNode(root, osg::NullFC);
    hiddenCoreless->setActive(false);
    EXPECT_EQ(Manager::findLight(hiddenCoreless), osg::Action::Continue)
        << "the core is asked for before the activity";
}

} // namespace
