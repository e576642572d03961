// Converts a scene and tells what became of each record. The converter is silent, so that its
// choices are foretold from the records, and the outcome is counted to see that they came true.
#include "conversion.h"

#include "errors.h"
#include "scene.h"

#include <kvAnimationAttachmentInteraction.h>
#include <kvAnimationConverter.h>
#include <kvAnimManager.h>
#include <OSGAnimationAttachment.h>
#include <OSGAnimAttachment.h>
#include <OSGAnimCurve.h>

#include <algorithm>
#include <set>

namespace kvanim {
namespace {

using Channels = std::vector<kvOSGChannelData>;

void replaceFirst(std::string& text, const std::string& what, const std::string& by) {
    const std::size_t at = text.find(what);
    if (at != std::string::npos) text.replace(at, what.size(), by);
}

/// The full name of the channel that a curve goes to. Only blocks know the older spellings.
std::string channelOf(const osg::AnimationCurvePtr& curve, bool inBlock) {
    std::string key = curve->getAFFieldName();
    if (key.empty()) key = curve->getBelongs2Attribute();
    if (inBlock) {
        replaceFirst(key, "translate", "translation");
        replaceFirst(key, "rotate", "rotation");
    }
    if (key == "rotationX" || key == "rotationY" || key == "rotationZ")
        replaceFirst(key, "rotation", "eulerR");
    return key;
}

/// Keys that become points.
std::size_t keyCount(const osg::AnimationCurvePtr& curve) {
    osg::MFAnimationControlPointPtr& keys = *curve->getMFControlPoints();
    std::size_t count = 0;
    for (osg::UInt32 i = 0; i < keys.getSize(); ++i)
        count += keys[i] != osg::NullFC ? 1 : 0;
    return count;
}

std::string counted(std::size_t count, const char* what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

class Forecast {
  public:
    explicit Forecast(const osg::NodePtr& node) {
        _told.node = nameOf(node);
        kvAnimManager::getKeyableChannels(node, _channels);
    }

    void addBlock(const osg::AnimationBlockPtr& block) {
        osg::MFAnimationCurvePtr& curves = *block->getMFCurves();
        const std::string name = "block \"" + block->getName() + '"';
        std::size_t taken = 0, keys = 0;
        for (osg::UInt32 i = 0; i < curves.getSize(); ++i) {
            if (curves[i] == osg::NullFC) continue;
            const std::string key = channelOf(curves[i], true);
            // A block has a curve node for every channel, also where two have the same name.
            const std::size_t matches = matchesOf(key);
            if (matches == 0) {
                drop(name + ": curve " + label(curves[i]), noChannel(key));
                continue;
            }
            ++taken;
            keys += matches * keyCount(curves[i]);
        }
        points += keys;
        _told.converted.push_back(name + ": " + counted(taken, "curve") + ", " +
                                  counted(keys, "key") + ", " +
                                  counted(_channels.size(), "channel"));
    }

    void addLoose(const osg::AnimationCurvePtr& curve) {
        const std::string key = channelOf(curve, false);
        const std::string name = "loose curve " + label(curve);
        if (matchesOf(key) == 0) {
            drop(name, noChannel(key));
            return;
        }
        const std::size_t keys = keyCount(curve);
        points += keys;
        _told.converted.push_back(name + ": " + counted(keys, "key") + " to channel " + key);
    }

    void addClip(const osg::AnimationClipPtr& clip) {
        drop("clip \"" + clip->getName() + '"', "animation nodes have no clips on tracks");
    }

    const NodeConversion& told() const { return _told; }
    std::size_t points = 0;

  private:
    std::size_t matchesOf(const std::string& key) const {
        return static_cast<std::size_t>(
            std::count_if(_channels.begin(), _channels.end(), [&](const kvOSGChannelData& channel) {
                return channel.fullName() == key;
            }));
    }

    static std::string label(const osg::AnimationCurvePtr& curve) {
        const std::string& name = curve->getBelongs2Attribute();
        return name.empty() ? curve->getAFFieldName() : name;
    }

    static std::string noChannel(const std::string& key) {
        return "the node has no channel \"" + key + '"';
    }

    void drop(const std::string& what, const std::string& why) {
        _told.dropped.push_back(what + ": " + why);
    }

    NodeConversion _told;
    Channels _channels;
};

Forecast forecastOf(const osg::NodePtr& node, const osg::AnimationAttachmentPtr& stored) {
    Forecast forecast(node);
    osg::MFAnimationBlockPtr& blocks = *stored->getMFBlocks();
    for (osg::UInt32 i = 0; i < blocks.getSize(); ++i)
        if (blocks[i] != osg::NullFC) forecast.addBlock(blocks[i]);
    osg::MFAnimationCurvePtr& curves = *stored->getMFCurves();
    for (osg::UInt32 i = 0; i < curves.getSize(); ++i)
        if (curves[i] != osg::NullFC) forecast.addLoose(curves[i]);
    osg::MFAnimationClipPtr& clips = *stored->getMFClips();
    for (osg::UInt32 i = 0; i < clips.getSize(); ++i)
        if (clips[i] != osg::NullFC) forecast.addClip(clips[i]);
    return forecast;
}

/// Points of the curve nodes on a scene node, those below its block nodes included.
std::size_t pointsOf(const osg::AnimAttachmentPtr& attachment) {
    std::vector<osg::NodePtr> open;
    osg::MFNodePtr& animations = *attachment->getMFAnimations();
    for (osg::UInt32 i = 0; i < animations.getSize(); ++i)
        open.push_back(animations[i]);
    std::size_t points = 0;
    while (!open.empty()) {
        const osg::NodePtr one = open.back();
        open.pop_back();
        if (one == osg::NullFC) continue;
        const osg::AnimCurvePtr curve = osg::AnimCurvePtr::dcast(one->getCore());
        if (curve != osg::NullFC) points += curve->getNPoints();
        for (osg::UInt32 i = 0; i < one->getNChildren(); ++i)
            open.push_back(one->getChild(i));
    }
    return points;
}

std::size_t pointsOf(const Scene& scene) {
    std::size_t points = 0;
    std::set<osg::UInt32> seen; // one attachment can hang on several nodes
    for (const osg::NodePtr& node : scene.nodes()) {
        const osg::AnimAttachmentPtr attachment = kvAnimManager::getAnimAttachment(node);
        if (attachment != osg::NullFC && seen.insert(osg::getContainerId(attachment)).second)
            points += pointsOf(attachment);
    }
    return points;
}

} // namespace

Conversion convertScene(const Scene& scene) {
    Conversion conversion;
    std::size_t expected = 0;
    for (const osg::NodePtr& node : scene.nodes()) {
        const osg::AnimationAttachmentPtr stored =
            kvAnimationAttachmentInteraction::getAnimationAttachment(node, false);
        if (stored == osg::NullFC) continue;
        const Forecast forecast = forecastOf(node, stored);
        expected += forecast.points;
        if (!forecast.told().converted.empty() || !forecast.told().dropped.empty())
            conversion.nodes.push_back(forecast.told());
    }
    const std::size_t before = pointsOf(scene);
    kvAnimationConverter::convert(scene.root());
    conversion.points = pointsOf(scene) - before;
    if (conversion.points != expected)
        throw InputError(scene.file(), "conversion gave " + std::to_string(conversion.points) +
                                           " points instead of " + std::to_string(expected));
    return conversion;
}

} // namespace kvanim
