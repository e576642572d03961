// What playback does at the edges of a range, tried out row by row and printed as a page.

#include "playback/boundaryTable.h"

#include <cstddef>
#include <sstream>
#include <utility>

namespace kv::test {

namespace {

using Controller = kvAnimationController2;

const std::vector<Played> kAll = {Played::block, Played::clip,   Played::sequence,
                                  Played::local, Played::global, Played::globalAndSelected};

const char* nameOf(Played item) {
    switch (item) {
    case Played::block:
        return "block";
    case Played::clip:
        return "clip";
    case Played::sequence:
        return "sequence";
    case Played::local:
        return "local";
    case Played::global:
        return "global";
    case Played::globalAndSelected:
        return "global and selected";
    }
    return "";
}

Controller::PlayType typeOf(Played item) {
    switch (item) {
    case Played::block:
        return Controller::PT_BLOCK;
    case Played::clip:
        return Controller::PT_CLIP;
    case Played::sequence:
        return Controller::PT_SEQUENCE;
    case Played::local:
        return Controller::PT_LOCAL;
    default:
        return Controller::PT_GLOBAL;
    }
}

// Plays up to the position; from there on everything is recorded.
void playTo(BoundaryStage& stage, const Position& at) {
    stage.play(false);
    stage.tickAtFrame(at.forwards);
    stage.record();
}

// The same, then does something and ticks once more, one frame's time later.
template <class Action>
auto thenTick(Action action) {
    return [action](BoundaryStage& stage, const Position& at) {
        playTo(stage, at);
        action();
        stage.tickAtFrame(at.forwards + 1.0F);
    };
}

Operation playing(std::string title, std::string procedure, bool reverse, bool repeating) {
    return {std::move(title), std::move(procedure), kAll,
            [=](BoundaryStage& stage, const Position& at) {
                if (repeating) stage.repeat();
                stage.play(reverse);
                stage.record();
                stage.tickAtFrame(reverse ? at.backwards : at.forwards);
            }};
}

// A jump by play type.
Operation typeJump(std::string title, void (*jump)(Controller::PlayType), std::string procedure,
                   Played item) {
    return {std::move(title),
            std::move(procedure),
            {item},
            [=](BoundaryStage& stage, const Position& at) {
                playTo(stage, at);
                jump(typeOf(item));
            }};
}

// A jump of the block or clip itself, by the overload that takes it.
Operation itemJump(std::string title, void (*ofBlock)(kvAnimationBlock*),
                   void (*ofClip)(kvAnimationClip*), std::string procedure) {
    return {std::move(title),
            std::move(procedure),
            {Played::block, Played::clip},
            [=](BoundaryStage& stage, const Position& at) {
                playTo(stage, at);
                if (stage.clip() != nullptr)
                    ofClip(stage.clip());
                else
                    ofBlock(stage.block());
            }};
}

std::vector<Operation> makeOperations() {
    std::vector<Operation> all;
    all.push_back(playing("Play", "`play`, then one tick at the frame.", false, false));
    all.push_back(playing("Play in reverse",
                          "`play` in reverse, from frame 40 down to 10, then "
                          "one tick at the frame.",
                          true, false));
    all.push_back(playing("Repeat",
                          "The repeat flag of the block, clip or sequence is set and "
                          "`repeat(true)` is called, then `play` and one tick at the frame.",
                          false, true));
    all.push_back(playing("Repeat in reverse", "The same, in reverse.", true, true));
    all.push_back({"Stop",
                   "`play`, a tick at the frame; then, recorded, `stop()` and a tick one "
                   "frame later.",
                   kAll, thenTick([] { Controller::stop(); })});
    all.push_back({"Pause",
                   "`play`, a tick at the frame; then, recorded, `pause()` and a tick one "
                   "frame later. The tick does not look at the pause flag.",
                   kAll, thenTick([] { Controller::pause(); })});
    all.push_back({"Pause and resume",
                   "The same, with `play(node, false)` between `pause()` and "
                   "the tick.",
                   {Played::local},
                   thenTick([] {
                       Controller::pause();
                       Controller::play(osg::NodePtr(osg::NullFC), false);
                   })});
    all.push_back({"Calls blocked",
                   "`play`, a tick at the frame; then, recorded, `blockCalls(true)` and a tick one "
                   "frame later.",
                   kAll, thenTick([] { Controller::blockCalls(true); })});
    all.push_back({"Fast forward",
                   "`play`, a tick at the frame; then, recorded, `fastForward()` "
                   "and a tick one (slow) frame later. All the time since `play` counts three "
                   "times.",
                   kAll, thenTick([] { Controller::fastForward(); })});
    all.push_back({"Fast backward",
                   "The same with `fastBackward()`. Frames now run down from the "
                   "start frame, and the end frame stays where it is.",
                   kAll, thenTick([] { Controller::fastBackward(); })});
    all.push_back(
        itemJump("Reset", &Controller::reset, &Controller::reset,
                 "`play`, a tick at the frame; then, recorded, `reset` with the item. A block that "
                 "is flagged as a camera's would be written five times."));
    all.push_back(itemJump("Go to start, item", &Controller::gotoStart, &Controller::gotoStart,
                           "`play`, a tick at the frame; then, recorded, `gotoStart` with the "
                           "item."));
    all.push_back(itemJump("Go to end, item", &Controller::gotoEnd, &Controller::gotoEnd,
                           "The same with `gotoEnd`."));
    return all;
}

void appendTypeJumps(std::vector<Operation>& all, const std::string& title,
                     void (*jump)(Controller::PlayType), const std::string& procedure) {
    for (const Played item : kAll)
        all.push_back(typeJump(title, jump, procedure, item));
}

std::string joined(const std::vector<std::string>& parts, const char* none) {
    if (parts.empty()) return none;
    std::string result;
    for (std::size_t i = 0; i < parts.size();) {
        std::size_t next = i + 1;
        while (next < parts.size() && parts[next] == parts[i])
            ++next;
        if (i > 0) result += ", ";
        result += parts[i];
        if (next - i > 1) result += " × " + std::to_string(next - i);
        i = next;
    }
    return result;
}

std::string orDash(const std::string& frame) {
    return frame.empty() ? "–" : frame;
}

bool isReverse(const Operation& operation) {
    return operation.title.find("in reverse") != std::string::npos;
}

// The rows of one item; neighbouring positions with the same outcome share a row.
void printRows(std::ostream& out, const Operation& operation, Played item) {
    std::vector<std::pair<std::string, Seen>> rows;
    for (const Position& position : positions()) {
        const Seen seen = outcome(operation, item, position);
        std::ostringstream label;
        label << position.name << ' '
              << (isReverse(operation) ? position.backwards : position.forwards);
        if (!rows.empty() && rows.back().second == seen)
            rows.back().first += ", " + label.str();
        else
            rows.emplace_back(label.str(), seen);
    }
    for (const auto& [label, seen] : rows) {
        out << "| " << nameOf(item) << " | " << label << " | " << joined(seen.evaluated, "–")
            << " | " << orDash(seen.managerFrame) << " | " << orDash(seen.controllerFrame) << " | "
            << joined(seen.events, "nothing") << " | " << joined(seen.flags, "none") << " |\n";
    }
}

void printHead(std::ostream& out) {
    out << R"(# Playback at the edges

Generated by the tests of playback, out of what the library does; edit nothing here by hand. A test
compares this page with the library and fails when they differ. To write it anew, run
`KV_WRITE_DOCS=1 build/debug/bin/kv_playback_tests --gtest_filter='BoundaryPage.*'` and look at what changed.

Every row is tried out on a transport in its start state, at 25 frames a second:

- The *block*, the *clip* and the *sequence* lie on frames 10 to 40, and so does the range of *local*
  and *global* playback.
- The clip has the script sequences A (10 to 15), B (20 to 30) and C (38 to 45).
- *Local* plays one selected curve. *Global* plays one block of the scene, on frames 12 to 38;
  *global and selected* plays that curve as well.
- All curves reach from frame 0 to 100, past the range of their block, and are worth their frame. What
  is written therefore tells which frame was evaluated, where a curve that ends with its block would
  show its last value.

The columns:

- *playback at*: where the frame of the tick lies on the range. Positions with one outcome share a row.
- *evaluated*: the frame at which the curves were evaluated and written; – when nothing was.
- *manager*, *controller*: what `kvAnimationManager2::getActualFrame` and
  `kvAnimationController2::getActualFrame` were set to; – when they were left alone.
- *in order*: every write into the scene, every sequence that the host was asked to run, every
  notification (`kvAnimationEvent`).
- *flags left*: the flags of the transport that are true afterwards.
)";
}

} // namespace

const std::vector<Position>& positions() {
    static const std::vector<Position> all = {{"start", 10.0F, 40.0F},
                                              {"inside", 25.0F, 25.0F},
                                              {"last", 40.0F, 10.0F},
                                              {"beyond", 43.0F, 7.0F}};
    return all;
}

const std::vector<Operation>& operations() {
    static const std::vector<Operation> all = [] {
        std::vector<Operation> made = makeOperations();
        appendTypeJumps(made, "Go to start, play type", &Controller::gotoStart,
                        "`play`, a tick at the frame; then, recorded, `gotoStart` with the play "
                        "type. Global playback keeps the records of the ticks before.");
        appendTypeJumps(made, "Go to end, play type", &Controller::gotoEnd,
                        "The same with `gotoEnd`.");
        return made;
    }();
    return all;
}

Seen outcome(const Operation& operation, Played item, const Position& position) {
    BoundaryStage stage(item);
    operation.run(stage, position);
    return stage.seen();
}

std::string boundaryPage() {
    std::ostringstream out;
    printHead(out);
    std::string title;
    for (const Operation& operation : operations()) {
        if (operation.title != title) {
            title = operation.title;
            out << "\n## " << title << "\n\n"
                << operation.procedure << "\n\n"
                << "| what | playback at | evaluated | manager | controller | in order | flags "
                   "left "
                   "|\n|---|---|---|---|---|---|---|\n";
        }
        for (const Played item : operation.items)
            printRows(out, operation, item);
    }
    return out.str();
}

} // namespace kv::test
