// One stored curve: its keys as they stand in the file, what it is bound to, and the values that it
// will have once it is loaded.
#include "storedCurveCheck.h"

#include "numbers.h"
#include "scene.h"
#include "segmentCheck.h"

#include <kvAnimationCurve.h>
#include <kvAnimationUtils2.h>

#include <OpenSG/OSGFieldContainerFactory.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace kvanim {
namespace {

// Above this whole frames are no longer told apart in single precision.
constexpr float kLargestExactFrame = 16777216.0F;

/// The stored index of the key that loading keeps at each frame: the last one there.
using KeyAtFrame = std::unordered_map<float, std::size_t>;

bool isFinite(const osg::Vec2f& point) {
    return std::isfinite(point[0]) && std::isfinite(point[1]);
}

class KeyCheck {
  public:
    KeyCheck(const Place& place, Findings& findings) : _place(place), _findings(findings) {}

    KeyAtFrame check(const osg::AnimationCurvePtr& curve) {
        KeyAtFrame found;
        float latest = -std::numeric_limits<float>::infinity();
        osg::MFAnimationControlPointPtr& keys = *curve->getMFControlPoints();
        for (osg::UInt32 i = 0; i < keys.getSize(); ++i) {
            if (keys[i] == osg::NullFC) continue;
            checkNumbers(i, keys[i]);
            const float frame = keys[i]->getControlPoint()[0];
            if (std::isnan(frame)) continue;
            const auto [earlier, isNew] = found.insert({frame, i});
            if (!isNew) {
                report("equal-frames", i, frame,
                       "key " + std::to_string(earlier->second) +
                           " is at the same frame; loading keeps the later one only");
                earlier->second = i;
            } else if (frame < latest) {
                report("unsorted-frames", i, frame,
                       "the key is stored behind one at frame " + shortest(latest));
            }
            latest = (std::max)(latest, frame);
        }
        return found;
    }

  private:
    void checkNumbers(std::size_t index, const osg::AnimationControlPointPtr& key) {
        const float frame = key->getControlPoint()[0];
        std::string what;
        if (!isFinite(key->getControlPoint())) what = "the key";
        if (!isFinite(key->getInTangent())) what += (what.empty() ? "" : ", ") + kIncoming;
        if (!isFinite(key->getOutTangent())) what += (what.empty() ? "" : ", ") + kOutgoing;
        if (!what.empty()) report("not-finite", index, frame, what + ": not a finite number");
        if (std::isfinite(frame) && std::fabs(frame) > kLargestExactFrame)
            report("imprecise-frame", index, frame,
                   "whole frames are not told apart in single precision here");
    }

    void report(const char* kind, std::size_t key, float frame, const std::string& reason) {
        _findings.push_back({kind, _place, key, frame, {}, reason});
    }

    const std::string kIncoming = "the incoming handle";
    const std::string kOutgoing = "the outgoing handle";
    const Place& _place;
    Findings& _findings;
};

/// As the importer does it.
void load(const osg::AnimationCurvePtr& stored, kvAnimationCurve& curve) {
    curve.setAppropriateNode(stored->getAppropriateNode());
    kvAnimationUtils2::createAnimationField(stored, &curve);
    osg::MFAnimationControlPointPtr& keys = *stored->getMFControlPoints();
    for (osg::UInt32 i = 0; i < keys.getSize(); ++i) {
        if (keys[i] == osg::NullFC) continue;
        const osg::Vec2f &key = keys[i]->getControlPoint(), &in = keys[i]->getInTangent(),
                         &out = keys[i]->getOutTangent();
        curve.importControlPoint(key[0], key[1], in[0], in[1], out[0], out[1],
                                 static_cast<int>(keys[i]->getTangentType()));
    }
}

/// Fields are written by their name and position; what is no field, by the name of the binding.
Binding scalarOf(const kvAnimationUtils2::AnimationField& field) {
    const osg::FieldContainerPtr container =
        osg::FieldContainerFactory::the()->getContainer(field.fcId);
    if (container == osg::NullFC) return std::nullopt;
    const bool isField =
        container->getType().findFieldDescription(field.globalFieldName.c_str()) != nullptr;
    if (isField) return DrivenScalar{field.fcId, field.globalFieldName, field.valuePosition};
    return DrivenScalar{field.fcId, "special " + field.fieldName, 0};
}

void checkValues(kvAnimationCurve& curve, const KeyAtFrame& stored, const Place& place, int samples,
                 Findings& findings) {
    const std::vector<kvControlPoint>& keys = static_cast<const kvAnimationCurve&>(curve).getCPs();
    if (keys.size() < 2) {
        findings.push_back({"no-value",
                            place,
                            {},
                            {},
                            {},
                            std::to_string(keys.size()) + (keys.size() == 1 ? " key" : " keys") +
                                ": a curve has no value with fewer than two"});
    }
    for (const SegmentFault& fault : segmentFaults(curve, samples)) {
        const auto at = stored.find(static_cast<float>(keys[fault.key].getPoint().x));
        const std::size_t index = at == stored.end() ? fault.key : at->second;
        const char* kind = fault.backwards ? "time-backwards" : "no-value";
        const char* reason = fault.backwards ? "the handles make time run backwards"
                             : fault.whole   ? "no value anywhere between this key and the next"
                                             : "no value in a part of the segment";
        findings.push_back({kind, place, index, fault.first, fault.last, reason});
    }
}

} // namespace

void checkFrame(float frame, const Place& place, Findings& findings) {
    if (!std::isfinite(frame))
        findings.push_back({"not-finite", place, {}, frame, {}, "not a finite number"});
    else if (std::fabs(frame) > kLargestExactFrame)
        findings.push_back({"imprecise-frame",
                            place,
                            {},
                            frame,
                            {},
                            "whole frames are not told apart in single precision here"});
}

CurveChecker::CurveChecker(const Scene& scene, int samples) : _samples(samples) {
    for (const osg::NodePtr& node : scene.nodes())
        _nodes.insert(osg::getContainerId(node));
}

bool CurveChecker::isInScene(const osg::NodePtr& node) const {
    return node != osg::NullFC && _nodes.count(osg::getContainerId(node)) != 0;
}

Binding CurveChecker::check(const osg::AnimationCurvePtr& stored, Place place, bool sayNode,
                            Findings& findings) const {
    place.curve = stored->getBelongs2Attribute();
    const osg::NodePtr node = stored->getAppropriateNode();
    if (node != osg::NullFC) place.node = nameOf(node);
    const KeyAtFrame keys = KeyCheck(place, findings).check(stored);
    kvAnimationCurve curve(place.curve);
    load(stored, curve);

    const std::string& field = stored->getAFFieldName();
    // The id of a container is of another process; it says nothing without the node.
    const bool lostField = !field.empty() && !isInScene(stored->getAFAppNode());
    const kvAnimationUtils2::AnimationField bound = curve.getAnimationField();
    const auto report = [&](const char* kind, const std::string& reason) {
        findings.push_back({kind, place, {}, {}, {}, reason});
    };
    if (!isInScene(node)) {
        if (sayNode)
            report("node-gone", node == osg::NullFC ? "the curve has no node"
                                                    : "the curve's node is not in the scene");
    } else if (lostField) {
        report("field-gone", "the node of the bound field \"" + field + "\" is not in the scene");
    } else if (bound.fcId == 0) {
        report("field-gone",
               "the node has no field for \"" + (field.empty() ? place.curve : field) + '"');
    }
    checkValues(curve, keys, place, _samples, findings);
    if (lostField) return std::nullopt;
    return scalarOf(bound);
}

} // namespace kvanim
