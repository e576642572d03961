// kvanim: looks into, evaluates, plays and plots the animation of scene files.
//
// Exit codes: 0 success, 1 bad input (one line on standard error with file and reason), 2 bad
// usage, 3 a check that found something.
#include "commands.h"

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGConfig.h>

#include <exception>
#include <iostream>

namespace {

constexpr int kBadInput = 1;
constexpr int kBadUsage = 2;

int run(int argc, char** argv) {
    CLI::App program("Keyframe animation of OpenSG scene files.", "kvanim");
    program.require_subcommand(1);
    program.footer("Scene files are .osg (text) or .osb (binary, recommended above 100,000 keys), "
                   "either with .gz behind it.\n"
                   "Example: kvanim import walk.bvh -o walk.osg && kvanim play walk.osg --fps 120");
    kvanim::addImport(program);
    kvanim::addInfo(program);
    kvanim::addEval(program);
    kvanim::addPlay(program);
    kvanim::addPlot(program);
    kvanim::addDump(program);
    kvanim::addCheck(program);
    kvanim::addFields(program);
    kvanim::addConvert(program);
    try {
        program.parse(argc, argv);
    } catch (const CLI::RuntimeError& outcome) {
        return outcome.get_exit_code(); // the command ran and tells its outcome by this
    } catch (const CLI::ParseError& error) {
        // Help is an "error" with exit code 0.
        return program.exit(error) == 0 ? 0 : kBadUsage;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        if (!osg::osgInit(0, nullptr)) {
            std::cerr << "kvanim: the scene graph cannot be initialised\n";
            return kBadInput;
        }
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "kvanim: " << error.what() << '\n';
        return kBadInput;
    }
}
