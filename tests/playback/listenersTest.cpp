// The listener hub: who hears what, in which order, and who hears nothing.

#include <kvAnimationEvent.h>

#include <kvMessage.h>

#include "support/recordingListener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Log = kv::test::NotificationLog;

using Recorder = kv::test::RecordingListener;

// Every broadcast with the notification that it sends.
std::vector<std::pair<std::string, std::function<void()>>> broadcasts() {
    static kvMessage message;
    using Event = kvAnimationEvent;
    return {
        {"listenToPlay", &Event::callAllPlayListeners},
        {"listenToTimeLine", &Event::callAllTimeLineListeners},
        {"updateCMFrame", &Event::updateClipMakerFrame},
        {"updateCEFrame", &Event::updateCurveEditorFrame},
        {"updateGlobal", &Event::updateGlobalTimeLine},
        {"updateLocal", &Event::updateLocalTimeLine},
        {"updateBlockSize", [] { Event::callBlockSizeUpdate(message); }},
        {"updateClipSize", [] { Event::callClipSizeUpdate(message); }},
        {"refreshClipMaker", &Event::callClipMakerRefresh},
        {"refreshCurveEditor", &Event::callCurveEditorRefresh},
        {"refreshAAV", &Event::callAAVRefresh},
        {"refreshCAV", &Event::callCAVRefresh},
        {"refreshTimeLine", &Event::callTimeLineRefresh},
        {"renameBlock", [] { Event::callRenameBlock(nullptr); }},
        {"renameClip", [] { Event::callRenameClip(nullptr); }},
    };
}

// Standard output for as long as the object lives.
class CapturedOutput {
  public:
    CapturedOutput() : _before(std::cout.rdbuf(_text.rdbuf())) {}
    ~CapturedOutput() { std::cout.rdbuf(_before); }
    std::string text() const { return _text.str(); }

  private:
    std::ostringstream _text;
    std::streambuf* _before;
};

TEST(Listeners, everyBroadcastCallsItsOwnNotificationInOrderOfRegistration) {
    const CapturedOutput output;
    for (const auto& [notification, broadcast] : broadcasts()) {
        Log log;
        const Recorder a("A", log);
        const Recorder b("B", log);
        broadcast();
        EXPECT_THAT(log, ElementsAre("A." + notification, "B." + notification));
    }
}

TEST(Listeners, broadcastsWithoutListenersDoNothing) {
    const CapturedOutput output;
    for (const auto& [notification, broadcast] : broadcasts())
        broadcast();
    EXPECT_EQ(output.text(), "calling play listeners\n");
}

TEST(Listeners, callingPlayListenersPrintsItsLineBeforeAnyoneIsCalled) {
    class Asker : public kvAnimationEvent {
      public:
        explicit Asker(const CapturedOutput& output) : _output(output) {}
        void listenToPlay() override { seen = _output.text(); }
        std::string seen;

      private:
        const CapturedOutput& _output;
    };
    const CapturedOutput output;
    const Asker asker(output);
    kvAnimationEvent::callAllPlayListeners();
    EXPECT_EQ(asker.seen, "calling play listeners\n");
}

TEST(Listeners, plainListenersIgnoreEverything) {
    const CapturedOutput output;
    const kvAnimationEvent listener;
    for (const auto& [notification, broadcast] : broadcasts())
        broadcast();
}

TEST(Listeners, destroyedListenersHearNothing) {
    Log log;
    auto a = std::make_unique<Recorder>("A", log);
    const Recorder b("B", log);
    a.reset();
    kvAnimationEvent::updateGlobalTimeLine();
    EXPECT_THAT(log, ElementsAre("B.updateGlobal"));
}

TEST(Listeners, copiesHearNothingAndTheOriginalStays) {
    Log log;
    const Recorder original("A", log);
    {
        const Recorder copy(original);
        kvAnimationEvent::updateLocalTimeLine();
        EXPECT_THAT(log, ElementsAre("A.updateLocal"));
    }
    kvAnimationEvent::updateLocalTimeLine();
    EXPECT_EQ(log.size(), 2U) << "destroying a copy must not unregister its original";
}

TEST(Listeners, assigningChangesNothingAndReturnsTheObject) {
    kvAnimationEvent a;
    const kvAnimationEvent b;
    EXPECT_EQ(&(a = b), &a);

    Log log;
    const Recorder r("R", log);
    {
        kvAnimationEvent copy(b);
        copy = a; // does not register it either
    }
    kvAnimationEvent::callTimeLineRefresh();
    EXPECT_THAT(log, ElementsAre("R.refreshTimeLine"));
}

TEST(Listeners, renamingNullIsHarmless) {
    Log log;
    const Recorder a("A", log);
    kvAnimationEvent::callRenameBlock(nullptr);
    kvAnimationEvent::callRenameClip(nullptr);
    EXPECT_THAT(log, ElementsAre("A.renameBlock", "A.renameClip"));
}

TEST(Listeners, leavingFromTheMiddleKeepsTheOrderOfTheOthers) {
    Log log;
    const Recorder a("A", log);
    auto b = std::make_unique<Recorder>("B", log);
    const Recorder c("C", log);
    b.reset();
    kvAnimationEvent::callAAVRefresh();
    EXPECT_THAT(log, ElementsAre("A.refreshAAV", "C.refreshAAV"));
}

} // namespace
