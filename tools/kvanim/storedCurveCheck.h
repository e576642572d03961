#pragma once

#include "findings.h"

#include <OpenSG/OSGConfig.h>
#include <OSGAnimationCurve.h>

#include <cstdint>
#include <unordered_set>

namespace kvanim {

class Scene;

/// Which scalar of the scene graph a curve drives.
struct DrivenScalar {
    std::uint32_t container = 0;
    std::string field;
    unsigned position = 0;
};
using Binding = std::optional<DrivenScalar>;

/// Reports a frame that is no finite number or so large that the next whole frame is no number.
void checkFrame(float frame, const Place& place, Findings& findings);

/// Checks stored curves of one scene.
class CurveChecker {
  public:
    /// `samples` is the number of frames to evaluate in every segment.
    CurveChecker(const Scene& scene, int samples);

    bool isInScene(const osg::NodePtr& node) const;

    /// Checks one curve; answers what it drives, if it drives anything. `sayNode` false leaves
    /// out that its node is gone.
    Binding check(const osg::AnimationCurvePtr& curve, Place place, bool sayNode,
                  Findings& findings) const;

  private:
    std::unordered_set<osg::UInt32> _nodes;
    int _samples;
};

} // namespace kvanim
