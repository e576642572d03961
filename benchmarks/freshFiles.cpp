// Scenes from files and back, and what becomes of them in memory.
#include "fresh.h"

#include "support/scene.h"

#include <kvAnimationBlock.h>
#include <kvAnimationManager2.h>
#include <OSGAnimationAttachment.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGSceneFileHandler.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <utility>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace kv::bench {

namespace {

osg::NodePtr readScene(const std::string& file) {
    const osg::NodePtr root = osg::SceneFileHandler::the().read(file.c_str(), nullptr);
    if (root == osg::NullFC) std::exit(1);
    osg::addRefCP(root);
    return root;
}

/// Scenes as motion capture makes them: nodes with one block each, nine curves of a thousand keys.
double makeScene(const Words& words) {
    constexpr std::size_t kKeysOfACurve = 1000;
    std::size_t left = numberOf(words[0]);
    const osg::NodePtr root = makeTransform();
    osg::addRefCP(root);
    CurveMaker curves(root);
    kvAnimationManager2& manager = kvAnimationManager2::_the;
    while (left > 0) {
        std::vector<kvAnimationCurve*> list;
        for (std::size_t i = 0; i < kAttributes.size() && left > 0; ++i) {
            const std::size_t keys = (std::min)(left, kKeysOfACurve);
            list.push_back(curves.make(keys));
            left -= keys;
        }
        manager.createBlock(list.front()->getAppropriateNode(), "take", list);
    }
    manager.exportBlocks();
    if (!osg::SceneFileHandler::the().write(root, words[1].c_str())) std::exit(1);
    return static_cast<double>(numberOf(words[0]));
}

void toManager(const osg::NodePtr& root) {
    for (osg::UInt32 i = 0; i < root->getNChildren(); ++i)
        kvAnimationManager2::_the.importBlocks(root->getChild(i), false);
}

std::size_t keysInManager() {
    std::size_t keys = 0;
    for (kvAnimationBlock* block : *kvAnimationManager2::_the.getBlocks())
        for (const kvAnimationCurve* curve : block->getBlockCurves())
            keys += curve->getCPs().size();
    return keys;
}

std::size_t heapInUse() {
#if defined(__GLIBC__) && __GLIBC_PREREQ(2, 33)
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#else
    std::exit(1);
#endif
}

double read(const Words& words) {
    return secondsOf([&] { readScene(words[0]); }) * 1e3;
}

double readToManager(const Words& words) {
    const osg::NodePtr root = readScene(words[0]);
    const double seconds = secondsOf([&] { toManager(root); });
    return keysInManager() == 0 ? 0.0 : seconds * 1e3;
}

/// Both count from the start of the program, and all that the scene needs beside its keys counts.
double containerBytes(const Words& words) {
    const std::size_t before = heapInUse();
    const osg::NodePtr root = readScene(words[0]);
    const std::size_t taken = heapInUse() - before;
    toManager(root);
    return static_cast<double>(taken) / static_cast<double>(keysInManager());
}

double managerBytes(const Words& words) {
    const std::size_t before = heapInUse();
    const osg::NodePtr root = readScene(words[0]);
    toManager(root);
    return static_cast<double>(heapInUse() - before) / static_cast<double>(keysInManager());
}

double write(const Words& words) {
    const osg::NodePtr root = readScene(words[0]);
    const std::string copy = words[0] + ".copy.osg";
    const double seconds =
        secondsOf([&] { osg::SceneFileHandler::the().write(root, copy.c_str()); });
    std::remove(copy.c_str());
    return seconds * 1e3;
}

double getLine(const Words& words) {
    std::size_t bytes = 0;
    const double seconds = secondsOf([&] {
        std::ifstream in(words[0]);
        for (std::string line; std::getline(in, line);)
            bytes += line.size();
    });
    return bytes == 0 ? 0.0 : seconds * 1e3;
}

/// Seven numbers a key, as a program would print them that knew nothing of scene files.
double printNumbers(const Words& words) {
    kvAnimationManager2::buildAnimationBlockList(readScene(words[0]));
    const std::string copy = words[0] + ".numbers";
    std::FILE* out = std::fopen(copy.c_str(), "w");
    if (out == nullptr) std::exit(1);
    const double seconds = secondsOf([&] {
        for (kvAnimationBlock* block : kvAnimationManager2::_the.getSceneBlocks()) {
            for (kvAnimationCurve* curve : block->getBlockCurves()) {
                for (const kvControlPoint& key : std::as_const(*curve).getCPs()) {
                    for (const kvControlPoint::Point p :
                         {key.getPoint(), key.getInTangent(), key.getOutTangent()})
                        std::fprintf(out, "%.9g %.9g\n", p.x, p.y);
                    std::fprintf(out, "%d\n", key.getTangentType());
                }
            }
        }
        std::fflush(out);
    });
    std::fclose(out);
    std::remove(copy.c_str());
    return seconds * 1e3;
}

} // namespace

std::vector<Measurement> fileMeasurements() {
    return {{"makeScene", 2, &makeScene},       {"read", 1, &read},
            {"toManager", 1, &readToManager},   {"containerBytes", 1, &containerBytes},
            {"managerBytes", 1, &managerBytes}, {"write", 1, &write},
            {"getline", 1, &getLine},           {"fprintf", 1, &printNumbers}};
}

} // namespace kv::bench
