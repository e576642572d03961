// The page about playback at the edges of a range: written on request, compared on every run. Rows
// are compared with what was worked out by hand, too, so that the page is not only consistent.

#include "playback/boundaryTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace {

using kv::test::Operation;
using kv::test::Played;
using kv::test::Position;
using kv::test::Seen;
using testing::ElementsAre;
using testing::IsEmpty;

const char* const kPage = KV_SOURCE_DIR "/docs/playback-boundaries.md";

std::string committedPage() {
    std::ifstream in(kPage, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// The number of the first line in which two texts differ, and those lines.
std::string firstDifference(const std::string& left, const std::string& right) {
    std::istringstream a(left);
    std::istringstream b(right);
    std::string lineOfA;
    std::string lineOfB;
    for (int number = 1;; ++number) {
        const bool more = static_cast<bool>(std::getline(a, lineOfA));
        if (static_cast<bool>(std::getline(b, lineOfB)) != more || (more && lineOfA != lineOfB))
            return std::to_string(number) + ": " + lineOfA + " / " + lineOfB;
        if (!more) return "none";
    }
}

// What happens to `item` at a position when the operation with this title is tried.
Seen row(const std::string& title, Played item, const std::string& at) {
    for (const Operation& operation : kv::test::operations()) {
        for (const Played offered : operation.items) {
            if (operation.title != title || offered != item) continue;
            for (const Position& position : kv::test::positions()) {
                if (position.name == at) return kv::test::outcome(operation, item, position);
            }
        }
    }
    ADD_FAILURE() << "no such row: " << title << ", " << at;
    return {};
}

} // namespace

TEST(BoundaryPage, isWrittenOnRequest) {
    const char* const wanted = std::getenv("KV_WRITE_DOCS");
    if (wanted == nullptr || std::string(wanted) != "1") return;
    std::ofstream out(kPage, std::ios::binary | std::ios::trunc);
    out << kv::test::boundaryPage();
    out.flush();
    ASSERT_TRUE(out.good()) << kPage;
}

TEST(BoundaryPage, saysWhatTheLibraryDoes) {
    const std::string now = kv::test::boundaryPage();
    const std::string committed = committedPage();
    EXPECT_TRUE(committed == now) << "docs/playback-boundaries.md is stale, from line "
                                  << firstDifference(committed, now);
}

TEST(BoundaryRow, ofABlockBeyondItsEndIsEvaluatedThereAndStops) {
    const Seen seen = row("Play", Played::block, "beyond");
    EXPECT_THAT(seen.evaluated, ElementsAre("40"));
    EXPECT_EQ(seen.managerFrame, "40");
    EXPECT_EQ(seen.controllerFrame, "43");
    EXPECT_THAT(seen.events, ElementsAre("write"));
    EXPECT_THAT(seen.flags, IsEmpty());
}

TEST(BoundaryRow, ofAClipAtItsLastFrameRunsWhatIsInRangeThenWhatWasSkipped) {
    const Seen seen = row("Play", Played::clip, "last");
    EXPECT_THAT(seen.evaluated, ElementsAre("40"));
    EXPECT_THAT(seen.events, ElementsAre("write", "run C", "run A", "run B", "updateCMFrame"));
    EXPECT_THAT(seen.flags, ElementsAre("playing"));
}

TEST(BoundaryRow, ofAClipBeyondItsEndRunsOnlyWhatWasSkipped) {
    const Seen seen = row("Play", Played::clip, "beyond");
    EXPECT_THAT(seen.evaluated, ElementsAre("40"));
    EXPECT_THAT(seen.events, ElementsAre("write", "run A", "run B", "run C", "updateCMFrame"));
    EXPECT_THAT(seen.flags, IsEmpty());
}

TEST(BoundaryRow, ofAClipInReverseSkipsNothingThatStartsAtTheEndReached) {
    const Seen seen = row("Play in reverse", Played::clip, "beyond");
    EXPECT_THAT(seen.evaluated, ElementsAre("10"));
    EXPECT_EQ(seen.managerFrame, "10");
    EXPECT_EQ(seen.controllerFrame, "7");
    EXPECT_THAT(seen.events, ElementsAre("write", "updateCMFrame"));
}

TEST(BoundaryRow, ofARepeatingBlockInReverseWrapsUpwards) {
    // 7 - floor((7 - 40) / 30) * 30 = 7 + 2 * 30
    const Seen seen = row("Repeat in reverse", Played::block, "beyond");
    EXPECT_THAT(seen.evaluated, ElementsAre("67"));
    EXPECT_EQ(seen.managerFrame, "67");
    EXPECT_THAT(seen.flags, ElementsAre("playing", "reverse", "repeating"));
}

TEST(BoundaryRow, ofARepeatingClipAtItsLastFrameIsItsFirstFrame) {
    const Seen seen = row("Repeat", Played::clip, "last");
    EXPECT_THAT(seen.evaluated, ElementsAre("10"));
    EXPECT_THAT(seen.events, ElementsAre("write", "run A", "updateCMFrame"));
}

TEST(BoundaryRow, ofASequenceBeyondItsEndOnlyNotifies) {
    const Seen seen = row("Play", Played::sequence, "beyond");
    EXPECT_THAT(seen.evaluated, IsEmpty());
    EXPECT_EQ(seen.managerFrame, "40");
    EXPECT_THAT(seen.events, ElementsAre("updateCMFrame"));
    EXPECT_THAT(seen.flags, IsEmpty());
}

TEST(BoundaryRow, ofGlobalPlaybackBeyondTheRangeTellsBothViews) {
    const Seen seen = row("Play", Played::globalAndSelected, "beyond");
    EXPECT_THAT(seen.evaluated, ElementsAre("40", "40 (selected)"));
    EXPECT_THAT(seen.events, ElementsAre("write", "write", "updateGlobal", "updateCEFrame"));
    EXPECT_EQ(seen.managerFrame, "40");
    EXPECT_THAT(seen.flags, IsEmpty());
}

TEST(BoundaryRow, ofAStopLeavesEverythingAlone) {
    for (const Played item : {Played::block, Played::clip, Played::sequence, Played::local,
                              Played::global, Played::globalAndSelected}) {
        EXPECT_EQ(row("Stop", item, "inside"), Seen()) << static_cast<int>(item);
    }
}

TEST(BoundaryRow, ofAPauseGoesOn) {
    const Seen seen = row("Pause", Played::local, "inside");
    EXPECT_THAT(seen.evaluated, ElementsAre("26 (selected)"));
    EXPECT_THAT(seen.flags, ElementsAre("playing", "pausing"));
}

TEST(BoundaryRow, ofBlockedCallsIsSilentUntilTheLastTick) {
    const Seen inside = row("Calls blocked", Played::clip, "inside");
    EXPECT_THAT(inside.events, ElementsAre("write", "run B"));
    EXPECT_THAT(inside.flags, ElementsAre("playing", "blocking"));
    const Seen end = row("Calls blocked", Played::clip, "last");
    EXPECT_THAT(end.events, ElementsAre("write", "updateCMFrame"));
    EXPECT_THAT(end.flags, IsEmpty());
}

TEST(BoundaryRow, ofAFastForwardTriplesTheTimeSincePlay) {
    // One frame's time after the start is three frames; after frame 25 it is 10 + 3 * 16 = 58.
    EXPECT_EQ(row("Fast forward", Played::block, "start").controllerFrame, "13");
    const Seen seen = row("Fast forward", Played::block, "inside");
    EXPECT_EQ(seen.controllerFrame, "58");
    EXPECT_THAT(seen.evaluated, ElementsAre("40"));
    EXPECT_THAT(seen.flags, ElementsAre("fast forward"));
}

TEST(BoundaryRow, ofAFastBackwardEndsAtOnceAtTheEndFrame) {
    const Seen seen = row("Fast backward", Played::block, "start");
    EXPECT_EQ(seen.controllerFrame, "7");
    EXPECT_THAT(seen.evaluated, ElementsAre("40"));
    EXPECT_THAT(seen.flags, ElementsAre("fast backward"));
}

TEST(BoundaryRow, ofTheLocalStartIsEvaluatedOneFrameEarlyFiveTimes) {
    const Seen seen = row("Go to start, play type", Played::local, "inside");
    EXPECT_THAT(seen.evaluated, ElementsAre("9 (selected)"));
    EXPECT_EQ(seen.managerFrame, "10");
    EXPECT_EQ(seen.controllerFrame, "");
    EXPECT_THAT(seen.events, ElementsAre("updateLocal", "updateCEFrame", "write", "write", "write",
                                         "write", "write"));
}

TEST(BoundaryRow, ofTheGlobalEndTakesTheBlocksOwnEnd) {
    const Seen seen = row("Go to end, play type", Played::global, "start");
    EXPECT_THAT(seen.evaluated, ElementsAre("38"));
    EXPECT_EQ(seen.managerFrame, "40");
    EXPECT_THAT(seen.events, ElementsAre("updateGlobal", "updateCEFrame", "write"));
}

TEST(BoundaryRow, ofTheStartOfABlockIsWrittenFiveTimesThenTold) {
    const Seen seen = row("Go to start, item", Played::block, "beyond");
    EXPECT_THAT(seen.evaluated, ElementsAre("10"));
    EXPECT_THAT(seen.events,
                ElementsAre("write", "write", "write", "write", "write", "listenToPlay"));
}
