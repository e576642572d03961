// kvanim convert: stored animation becomes animation nodes.
#include "commands.h"
#include "conversion.h"
#include "outputFile.h"
#include "scene.h"

#include <kvAnimManager.h>

#include <iostream>
#include <memory>

namespace kvanim {
namespace {

struct Options {
    std::string file;
    std::string output;
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
    std::cout << conversion.points << " keys became points at " << kvAnimManager::fps()
              << " frames a second, without their tangent types; " << dropped << " dropped\n";
}

} // namespace

void addConvert(CLI::App& program) {
    auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand(
        "convert", "Turn stored blocks and curves into animation nodes, one way.");
    command->footer("Example: kvanim convert walk.osg -o walk-nodes.osg");
    command->add_option("scene", options->file, "Scene file")->required();
    command->add_option("-o,--output", options->output, "Scene file to write")->required();
    command->callback([options] {
        requireWritable(options->output);
        const Scene scene = Scene::read(options->file);
        const Conversion conversion = convertScene(scene);
        scene.write(options->output);
        print(conversion, *options);
    });
}

} // namespace kvanim
