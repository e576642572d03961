// What a tick does to the scene is what writing its records one by one does: the same edits, with
// the same masks, in the same order; and its records are those of the manager's evaluation.

#include "playback/playbackFixture.h"
#include "playback/recordingTransform.h"
#include "support/access/kvAnimationController2.h"
#include "support/allocationCount.h"

#include <kvAnimationUtils2.h>
#include <OSGEulerAngles.h>
#include <OSGTransformAttachment.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using Controller = kvAnimationController2;
using Access = kvTestAccess<kvAnimationController2>;
using Field = kvAnimationUtils2::AnimationField;
using osg::RecordingTransform;
using Edits = std::vector<RecordingTransform::Edit>;

bool sameRecord(const Field& a, const Field& b) {
    return a.node == b.node && a.fcId == b.fcId && a.coreTypeId == b.coreTypeId &&
           a.fieldName == b.fieldName && a.globalFieldName == b.globalFieldName &&
           a.value == b.value && a.valuePosition == b.valuePosition &&
           a.componentCount == b.componentCount && a.dirty == b.dirty && a.metaInfo == b.metaInfo;
}

void expectSameRecords(const std::vector<Field>& a, const std::vector<Field>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i)
        EXPECT_TRUE(sameRecord(a[i], b[i])) << i << ": " << a[i].fieldName << b[i].fieldName;
}

std::vector<std::pair<osg::UInt32, osg::BitVector>> containersAndMasks(const Edits& edits) {
    std::vector<std::pair<osg::UInt32, osg::BitVector>> result;
    for (const RecordingTransform::Edit& edit : edits)
        result.emplace_back(std::get<0>(edit), std::get<1>(edit));
    return result;
}

class Records : public kv::test::PlaybackFixture {
  protected:
    osg::NodePtr makeRecorder() {
        const osg::NodePtr recorder = osg::Node::create();
        hold(recorder);
        recorder->setCore(RecordingTransform::create());
        return recorder;
    }

    /// A curve for an attribute of the node, with values of its own.
    kvAnimationCurve* makeCurve(const osg::NodePtr& recorder, const std::string& attribute) {
        auto* const curve = new kvAnimationCurve(attribute);
        curve->setAppropriateNode(recorder);
        kvAnimationUtils2::createAnimationField(curve);
        std::uniform_real_distribution<float> any(-100.0F, 100.0F);
        const float first = static_cast<float>(random() % 40);
        for (int k = 0; k < 4; ++k) {
            const float x = first + 20.0F * static_cast<float>(k);
            const float y = any(random);
            curve->importControlPoint(x, y, x - 5.0F, y, x + 5.0F, any(random), 6);
        }
        return curve;
    }

    kvAnimationBlock* makeBlockOfAll(const osg::NodePtr& recorder) {
        auto* const block = new kvAnimationBlock(recorder, "b");
        for (const char* attribute :
             {"translateX", "rotateY", "scaleZ", "amount", "visible", "rotateX", "centerY",
              "translateX", "scaleOrientation", "nothing of the kind", "rotateZ", "translateZ"})
            if (random() % 4 != 0) block->addCurve(makeCurve(recorder, attribute));
        return block;
    }

    kvAnimationClip* makeClipOfDepth(int depth) {
        kvAnimationClip* const clip = makeClip();
        kvAnimationClip* level = clip;
        for (int d = 0; d < depth; ++d) {
            if (d > 0) level = level->newSubclip();
            for (int b = 0; b < 4; ++b)
                level->addBlock(makeBlockOfAll(makeRecorder()));
        }
        return clip;
    }

    /// Runs the work; the edits that it makes.
    template <class Work>
    static Edits editsOf(Work work) {
        RecordingTransform::edits().clear();
        work();
        return RecordingTransform::edits();
    }

    /// The masks of the edits that a warm tick makes of a clip with curves for these attributes.
    std::vector<osg::BitVector> masksOfATick(const osg::NodePtr& recorder,
                                             std::initializer_list<const char*> attributes) {
        auto* const block = new kvAnimationBlock(recorder, "b");
        for (const char* attribute : attributes)
            block->addCurve(makeCurve(recorder, attribute));
        kvAnimationClip* const clip = makeClip();
        clip->addBlock(block);
        Controller::play(clip, 0.0F, 100.0F, false, false);
        tickAt(2.0);
        std::vector<osg::BitVector> masks;
        for (const RecordingTransform::Edit& edit : editsOf([] { tickAt(2.02); }))
            masks.push_back(std::get<1>(edit));
        return masks;
    }

    /// Ticks over the clip, out of order and beyond its ends, and each time writes the records of
    /// the manager's evaluation one by one as well.
    void expectTicksLikeLiteralWrites(kvAnimationClip* clip) {
        Controller::play(clip, -50.0F, 1000.0F, false, true);
        for (int i = 0; i < 60; ++i) {
            const float frame = static_cast<float>(random() % 1500) / 10.0F - 30.0F;
            const double seconds = (static_cast<double>(frame) + 50.0) / 25.0;
            const Edits ticked = editsOf([&] { tickAt(seconds); });
            const std::vector<Field> records = kvAnimationManager2::_the.getUpdatedAnimationFields(
                clip, Controller::getActualFrame(), false, true);
            const Edits literal = editsOf([&] {
                for (const Field& record : records)
                    kvAnimationUtils2::setRealFieldValue(record);
            });
            EXPECT_EQ(containersAndMasks(ticked), containersAndMasks(literal)) << "frame " << frame;
            // Once more, from the same state as the literal writes.
            EXPECT_EQ(editsOf([&] { tickAt(seconds); }), editsOf([&] {
                          for (const Field& record : records)
                              kvAnimationUtils2::setRealFieldValue(record);
                      }))
                << "frame " << frame;
            expectSameRecords(Controller::getValues(), records);
        }
    }

    std::mt19937 random{11};
};

TEST_F(Records, ofAClipMakeTheEditsOfLiteralWrites) {
    for (int depth = 1; depth <= 4; ++depth)
        expectTicksLikeLiteralWrites(makeClipOfDepth(depth));
}

TEST_F(Records, makeOneEditEachWithTheMaskOfTheirField) {
    const std::vector<osg::BitVector> masks =
        masksOfATick(makeRecorder(), {"translateX", "rotateY", "amount", "translateX"});
    const std::vector<osg::BitVector> expected = {
        osg::ComponentTransform::TranslationFieldMask,
        osg::Transform3D::EulerRFieldMask | osg::ComponentTransform::RotationFieldMask,
        RecordingTransform::AmountFieldMask, osg::ComponentTransform::TranslationFieldMask};
    EXPECT_EQ(masks, expected);
}

TEST_F(Records, ofThreeAnglesMakeARotationEach) {
    const osg::NodePtr recorder = makeRecorder();
    const std::vector<osg::BitVector> masks =
        masksOfATick(recorder, {"scaleX", "rotateX", "rotateY", "rotateZ", "centerX"});
    const osg::BitVector rotation =
        osg::Transform3D::EulerRFieldMask | osg::ComponentTransform::RotationFieldMask;
    const std::vector<osg::BitVector> expected = {osg::ComponentTransform::ScaleFieldMask, rotation,
                                                  rotation, rotation,
                                                  osg::ComponentTransform::CenterFieldMask};
    EXPECT_EQ(masks, expected);

    const auto core = osg::Transform3DPtr::dcast(recorder->getCore());
    const auto angles = osg::TransformAttachment::find(recorder);
    const osg::Quaternion& actual = core->getRotation();
    const osg::Quaternion described = osg::EulerAngles::toQuaternion(core->getEulerR(), 0);
    for (osg::UInt32 i = 0; i < 4; ++i)
        EXPECT_EQ(actual[i], described[i]);
    for (osg::UInt32 i = 0; i < 3; ++i) {
        EXPECT_EQ(core->getEulerR()[i], Controller::getValues()[i + 1].value);
        EXPECT_EQ(angles->getRotationAngles()[i], Controller::getValues()[i + 1].value);
    }
}

TEST_F(Records, followTheCurveThatTakesThePlaceOfAnother) {
    const osg::NodePtr first = makeRecorder();
    const osg::NodePtr second = makeRecorder();
    kvAnimationBlock* const block = makeBlock(first, 0.0F, 100.0F);
    Controller::play(block, false, false);
    tickAt(1.0);
    EXPECT_EQ(shown(first), 25.0F);

    kvAnimationCurve* const curve = block->getBlockCurves()[0];
    Field binding = curve->getAnimationField();
    binding.fcId = osg::getContainerId(second->getCore());
    binding.fieldName = "another name, too long to lie within a string";
    curve->setAnimationField(binding);
    tickAt(2.0);
    EXPECT_EQ(shown(first), 25.0F);
    EXPECT_EQ(shown(second), 50.0F);
    EXPECT_EQ(Controller::getValues()[0].fieldName, binding.fieldName);

    // A copy of a curve is bound like the curve, and one that is assigned to is not what it was.
    kvAnimationCurve other(*curve);
    other.setAnimationField(Field());
    *curve = other;
    tickAt(3.0);
    EXPECT_EQ(shown(second), 50.0F);
    EXPECT_EQ(Controller::getValues()[0].fieldName, "unknown");
}

// What a curve drives does not belong to its list of keys, and stays when only that is assigned.
TEST_F(Records, followACurveWhoseKeysAloneAreReplaced) {
    kvAnimationBlock* const block = makeBlock(makeRecorder(), 0.0F, 100.0F);
    kvAnimationBlock* const otherBlock = makeBlock(makeRecorder(), 0.0F, 100.0F);
    kvAnimationCurve& curve = *block->getBlockCurves()[0];
    kvAnimationCurve& other = *otherBlock->getBlockCurves()[0];
    Controller::play(block, false, false);
    tickAt(1.0);
    const kvControlPointManager keys = curve; // for undoing
    Field binding = curve.getAnimationField();
    binding.fieldName = "renamed";
    curve.setAnimationField(binding);
    tickAt(1.04);
    static_cast<kvControlPointManager&>(curve) = keys;
    tickAt(1.08);
    EXPECT_EQ(Controller::getValues()[0].fieldName, "renamed");

    static_cast<kvControlPointManager&>(curve) = other;
    tickAt(1.12);
    EXPECT_EQ(Controller::getValues()[0].fieldName, "renamed");
    block->getBlockCurves()[0] = &other;
    tickAt(1.16);
    EXPECT_EQ(Controller::getValues()[0].fieldName, other.getAnimationField().fieldName);
    block->getBlockCurves()[0] = &curve;
}

TEST_F(Records, areFewerAndMoreFromTickToTick) {
    const osg::NodePtr recorder = makeRecorder();
    kvAnimationBlock* const block = makeBlock(recorder, 0.0F, 100.0F);
    for (const unsigned component : {1U, 2U})
        block->addCurve(makeRamp(recorder, 0.0F, component == 1 ? 20.0F : 100.0F, component));
    Controller::play(block, false, false);
    for (const double seconds : {0.4, 2.0, 0.6, 2.4, 0.8}) {
        tickAt(seconds);
        expectSameRecords(Controller::getValues(),
                          kvAnimationManager2::_the.getUpdatedAnimationFields(
                              block, Controller::getActualFrame(), false, false));
        EXPECT_EQ(Controller::getValues().size(), seconds < 0.9 ? 3U : 2U);
    }
}

TEST_F(Records, ofADestroyedContainerWriteNothing) {
    osg::NodePtr recorder = osg::Node::create();
    osg::addRefCP(recorder);
    recorder->setCore(RecordingTransform::create());
    kvAnimationBlock* const block = makeBlock(recorder, 0.0F, 100.0F);
    Controller::play(block, false, false);
    EXPECT_EQ(editsOf([] { tickAt(1.0); }).size(), 1U);
    osg::subRefCP(recorder);
    EXPECT_EQ(editsOf([] { tickAt(2.0); }).size(), 0U);
    EXPECT_EQ(Controller::getValues().size(), 1U);
}

// Ticks know from the one before where in memory the scene is, and believe none of it.
TEST_F(Records, followASceneThatMovesInMemory) {
    kvAnimationClip* const clip = makeClip();
    std::vector<osg::NodePtr> nodes;
    for (int i = 0; i < 12; ++i) {
        nodes.push_back(osg::Node::create());
        osg::addRefCP(nodes.back());
        nodes.back()->setCore(RecordingTransform::create());
        auto* const block = new kvAnimationBlock(nodes.back(), "b");
        for (const char* attribute : {"scaleX", "rotateX"})
            block->addCurve(makeCurve(nodes.back(), attribute));
        clip->addBlock(block);
    }
    Controller::play(clip, 0.0F, 100.0F, false, false);
    tickAt(2.0);
    EXPECT_EQ(editsOf([] { tickAt(2.02); }).size(), 24U);

    nodes[3]->subAttachment(osg::TransformAttachment::find(nodes[3]));
    nodes[4]->setCore(RecordingTransform::create());
    osg::subRefCP(nodes[7]);
    const std::size_t edits = editsOf([] { tickAt(2.04); }).size();
    EXPECT_EQ(edits, 24U - 1U - 2U) << "the core that was replaced, the node with its core";
    ASSERT_TRUE(osg::TransformAttachment::find(nodes[3]) != osg::NullFC);
    for (const Field& record : Controller::getValues()) {
        if (!(record.node == nodes[3]) || record.fieldName != "rotationX") continue;
        EXPECT_EQ(osg::TransformAttachment::find(nodes[3])->getRotationAngles()[0], record.value);
    }
    EXPECT_EQ(editsOf([] { tickAt(2.06); }).size(), edits);
    nodes.erase(nodes.begin() + 7);
    for (osg::NodePtr& node : nodes)
        osg::subRefCP(node);
}

// --- allocations

const char* const kLongName = "a name of a binding that is too long to lie within a string";

class LongNames : public Records {
  protected:
    LongNames() {
        block = makeBlock(makeRecorder(), 0.0F, 1000.0F);
        for (const unsigned component : {1U, 2U})
            block->addCurve(makeRamp(node, 0.0F, 1000.0F, component));
        for (kvAnimationCurve* const curve : block->getBlockCurves()) {
            Field binding = curve->getAnimationField();
            binding.fieldName = kLongName + binding.fieldName;
            curve->setAnimationField(binding);
        }
    }

    static std::size_t allocationsWhenWarm() {
        int frame = 0;
        while (frame < 20)
            tickAt(++frame / 25.0);
        return kvtest::allocationsOf([&] {
            while (frame < 100)
                tickAt(++frame / 25.0);
        });
    }

    kvAnimationBlock* block;
};

TEST_F(LongNames, areNotCopiedByTicksOfABlock) {
    RecordingTransform::edits().reserve(1000);
    Controller::play(block, false, false);
    EXPECT_EQ(allocationsWhenWarm(), 0U);
}

TEST_F(LongNames, areNotCopiedByTicksOfAClip) {
    RecordingTransform::edits().reserve(1000);
    for (int depth = 1; depth <= 4; ++depth) {
        kvAnimationClip* const clip = makeClip();
        kvAnimationClip* level = clip;
        for (int d = 0; d < depth; ++d) {
            if (d > 0) level = level->newSubclip();
            level->addBlock(new kvAnimationBlock(*block));
        }
        setTime(0.0);
        Controller::play(clip, false, false);
        EXPECT_EQ(allocationsWhenWarm(), 0U) << depth;
        RecordingTransform::edits().clear();
    }
}

TEST_F(LongNames, areNotCopiedByLocalTicks) {
    RecordingTransform::edits().reserve(1000);
    kvAnimationManager2::_the.setSelectedCurves(block->getBlockCurves());
    Controller::setMaxFrame(1000.0F);
    Controller::play(false);
    EXPECT_EQ(allocationsWhenWarm(), 0U);
    EXPECT_TRUE(Access::playing());
    kvAnimationManager2::_the.clearCurveLists();
}

TEST_F(LongNames, areNotCopiedByGlobalTicks) {
    RecordingTransform::edits().reserve(1000);
    kvAnimationManager2::_animationBlocks.push_back(block);
    Controller::setMaxFrame(1000.0F);
    Controller::playGlobal(false, false, false);
    EXPECT_EQ(allocationsWhenWarm(), 0U);
    EXPECT_EQ(Controller::getValues().size(), 300U);
}

} // namespace
