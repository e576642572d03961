// Script sequences: which are due, which are fired when passed, and how they are disarmed.

#include "manager/fixture.h"

#include <limits>

using namespace kv::test;

namespace {

class Sequences : public ManagerTest {
  protected:
    Sequences() { heard().clear(); }

    static std::vector<std::string>& heard() {
        static std::vector<std::string> texts;
        return texts;
    }
    static void listen(std::string text) { heard().push_back(text); }

    using Texts = std::vector<std::string>;

    static Texts texts(const std::vector<kvAnimationSequence2*>& items) {
        Texts result;
        for (const kvAnimationSequence2* item : items)
            result.push_back(item->getSequence());
        return result;
    }
};

TEST_F(Sequences, executingHandsTheTextToTheHostThenDisarms) {
    kvAnimationManager2::setExecuteSequenceCB(&listen);
    kvAnimationSequence2 item("open the door");
    item.setOldFrame(4);
    kvAnimationManager2::executeSequence(&item);
    EXPECT_EQ(heard(), (Texts{"open the door"}));
    EXPECT_FALSE(item.getDirty());
    EXPECT_EQ(item.getOldFrame(), 4.0F) << "the frame of the last run is not touched";
    kvAnimationManager2::executeSequence(&item);
    EXPECT_EQ(heard().size(), 2U) << "executing does not ask whether the item is dirty";
    kvAnimationManager2::executeSequence(nullptr);
    EXPECT_EQ(heard().size(), 2U);
}

TEST_F(Sequences, theFlagIsClearedAfterTheCall) {
    static kvAnimationSequence2* running = nullptr;
    static bool dirtyDuringCall = false;
    kvAnimationSequence2 item("x");
    running = &item;
    kvAnimationManager2::setExecuteSequenceCB(
        [](std::string) { dirtyDuringCall = running->getDirty(); });
    kvAnimationManager2::executeSequence(&item);
    EXPECT_TRUE(dirtyDuringCall);
    EXPECT_FALSE(item.getDirty());
}

TEST_F(Sequences, withoutACallbackExecutingLeavesTheItemArmed) {
    kvAnimationSequence2 item("x");
    kvAnimationManager2::executeSequence(&item);
    EXPECT_TRUE(item.getDirty());
}

TEST_F(Sequences, dueAreTheActiveItemsInRangeDirtyOrNot) {
    kvAnimationClip* top = clip("c");
    kvAnimationSequence2* clean = newSequence("clean", 5, 9);
    clean->setDirty(false);
    kvAnimationSequence2* sleeping = newSequence("sleeping", 0, 20);
    sleeping->setActive(false);
    top->addSequence(newSequence("later", 10, 20));
    top->addSequence(clean);
    top->addSequence(sleeping);
    top->addSequence(newSequence("inverted", 9, 5));
    EXPECT_EQ(texts(manager.computeSequences(top, 4.5F)), (Texts{}));
    EXPECT_EQ(texts(manager.computeSequences(top, 5)), (Texts{"clean"}));
    EXPECT_EQ(texts(manager.computeSequences(top, 9)), (Texts{"clean"}));
    EXPECT_EQ(texts(manager.computeSequences(top, 9.5F)), (Texts{}));
    EXPECT_EQ(texts(manager.computeSequences(top, 10)), (Texts{"later"}));
    EXPECT_EQ(texts(manager.computeSequences(top, std::numeric_limits<float>::quiet_NaN())),
              (Texts{}));
}

TEST_F(Sequences, dueItemsOfDirectSubclipsAreIncludedDeeperOnesAreNot) {
    kvAnimationClip* top = clip("c");
    kvAnimationClip* inner = top->newSubclip();
    inner->addSequence(newSequence("inner", 1, 9));
    inner->newSubclip()->addSequence(newSequence("deep", 1, 9));
    top->addSequence(newSequence("second", 3, 9));
    top->addSequence(newSequence("first", 0, 9));
    EXPECT_EQ(texts(manager.computeSequences(top, 5)), (Texts{"first", "inner", "second"}));
    EXPECT_EQ(manager.computeSequences(top, 5), top->getSequences(false, true));
}

TEST_F(Sequences, itemsThatStartTogetherComeInTrackOrderTheClipsOwnFirst) {
    kvAnimationClip* top = clip("c");
    top->newSubclip()->addSequence(newSequence("inner", 1, 9));
    top->addSequence(newSequence("b", 1, 9));
    top->addSequence(newSequence("a", 1, 9));
    EXPECT_EQ(texts(manager.computeSequences(top, 5)), (Texts{"b", "a", "inner"}));
    EXPECT_EQ(manager.computeSequences(top, 5), top->getSequences(false, true));
}

TEST_F(Sequences, aJumpFiresWhatItPassedInOrderOfStartButNotWhatStartsAtTheFrame) {
    kvAnimationManager2::setExecuteSequenceCB(&listen);
    kvAnimationClip* top = clip("c");
    top->addSequence(newSequence("at50", 50, 60));
    top->addSequence(newSequence("at100", 100, 110));
    top->addSequence(newSequence("at10", 10, 20));
    manager.checkAndExecSkippedSequences(top, 0);
    EXPECT_TRUE(heard().empty());
    manager.checkAndExecSkippedSequences(top, 100);
    EXPECT_EQ(heard(), (Texts{"at10", "at50"}));
    manager.checkAndExecSkippedSequences(top, 100);
    EXPECT_EQ(heard().size(), 2U) << "each fires once";
    manager.checkAndExecSkippedSequences(top, 100.5F);
    EXPECT_EQ(heard(), (Texts{"at10", "at50", "at100"}));
}

TEST_F(Sequences, passedItemsFireEvenWhenInactive) {
    kvAnimationManager2::setExecuteSequenceCB(&listen);
    kvAnimationClip* top = clip("c");
    kvAnimationSequence2* sleeping = newSequence("sleeping", 0, 5);
    sleeping->setActive(false);
    top->addSequence(sleeping);
    manager.checkAndExecSkippedSequences(top, 1);
    EXPECT_EQ(heard(), (Texts{"sleeping"}));
}

TEST_F(Sequences, withoutACallbackPassedItemsAreDisarmedUnheard) {
    kvAnimationClip* top = clip("c");
    kvAnimationSequence2* passed = newSequence("passed", 0, 5);
    kvAnimationSequence2* ahead = newSequence("ahead", 10, 15);
    top->addSequence(passed);
    top->addSequence(ahead);
    manager.checkAndExecSkippedSequences(top, 10);
    EXPECT_FALSE(passed->getDirty());
    EXPECT_TRUE(ahead->getDirty());
    kvAnimationManager2::setExecuteSequenceCB(&listen);
    manager.checkAndExecSkippedSequences(top, 10);
    EXPECT_TRUE(heard().empty());
}

TEST_F(Sequences, anItemReArmedFromWithinACallbackFiresWhenItsTurnComes) {
    static kvAnimationClip* playing = nullptr;
    kvAnimationClip* top = clip("c");
    playing = top;
    kvAnimationSequence2* second = newSequence("second", 5, 6);
    top->addSequence(newSequence("first", 0, 1));
    top->addSequence(second);
    second->setDirty(false);
    kvAnimationManager2::setExecuteSequenceCB([](std::string text) {
        listen(text);
        if (text == "first") playing->setAllSequencesDirty();
    });
    manager.checkAndExecSkippedSequences(top, 10);
    EXPECT_EQ(heard(), (Texts{"first", "second"}));
}

TEST_F(Sequences, aCallbackMayAskForSequencesItself) {
    static kvAnimationClip* playing = nullptr;
    kvAnimationClip* top = clip("c");
    playing = top;
    top->addSequence(newSequence("first", 0, 1));
    top->addSequence(newSequence("second", 5, 6));
    kvAnimationManager2::setExecuteSequenceCB([](std::string text) {
        listen(text);
        kvAnimationManager2::_the.computeSequences(playing, 3);
        kvAnimationManager2::_the.checkAndExecSkippedSequences(playing, -100);
    });
    manager.checkAndExecSkippedSequences(top, 10);
    EXPECT_EQ(heard(), (Texts{"first", "second"}));
}

TEST_F(Sequences, aNaNFramePassesNothing) {
    kvAnimationManager2::setExecuteSequenceCB(&listen);
    kvAnimationClip* top = clip("c");
    top->addSequence(newSequence("x", 0, 1));
    manager.checkAndExecSkippedSequences(top, std::numeric_limits<float>::quiet_NaN());
    EXPECT_TRUE(heard().empty());
}

} // namespace
