// kvanim plot: pictures of curves and clips.
#include "canvas.h"
#include "clipPlot.h"
#include "commands.h"
#include "curvePlot.h"
#include "errors.h"
#include "scene.h"
#include "selection.h"

#include <iostream>
#include <memory>

namespace kvanim {
namespace {

struct Options {
    std::string file;
    std::string output;
    std::string clip;
    Selection selection;
};

void run(const Options& options) {
    requirePicture(options.output);
    const Scene scene = Scene::load(options.file);
    if (!options.clip.empty()) {
        plotClip(options.output, findClip(scene, options.clip));
        std::cout << options.output << ": clip \"" << options.clip << "\"\n";
        return;
    }
    const std::vector<SelectedCurve> curves = select(scene, options.selection);
    if (curves.empty()) throw InputError(options.file, "holds no curve that is asked for");
    const std::string& node = options.selection.node;
    plotCurves(options.output, node.empty() ? options.file : node, curves);
    std::cout << options.output << ": " << curves.size() << " curves\n";
}

} // namespace

void addPlot(CLI::App& program) {
    auto options = std::make_shared<Options>();
    CLI::App* command =
        program.add_subcommand("plot", "Draw curves or a clip into an SVG or PNG file.");
    command->footer("Example: kvanim plot walk.osg -o hips.svg --node Hips --attribute translateY");
    command->add_option("scene", options->file, "Scene file")->required();
    command->add_option("-o,--output", options->output, "Picture to write: .svg or .png")
        ->required();
    options->selection.addOptions(*command);
    command->add_option("--clip", options->clip, "Draw the tracks of the clip with this name")
        ->excludes("--node")
        ->excludes("--block")
        ->excludes("--attribute");
    command->callback([options] { run(*options); });
}

} // namespace kvanim
