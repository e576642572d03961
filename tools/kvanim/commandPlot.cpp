// kvanim plot: pictures of curves.
#include "canvas.h"
#include "commands.h"
#include "curvePlot.h"
#include "errors.h"
#include "scene.h"
#include "selection.h"

#include <iostream>
#include <memory>

namespace kvanim {

void addPlot(CLI::App& program) {
    struct Options {
        std::string file;
        std::string output;
        Selection selection;
    };
    auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand("plot", "Draw curves into an SVG or PNG file.");
    command->footer("Example: kvanim plot walk.osg -o hips.svg --node Hips --attribute translateY");
    command->add_option("scene", options->file, "Scene file")->required();
    command->add_option("-o,--output", options->output, "Picture to write: .svg or .png")
        ->required();
    options->selection.addOptions(*command);
    command->callback([options] {
        requirePicture(options->output);
        const Scene scene = Scene::load(options->file);
        const std::vector<SelectedCurve> curves = select(scene, options->selection);
        if (curves.empty()) throw InputError(options->file, "holds no curve that is asked for");
        const std::string what =
            options->selection.node.empty() ? options->file : options->selection.node;
        plotCurves(options->output, what, curves);
        std::cout << options->output << ": " << curves.size() << " curves\n";
    });
}

} // namespace kvanim
