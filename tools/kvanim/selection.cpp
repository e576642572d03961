// From the names that a user types to curves.
#include "selection.h"

#include "errors.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationTrack.h>

#include <algorithm>

namespace kvanim {
namespace {

void addClipBlocks(const kvAnimationClip& clip, std::vector<kvAnimationBlock*>& blocks) {
    for (const kvAnimationTrack* track : clip.getTracks()) {
        blocks.insert(blocks.end(), track->getBlocks().begin(), track->getBlocks().end());
        for (const kvAnimationClip* nested : track->getClips())
            addClipBlocks(*nested, blocks);
    }
}

/// Names what is there, so that a mistyped name is found at a glance.
[[noreturn]] void failUnknown(const Scene& scene, const char* what, const std::string& name,
                              std::vector<std::string> known) {
    std::sort(known.begin(), known.end());
    known.erase(std::unique(known.begin(), known.end()), known.end());
    std::string list;
    for (std::size_t i = 0; i < known.size() && i < 10; ++i)
        list += (i ? ", " : "") + known[i];
    if (known.size() > 10) list += ", ... (" + std::to_string(known.size()) + " in all)";
    throw InputError(scene.file(), std::string("no ") + what + " \"" + name + "\"" +
                                       (list.empty() ? "" : "; there are: " + list));
}

} // namespace

void Selection::addOptions(CLI::App& command) {
    command.add_option("--node", node, "Only curves of the node with this name");
    command.add_option("--block", block, "Only curves of the block with this name");
    command.add_option("--attribute", attribute,
                       "Only curves of this attribute, such as translateX");
}

std::string SelectedCurve::title() const {
    const osg::NodePtr node = curve->getAppropriateNode();
    std::string text = node == osg::NullFC ? std::string() : nameOf(node) + ".";
    if (block != nullptr && block->getBlockName() != nameOf(node))
        text += block->getBlockName() + ".";
    return text + curve->getAnimatedAttribute();
}

std::vector<kvAnimationBlock*> allBlocks(const Scene& scene) {
    std::vector<kvAnimationBlock*> blocks = scene.blocks();
    for (const kvAnimationClip* clip : scene.clips())
        addClipBlocks(*clip, blocks);
    return blocks;
}

kvAnimationBlock& findBlock(const Scene& scene, const std::string& name) {
    std::vector<std::string> known;
    for (kvAnimationBlock* block : allBlocks(scene)) {
        if (block->getBlockName() == name) return *block;
        known.push_back(block->getBlockName());
    }
    failUnknown(scene, "block", name, known);
}

kvAnimationClip& findClip(const Scene& scene, const std::string& name) {
    std::vector<std::string> known;
    for (kvAnimationClip* clip : scene.clips()) {
        if (clip->getName() == name) return *clip;
        known.push_back(clip->getName());
    }
    failUnknown(scene, "clip", name, known);
}

std::vector<SelectedCurve> select(const Scene& scene, const Selection& selection) {
    if (!selection.block.empty()) findBlock(scene, selection.block);
    if (!selection.node.empty()) {
        std::vector<std::string> known;
        for (const osg::NodePtr& node : scene.nodes())
            known.push_back(nameOf(node));
        if (std::find(known.begin(), known.end(), selection.node) == known.end())
            failUnknown(scene, "node", selection.node, known);
    }
    std::vector<SelectedCurve> all;
    for (kvAnimationBlock* block : allBlocks(scene))
        for (kvAnimationCurve* curve : block->getBlockCurves())
            if (curve != nullptr) all.push_back({block, curve});
    for (kvAnimationCurve* curve : scene.curves())
        all.push_back({nullptr, curve});

    std::vector<std::string> attributes;
    std::vector<SelectedCurve> chosen;
    for (const SelectedCurve& one : all) {
        if (!selection.block.empty() &&
            (one.block == nullptr || one.block->getBlockName() != selection.block))
            continue;
        if (!selection.node.empty() && nameOf(one.curve->getAppropriateNode()) != selection.node)
            continue;
        attributes.push_back(one.curve->getAnimatedAttribute());
        if (selection.attribute.empty() || attributes.back() == selection.attribute)
            chosen.push_back(one);
    }
    if (chosen.empty() && !selection.attribute.empty())
        failUnknown(scene, "attribute", selection.attribute, attributes);
    return chosen;
}

} // namespace kvanim
