#pragma once

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGReal32Fields.h>

#include <OSGContainerTable.h>
#include <OSGTransform3D.h>

#include <tuple>
#include <vector>

OSG_BEGIN_NAMESPACE

class RecordingTransform;
typedef FCPtr<Transform3DPtr, RecordingTransform> RecordingTransformPtr;

#define KV_RECORDING_TRANSFORM_FIELDS(VALUE, VALUES, POINTER, LIST)                                \
    VALUE(SFReal32, Amount, "amount")

/// A transform that tells of the ends of its edits.
class RecordingTransform : public Transform3D {
    KV_REACTING_CONTAINER_DECL(RecordingTransform, Transform3D, KV_RECORDING_TRANSFORM_FIELDS,
                               KV_ROW_NOTHING)

    /// Container, mask, origin and, of what was written, the amount and a translation.
    typedef std::tuple<UInt32, BitVector, UInt32, Real32, Real32> Edit;

    /// Of all of them, in order.
    static std::vector<Edit>& edits();
};

KV_CONTAINER_INLINE(RecordingTransform)

OSG_END_NAMESPACE
