// What playback asks of frame evaluation.

#include "playback/evaluation.h"

#include "manager/frameEvaluation.h"

namespace kv {
namespace detail {

void appendFields(kvAnimationManager2* manager, kvAnimationBlock* block, float frame,
                  bool ignoreActivity, FieldList& fields) {
    if (manager != nullptr) appendUpdatedFields(fields, block, frame, false, ignoreActivity);
}

void appendFields(kvAnimationManager2* manager, kvAnimationClip* clip, float frame,
                  bool ignoreActivity, FieldList& fields) {
    if (manager != nullptr) appendUpdatedFields(fields, clip, frame, false, ignoreActivity);
}

void appendSelectedFields(kvAnimationManager2* manager, float frame, FieldList& fields) {
    if (manager != nullptr) appendUpdatedFields(fields, *manager->getSelectedCurves(), frame);
}

void writeFields(const FieldList& fields) {
    for (const kvAnimationUtils2::AnimationField& field : fields) {
        kvAnimationUtils2::setRealFieldValue(field);
    }
}

} // namespace detail
} // namespace kv
