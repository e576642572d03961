// kvanim eval: the values of curves over frames as comma-separated text.
#include "commands.h"
#include "errors.h"
#include "numbers.h"
#include "outputFile.h"
#include "scene.h"
#include "selection.h"

#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>

#include <array>
#include <charconv>
#include <cmath>
#include <memory>

namespace kvanim {
namespace {

constexpr double kMostRows = 1e7;

struct Options {
    std::string file;
    std::string frames;
    std::string output;
    Selection selection;
};

struct FrameSteps {
    double first = 0.0;
    double last = 0.0;
    double step = 1.0;
    long long count = 0;
};

[[noreturn]] void failFrames(const std::string& text, const std::string& why) {
    throw CLI::ValidationError("--frames", "\"" + text + "\": " + why);
}

/// FIRST:LAST:STEP or FIRST:LAST.
FrameSteps parseFrames(const std::string& text) {
    std::array<double, 3> numbers{0.0, 0.0, 1.0};
    std::size_t count = 0;
    const char* at = text.data();
    const char* end = at + text.size();
    for (;;) {
        if (count == numbers.size()) failFrames(text, "expected FIRST:LAST:STEP");
        const auto [next, error] = std::from_chars(at, end, numbers[count]);
        if (error != std::errc() || !std::isfinite(numbers[count]))
            failFrames(text, "expected FIRST:LAST:STEP");
        ++count;
        if (next == end) break;
        if (*next != ':') failFrames(text, "expected FIRST:LAST:STEP");
        at = next + 1;
    }
    if (count < 2) failFrames(text, "expected FIRST:LAST:STEP");
    FrameSteps steps{numbers[0], numbers[1], numbers[2], 0};
    if (steps.step <= 0.0) failFrames(text, "the step must be greater than 0");
    if (steps.last < steps.first) failFrames(text, "the last frame lies before the first");
    const double rows = std::floor((steps.last - steps.first) / steps.step * (1.0 + 1e-12)) + 1.0;
    if (rows > kMostRows) failFrames(text, "more than ten million rows");
    steps.count = static_cast<long long>(rows);
    return steps;
}

std::string quoted(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string result = "\"";
    for (const char c : text)
        result += c == '"' ? std::string("\"\"") : std::string(1, c);
    return result + '"';
}

void run(const Options& options) {
    const FrameSteps steps = parseFrames(options.frames);
    if (!options.output.empty() && options.output != "-") requireWritable(options.output);
    const Scene scene = Scene::load(options.file);
    const std::vector<SelectedCurve> curves = select(scene, options.selection);
    std::string text = "frame";
    for (const SelectedCurve& one : curves)
        text += ',' + quoted(one.title());
    text += '\n';
    for (long long i = 0; i < steps.count; ++i) {
        const float frame = static_cast<float>(steps.first + static_cast<double>(i) * steps.step);
        text += shortest(frame);
        for (const SelectedCurve& one : curves) {
            const float value = kvAnimationManager2::computeCurveValue(one.curve, frame);
            text += ',';
            if (value != -1.0e23F) text += shortest(value); // no value: an empty cell
        }
        text += '\n';
    }
    writeText(options.output, text);
}

} // namespace

void addEval(CLI::App& program) {
    auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand(
        "eval",
        "Evaluate curves: one row a frame, one column a curve, empty where there is no value.");
    command->footer("Example: kvanim eval walk.osg --frames 0:100:5 --node Hips -o hips.csv");
    command->add_option("scene", options->file, "Scene file")->required();
    command->add_option("--frames", options->frames, "FIRST:LAST:STEP, the step 1 if left out")
        ->required();
    options->selection.addOptions(*command);
    command->add_option("-o,--output", options->output,
                        "File to write (standard output by default)");
    command->callback([options] { run(*options); });
}

} // namespace kvanim
