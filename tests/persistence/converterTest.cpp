// Migration of stored records to animation nodes: which channel a curve lands in, what becomes of
// keys, names and colours, and what is lost.

#include "persistence/persistenceFixture.h"
#include "support/access/kvAnimationConverter.h"

#include <kvAnimManager.h>
#include <kvNodeUtils.h>
#include <OSGAnimAttachment.h>
#include <OSGAnimBlock.h>
#include <OSGAnimClip.h>
#include <OSGAnimCurve.h>
#include <OSGAnimNode.h>

#include <OpenSG/OSGFieldContainerFactory.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using Access = kvTestAccess<kvAnimationConverter>;
using osg::NullFC;
using testing::ElementsAre;
using testing::IsEmpty;

class Converter : public kv::test::PersistenceFixture {
  public:
    ~Converter() override {
        kvAnimManager::resetKeyableChannels();
        kvAnimManager::setFps(25.0);
    }

  protected:
    static kvOSGChannelData channel(const std::string& name, const std::string& label,
                                    const std::string& suffix, unsigned index = 0) {
        kvOSGChannelData data;
        data.name = name;
        data.label = label;
        data.suffix = suffix;
        data.valueIndex = index;
        return data;
    }

    static void convert(const osg::NodePtr& root) { kvAnimationConverter::convert(root); }

    // The animation nodes of a scene node.
    static std::vector<osg::NodePtr> animations(const osg::NodePtr& of) {
        std::vector<osg::NodePtr> result;
        const osg::AnimAttachmentPtr found = kvAnimManager::getAnimAttachment(of);
        if (found == NullFC) return result;
        for (osg::UInt32 i = 0; i < found->getMFAnimations()->getSize(); ++i) {
            result.push_back(found->getAnimations(i));
        }
        return result;
    }

    static osg::AnimCurvePtr curveOf(const osg::NodePtr& curveNode) {
        return osg::AnimCurvePtr::dcast(curveNode->getCore());
    }

    // "fullName:points" for each curve node.
    static std::vector<std::string> filled(const std::vector<osg::NodePtr>& curveNodes) {
        std::vector<std::string> result;
        for (const osg::NodePtr& curveNode : curveNodes) {
            const osg::AnimCurvePtr curve = curveOf(curveNode);
            result.push_back(curve->getName() + curve->getSuffix() + ":" +
                             std::to_string(curve->getNPoints()));
        }
        return result;
    }

    static std::vector<osg::NodePtr> children(const osg::NodePtr& of) {
        std::vector<osg::NodePtr> result;
        for (osg::UInt32 i = 0; i < of->getNChildren(); ++i)
            result.push_back(of->getChild(i));
        return result;
    }

    static bool hasRecords(const osg::NodePtr& of) {
        return Interaction::getAnimationAttachment(of, false) != NullFC;
    }

    // A block record with one curve for each attribute, each with the keys 1 and 2.
    static osg::AnimationBlockPtr blockOf(const osg::NodePtr& animated, const std::string& name,
                                          const std::vector<std::string>& attributes) {
        const osg::AnimationBlockPtr block = blockRecord(animated, name);
        for (const std::string& attribute : attributes) {
            block->addCurve(curveRecord(animated, attribute, {1.0F, 2.0F}));
        }
        return block;
    }
};

// --- what is visited and removed

TEST_F(Converter, nullIsNothingToConvert) {
    convert(NullFC);
    kvAnimationConverter::convertR(NullFC);
    Access::convertBlock(NullFC, node);
    Access::convertCurve(NullFC, NullFC);
    Access::convertPoint(NullFC, NullFC);
    EXPECT_EQ(Access::convertClip(NullFC), NullFC);
    EXPECT_THAT(animations(node), IsEmpty());
}

TEST_F(Converter, aNodeWithClipsOnlyLosesThemAndGainsNothing) {
    attachment(node)->addClip(osg::AnimationClipBase::create());
    convert(node);
    EXPECT_FALSE(hasRecords(node));
    EXPECT_EQ(kvAnimManager::getAnimAttachment(node), NullFC);
}

TEST_F(Converter, anEmptyAttachmentIsRemoved) {
    attachment(node);
    convert(node);
    EXPECT_FALSE(hasRecords(node));
    EXPECT_EQ(kvAnimManager::getAnimAttachment(node), NullFC);
}

TEST_F(Converter, aNodeWithoutAttachmentStaysAsItIs) {
    convert(node);
    EXPECT_EQ(kvAnimManager::getAnimAttachment(node), NullFC);
}

TEST_F(Converter, theWholeSubtreeIsConverted) {
    const osg::NodePtr child = makeTransform(node);
    const osg::NodePtr between = makeGroup(node);
    const osg::NodePtr grandchild = makeTransform(between);
    const osg::NodePtr bare = osg::Node::create(); // without a core
    between->addChild(bare);
    for (const osg::NodePtr& n : {node, child, grandchild, bare}) {
        attachment(n)->addBlock(blockOf(n, "b", {"translateX"}));
    }
    convert(node);
    for (const osg::NodePtr& n : {node, child, grandchild, bare}) {
        EXPECT_FALSE(hasRecords(n));
        EXPECT_EQ(animations(n).size(), 1U);
    }
}

TEST_F(Converter, convertingTwiceAddsNothing) {
    attachment(node)->addBlock(blockOf(node, "b", {"translateX"}));
    convert(node);
    convert(node);
    EXPECT_EQ(animations(node).size(), 1U);
}

TEST_F(Converter, nullElementsArePassedOver) {
    const osg::AnimationAttachmentPtr stored = attachment(node);
    stored->getMFBlocks()->push_back(NullFC);
    stored->getMFCurves()->push_back(NullFC);
    const osg::AnimationBlockPtr block = blockOf(node, "b", {"translateX"});
    block->getMFCurves()->push_back(NullFC);
    block->getCurves(0)->getMFControlPoints()->push_back(NullFC);
    stored->addBlock(block);
    convert(node);
    ASSERT_EQ(animations(node).size(), 1U);
    EXPECT_EQ(curveOf(animations(node)[0]->getChild(0))->getNPoints(), 2U);
}

TEST_F(Converter, aSceneHeldOnlyByItsRecordsGoesWithThem) {
    osg::NodePtr root = osg::Node::create();
    const osg::UInt32 rootId = osg::getContainerId(root);
    const osg::NodePtr child = osg::Node::create();
    root->addChild(child);
    root->addChild(osg::Node::create());
    attachment(child)->addCurve(curveRecord(root, "translateX", {1.0F}));
    attachment(root)->addCurve(curveRecord(root, "translateX", {1.0F}));
    convert(root);
    EXPECT_EQ(osg::FieldContainerFactory::the()->getContainer(rootId), NullFC);
}

TEST_F(Converter, aRootWithoutAnyReferenceSurvives) {
    osg::NodePtr root = osg::Node::create();
    const osg::UInt32 rootId = osg::getContainerId(root);
    attachment(root)->addCurve(curveRecord(NullFC, "translateX", {1.0F}));
    convert(root);
    EXPECT_NE(osg::FieldContainerFactory::the()->getContainer(rootId), NullFC);
    osg::addRefCP(root);
    osg::subRefCP(root);
}

// --- blocks

TEST_F(Converter, aBlockGetsACurveNodeForEveryChannel) {
    kvAnimManager::setKeyableChannels(node, {channel("translation", "Translate", "X", 0),
                                             channel("translation", "Translate", "Y", 1),
                                             channel("visible", "Visible", "")});
    kvNodeUtils::setName(node, "arm");
    attachment(node)->addBlock(blockOf(node, "wave", {"translationY"}));
    convert(node);
    ASSERT_EQ(animations(node).size(), 1U);
    const osg::NodePtr block = animations(node)[0];
    EXPECT_NE(osg::AnimNodePtr::dcast(block), NullFC);
    EXPECT_EQ(kvNodeUtils::getName(block), "wave");
    const osg::AnimBlockPtr core = osg::AnimBlockPtr::dcast(block->getCore());
    ASSERT_NE(core, NullFC);
    EXPECT_EQ(core->getName(), "wave");
    EXPECT_THAT(filled(children(block)),
                ElementsAre("translationX:0", "translationY:2", "visible:0"));
    const osg::NodePtr y = block->getChild(1);
    EXPECT_NE(osg::AnimNodePtr::dcast(y), NullFC);
    EXPECT_EQ(kvNodeUtils::getName(y), "arm.TranslateY") << "label, not name";
    EXPECT_EQ(kvNodeUtils::getName(block->getChild(2)), "arm.Visible");
    EXPECT_EQ(curveOf(y)->getValueIndex(), 1U);
    EXPECT_EQ(curveOf(y)->getColor(), kvAnimManager::getDefaultColor("Y"));
    EXPECT_EQ(curveOf(block->getChild(2))->getColor(), kvAnimManager::getDefaultColor(""));
}

TEST_F(Converter, olderSpellingsInBlocksStandForTheChannelNames) {
    attachment(node)->addBlock(blockOf(
        node, "b", {"translateX", "rotateY", "rotationZ", "scaleX", "eulerRX", "translationZ"}));
    convert(node);
    EXPECT_THAT(filled(children(animations(node)[0])),
                ElementsAre("translationX:2", "translationY:0", "translationZ:2", "eulerRX:2",
                            "eulerRY:2", "eulerRZ:2", "scaleX:2", "scaleY:0", "scaleZ:0",
                            "visible:0"));
}

TEST_F(Converter, onlyTheFirstOccurrenceInAKeyIsReplaced) {
    kvAnimManager::setKeyableChannels(node, {channel("mytranslationtranslate", "", "X"),
                                             channel("rotationrotate", "", ""),
                                             channel("rotationXX", "", "")});
    attachment(node)->addBlock(
        blockOf(node, "b", {"mytranslatetranslateX", "rotaterotate", "rotateXX"}));
    convert(node);
    EXPECT_THAT(filled(children(animations(node)[0])),
                ElementsAre("mytranslationtranslateX:2", "rotationrotate:2", "rotationXX:2"));
}

TEST_F(Converter, theBoundFieldComesBeforeTheAttribute) {
    const osg::AnimationBlockPtr block = blockOf(node, "b", {"translateX", "translateY"});
    block->getCurves(0)->setAFFieldName("scaleZ");
    block->getCurves(1)->setAFFieldName("unknown"); // a name like any other
    attachment(node)->addBlock(block);
    convert(node);
    EXPECT_THAT(filled(children(animations(node)[0])),
                ElementsAre("translationX:0", "translationY:0", "translationZ:0", "eulerRX:0",
                            "eulerRY:0", "eulerRZ:0", "scaleX:0", "scaleY:0", "scaleZ:2",
                            "visible:0"));
}

TEST_F(Converter, everyChannelOfANameGetsEveryCurveOfIt) {
    kvAnimManager::setKeyableChannels(
        node, {channel("translation", "A", "X"), channel("translation", "B", "X")});
    attachment(node)->addBlock(blockOf(node, "b", {"translateX", "translationX"}));
    convert(node);
    EXPECT_THAT(filled(children(animations(node)[0])),
                ElementsAre("translationX:4", "translationX:4"));
}

TEST_F(Converter, blocksKeepTheirOrderAndShareTheAttachment) {
    attachment(node)->addBlock(blockOf(node, "first", {"translateX"}));
    attachment(node)->addBlock(blockOf(NullFC, "second", {}));
    convert(node);
    ASSERT_EQ(animations(node).size(), 2U);
    EXPECT_EQ(kvNodeUtils::getName(animations(node)[0]), "first");
    EXPECT_EQ(kvNodeUtils::getName(animations(node)[1]), "second");
}

TEST_F(Converter, anAnimAttachmentThatIsThereIsUsed) {
    const osg::AnimAttachmentPtr present = osg::AnimAttachmentBase::create();
    node->addAttachment(present);
    present->addAnimation(osg::Node::create());
    attachment(node)->addBlock(blockOf(node, "b", {}));
    convert(node);
    EXPECT_EQ(kvAnimManager::getAnimAttachment(node), present);
    EXPECT_EQ(animations(node).size(), 2U);
}

TEST_F(Converter, namesBeyondAsciiKeepTheirEncoding) {
    kvAnimManager::setKeyableChannels(node, {channel("visible", "Visible", "")});
    const std::string latin = "T\xFCr"; // not UTF-8
    kvNodeUtils::setName(node, latin, false);
    attachment(node)->addBlock(blockOf(node, "b", {}));
    const osg::NodePtr other = makeTransform();
    kvAnimManager::setKeyableChannels(other, {channel("visible", "Visible", "")});
    const std::string utf8 = "T\xC3\xBCr";
    kvNodeUtils::setName(other, utf8, true);
    attachment(other)->addBlock(blockOf(other, "b", {}));
    convert(node);
    convert(other);
    EXPECT_EQ(kvNodeUtils::getName(animations(node)[0]->getChild(0)), latin + ".Visible");
    EXPECT_EQ(kvNodeUtils::getName(animations(other)[0]->getChild(0)), utf8 + ".Visible");
}

// --- loose curves

TEST_F(Converter, looseCurvesLandInTheirChannelOrAreDropped) {
    for (const char* attribute :
         {"translationY", "rotationZ", "translateX", "rotateX", "nothing"}) {
        attachment(node)->addCurve(curveRecord(node, attribute, {1.0F, 2.0F}));
    }
    convert(node);
    EXPECT_THAT(filled(animations(node)), ElementsAre("translationY:2", "eulerRZ:2"));
    EXPECT_FALSE(hasRecords(node));
}

TEST_F(Converter, looseCurvesKnowNoOlderSpellings) {
    kvAnimManager::setKeyableChannels(
        node, {channel("translate", "T", "X"), channel("translation", "T", "X")});
    attachment(node)->addCurve(curveRecord(node, "translateX", {1.0F}));
    convert(node);
    EXPECT_THAT(filled(animations(node)), ElementsAre("translateX:1"));
}

TEST_F(Converter, withoutAMatchNoAnimAttachmentIsMade) {
    attachment(node)->addCurve(curveRecord(node, "nothing", {1.0F}));
    convert(node);
    EXPECT_EQ(kvAnimManager::getAnimAttachment(node), NullFC);
}

TEST_F(Converter, theLastChannelOfANameWinsForLooseCurves) {
    kvAnimManager::setKeyableChannels(
        node, {channel("translation", "A", "X", 0), channel("translationX", "B", "", 7)});
    attachment(node)->addCurve(curveRecord(node, "translationX", {1.0F}));
    convert(node);
    ASSERT_EQ(animations(node).size(), 1U);
    EXPECT_EQ(curveOf(animations(node)[0])->getValueIndex(), 7U);
}

TEST_F(Converter, looseCurvesOfOneChannelShareItsCurveNode) {
    attachment(node)->addCurve(curveRecord(node, "translationX", {1.0F, 2.0F}));
    const osg::AnimationCurvePtr second = curveRecord(node, "other", {3.0F});
    second->setAFFieldName("translationX");
    attachment(node)->addCurve(second);
    convert(node);
    EXPECT_THAT(filled(animations(node)), ElementsAre("translationX:3"));
}

TEST_F(Converter, blocksComeBeforeLooseCurves) {
    attachment(node)->addCurve(curveRecord(node, "translationX", {1.0F}));
    attachment(node)->addBlock(blockOf(node, "b", {"translationX"}));
    convert(node);
    ASSERT_EQ(animations(node).size(), 2U);
    EXPECT_NE(osg::AnimBlockPtr::dcast(animations(node)[0]->getCore()), NullFC);
    EXPECT_EQ(curveOf(animations(node)[1])->getNPoints(), 1U)
        << "the curve node below the block is not the channel's";
}

// --- keys

TEST_F(Converter, framesBecomeSecondsAndHandlesOffsets) {
    const osg::AnimationCurvePtr stored = curveRecord(node, "translationX", {});
    const osg::AnimationControlPointPtr key = osg::AnimationControlPointBase::create();
    key->setControlPoint(osg::Vec2f(40.0F, 3.0F));
    key->setInTangent(osg::Vec2f(30.0F, 1.0F));
    key->setOutTangent(osg::Vec2f(45.0F, 9.0F));
    key->setTangentType(4); // dropped
    stored->addCurvePoint(key);
    attachment(node)->addCurve(stored);
    convert(node);
    const osg::AnimCurve::Point point = curveOf(animations(node)[0])->getPoint(0);
    EXPECT_FLOAT_EQ(point.point[0], 1.6F);
    EXPECT_EQ(point.point[1], 3.0F);
    EXPECT_NEAR(point.inTangent[0], -0.4F, 1e-6);
    EXPECT_EQ(point.inTangent[1], -2.0F);
    EXPECT_NEAR(point.outTangent[0], 0.2F, 1e-6);
    EXPECT_EQ(point.outTangent[1], 6.0F);
    EXPECT_EQ(point.inWeight, 1.0F);
    EXPECT_EQ(point.outWeight, 1.0F);
    EXPECT_FALSE(point.broken);
    EXPECT_TRUE(point.weighted);
}

TEST_F(Converter, theHostsFrameRateCounts) {
    kvAnimManager::setFps(50.0);
    attachment(node)->addCurve(curveRecord(node, "translationX", {40.0F}));
    convert(node);
    EXPECT_FLOAT_EQ(curveOf(animations(node)[0])->getPoint(0).point[0], 0.8F);
}

TEST_F(Converter, keysKeepTheStoredOrder) {
    attachment(node)->addCurve(curveRecord(node, "translationX", {75.0F, 25.0F, 50.0F}));
    convert(node);
    const osg::AnimCurvePtr curve = curveOf(animations(node)[0]);
    ASSERT_EQ(curve->getNPoints(), 3U);
    EXPECT_FLOAT_EQ(curve->getPoint(0).point[0], 3.0F);
    EXPECT_FLOAT_EQ(curve->getPoint(1).point[0], 1.0F);
    EXPECT_FLOAT_EQ(curve->getPoint(2).point[0], 2.0F);
}

TEST_F(Converter, aCurveNeedsACurveNode) {
    osg::AnimNodePtr wrong = osg::AnimNodeBase::create();
    osg::addRefCP(wrong);
    osg::AnimationCurvePtr stored = curveRecord(NullFC, "translationX", {1.0F});
    osg::addRefCP(stored);
    Access::convertCurve(stored, wrong); // no core
    wrong->setCore(osg::AnimBlockBase::create());
    Access::convertCurve(stored, wrong); // another core
    osg::subRefCP(stored);
    osg::subRefCP(wrong);
}

// --- clips

TEST_F(Converter, aClipBecomesANamedNodeWithoutItsTracks) {
    osg::AnimationClipPtr stored = osg::AnimationClipBase::create();
    osg::addRefCP(stored);
    stored->setName("dance");
    stored->addTrack(osg::AnimationTrackBase::create());
    osg::AnimNodePtr made = Access::convertClip(stored);
    ASSERT_NE(made, NullFC);
    osg::addRefCP(made);
    EXPECT_EQ(kvNodeUtils::getName(made), "dance");
    const osg::AnimClipPtr core = osg::AnimClipPtr::dcast(made->getCore());
    ASSERT_NE(core, NullFC);
    EXPECT_EQ(core->getName(), "dance");
    EXPECT_EQ(made->getNChildren(), 0U);
    osg::subRefCP(made);
    osg::subRefCP(stored);
}

} // namespace
