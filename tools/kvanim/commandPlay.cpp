// kvanim play: real-time playback through the library's own transport and tick.
#include "commands.h"
#include "errors.h"
#include "numbers.h"
#include "scene.h"
#include "selection.h"

#include <kvAnimationBlock.h>
#include <kvAnimationController2.h>
#include <kvAnimationManager2.h>

#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <memory>
#include <thread>

namespace kvanim {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

struct Options {
    std::string file;
    std::string block;
    std::string clip;
    double framesPerSecond = 25.0;
    double speed = 1.0;
    bool reverse = false;
    double seconds = 0.0;
};

volatile std::sig_atomic_t interrupted = 0;

/// What the user sees while and after playing.
class Progress {
  public:
    Progress() : _terminal(isatty(STDOUT_FILENO) != 0) {}

    void tick(double cost, bool late) {
        ++_ticks;
        _late += late ? 1 : 0;
        _cost += cost;
        _worst = cost > _worst ? cost : _worst;
    }

    /// Four times a second on a terminal, in place; otherwise a line a second.
    void show(float frame, double seconds) {
        const double every = _terminal ? 0.25 : 1.0;
        if (_shown >= 0.0 && seconds - _shown < every) return;
        _shown = seconds;
        print(frame, seconds);
        std::fputs(_terminal ? "\r" : "\n", stdout);
        std::fflush(stdout);
    }

    void finish(float frame, double seconds) {
        print(frame, seconds);
        std::printf(
            "\n%ld ticks, mean %.1f us, longest %.1f us, %ld ended after the next was due\n",
            _ticks, mean(), _worst * 1e6, _late);
    }

  private:
    double mean() const { return _ticks > 0 ? _cost / static_cast<double>(_ticks) * 1e6 : 0.0; }

    void print(float frame, double seconds) const {
        std::printf("frame %9.2f  %7.2f s  tick %7.1f us  late %ld", static_cast<double>(frame),
                    seconds, mean(), _late);
    }

    bool _terminal;
    long _ticks = 0;
    long _late = 0;
    double _cost = 0.0;
    double _worst = 0.0;
    double _shown = -1.0;
};

void start(const Scene& scene, const Options& options) {
    using Controller = kvAnimationController2;
    const FrameRange range = rangeOf(scene);
    Controller::setAnimationManager(&kvAnimationManager2::_the);
    Controller::setFPS(static_cast<float>(options.framesPerSecond * options.speed));
    Controller::setMinFrame(range.start);
    Controller::setMaxFrame(range.end);
    if (!options.block.empty()) {
        Controller::play(&findBlock(scene, options.block), options.reverse, false);
    } else if (!options.clip.empty()) {
        Controller::play(&findClip(scene, options.clip), options.reverse, false);
    } else {
        if (scene.blocks().empty())
            throw InputError(scene.file(), scene.clips().empty()
                                               ? "holds no animation"
                                               : "holds clips only; name one with --clip");
        kvAnimationManager2::setActualFrame(options.reverse ? range.end : range.start);
        Controller::playGlobal(options.reverse, false, false);
    }
}

/// Playback runs on the clock; it is over when a tick no longer moves the frame, which only happens
/// once the end of a range that does not repeat has been shown.
void play(const Options& options) {
    const Seconds period(1.0 / options.framesPerSecond);
    const Clock::time_point begin = Clock::now();
    Progress progress;
    Clock::time_point due = begin;
    float before = 0.0F;
    double elapsed = 0.0;
    for (bool first = true; interrupted == 0; first = false) {
        const Clock::time_point tickStart = Clock::now();
        kvAnimationController2::animationLoop();
        const Clock::time_point tickEnd = Clock::now();
        const float frame = kvAnimationController2::getActualFrame();
        elapsed = Seconds(tickEnd - begin).count();
        if (!first && frame == before) break;
        before = frame;
        due += std::chrono::duration_cast<Clock::duration>(period);
        progress.tick(Seconds(tickEnd - tickStart).count(), tickEnd > due);
        progress.show(kvAnimationManager2::getActualFrame(), elapsed);
        if (options.seconds > 0.0 && elapsed >= options.seconds) break;
        while (due < tickEnd)
            due += std::chrono::duration_cast<Clock::duration>(period);
        std::this_thread::sleep_until(due);
    }
    kvAnimationController2::stop();
    progress.finish(kvAnimationManager2::getActualFrame(), elapsed);
}

} // namespace

void addPlay(CLI::App& program) {
    auto options = std::make_shared<Options>();
    CLI::App* command =
        program.add_subcommand("play", "Play in real time and report the cost of a tick.");
    command->footer(
        "Example: kvanim play walk.osg --fps 120 --seconds 3\n"
        "Plays all blocks on nodes unless a block or a clip is named. A repeating block or "
        "clip plays until --seconds are over or the program is interrupted.");
    command->add_option("scene", options->file, "Scene file")->required();
    auto* block =
        command->add_option("--block", options->block, "Play only the block with this name");
    command->add_option("--clip", options->clip, "Play the clip with this name")->excludes(block);
    command->add_option("--fps", options->framesPerSecond, "Frames and ticks per second")
        ->check(CLI::Range(0.001, 100000.0))
        ->capture_default_str();
    command->add_option("--speed", options->speed, "Frames pass this many times as fast")
        ->check(CLI::Range(0.001, 1000.0))
        ->capture_default_str();
    command->add_flag("--reverse", options->reverse, "Play backwards");
    command->add_option("--seconds", options->seconds, "Stop after this many seconds")
        ->check(CLI::PositiveNumber);
    command->callback([options] {
        const Scene scene = Scene::load(options->file);
        start(scene, *options);
        std::signal(SIGINT, [](int) { interrupted = 1; });
        play(*options);
    });
}

} // namespace kvanim
