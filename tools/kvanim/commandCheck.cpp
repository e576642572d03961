// kvanim check: a doctor for scenes.
#include "clipCheck.h"
#include "commands.h"
#include "findings.h"
#include "scene.h"
#include "storedCheck.h"

#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>

namespace kvanim {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kFound = 3;

Json orNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

template <class T>
Json orNull(const std::optional<T>& number) {
    return number ? Json(*number) : Json(nullptr);
}

/// Every member is always there; null is "does not apply", and JSON's word for NaN.
Json describe(const Finding& finding) {
    return Json{{"kind", finding.kind},
                {"node", orNull(finding.place.node)},
                {"clip", orNull(finding.place.clip)},
                {"block", orNull(finding.place.block)},
                {"curve", orNull(finding.place.curve)},
                {"key", orNull(finding.key)},
                {"frame", orNull(finding.frame)},
                {"lastFrame", orNull(finding.lastFrame)},
                {"reason", finding.reason}};
}

void printJson(const std::string& file, const StoredTotals& totals, const Findings& findings) {
    Json json{{"file", file},
              {"blocks", totals.blocks},
              {"curves", totals.curves},
              {"keys", totals.keys},
              {"findings", Json::array()}};
    for (const Finding& finding : findings)
        json["findings"].push_back(describe(finding));
    std::cout << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void printText(const std::string& file, const StoredTotals& totals, const Findings& findings) {
    for (const Finding& finding : findings)
        std::cout << lineOf(finding) << '\n';
    std::cout << file << ": "
              << (findings.empty() ? std::string("clean")
                                   : std::to_string(findings.size()) +
                                         (findings.size() == 1 ? " finding" : " findings"))
              << " in " << totals.blocks << " blocks, " << totals.curves << " curves, "
              << totals.keys << " keys\n";
}

} // namespace

void addCheck(CLI::App& program) {
    struct Options {
        std::string file;
        bool json = false;
    };
    auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand(
        "check", "Look for curves without values, wrong keys and lost bindings; exit code 3 when "
                 "anything is found.");
    command->footer("Example: kvanim check walk.osg --json");
    command->add_option("scene", options->file, "Scene file")->required();
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options] {
        Scene scene = Scene::read(options->file);
        Findings findings;
        const StoredTotals totals = checkStored(scene, findings);
        scene.takeAnimation();
        checkClips(scene, findings);
        (options->json ? printJson : printText)(options->file, totals, findings);
        if (!findings.empty()) throw CLI::RuntimeError(kFound);
    });
}

} // namespace kvanim
