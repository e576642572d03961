// Measurements that must be the first and only thing a process does, since every key and every id
// made stays in the store of ids. Prints nanoseconds for one item.
//
//   kv_bench_fresh insert N      N keys inserted in ascending order into one curve, each key
//   kv_bench_fresh ids N         N identifiers, each
//   kv_bench_fresh addBlock N    N blocks added to one clip, each block
//   kv_bench_fresh exportClip N  a clip of N blocks exported to the root, each block
//   kv_bench_fresh importClip N  the same clip imported again, each block
//   kv_bench_fresh read FILE     the scene read from FILE; milliseconds
//   kv_bench_fresh write FILE    the scene of FILE written again; milliseconds
//   kv_bench_fresh getline FILE  std::getline over FILE; milliseconds
//   kv_bench_fresh fprintf FILE  the numbers of the keys of FILE printed with fprintf; milliseconds
#include "support/scene.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationManager2.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGSceneFileHandler.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double insert(std::size_t count) {
    kvAnimationCurve curve("translateX");
    return secondsOf([&] {
               for (std::size_t i = 0; i < count; ++i)
                   curve.insertCP(static_cast<double>(i),
                                  static_cast<double>(kv::bench::keyValue(i)));
           }) /
           static_cast<double>(count) * 1e9;
}

double ids(std::size_t count) {
    unsigned long long sum = 0;
    const double seconds = secondsOf([&] {
        for (std::size_t i = 0; i < count; ++i)
            sum += kvAnimationManager2::createUniqueId();
    });
    return sum == 0 ? 0.0 : seconds / static_cast<double>(count) * 1e9;
}

/// Blocks of one curve with four keys, out of order of their starts.
std::vector<kvAnimationBlock*> makeBlocks(std::size_t count, const osg::NodePtr& node) {
    std::vector<kvAnimationBlock*> blocks;
    blocks.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        auto* const curve = new kvAnimationCurve("translateX");
        curve->setAppropriateNode(node);
        kvAnimationUtils2::createAnimationField(curve);
        const float start = static_cast<float>(i * 7919U % count);
        for (std::size_t k = 0; k < 4; ++k) {
            const float x = start + 10.0F * static_cast<float>(k);
            curve->importControlPoint(x, kv::bench::keyValue(k), x - 1.0F, 0.0F, x + 1.0F, 0.0F, 6);
        }
        blocks.push_back(new kvAnimationBlock(node));
        blocks.back()->addCurve(curve);
    }
    return blocks;
}

/// What building, storing and reading back a clip of `count` blocks takes.
double clipOf(std::size_t count, const std::string& what) {
    const osg::NodePtr root = kv::bench::makeTransform();
    osg::addRefCP(root);
    const std::vector<kvAnimationBlock*> blocks = makeBlocks(count, root);
    auto* const clip = new kvAnimationClip;
    double seconds = secondsOf([&] {
        for (kvAnimationBlock* block : blocks)
            clip->addBlock(block);
    });
    kvAnimationManager2& manager = kvAnimationManager2::_the;
    if (what != "addBlock") {
        manager.addClip(clip);
        seconds = secondsOf([&] { manager.exportClips(root, false); });
    }
    if (what == "importClip") seconds = secondsOf([&] { manager.importClips(root, root, false); });
    return seconds / static_cast<double>(count) * 1e9;
}

osg::NodePtr readScene(const char* file) {
    const osg::NodePtr root = osg::SceneFileHandler::the().read(file, nullptr);
    if (root == osg::NullFC) std::exit(1);
    osg::addRefCP(root);
    return root;
}

double read(const char* file) {
    return secondsOf([&] { readScene(file); }) * 1e3;
}

double write(const char* file) {
    const osg::NodePtr root = readScene(file);
    const std::string copy = std::string(file) + ".copy.osg";
    const double seconds =
        secondsOf([&] { osg::SceneFileHandler::the().write(root, copy.c_str()); });
    std::remove(copy.c_str());
    return seconds * 1e3;
}

double getLine(const char* file) {
    std::size_t bytes = 0;
    const double seconds = secondsOf([&] {
        std::ifstream in(file);
        for (std::string line; std::getline(in, line);)
            bytes += line.size();
    });
    return bytes == 0 ? 0.0 : seconds * 1e3;
}

/// Seven numbers a key, as a program would print them that knew nothing of scene files.
double printNumbers(const char* file) {
    kvAnimationManager2::buildAnimationBlockList(readScene(file));
    std::FILE* out = std::fopen((std::string(file) + ".numbers").c_str(), "w");
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
    std::remove((std::string(file) + ".numbers").c_str());
    return seconds * 1e3;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3 || !osg::osgInit(0, nullptr)) return 2;
    const std::string what = argv[1];
    const auto count = static_cast<std::size_t>(std::strtoull(argv[2], nullptr, 10));
    double result = 0.0;
    if (what == "insert")
        result = insert(count);
    else if (what == "ids")
        result = ids(count);
    else if (what == "addBlock" || what == "exportClip" || what == "importClip")
        result = clipOf(count, what);
    else if (what == "read")
        result = read(argv[2]);
    else if (what == "write")
        result = write(argv[2]);
    else if (what == "getline")
        result = getLine(argv[2]);
    else if (what == "fprintf")
        result = printNumbers(argv[2]);
    else
        return 2;
    std::printf("%.6g\n", result);
    std::fflush(stdout);
    std::_Exit(0); // the scene's destruction is not what is measured
}
