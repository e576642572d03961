// kvanim convert: stored animation becomes animation nodes.
#include "commands.h"
#include "conversion.h"
#include "numbers.h"
#include "scene.h"
#include "sceneFormat.h"

#include <kvAnimManager.h>

#include <iostream>
#include <memory>

namespace kvanim {
namespace {

struct Options {
    std::string file;
    std::string output;
    double framesPerSecond = kvAnimManager::fps();
};

void print(const Conversion& conversion, const Options& options) {
    std::size_t dropped = 0;
    for (const NodeConversion& node : conversion.nodes) {
        std::cout << node.node << '\n';
        for (const std::string& line : node.converted)
            std::cout << "  converted " << line << '\n';
        for (const std::string& line : node.dropped)
            std::cout << "  dropped " << line << '\n';
        dropped += node.dropped.size();
    }
    std::cout << options.output << ": ";
    if (conversion.nodes.empty()) {
        std::cout << "nothing to convert, " << options.file << " holds no stored animation\n";
        return;
    }
    std::cout << conversion.points << " keys became points at " << brief(options.framesPerSecond)
              << " frames a second, without their tangent types; " << dropped << " dropped\n";
    recommendBinary(std::cout, options.output, conversion.points);
}

} // namespace

void addConvert(CLI::App& program) {
    auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand(
        "convert", "Turn stored blocks and curves into animation nodes, one way.");
    command->footer("Example: kvanim convert walk.osg -o walk-nodes.osg --fps 120");
    command->add_option("scene", options->file, "Scene file")->required();
    command->add_option("-o,--output", options->output, kSceneOutputHelp)->required();
    command
        ->add_option("--fps", options->framesPerSecond,
                     "Frames per second: animation nodes count in seconds")
        ->check(CLI::Range(0.001, 100000.0))
        ->capture_default_str();
    command->callback([options] {
        kvAnimManager::setFps(options->framesPerSecond);
        requireSceneOutput(options->output);
        const Scene scene = Scene::read(options->file);
        const Conversion conversion = convertScene(scene);
        scene.write(options->output);
        print(conversion, *options);
    });
}

} // namespace kvanim
