// kvanim info: what a scene holds; and kvanim dump, its exact text form.
#include "commands.h"
#include "containerDump.h"
#include "dump.h"
#include "errors.h"
#include "numbers.h"
#include "outputFile.h"
#include "scene.h"
#include "sceneFormat.h"
#include "selection.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include <nlohmann/json.hpp>

#include <iostream>
#include <map>
#include <memory>
#include <utility>

namespace kvanim {
namespace {

using Json = nlohmann::ordered_json;

Json range(float start, float end) {
    if (start > end) return nullptr; // covers nothing
    return Json{{"start", start}, {"end", end}};
}

Json describe(kvAnimationCurve& curve) {
    const kvAnimationUtils2::AnimationField field = curve.getAnimationField();
    const std::vector<kvControlPoint>& keys = std::as_const(curve).getCPs();
    Json json{{"attribute", curve.getAnimatedAttribute()},
              {"node", nameOf(curve.getAppropriateNode())},
              {"keys", keys.size()},
              {"range", range(static_cast<float>(curve.getStartFrame()),
                              static_cast<float>(curve.getEndFrame()))}};
    if (field.fcId == 0)
        json["field"] = nullptr;
    else
        json["field"] = Json{{"name", field.fieldName},
                             {"of", field.globalFieldName},
                             {"position", field.valuePosition}};
    return json;
}

Json describe(kvAnimationBlock& block) {
    Json curves = Json::array();
    for (kvAnimationCurve* curve : block.getBlockCurves())
        if (curve != nullptr) curves.push_back(describe(*curve));
    return Json{{"name", block.getBlockName()},
                {"node", nameOf(block.getAppropriateNode())},
                {"range", range(block.getStartFrame(), block.getEndFrame())},
                {"active", block.getActive()},
                {"repeat", block.getRepeat()},
                {"flipped", block.getFliped()},
                {"motionBlur", block.getMotionBlur()},
                {"camera", block.isCameraBlock()},
                {"animatedType", block.getAnimatedType()},
                {"curves", std::move(curves)}};
}

Json describe(kvAnimationClip& clip) {
    Json tracks = Json::array();
    for (kvAnimationTrack* track : clip.getTracks()) {
        Json items{{"number", track->getNumber()},
                   {"active", track->getActive()},
                   {"blocks", Json::array()},
                   {"sequences", Json::array()},
                   {"clips", Json::array()}};
        for (kvAnimationBlock* block : track->getBlocks())
            items["blocks"].push_back(describe(*block));
        for (kvAnimationSequence2* item : track->getSequences())
            items["sequences"].push_back(
                Json{{"text", item->getSequence()},
                     {"range", range(item->getStartFrame(), item->getEndFrame())}});
        for (kvAnimationClip* nested : track->getClips())
            items["clips"].push_back(describe(*nested));
        tracks.push_back(std::move(items));
    }
    return Json{
        {"name", clip.getName()},      {"range", range(clip.getStartFrame(), clip.getEndFrame())},
        {"active", clip.getActive()},  {"repeat", clip.getRepeat()},
        {"flipped", clip.getFliped()}, {"motionBlur", clip.getMotionBlur()},
        {"tracks", std::move(tracks)}};
}

struct Totals {
    std::size_t blocks = 0;
    std::size_t curves = 0;
    std::size_t keys = 0;
};

Totals totalsOf(const Scene& scene) {
    Totals totals;
    totals.blocks = allBlocks(scene).size();
    for (const SelectedCurve& one : select(scene, {})) {
        ++totals.curves;
        totals.keys += std::as_const(*one.curve).getCPs().size();
    }
    return totals;
}

Json describe(const Scene& scene) {
    const Totals totals = totalsOf(scene);
    const FrameRange all = rangeOf(scene);
    Json json{{"file", scene.file()},         {"nodes", scene.nodes().size()},
              {"blocks", totals.blocks},      {"curves", totals.curves},
              {"keys", totals.keys},          {"range", range(all.start, all.end)},
              {"sceneBlocks", Json::array()}, {"looseCurves", Json::array()},
              {"clips", Json::array()}};
    for (kvAnimationBlock* block : scene.blocks())
        json["sceneBlocks"].push_back(describe(*block));
    for (kvAnimationCurve* curve : scene.curves())
        json["looseCurves"].push_back(describe(*curve));
    for (kvAnimationClip* clip : scene.clips())
        json["clips"].push_back(describe(*clip));
    return json;
}

std::string rangeText(const Json& json) {
    if (json.is_null()) return "empty";
    return "frames " + shortest(json["start"].get<float>()) + " to " +
           shortest(json["end"].get<float>());
}

std::string flagsText(const Json& json) {
    std::string text;
    for (const char* flag : {"repeat", "flipped", "motionBlur", "camera"})
        if (json.value(flag, false)) text += std::string(", ") + flag;
    if (!json.value("active", true)) text += ", inactive";
    return text;
}

void printCurve(const Json& curve, const std::string& indent) {
    std::cout << indent << curve["attribute"].get<std::string>() << ": "
              << curve["keys"].get<std::size_t>() << " keys, " << rangeText(curve["range"]);
    if (curve["field"].is_null()) std::cout << ", bound to nothing";
    std::cout << '\n';
}

void printBlock(const Json& block, const std::string& indent) {
    std::cout << indent << "block \"" << block["name"].get<std::string>() << "\" on "
              << block["node"].get<std::string>() << ": " << block["curves"].size() << " curves, "
              << rangeText(block["range"]) << flagsText(block) << '\n';
    for (const Json& curve : block["curves"])
        printCurve(curve, indent + "    ");
}

void printClip(const Json& clip, const std::string& indent) {
    std::cout << indent << "clip \"" << clip["name"].get<std::string>()
              << "\": " << clip["tracks"].size() << " tracks, " << rangeText(clip["range"])
              << flagsText(clip) << '\n';
    for (const Json& track : clip["tracks"]) {
        std::cout << indent << "    track " << track["number"].get<int>() << flagsText(track)
                  << '\n';
        for (const Json& block : track["blocks"])
            printBlock(block, indent + "        ");
        for (const Json& item : track["sequences"])
            std::cout << indent << "        sequence \"" << item["text"].get<std::string>()
                      << "\": " << rangeText(item["range"]) << '\n';
        for (const Json& nested : track["clips"])
            printClip(nested, indent + "        ");
    }
}

void printText(const Json& json) {
    std::cout << json["file"].get<std::string>() << ": " << json["nodes"].get<std::size_t>()
              << " nodes, " << json["blocks"].get<std::size_t>() << " blocks, "
              << json["curves"].get<std::size_t>() << " curves, " << json["keys"].get<std::size_t>()
              << " keys, " << rangeText(json["range"]) << '\n';
    for (const Json& block : json["sceneBlocks"])
        printBlock(block, "");
    for (const Json& curve : json["looseCurves"])
        printCurve(curve, "loose curve ");
    for (const Json& clip : json["clips"])
        printClip(clip, "");
    recommendBinary(std::cout, json["file"].get<std::string>(), json["keys"].get<std::size_t>());
}

std::vector<float> parseFrames(const std::string& list) {
    std::vector<float> frames;
    for (const std::string& piece : CLI::detail::split(list, ',')) {
        float frame = 0.0F;
        if (!CLI::detail::lexical_cast(piece, frame))
            throw CLI::ValidationError("--frames", "\"" + piece + "\" is not a frame");
        frames.push_back(frame);
    }
    return frames;
}

} // namespace

void addInfo(CLI::App& program) {
    struct Options {
        std::string file;
        bool json = false;
    };
    auto options = std::make_shared<Options>();
    CLI::App* command =
        program.add_subcommand("info", "List nodes, blocks, curves, clips and keys.");
    command->footer("Example: kvanim info walk.osg --json");
    command->add_option("scene", options->file, "Scene file")->required();
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options] {
        const Scene scene = Scene::load(options->file);
        const Json json = describe(scene);
        if (options->json)
            std::cout << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
        else
            printText(json);
    });
}

void addDump(CLI::App& program) {
    struct Options {
        std::string file;
        std::string frames;
        std::string output;
        bool containers = false;
    };
    auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand(
        "dump", "Print every record and, at some frames, the world matrix of every node, exactly.");
    command->footer("Example: kvanim dump walk.osg --frames 0,10,20 -o walk.txt");
    command->add_option("scene", options->file, "Scene file")->required();
    command->add_option("--frames", options->frames,
                        "Frames, separated by commas (ten over the range by default)");
    command->add_option("-o,--output", options->output,
                        "File to write (standard output by default)");
    command
        ->add_flag("--containers", options->containers,
                   "Print every container of the file with its fields instead, animation as stored")
        ->excludes("--frames");
    command->callback([options] {
        const bool spread = options->frames.empty();
        const std::vector<float> named =
            spread ? std::vector<float>() : parseFrames(options->frames);
        if (!options->output.empty() && options->output != "-") requireWritable(options->output);
        if (options->containers) {
            const Scene scene = Scene::read(options->file);
            writeText(options->output, containersOf(scene.root()));
            return;
        }
        const Scene scene = Scene::load(options->file);
        writeText(options->output, dumpOf(scene, spread ? defaultDumpFrames(scene) : named));
    });
}

} // namespace kvanim
