// What playback asks of frame evaluation.

#include "playback/evaluation.h"

namespace kv {
namespace detail {

void evaluate(kvAnimationManager2* manager, kvAnimationBlock* block, float frame,
              bool ignoreActivity, FieldSink& records) {
    if (manager != nullptr) evaluateFields(records, block, frame, false, ignoreActivity);
}

void evaluate(kvAnimationManager2* manager, kvAnimationClip* clip, float frame, bool ignoreActivity,
              FieldSink& records) {
    if (manager != nullptr) evaluateFields(records, clip, frame, false, ignoreActivity);
}

void evaluateSelected(kvAnimationManager2* manager, float frame, FieldSink& records) {
    if (manager != nullptr) evaluateFields(records, *manager->getSelectedCurves(), frame);
}

} // namespace detail
} // namespace kv
