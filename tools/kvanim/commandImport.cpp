// kvanim import: a model with an animation becomes a scene file.
#include "commands.h"
#include "dump.h"
#include "errors.h"
#include "importModel.h"
#include "numbers.h"
#include "outputFile.h"
#include "sceneFormat.h"

#include <iostream>
#include <memory>

namespace kvanim {
namespace {

struct Options {
    ImportOptions import;
    std::string output;
    std::string dump;
};

void print(const ImportReport& report, const Options& options) {
    std::cout << options.output << ": " << report.nodes << " nodes, " << report.animatedNodes
              << " animated, " << report.meshes << " meshes, " << report.curves << " curves, "
              << report.keys << " keys";
    if (!report.animation.empty()) std::cout << ", animation \"" << report.animation << '"';
    std::cout << ", " << brief(report.framesPerSecond) << " frames a second\n";
    for (const std::string& what : report.dropped)
        std::cout << "dropped: " << what << '\n';
    std::cout << "largest deviation from the source at its keys:\n";
    for (const auto& [channel, distance] : report.deviation)
        std::cout << "  " << channel << " " << brief(distance) << '\n';
    std::cout << "play it: kvanim play " << options.output
              << (report.clip.empty() ? std::string() : " --clip \"" + report.clip + "\"")
              << " --fps " << brief(report.framesPerSecond) << '\n';
    recommendBinary(std::cout, options.output, report.keys);
}

void run(const Options& options) {
    requireSceneOutput(options.output);
    ImportReport report;
    Scene scene = importModel(options.import, report);
    if (!options.dump.empty()) writeText(options.dump, dumpOf(scene, defaultDumpFrames(scene)));
    scene.save(options.output);
    print(report, options);
}

} // namespace

void addImport(CLI::App& program) {
    auto options = std::make_shared<Options>();
    CLI::App* command =
        program.add_subcommand("import", "Make a scene file from a model or motion capture.");
    command->footer("Example: kvanim import walk.bvh -o walk.osg");
    command
        ->add_option("model", options->import.model, "Model file, of any format that Assimp reads")
        ->required();
    command->add_option("-o,--output", options->output, kSceneOutputHelp)->required();
    command->add_option("--animation", options->import.animation,
                        "Name of the animation to take (the first by default)");
    command
        ->add_option("--fps", options->import.framesPerSecond,
                     "Frames per second (the source's own rate by default)")
        ->check(CLI::PositiveNumber);
    command->add_flag("--clip", options->import.clip,
                      "Put the blocks on one clip, one track a block, instead of on their nodes");
    command->add_option("--dump", options->dump,
                        "Also write every record and matrix as text, as kvanim dump does");
    command->callback([options] { run(*options); });
}

} // namespace kvanim
