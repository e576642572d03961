// The page docs/playback-boundaries.md: what playback does at the start, inside, at the end and
// beyond it. The table is made by playing, so it says what happens, not what someone remembers.
//
// After a deliberate change, run this program once with KV_UPDATE_PAGES=1 in the environment.

#include "playback/playbackFixture.h"
#include "playback/playedValues.h"
#include "support/access/kvAnimationController2.h"
#include "support/recordingListener.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Controller = kvAnimationController2;
using Access = kvTestAccess<kvAnimationController2>;

const char* const kPage = KV_TEST_DATA "/../../docs/playback-boundaries.md";

std::string joined(const std::vector<std::string>& parts) {
    std::string all;
    for (const std::string& part : parts)
        all += (all.empty() ? "" : ", ") + part;
    return all.empty() ? "none" : all;
}

class BoundaryTable : public kv::test::PlaybackFixture {
  protected:
    // Ranges of 10 to 40 everywhere, one value of 1 a frame, sequences inside and at the end.
    void build() {
        block = makeBlock(node, 10.0F, 40.0F);
        clip = makeClip();
        auto* const clipBlock = new kvAnimationBlock(node, "b");
        clipBlock->addCurve(makeRamp(node, 10.0F, 40.0F));
        clip->addBlock(clipBlock);
        clip->addSequence(makeSequence("`a` 12..14", 12.0F, 14.0F));
        clip->addSequence(makeSequence("`b` 40..45", 40.0F, 45.0F));
        sequence.reset(makeSequence("`s`", 10.0F, 40.0F));
        curve.reset(makeRamp(node, 10.0F, 40.0F));
    }

    void startAnew(bool repeats) {
        setTime(0.0);
        Controller::stop();
        Access::pausing() = Access::ffw() = Access::fbw() = Access::repeating() = false;
        Access::values().replace();
        kvAnimationManager2::setActualFrame(0.0F);
        Access::oldFrame() = -1.0F;
        Access::actualFrame() = 0.0F;
        Access::connectedGlobalSlider() = false;
        Controller::setFPS(25.0F);
        Controller::setMinFrame(10.0F);
        Controller::setMaxFrame(40.0F);
        block->setRepeat(repeats);
        clip->setRepeat(repeats);
        kvAnimationManager2::_the.setSelectedCurves({curve.get()});
        kvAnimationManager2::_animationBlocks = {block};
        executed().clear();
        log.clear();
    }

    using Play = std::function<void(bool reverse)>;
    struct Kind {
        const char* name;
        bool canRepeat;
        Play play;
    };

    std::vector<Kind> kinds() {
        const auto from = [](bool reverse) {
            kvAnimationManager2::setActualFrame(reverse ? 40.0F : 10.0F);
        };
        return {
            {"block", true, [this](bool r) { Controller::play(block, r, false); }},
            {"clip", true, [this](bool r) { Controller::play(clip, r, false); }},
            {"sequence", false, [this](bool r) { Controller::play(sequence.get(), r); }},
            {"local", false,
             [=](bool r) {
                 from(r);
                 Controller::play(r);
             }},
            {"global", false,
             [=](bool r) {
                 from(r);
                 Controller::playGlobal(r, false, false);
             }},
        };
    }

    // A value that no curve has, to see whether anything was written.
    static constexpr float kUntouched = -999.0F;

    // One row: what is left after `act`.
    void row(const std::string& what, const std::string& how, const std::string& when,
             const std::function<void()>& act) {
        executed().clear();
        log.clear();
        osg::ComponentTransformPtr::dcast(node->getCore())
            ->setTranslation(osg::Vec3f(kUntouched, 0.0F, 0.0F));
        act();
        std::ostringstream value;
        value << shown(node);
        std::vector<std::string> flags;
        if (Access::playing()) flags.emplace_back("playing");
        if (Access::reverse()) flags.emplace_back("reverse");
        if (Access::repeating()) flags.emplace_back("repeating");
        if (Access::pausing()) flags.emplace_back("pausing");
        if (Access::blocking()) flags.emplace_back("blocking");
        table << "| " << what << " | " << how << " | " << when << " | "
              << Controller::getActualFrame() << " | " << kvAnimationManager2::getActualFrame()
              << " | " << (shown(node) == kUntouched ? "not written" : value.str()) << " | "
              << joined(flags) << " | " << joined(log) << " | " << joined(executed()) << " |\n";
    }

    void ticks() {
        const std::pair<const char*, double> moments[] = {
            {"start", 0.0}, {"inside", 5.0}, {"last", 30.0}, {"beyond", 31.0}};
        for (const Kind& kind : kinds()) {
            for (const bool repeats : {false, true}) {
                if (repeats && !kind.canRepeat) continue;
                for (const bool reverse : {false, true}) {
                    for (const auto& [when, frames] : moments) {
                        startAnew(repeats);
                        kind.play(reverse);
                        row(kind.name,
                            std::string(reverse ? "reverse" : "forwards") +
                                (repeats ? ", repeating" : ""),
                            when, [f = frames] { tickAt(f / 25.0); });
                    }
                }
            }
        }
    }

    void operations() {
        for (const Kind& kind : kinds()) {
            const auto after = [&](const char* how, const std::function<void()>& operation) {
                startAnew(false);
                kind.play(false);
                operation();
                row(kind.name, how, "inside", [] { tickAt(5.0 / 25.0); });
            };
            after("stopped", &Controller::stop);
            after("paused", &Controller::pause);
            after("calls blocked", [] { Controller::blockCalls(true); });
            after("fast forward", &Controller::fastForward);
            after("fast backward", &Controller::fastBackward);
        }
    }

    void jumps() {
        const auto jump = [&](const char* what, const char* how, const char* when,
                              const std::function<void()>& act) {
            startAnew(false);
            Access::playingBlock() = block;
            Access::playingClip() = clip;
            kvAnimationManager2::setActualFrame(20.0F);
            row(what, how, when, act);
        };
        jump("block", "`gotoStart(block)`", "jump", [this] { Controller::gotoStart(block); });
        jump("block", "`gotoEnd(block)`", "jump", [this] { Controller::gotoEnd(block); });
        jump("block", "`reset(block)`", "jump", [this] { Controller::reset(block); });
        jump("clip", "`gotoStart(clip)`", "jump", [this] { Controller::gotoStart(clip); });
        jump("clip", "`gotoEnd(clip)`", "jump", [this] { Controller::gotoEnd(clip); });
        jump("clip", "`reset(clip)`", "jump", [this] { Controller::reset(clip); });
        const std::pair<const char*, Controller::PlayType> types[] = {
            {"block", Controller::PT_BLOCK},
            {"clip", Controller::PT_CLIP},
            {"sequence", Controller::PT_SEQUENCE},
            {"local", Controller::PT_LOCAL},
            {"global", Controller::PT_GLOBAL}};
        for (const auto& [name, type] : types) {
            jump(name, "`gotoStart(type)`", "jump", [t = type] { Controller::gotoStart(t); });
            jump(name, "`gotoEnd(type)`", "jump", [t = type] { Controller::gotoEnd(t); });
        }
    }

    std::string page() {
        build();
        table.str("");
        table
            << "# Playback at the boundaries\n\n"
               "Made by a test that plays; do not edit. Everything here covers the frames 10 to 40 "
               "at "
               "25 frames a\nsecond, and the value of every curve is the frame, so that the value "
               "shows which frame was evaluated.\nPlayback starts at time 0; each row is one tick "
               "at "
               "the time of frame 0 (start), 5 (inside), 30 (last)\nor 31 (beyond) of the run, or "
               "one jump.\n\n"
               "| what | how | when | controller's frame | manager's frame | value in the scene | "
               "flags that are set | notifications in order | sequences run in order |\n"
               "|---|---|---|---|---|---|---|---|---|\n";
        ticks();
        operations();
        jumps();
        return table.str();
    }

    kvAnimationBlock* block = nullptr;
    kvAnimationClip* clip = nullptr;
    std::unique_ptr<kvAnimationSequence2> sequence;
    std::unique_ptr<kvAnimationCurve> curve;
    kv::test::NotificationLog log;
    kv::test::RecordingListener listener{log};
    std::ostringstream table;
};

std::string contentsOf(const char* path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST_F(BoundaryTable, isMadeByPlaying) {
    const std::string text = page();
    EXPECT_NE(text.find("| block | forwards | beyond | 41 | 40 | 40 |"), std::string::npos) << text;
    if (std::getenv("KV_UPDATE_PAGES") != nullptr) {
        std::ofstream(kPage, std::ios::binary) << text;
    }
}

TEST_F(BoundaryTable, pageInTheDocumentationIsUpToDate) {
    EXPECT_EQ(contentsOf(kPage), page())
        << "run once with KV_UPDATE_PAGES=1 and look at the change";
}

} // namespace
