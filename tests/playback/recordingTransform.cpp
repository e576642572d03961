// A transform that tells of the ends of its edits.

#include "playback/recordingTransform.h"

OSG_BEGIN_NAMESPACE

KV_CONTAINER_DEF(RecordingTransform, Transform3D, KV_RECORDING_TRANSFORM_FIELDS)

std::vector<RecordingTransform::Edit>& RecordingTransform::edits() {
    static std::vector<Edit> all;
    return all;
}

void RecordingTransform::changed(BitVector which, UInt32 origin) {
    edits().emplace_back(getContainerId(FieldContainerPtr(RecordingTransformPtr(*this))), which,
                         origin, getAmount(), getTranslation()[0]);
    countRead(which, origin);
    Inherited::changed(which, origin);
}

OSG_END_NAMESPACE
