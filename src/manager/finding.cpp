// Finding registered objects by id, name, node, key or curve. First match wins; every list is
// walked from its front. The public operations are the private workers under another name.

#include <kvAnimationManager2.h>

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>

#include <algorithm>

namespace {

template <class T, class Match>
T* firstOf(const std::vector<T*>& list, const Match& matches) {
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const T* item) { return item && matches(*item); });
    return found == list.end() ? nullptr : *found;
}

/// Asks every clip for a block at any depth. The key is an id, a name or a curve.
template <class Key>
kvAnimationBlock* blockInClips(const std::vector<kvAnimationClip*>& clips, const Key& key) {
    for (kvAnimationClip* clip : clips) {
        if (!clip) continue;
        if (kvAnimationBlock* block = clip->getBlock(key, true)) return block;
    }
    return nullptr;
}

template <class Match>
kvAnimationClip* firstClip(const std::vector<kvAnimationClip*>& clips, const Match& matches) {
    for (kvAnimationClip* clip : clips) {
        if (!clip) continue;
        if (matches(*clip)) return clip;
        if (kvAnimationClip* subclip = firstOf(clip->getSubclips(false, false), matches))
            return subclip;
    }
    return nullptr;
}

auto hasBlockId(std::uint32_t id) {
    return [id](const kvAnimationBlock& block) { return block.getId() == id; };
}

auto hasBlockName(const std::string& name) {
    return [&name](const kvAnimationBlock& block) { return block.getBlockName() == name; };
}

/// Curves are compared by id here, not by pointer; clips compare pointers.
auto holdsCurveId(std::uint32_t id) {
    return [id](const kvAnimationBlock& block) {
        return firstOf(block.getBlockCurves(), [id](const kvAnimationCurve& curve) {
                   return curve.getId() == id;
               }) != nullptr;
    };
}

} // namespace

// --- curves -----------------------------------------------------------------------------------

kvAnimationCurve* kvAnimationManager2::findCurve(unsigned long id) {
    const auto id32 = static_cast<std::uint32_t>(id);
    const auto matches = [id32](const kvAnimationCurve& curve) { return curve.getId() == id32; };
    if (kvAnimationCurve* curve = firstOf(_animCurves, matches)) return curve;
    for (kvAnimationBlock* block : _blocks) {
        if (!block) continue;
        if (kvAnimationCurve* curve = firstOf(block->getBlockCurves(), matches)) return curve;
    }
    return nullptr;
}

kvAnimationCurve* kvAnimationManager2::findCurve(const std::string& attribute) {
    return firstOf(_animCurves, [&](const kvAnimationCurve& curve) {
        return curve.getAnimatedAttribute() == attribute;
    });
}

kvAnimationCurve* kvAnimationManager2::findRegistered(kvAnimationCurve* curve) {
    return curve ? findCurve(static_cast<unsigned long>(curve->getId())) : nullptr;
}

kvAnimationCurve* kvAnimationManager2::getAnimationCurve(unsigned long id) {
    return findCurve(id);
}

kvAnimationCurve* kvAnimationManager2::getAnimationCurve(std::string attribute) {
    return findCurve(attribute);
}

kvAnimationCurve* kvAnimationManager2::getAnimationCurve(std::string attribute, osg::NodePtr node) {
    const osg::NodePtr wanted = getAnimationNode(node);
    return firstOf(_animCurves, [&](const kvAnimationCurve& curve) {
        return curve.getAnimatedAttribute() == attribute &&
               getAnimationNode(curve.getAppropriateNode()) == wanted;
    });
}

kvAnimationCurve* kvAnimationManager2::getAnimationCurve(kvControlPoint cp) {
    for (kvAnimationCurve* curve : _animCurves) {
        if (curve && curve->findCP(cp.getId())) return curve;
    }
    return nullptr;
}

// --- blocks -----------------------------------------------------------------------------------

kvAnimationBlock* kvAnimationManager2::findBlock(unsigned long id, bool scene) {
    const auto id32 = static_cast<std::uint32_t>(id);
    if (kvAnimationBlock* block = firstOf(scene ? _animationBlocks : _blocks, hasBlockId(id32)))
        return block;
    return blockInClips(_clips, static_cast<unsigned long>(id32));
}

kvAnimationBlock* kvAnimationManager2::findBlock(const std::string& name, bool scene) {
    if (kvAnimationBlock* block = firstOf(scene ? _animationBlocks : _blocks, hasBlockName(name)))
        return block;
    return blockInClips(_clips, name);
}

kvAnimationBlock* kvAnimationManager2::findBlock(kvAnimationCurve* curve, bool scene) {
    if (!curve) return nullptr;
    if (kvAnimationBlock* block =
            firstOf(scene ? _animationBlocks : _blocks, holdsCurveId(curve->getId())))
        return block;
    return blockInClips(_clips, curve);
}

kvAnimationBlock* kvAnimationManager2::getBlock(unsigned long id, bool scene) {
    return findBlock(id, scene);
}

kvAnimationBlock* kvAnimationManager2::getBlock(std::string name, bool scene) {
    return findBlock(name, scene);
}

kvAnimationBlock* kvAnimationManager2::getBlock(kvAnimationCurve* curve, bool scene) {
    return findBlock(curve, scene);
}

kvAnimationBlock* kvAnimationManager2::getAnimationBlock(unsigned long id, bool inClips) {
    const auto id32 = static_cast<std::uint32_t>(id);
    kvAnimationBlock* block = firstOf(_animationBlocks, hasBlockId(id32));
    return block || !inClips ? block : blockInClips(_clips, static_cast<unsigned long>(id32));
}

kvAnimationBlock* kvAnimationManager2::getAnimationBlock(std::string name, bool inClips) {
    kvAnimationBlock* block = firstOf(_animationBlocks, hasBlockName(name));
    return block || !inClips ? block : blockInClips(_clips, name);
}

kvAnimationBlock* kvAnimationManager2::getAnimationBlock(kvAnimationCurve* curve, bool inClips) {
    if (!curve) return nullptr;
    kvAnimationBlock* block = firstOf(_animationBlocks, holdsCurveId(curve->getId()));
    return block || !inClips ? block : blockInClips(_clips, curve);
}

// --- clips ------------------------------------------------------------------------------------

kvAnimationClip* kvAnimationManager2::findClip(unsigned long id) {
    const auto id32 = static_cast<std::uint32_t>(id);
    return firstClip(_clips, [id32](const kvAnimationClip& clip) { return clip.getId() == id32; });
}

kvAnimationClip* kvAnimationManager2::findClip(const std::string& name) {
    return firstClip(_clips, [&](const kvAnimationClip& clip) { return clip.getName() == name; });
}

kvAnimationClip* kvAnimationManager2::getClip(unsigned long id) {
    return findClip(id);
}

kvAnimationClip* kvAnimationManager2::getClip(std::string name) {
    return findClip(name);
}

kvAnimationClip* kvAnimationManager2::findSubClip(unsigned long id, kvAnimationClip* parent) {
    const auto id32 = static_cast<std::uint32_t>(id);
    if (!parent) return nullptr;
    for (kvAnimationClip* subclip : parent->getSubclips(false, false)) {
        if (subclip->getId() == id32) return subclip;
        if (kvAnimationClip* below = findSubClip(static_cast<unsigned long>(id32), subclip))
            return below;
    }
    return nullptr;
}
