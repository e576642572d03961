// Registering, storing and reading curves, blocks and clips.
#include "fresh.h"

#include "support/scene.h"

#include <kvAnimationAttachmentInteraction.h>
#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationManager2.h>
#include <OSGAnimationAttachment.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <algorithm>

namespace kv::bench {

namespace {

constexpr std::size_t kKeysOfACurve = 4;

kvAnimationCurve* makeCurve(const osg::NodePtr& node, float start) {
    auto* const curve = new kvAnimationCurve("translateX");
    curve->setAppropriateNode(node);
    kvAnimationUtils2::createAnimationField(curve);
    for (std::size_t k = 0; k < kKeysOfACurve; ++k) {
        const float x = start + 10.0F * static_cast<float>(k);
        curve->importControlPoint(x, keyValue(k), x - 1.0F, 0.0F, x + 1.0F, 0.0F, 6);
    }
    return curve;
}

/// Blocks of one curve, out of order of their starts.
std::vector<kvAnimationBlock*> makeBlocks(std::size_t count, const osg::NodePtr& node) {
    std::vector<kvAnimationBlock*> blocks;
    blocks.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        blocks.push_back(new kvAnimationBlock(node, "block" + std::to_string(i)));
        blocks.back()->addCurve(makeCurve(node, static_cast<float>(i * 7919U % count)));
    }
    return blocks;
}

osg::NodePtr makeRoot() {
    const osg::NodePtr root = makeTransform();
    osg::addRefCP(root);
    return root;
}

/// Registering curves and collecting them in a block, whose range is asked for after each.
double addCurve(const Words& words) {
    const std::size_t count = numberOf(words[0]);
    const osg::NodePtr root = makeRoot();
    std::vector<kvAnimationCurve*> curves;
    for (std::size_t i = 0; i < count; ++i)
        curves.push_back(makeCurve(root, static_cast<float>(i)));
    kvAnimationBlock block(root);
    float sum = 0.0F;
    const double each = nanosecondsEach(count, [&] {
        for (kvAnimationCurve* curve : curves) {
            kvAnimationManager2::_the.addCurve(curve);
            block.addCurve(curve);
            sum += block.getDuration();
        }
    });
    return sum > 0.0F ? each : 0.0;
}

/// The curves of one block. Loose ones are stored only once for an attribute.
double importCurves(const Words& words) {
    const std::size_t count = numberOf(words[0]);
    const osg::NodePtr root = makeRoot();
    kvAnimationManager2& manager = kvAnimationManager2::_the;
    auto* const block = new kvAnimationBlock(root, "all");
    for (std::size_t i = 0; i < count; ++i)
        block->addCurve(makeCurve(root, 0.0F));
    manager.addAnimationBlock(block);
    manager.exportBlocks();
    manager.clearBlockList();
    return nanosecondsEach(count, [&] { manager.importBlocks(root, false); });
}

/// The keys of one stored curve, with handles to place.
double importKeys(const Words& words) {
    const std::size_t count = numberOf(words[0]);
    const osg::NodePtr root = makeRoot();
    kvAnimationManager2& manager = kvAnimationManager2::_the;
    const osg::AnimationCurvePtr stored = osg::AnimationCurve::create();
    for (std::size_t i = 0; i < count; ++i) {
        const osg::AnimationControlPointPtr key = osg::AnimationControlPoint::create();
        key->setControlPoint(osg::Vec2f(static_cast<float>(i), keyValue(i)));
        key->setTangentType(kvControlPoint::Auto);
        stored->addCurvePoint(key);
    }
    kvAnimationAttachmentInteraction::createNewAnimationAttachment(root, false);
    kvAnimationAttachmentInteraction::getAnimationAttachment(root, false)->addCurve(stored);
    const double each = nanosecondsEach(count, [&] { manager.importCurves(root, false); });
    return manager.getAnimCurves()->front()->getCPs().size() == count ? each : 0.0;
}

double importBlocks(const Words& words) {
    const std::size_t count = numberOf(words[0]);
    const osg::NodePtr root = makeRoot();
    kvAnimationManager2& manager = kvAnimationManager2::_the;
    const std::vector<kvAnimationBlock*> blocks = makeBlocks(count, root);
    for (std::size_t i = 0; i < count; ++i)
        manager.addAnimationBlock(blocks[i]);
    manager.exportBlocks();
    manager.clearBlockList();
    return nanosecondsEach(count, [&] { manager.importBlocks(root, false); });
}

/// What building clips of so many blocks takes. All sizes add the same number of blocks, on a heap
/// that looks the same, or a small clip would be over before it could be measured.
double addBlocks(const Words& words) {
    constexpr std::size_t kBlocks = 16000;
    const std::size_t count = (std::max)(numberOf(words[0]), std::size_t{1});
    const std::size_t clips = (std::max)(kBlocks / count, std::size_t{1});
    const std::vector<kvAnimationBlock*> blocks = makeBlocks(clips * count, makeRoot());
    return nanosecondsEach(blocks.size(), [&] {
        kvAnimationClip* clip = nullptr;
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            if (i % count == 0) clip = new kvAnimationClip;
            clip->addBlock(blocks[i]);
        }
    });
}

/// What storing a clip of so many blocks takes, and reading it back.
enum class Step { Export, Import };

template <Step last>
double clipOf(const Words& words) {
    const std::size_t count = numberOf(words[0]);
    const osg::NodePtr root = makeRoot();
    auto* const clip = new kvAnimationClip;
    for (kvAnimationBlock* block : makeBlocks(count, root))
        clip->addBlock(block);
    kvAnimationManager2& manager = kvAnimationManager2::_the;
    manager.addClip(clip);
    const double each = nanosecondsEach(count, [&] { manager.exportClips(root, false); });
    if (last == Step::Export) return each;
    return nanosecondsEach(count, [&] { manager.importClips(root, root, false); });
}

} // namespace

std::vector<Measurement> clipMeasurements() {
    return {{"addCurve", 1, &addCurve},
            {"importCurves", 1, &importCurves},
            {"importKeys", 1, &importKeys},
            {"importBlocks", 1, &importBlocks},
            {"addBlock", 1, &addBlocks},
            {"exportClip", 1, &clipOf<Step::Export>},
            {"importClip", 1, &clipOf<Step::Import>}};
}

} // namespace kv::bench
