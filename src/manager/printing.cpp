// The registry as text on standard output. The lines are fixed: hosts compare and search them.

#include <kvAnimationManager2.h>

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>

#include <iostream>

namespace {

void printHead(const kvAnimationCurve& curve, const char* indent) {
    std::cout << indent << "- id: " << curve.getId()
              << " attribute: " << curve.getAnimatedAttribute() << std::endl;
}

void printFreeCurve(const kvAnimationCurve& curve) {
    printHead(curve, "#  ");
    std::size_t number = 0;
    for (const kvControlPoint& key : curve.getCPs()) {
        const kvControlPoint::Point point = key.getPoint();
        std::cout << "   - cp" << number++ << " x: " << point.x << " y: " << point.y << std::endl;
    }
}

void printRange(const kvAnimationBlock& block) {
    const float begin = block.getStartFrame();
    const float end = block.getEndFrame();
    std::cout << "#    - begin: " << begin << " end: " << end << " duration: " << end - begin
              << std::endl;
}

void printBlock(const kvAnimationBlock& block) {
    std::cout << "#  - id: " << block.getId() << " name: " << block.getBlockName() << std::endl;
    std::cout << "#  - pointer: " << static_cast<const void*>(&block) << std::endl;
    std::cout << "#  - apNode: " << block.getAppropriateNode() << std::endl;
    printRange(block);
    std::cout << "#  - BlockCurves: " << block.getBlockCurves().size() << std::endl;
    for (const kvAnimationCurve* curve : block.getBlockCurves()) {
        if (curve) printHead(*curve, "#    ");
    }
}

void printClipBlock(const kvAnimationBlock& block) {
    std::cout << "#    - id: " << block.getId() << " name: " << block.getBlockName() << std::endl;
    std::cout << "#    - pointer: " << static_cast<const void*>(&block) << std::endl;
    std::cout << "#    - apNode: " << block.getAppropriateNode() << std::endl;
    printRange(block);
    std::cout << "#    - ClipBlockCurves: " << block.getBlockCurves().size() << std::endl;
    for (const kvAnimationCurve* curve : block.getBlockCurves()) {
        if (!curve) continue;
        printHead(*curve, "#      ");
        for (const kvControlPoint& key : curve->getCPs()) {
            const kvControlPoint::Point point = key.getPoint();
            std::cout << "#        - pos: " << point.x << " " << point.y << std::endl;
        }
    }
}

void printClip(kvAnimationClip& clip) {
    std::cout << "#  - id: " << clip.getId() << " name: " << clip.getName() << std::endl;
    const std::vector<kvAnimationBlock*> blocks = clip.getBlocks(false, false);
    std::cout << "#  - ClipBlocks: " << blocks.size() << std::endl;
    for (const kvAnimationBlock* block : blocks)
        printClipBlock(*block);
}

} // namespace

void kvAnimationManager2::printInfo() {
    std::cout << "#---------------------kvAnimationManager2-----------------------#" << std::endl;
    std::cout << "# AnimCurves: " << _animCurves.size() << std::endl;
    for (const kvAnimationCurve* curve : _animCurves) {
        if (curve) printFreeCurve(*curve);
    }
    std::cout << "# AnimBlocks: " << _blocks.size() << std::endl;
    for (const kvAnimationBlock* block : _blocks) {
        if (block) printBlock(*block);
    }
    std::cout << "# AnimClips: " << _clips.size() << std::endl;
    for (kvAnimationClip* clip : _clips) {
        if (clip) printClip(*clip);
    }
}
