// The animated channel: names and colours, ids, node, import of keys.
#include <kvAnimationCurve.h>

#include "keys/draws.h"
#include "keys/keyListFixture.h"
#include "keys/sceneNodes.h"
#include "support/access/kvAnimationCurve.h"

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using namespace kv::test;
using Curves = kvTestAccess<kvAnimationCurve>;

namespace {

// A curve whose protected operation can be called.
class OpenCurve : public kvAnimationCurve {
  public:
    using kvAnimationCurve::addControlPoint;
};

osg::Vec3f rgb(float r, float g, float b) {
    return osg::Vec3f(r, g, b);
}

void importUser(kvAnimationCurve& curve, float x, float y, float inX, float outX) {
    curve.importControlPoint(x, y, inX, y, outX, y, kvControlPoint::User);
}

void expectPoint(kvControlPoint::Point p, double x, double y) {
    EXPECT_EQ(p.x, x);
    EXPECT_EQ(p.y, y);
}

} // namespace

TEST(Curve, aNewCurveHasItsDefaults) {
    const kvAnimationCurve curve;
    EXPECT_EQ(curve.getAnimatedAttribute(), "init");
    EXPECT_STREQ(curve.getCurveType(), "linear");
    EXPECT_TRUE(curve.getAutocomputeTangents());
    EXPECT_TRUE(curve.isVisible());
    EXPECT_FALSE(curve.isSelected());
    EXPECT_FALSE(curve.isBlockCurve());
    EXPECT_EQ(curve.getAnimationDuration(), 0.0);
    EXPECT_EQ(curve.getColor(), rgb(243, 142, 69)) << "the colour of the name init";
    EXPECT_EQ(curve.getAppBlockId(), 0U);
    EXPECT_TRUE(curve.getAppropriateNode() == osg::NullFC);
    EXPECT_EQ(curve.getAnimationField().fieldName, "unknown");
    EXPECT_EQ(curve.getAnimationField().fcId, 0U);
    EXPECT_TRUE(curve.getCPs().empty());
}

TEST(Curve, aNamedCurveHasTheColourOfItsNameAndTheOtherDefaults) {
    const kvAnimationCurve curve("translateY");
    EXPECT_EQ(curve.getAnimatedAttribute(), "translateY");
    EXPECT_EQ(curve.getColor(), rgb(76, 229, 76));
    EXPECT_STREQ(curve.getCurveType(), "linear");
    EXPECT_TRUE(curve.getAutocomputeTangents());
    EXPECT_TRUE(curve.isVisible());
    EXPECT_FALSE(curve.isSelected());
    EXPECT_FALSE(curve.isBlockCurve());
    EXPECT_EQ(curve.getAnimationDuration(), 0.0);
    EXPECT_EQ(curve.getAppBlockId(), 0U);
}

TEST(Curve, anEmptyNameHasAColour) {
    EXPECT_EQ(kvAnimationCurve(std::string()).getColor(), rgb(243, 142, 69));
}

TEST(Curve, consecutiveCurvesHaveConsecutiveIds) {
    const kvAnimationCurve first;
    const kvAnimationCurve second("scaleX");
    EXPECT_EQ(second.getId(), first.getId() + 1);
}

TEST(Curve, aCopyHasTheIdOfItsSourceAndTakesNone) {
    const kvAnimationCurve source;
    const kvAnimationCurve copy(source);
    kvAnimationCurve assigned;
    const unsigned next = Curves::nextId();
    assigned = source;
    EXPECT_EQ(copy.getId(), source.getId());
    EXPECT_EQ(assigned.getId(), source.getId());
    EXPECT_EQ(Curves::nextId(), next);
    EXPECT_EQ(kvAnimationCurve().getId(), next);
}

TEST(Curve, aCopyTakesAllFieldsAndKeys) {
    kvAnimationCurve source("scaleZ");
    static const char* const label = "stepped";
    source.setCurveType(label);
    source.setColor(1, 2, 3);
    source.setAutocomputeTangents(false);
    source.setVisible(false);
    source.setSelected(true);
    source.setIsBlockCurve(true);
    source.setAnimationDuration(2.5);
    source.setAppBlockId(77);
    kvAnimationUtils2::AnimationField field;
    field.fcId = 4711;
    field.fieldName = "scaleZ";
    field.value = 3.5F;
    field.dirty = false;
    source.setAnimationField(field);
    importUser(source, 1, 2, 0, 2);
    Curves::nodeId(source) = 99;
    kvAnimationCurve assigned;
    assigned = source;
    kvAnimationCurve constructed(source);
    for (kvAnimationCurve* copy : {&assigned, &constructed}) {
        EXPECT_EQ(copy->getAnimatedAttribute(), "scaleZ");
        EXPECT_EQ(copy->getCurveType(), label);
        EXPECT_EQ(copy->getColor(), rgb(1, 2, 3));
        EXPECT_FALSE(copy->getAutocomputeTangents());
        EXPECT_FALSE(copy->isVisible());
        EXPECT_TRUE(copy->isSelected());
        EXPECT_TRUE(copy->isBlockCurve());
        EXPECT_EQ(copy->getAnimationDuration(), 2.5);
        EXPECT_EQ(copy->getAppBlockId(), 77U);
        EXPECT_EQ(copy->getAnimationField().fcId, 4711U);
        EXPECT_EQ(copy->getAnimationField().fieldName, "scaleZ");
        EXPECT_EQ(copy->getAnimationField().value, 3.5F);
        EXPECT_FALSE(copy->getAnimationField().dirty);
        EXPECT_EQ(copy->getCPs().size(), 1U);
        EXPECT_EQ(Curves::nodeId(*copy), 99U);
    }
}

TEST(Curve, theFieldRecordIsHandedOutAsACopy) {
    kvAnimationCurve curve;
    kvAnimationUtils2::AnimationField field = curve.getAnimationField();
    field.fcId = 12;
    EXPECT_EQ(curve.getAnimationField().fcId, 0U);
}

TEST(Curve, settingTheAttributeReplacesTheColourEachTime) {
    kvAnimationCurve curve;
    curve.setColor(1, 2, 3);
    curve.setAnimatedAttribute("rotateZ");
    EXPECT_EQ(curve.getColor(), rgb(102, 159, 208));
    curve.setColor(rgb(4, 5, 6));
    EXPECT_EQ(curve.getColor(), rgb(4, 5, 6));
    curve.setAnimatedAttribute("rotateZ");
    EXPECT_EQ(curve.getColor(), rgb(102, 159, 208));
}

TEST(Curve, theTypeIsKeptAsAPointer) {
    kvAnimationCurve curve;
    char text[] = "first";
    curve.setCurveType(text);
    text[0] = 'F';
    EXPECT_EQ(curve.getCurveType(), text);
    EXPECT_STREQ(curve.getCurveType(), "First");
}

TEST(Curve, idsKeepTheirLowThirtyTwoBits) {
    kvAnimationCurve curve;
    curve.setId(0x100000007ULL);
    EXPECT_EQ(curve.getId(), 7U);
    curve.setAppBlockId(0xABCDFFFFFFFFULL);
    EXPECT_EQ(curve.getAppBlockId(), 0xFFFFFFFFU);
}

TEST(Curve, theFlagOfTheCurveAndTheFlagsOfItsKeysAreApart) {
    kvAnimationCurve curve;
    curve.insertCP(1, 1);
    curve.selectAllCPs();
    EXPECT_FALSE(curve.isSelected());
    EXPECT_TRUE(curve.isSelected(keyAt(curve, 0)));
    curve.deselectAllCPs();
    curve.setSelected(true);
    EXPECT_FALSE(curve.isSelected(keyAt(curve, 0)));
}

TEST(Curve, hasNoVirtualOperations) {
    EXPECT_FALSE(std::is_polymorphic_v<kvAnimationCurve>);
}

TEST(CurveNode, theNodeComesBackUntilItIsDestroyed) {
    kvAnimationCurve curve;
    osg::NodePtr node = osg::Node::create();
    osg::addRefCP(node);
    const osg::UInt32 id = osg::getContainerId(node);
    curve.setAppropriateNode(node);
    EXPECT_EQ(Curves::nodeId(curve), id);
    EXPECT_TRUE(curve.getAppropriateNode() == node);
    EXPECT_EQ(node.getRefCount(), 1) << "a curve holds no reference";
    osg::subRefCP(node);
    EXPECT_EQ(Curves::nodeId(curve), id);
    EXPECT_TRUE(curve.getAppropriateNode() == osg::NullFC);
}

TEST(CurveNode, aNullNodeClearsIt) {
    kvAnimationCurve curve;
    osg::NodePtr node = osg::Node::create();
    osg::addRefCP(node);
    curve.setAppropriateNode(node);
    curve.setAppropriateNode(osg::NullFC);
    EXPECT_EQ(Curves::nodeId(curve), 0U);
    EXPECT_TRUE(curve.getAppropriateNode() == osg::NullFC);
    osg::subRefCP(node);
}

TEST(CurveNode, theIdOfAContainerThatIsNoNodeGivesNull) {
    kvAnimationCurve curve;
    osg::NamePtr other = osg::Name::create();
    osg::addRefCP(other);
    Curves::nodeId(curve) = osg::getContainerId(other);
    EXPECT_TRUE(curve.getAppropriateNode() == osg::NullFC);
    osg::subRefCP(other);
    Curves::nodeId(curve) = 0x7FFFFFFF;
    EXPECT_TRUE(curve.getAppropriateNode() == osg::NullFC) << "an id never given out";
    EXPECT_EQ(kv::detail::idOf(osg::NullFC), 0U);
    EXPECT_TRUE(kv::detail::nodeById(0) == osg::NullFC);
}

TEST(CurveImport, anImportedUserKeyKeepsItsHandles) {
    kvAnimationCurve curve;
    curve.importControlPoint(0, 1, -3, 2, 3, 4, kvControlPoint::User);
    curve.importControlPoint(10, 5, 7, 6, 13, 8, kvControlPoint::User);
    expectPoint(keyAt(curve, 0).getPoint(), 0, 1);
    expectPoint(keyAt(curve, 0).getInTangent(), -3, 2);
    expectPoint(keyAt(curve, 0).getOutTangent(), 3, 4);
    expectPoint(keyAt(curve, 1).getInTangent(), 7, 6);
    EXPECT_EQ(keyAt(curve, 0).getTangentType(), 6);
}

TEST(CurveImport, anImportedKeyOfAnotherTypeIsRecomputedWithItsNeighbours) {
    kvAnimationCurve curve;
    curve.importControlPoint(0, 0, -100, 1, 100, 1, kvControlPoint::Flat);
    expectPoint(keyAt(curve, 0).getInTangent(), -100, 1);
    curve.importControlPoint(10, 5, -100, 1, 100, 1, kvControlPoint::Flat);
    expectPoint(keyAt(curve, 0).getInTangent(), -5, 0);
    expectPoint(keyAt(curve, 1).getOutTangent(), 15, 5);
}

TEST(CurveImport, importedKeysAreNumberedByTheListAndReplaceEachOther) {
    kvAnimationCurve curve;
    importUser(curve, 5, 1, 4, 6);
    importUser(curve, 3, 1, 2, 4);
    importUser(curve, 5, 9, 4, 6);
    EXPECT_EQ(framesOf(curve), (std::vector<double>{3, 5}));
    EXPECT_EQ(keyAt(curve, 0).getId(), 2);
    EXPECT_EQ(keyAt(curve, 1).getId(), 3);
    EXPECT_EQ(curve.getControlPoint(3), &keyAt(curve, 1));
    EXPECT_EQ(curve.getControlPoint(1), nullptr);
}

TEST(CurveImport, eachImportedKeyDrawsOneIdThatNoKeyKeeps) {
    kvAnimationCurve curve;
    EXPECT_EQ(drawsOf([&] { importUser(curve, 5, 1, 4, 6); }), 1U);
    EXPECT_EQ(keyAt(curve, 0).getId(), 1);
    EXPECT_EQ(drawsOf([&] { importUser(curve, 5, 1, 4, 6); }), 1U) << "also to replace a key";
}

TEST(CurveImport, aHundredThousandKeysNeedNoIndexOfIds) {
    kvAnimationCurve curve;
    for (int i = 0; i < 100000; ++i)
        importUser(curve, static_cast<float>(i), 0, 0, 0);
    EXPECT_EQ(curve.getCPs().size(), 100000U);
    EXPECT_EQ(keyAt(curve, 99999).getId(), 100000);
    EXPECT_FALSE(kvTestAccess<kvControlPointManager>::hasIdIndex(curve));
}

TEST(Curve, copyingAndEditingDrawNothing) {
    kvAnimationCurve curve("translateX");
    for (const float x : {0.0F, 10.0F, 20.0F, 30.0F})
        importUser(curve, x, x, x - 1, x + 1);
    EXPECT_EQ(drawsOf([&] {
                  kvAnimationCurve copy(curve);
                  kvAnimationCurve assigned;
                  assigned = curve;
                  copy.computeLinkedList();
                  copy.moveCPTo(copy.findCP(1), 25, 3);
                  copy.moveCPTo(copy.findCP(2), 11, 3);
                  copy.stretchLeft(-5);
                  copy.stretchRight(99);
                  copy.flip();
                  copy.deleteCP(copy.findCP(3));
                  copy.getCPs().front().setPoint({500, 0});
                  copy.sortCPs();
                  copy.deleteExistingKey(500);
                  copy.selectAllCPs();
                  copy.computeTangents(kvControlPoint::Smooth);
                  copy.constantCurveInterval();
                  copy.deleteAllSelectedCPs();
                  copy.set("scaleX", curve.getCPs());
              }),
              0U);
}

TEST(CurveImport, addingAKeyNumbersTheCallersKey) {
    OpenCurve curve;
    kvControlPoint cp(1, 2, kvControlPoint::User);
    curve.addControlPoint(cp);
    EXPECT_EQ(cp.getId(), 1);
    EXPECT_EQ(keyAt(curve, 0).getPoint().y, 2.0);
}

TEST(CurveImport, setTakesNameColourAndKeysAndLinksThem) {
    kvAnimationCurve source;
    for (const float x : {0.0F, 10.0F, 20.0F})
        importUser(source, x, x, x - 1, x + 1);
    kvAnimationCurve curve;
    curve.insertCP(500, 500);
    curve.set("scaleX", source.getCPs());
    EXPECT_EQ(curve.getAnimatedAttribute(), "scaleX");
    EXPECT_EQ(curve.getColor(), rgb(229, 76, 76));
    EXPECT_EQ(framesOf(curve), (std::vector<double>{0, 10, 20}));
    EXPECT_EQ(keyAt(curve, 1).getId(), 2);
    expectPoint(keyAt(curve, 1).getInTangent(), 9, 10);
    expectLinked(curve);
    curve.set("scaleY", curve.getCPs());
    EXPECT_EQ(framesOf(curve), (std::vector<double>{0, 10, 20}));
    expectLinked(curve);
}
