#pragma once

// Random clips that go into a scene, into a file, out of it and out of the scene again. Whatever is
// read back must be what was there before, to the last bit of every number.

#include "persistence/persistenceFixture.h"

#include <kvAnimationUtils2.h>

#include <OpenSG/OSGSceneFileHandler.h>

#include <rapidcheck.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace kv::test {

using Interaction = kvAnimationAttachmentInteraction;

// --- random clips: of everything, only what the stored form keeps. Activity of items is not kept
// inside a clip, so it stays as it is by default; identifiers are drawn anew.

inline float bitsAsFloat(std::uint32_t bits) {
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Any number that is one, from the denormal to the greatest.
inline rc::Gen<float> anyValue() {
    return rc::gen::map(rc::gen::arbitrary<std::uint32_t>(), [](std::uint32_t bits) {
        const float value = bitsAsFloat(bits);
        return value - value == 0.0F ? value : bitsAsFloat(bits & 0x3FFFFFFFU);
    });
}

// Halves, thirds (no end in binary), and neighbouring numbers.
inline rc::Gen<float> frame() {
    return rc::gen::oneOf(rc::gen::map(rc::gen::inRange(-2000, 2000),
                                       [](int i) { return 0.5F * static_cast<float>(i); }),
                          rc::gen::map(rc::gen::inRange(-30000, 30000),
                                       [](int i) { return static_cast<float>(i) / 3.0F; }),
                          rc::gen::map(rc::gen::inRange(0, 64), [](int i) {
                              return 1000.0F + 0.00006103515625F * static_cast<float>(i);
                          }));
}

inline std::string name() {
    return *rc::gen::element<std::string>("", "walk", "two words", "say \"hi\"", "back\\slash",
                                          "two\nlines", "gr\xc3\xbc\xc3\x9f", "[0, { }]", "# 1");
}

inline kvAnimationCurve* randomCurve(const osg::NodePtr& node) {
    auto* const curve = new kvAnimationCurve(*rc::gen::element<std::string>(
        "translateX", "translateY", "translateZ", "scaleX", "scaleY", "scaleZ", "unheardOf"));
    if (*rc::gen::inRange(0, 5) > 0) {
        curve->setAppropriateNode(node);
        kvAnimationUtils2::createAnimationField(curve);
    }
    std::vector<float> frames =
        *rc::gen::container<std::vector<float>>(*rc::gen::inRange<std::size_t>(0, 7), frame());
    std::sort(frames.begin(), frames.end());
    frames.erase(std::unique(frames.begin(), frames.end()), frames.end());
    if (*rc::gen::arbitrary<bool>()) std::reverse(frames.begin(), frames.end());
    for (const float x : frames)
        curve->importControlPoint(x, *anyValue(), *anyValue(), *anyValue(), *anyValue(),
                                  *anyValue(), kvControlPoint::User);
    return curve;
}

inline kvAnimationBlock* randomBlock(const osg::NodePtr& node) {
    auto* const block = new kvAnimationBlock(node, name());
    block->setCameraBlock(*rc::gen::arbitrary<bool>());
    block->setAnimatedType(*rc::gen::arbitrary<unsigned char>());
    block->setFliped(*rc::gen::arbitrary<bool>());
    block->setRepeat(*rc::gen::arbitrary<bool>());
    block->setMotionBlur(*rc::gen::arbitrary<bool>());
    for (int i = *rc::gen::inRange(0, 3); i > 0; --i)
        block->addCurve(randomCurve(node));
    return block;
}

inline std::unique_ptr<kvAnimationClip> randomClip(const osg::NodePtr& node, int depth) {
    auto clip = std::make_unique<kvAnimationClip>(name());
    clip->setRepeat(*rc::gen::arbitrary<bool>());
    // While the clip and its tracks are empty, so that nothing is mirrored or pushed down: a
    // block's own flags are random, too.
    clip->setFliped(*rc::gen::arbitrary<bool>());
    clip->setMotionBlur(*rc::gen::arbitrary<bool>());
    for (int i = *rc::gen::inRange(0, 4); i > 0; --i) {
        const int index = clip->createTrack();
        kvAnimationTrack& track = *clip->getTrack(index);
        track.setActive(*rc::gen::arbitrary<bool>());
        track.setFliped(*rc::gen::arbitrary<bool>());
        track.setMotionBlur(*rc::gen::arbitrary<bool>());
        for (int items = *rc::gen::inRange(0, 3); items > 0; --items)
            RC_ASSERT(clip->insertBlock(randomBlock(node), index));
        for (int items = *rc::gen::inRange(0, 3); items > 0; --items) {
            auto* const sequence = new kvAnimationSequence2(name());
            sequence->setStartFrame(*frame());
            sequence->setEndFrame(*frame()); // before its start, now and then
            RC_ASSERT(clip->insertSequence(sequence, index));
        }
        if (depth == 0) continue;
        for (int items = *rc::gen::inRange(0, 2); items > 0; --items)
            RC_ASSERT(clip->insertSubclip(randomClip(node, depth - 1).release(), index));
    }
    return clip;
}

// --- everything that is read back, as text. Nodes are told as what they are to the scene at hand.

class Description {
  public:
    explicit Description(const osg::NodePtr& node) : _node(node) {}

    std::string of(kvAnimationClip& clip) {
        _out.str("");
        describe(clip, "");
        return _out.str();
    }

  private:
    void describe(kvAnimationClip& clip, const std::string& indent) {
        _out << indent << "clip '" << clip.getName() << '\''
             << flags({clip.getFliped(), clip.getRepeat(), clip.getMotionBlur(), clip.getActive()})
             << range(clip.getStartFrame(), clip.getEndFrame()) << '\n';
        for (const kvAnimationTrack* track : clip.getTracks()) {
            _out << indent << " track " << track->getNumber()
                 << flags({track->getActive(), track->getFliped(), track->getMotionBlur()}) << '\n';
            for (const kvAnimationBlock* block : track->getBlocks())
                describe(*block, indent + "  ");
            for (const kvAnimationSequence2* sequence : track->getSequences())
                _out << indent << "  sequence '" << sequence->getSequence() << '\''
                     << range(sequence->getStartFrame(), sequence->getEndFrame())
                     << flags({sequence->getDirty(), sequence->getActive()}) << '\n';
            for (kvAnimationClip* sub : track->getClips())
                describe(*sub, indent + "  ");
        }
    }

    void describe(const kvAnimationBlock& block, const std::string& indent) {
        _out << indent << "block '" << block.getBlockName() << "' type "
             << static_cast<int>(block.getAnimatedType())
             << flags({block.isCameraBlock(), block.getFliped(), block.getRepeat(),
                       block.getMotionBlur(), block.getActive()})
             << range(block.getStartFrame(), block.getEndFrame())
             << nodeName(block.getAppropriateNode()) << '\n';
        for (const kvAnimationCurve* curve : block.getBlockCurves())
            describe(*curve, indent + "  ");
    }

    void describe(const kvAnimationCurve& curve, const std::string& indent) {
        const kvAnimationUtils2::AnimationField field = curve.getAnimationField();
        _out << indent << "curve " << curve.getAnimatedAttribute()
             << nodeName(curve.getAppropriateNode()) << ", bound to" << nodeName(field.node)
             << containerName(field.fcId) << ' ' << field.fieldName << ' ' << field.globalFieldName
             << ' ' << field.valuePosition << number(field.value) << flags({field.dirty}) << '\n';
        for (const kvControlPoint& key : curve.getCPs()) {
            _out << indent << ' ' << key.getTangentType();
            for (const kvControlPoint::Point point :
                 {key.getPoint(), key.getInTangent(), key.getOutTangent()})
                _out << number(point.x) << number(point.y);
            _out << '\n';
        }
    }

    static std::string number(double value) {
        char digits[64];
        std::snprintf(digits, sizeof digits, " %a", value);
        return digits;
    }

    static std::string range(float first, float last) {
        return number(static_cast<double>(first)) + " ..." + number(static_cast<double>(last));
    }

    static std::string flags(std::initializer_list<bool> values) {
        std::string text = " ";
        for (const bool value : values)
            text += value ? '1' : '0';
        return text;
    }

    std::string nodeName(const osg::NodePtr& node) const {
        return node == osg::NullFC ? " no node" : node == _node ? " the node" : " ANOTHER NODE";
    }

    std::string containerName(std::uint32_t id) const {
        return id == 0                                       ? " nothing"
               : id == osg::getContainerId(_node->getCore()) ? " its core"
                                                             : " ANOTHER";
    }

    osg::NodePtr _node;
    std::ostringstream _out;
};

// A scene that was read; what refers to the node that holds it is emptied before it goes.
class ReadScene {
  public:
    ReadScene(std::stringstream& stream, const char* format)
        : _top(osg::SceneFileHandler::the().read(stream, format, NULL)) {
        RC_ASSERT(_top != osg::NullFC);
        osg::addRefCP(_top);
        // The text format puts what was written under a group of its own.
        _root = std::string(format) == "osg" ? _top->getChild(0) : _top;
    }
    ~ReadScene() {
        if (_top == osg::NullFC) return;
        Interaction::cleanAnimationAttachment(_root, false);
        osg::subRefCP(_top);
    }
    ReadScene(const ReadScene&) = delete;
    ReadScene& operator=(const ReadScene&) = delete;

    const osg::NodePtr& root() const { return _root; }

  private:
    osg::NodePtr _top;
    osg::NodePtr _root;
};

class ClipRoundTrip : public kv::test::PersistenceFixture {
  protected:
    // The root holds the clips, the mover under it is what they animate.
    osg::NodePtr root = makeGroup();
    osg::NodePtr mover = makeTransform(root);

    void check(const char* format) {
        const std::unique_ptr<kvAnimationClip> clip = randomClip(mover, 2);
        clip->updateBounds();
        const std::string before = Description(mover).of(*clip);

        manager().clear(true);
        manager().getClips()->push_back(clip.get());
        manager().exportClips(root, false);
        manager().clear(true);
        std::stringstream stream;
        RC_ASSERT(osg::SceneFileHandler::the().write(root, stream, format));

        const ReadScene scene(stream, format);
        const osg::NodePtr readMover = scene.root()->getChild(0);
        manager().importClips(scene.root(), readMover, false);
        RC_ASSERT(manager().getClips()->size() == 1U);
        const std::unique_ptr<kvAnimationClip> read(manager().getClips()->front());
        manager().clear(true);
        RC_ASSERT(Description(readMover).of(*read) == before);
        RC_ASSERT(read->getId() != clip->getId());
    }
};

} // namespace kv::test
