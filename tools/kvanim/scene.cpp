// A scene file with its animation, as every subcommand needs it.
#include "scene.h"

#include "errors.h"
#include "logCapture.h"
#include "outputFile.h"
#include "packFile.h"
#include "readerGuard.h"
#include "sceneFormat.h"
#include "storedClips.h"
#include "storedKinds.h"

#include <kvAnimationAttachmentInteraction.h>
#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationController2.h>
#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>
#include <kvNodeUtils.h>

#include <OpenSG/OSGSceneFileHandler.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <set>
#include <utility>

namespace fs = std::filesystem;

namespace kvanim {
namespace {

kvAnimationManager2& manager() {
    return kvAnimationManager2::_the;
}

void requireReadable(const std::string& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found) throw InputError(file, "no such file");
    if (fs::is_directory(status)) throw InputError(file, "is a directory, not a scene file");
    if (!std::ifstream(file, std::ios::binary)) throw InputError(file, "cannot be opened");
}

osg::NodePtr readGuarded(const std::string& file, [[maybe_unused]] const std::string& leftover) {
#if defined(KVANIM_GUARDS_READER)
    const ReaderGuard guard(file, leftover);
#endif
    return osg::SceneFileHandler::the().read(file.c_str(), nullptr);
}

/// What the log said in several lines, in one.
std::string oneLine(std::string said) {
    for (std::size_t at = said.find('\n'); at != std::string::npos; at = said.find('\n', at))
        said.replace(at, 1, "; ");
    return said;
}

/// Reading an ASCII scene puts a Group above the file's own root. It is taken off again, so that a
/// scene that is loaded and saved does not grow by a level each time. The caller takes a reference
/// to the root over.
osg::NodePtr withoutWrapper(osg::NodePtr read, const std::string& file) {
    osg::addRefCP(read);
    if (!formatOf(file).text || read->getNChildren() != 1) return read;
    const osg::NodePtr own = read->getChild(0);
    osg::addRefCP(own);
    read->subChild(own);
    osg::subRefCP(read);
    return own;
}

} // namespace

std::string nameOf(const osg::NodePtr& node) {
    if (node == osg::NullFC) return "(no node)";
    const char* name = osg::getName(node);
    return name != nullptr && *name != '\0' ? name : "(unnamed)";
}

Scene::Scene(const osg::NodePtr& root, std::string file) : _root(root), _file(std::move(file)) {
    // A reference of its own: those that the file's animation holds go when it is loaded.
    osg::addRefCP(_root);
}

Scene::Scene(Scene&& other) noexcept : _root(other._root), _file(std::move(other._file)) {
    other._root = osg::NullFC;
}

Scene::~Scene() {
    if (_root == osg::NullFC) return;
    // Stored copies refer back to their nodes; without them the graph falls apart by itself.
    for (const osg::NodePtr& node : nodes())
        kvAnimationAttachmentInteraction::cleanAnimationAttachment(node, false);
    // These are plain blocks, never sequence items, so that the destructor may be non-virtual.
    std::set<kvAnimationBlock*> blocks(manager().getBlocks()->begin(),
                                       manager().getBlocks()->end());
    blocks.insert(manager().getSceneBlocks().begin(), manager().getSceneBlocks().end());
    for (kvAnimationClip* clip : *manager().getClips())
        delete clip;
    for (kvAnimationBlock* block : blocks)
        std::default_delete<kvAnimationBlock>{}(block);
    for (kvAnimationCurve* curve : *manager().getAnimCurves())
        delete curve;
    manager().clear(true);
    osg::subRefCP(_root);
}

Scene Scene::load(const std::string& file) {
    Scene scene = read(file);
    scene.takeAnimation();
    return scene;
}

Scene Scene::read(const std::string& file) {
    requireReadable(file);
    LogCapture log;
    const osg::NodePtr read = readGuarded(file, log.file());
    const std::string said = log.end();
    if (read == osg::NullFC)
        throw InputError(file,
                         "is not a readable scene" + (said.empty() ? said : ": " + oneLine(said)));
    // OpenSG hands out what stands before an error, too: half a scene, to be taken for a whole one.
    if (said.find("syntax error") != std::string::npos) {
        osg::NodePtr half = read;
        osg::addRefCP(half);
        osg::subRefCP(half);
        throw InputError(file, "is not a readable scene: " + oneLine(said));
    }
    if (!said.empty()) std::cerr << said << '\n';
    osg::NodePtr root = withoutWrapper(read, file);
    Scene scene(root, file);
    osg::subRefCP(root);
    requireRecordsOfTheirKind(scene);
    requireMeasuredClips(scene);
    return scene;
}

void Scene::takeAnimation() {
    kvAnimationManager2::buildAnimationBlockList(_root);
    for (const osg::NodePtr& node : nodes()) {
        kvAnimationAttachmentInteraction::loadCurvesFromAnimAttachment(node, &manager(), false);
        kvAnimationAttachmentInteraction::loadClipsFromAnimAttachment(node, &manager(), osg::NullFC,
                                                                      false);
    }
}

const std::vector<kvAnimationBlock*>& Scene::blocks() const {
    return manager().getSceneBlocks();
}

const std::vector<kvAnimationCurve*>& Scene::curves() const {
    return *manager().getAnimCurves();
}

const std::vector<kvAnimationClip*>& Scene::clips() const {
    return *manager().getClips();
}

std::vector<osg::NodePtr> Scene::nodes() const {
    std::vector<osg::NodePtr> found, open{_root};
    while (!open.empty()) {
        const osg::NodePtr node = open.back();
        open.pop_back();
        found.push_back(node);
        for (osg::UInt32 i = node->getNChildren(); i > 0; --i)
            open.push_back(node->getChild(i - 1));
    }
    return found;
}

void Scene::addBlock(kvAnimationBlock* block) {
    kvAnimationManager2::_animationBlocks.push_back(block);
}

void Scene::addClip(kvAnimationClip* clip) {
    manager().addClip(clip);
}

void Scene::save(const std::string& file) {
    manager().exportCurves();
    manager().exportAnimationBlocks();
    if (!clips().empty()) manager().exportClips(_root, false);
    write(file);
}

namespace {

bool writePlain(const osg::NodePtr& root, const std::string& file) {
    // Into a stream of our own: OpenSG does not notice a disk that is full.
    std::ofstream stream(file, std::ios::binary);
    if (!stream) return false;
    LogCapture log;
    const bool written = osg::SceneFileHandler::the().write(root, stream, file.c_str(), false);
    const std::string said = log.end();
    stream.close();
    if (!written || !stream) return false;
    if (!said.empty()) std::cerr << said << '\n';
    return true;
}

} // namespace

void Scene::write(const std::string& file) const {
    replaceFile(file, [&](const std::string& temporary) {
        if (!formatOf(temporary).packed) return writePlain(_root, temporary);
        // Without ".gz" the name tells the writer the format.
        const std::string plain = fs::path(temporary).replace_extension().string();
        const bool written = writePlain(_root, plain) && packFile(plain, temporary);
        const int reason = errno;
        std::error_code ignored;
        fs::remove(plain, ignored);
        errno = reason;
        return written;
    });
}

void Scene::apply(float frame) const {
    for (kvAnimationBlock* block : blocks())
        kvAnimationController2::execute(
            manager().getUpdatedAnimationFields(block, frame, false, false));
    for (kvAnimationClip* clip : clips())
        kvAnimationController2::execute(
            manager().getUpdatedAnimationFields(clip, frame, false, false));
}

FrameRange rangeOf(const Scene& scene) {
    FrameRange range{1e23F, -1e23F};
    const auto widen = [&](float start, float end) {
        if (start > end) return;
        range.start = (std::min)(range.start, start);
        range.end = (std::max)(range.end, end);
    };
    for (kvAnimationBlock* block : scene.blocks())
        widen(block->getStartFrame(), block->getEndFrame());
    for (kvAnimationClip* clip : scene.clips())
        widen(clip->getStartFrame(), clip->getEndFrame());
    return range.start > range.end ? FrameRange{} : range;
}

} // namespace kvanim
