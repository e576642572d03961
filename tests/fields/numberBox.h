#pragma once

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGMFMathTypes.h>
#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeCore.h>
#include <OpenSG/OSGNodeFields.h>
#include <OpenSG/OSGSFBaseTypes.h>
#include <OpenSG/OSGSFMathTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
#include <OpenSG/OSGSFVecTypes.h>

#include <OSGContainerTable.h>

#include <vector>

// A node core with a field of every kind that can be animated, and some that cannot, which tells
// what it was told of edits.

OSG_BEGIN_NAMESPACE

class NumberBox;
typedef FCPtr<NodeCorePtr, NumberBox> NumberBoxPtr;

#define KV_NUMBER_BOX_FIELDS(VALUE, VALUES, POINTER, LIST)                                         \
    VALUE(SFBool, Flag, "flag")                                                                    \
    VALUE(SFInt8, Small, "small")                                                                  \
    VALUE(SFUInt8, Byte, "byte")                                                                   \
    VALUE(SFInt16, Short, "short")                                                                 \
    VALUE(SFInt32, Count, "count")                                                                 \
    VALUE(SFUInt32, Bits, "bits")                                                                  \
    VALUE(SFInt64, Wide, "wide")                                                                   \
    VALUE(SFUInt64, WideBits, "wideBits")                                                          \
    VALUE(SFReal32, Amount, "amount")                                                              \
    VALUE(SFReal64, Precise, "precise")                                                            \
    VALUE(SFReal32, FieldOfView, "fieldOfView")                                                    \
    VALUE(SFVec2f, Pair, "pair")                                                                   \
    VALUE(SFVec3f, Direction, "direction")                                                         \
    VALUE(SFVec4f, Four, "four")                                                                   \
    VALUE(SFPnt3f, Place, "place")                                                                 \
    VALUE(SFVec3s, ShortVector, "shortVector")                                                     \
    VALUE(SFColor3f, Tint, "tint")                                                                 \
    VALUE(SFColor4f, Glow, "glow")                                                                 \
    VALUE(SFMatrix, Frame, "frame")                                                                \
    VALUE(SFQuaternion, Turn, "turn")                                                              \
    VALUE(SFString, Label, "label")                                                                \
    VALUE(SFDynamicVolume, Box, "box")                                                             \
    VALUES(MFReal32, Weights, "weights")                                                           \
    VALUES(MFVec3f, Points, "points")                                                              \
    VALUES(MFBool, Switches, "switches")                                                           \
    VALUES(MFInt32, Counts, "counts")                                                              \
    VALUES(MFVec3s, ShortVectors, "shortVectors")                                                  \
    VALUES(MFVec2ub, BytePairs, "bytePairs")                                                       \
    VALUES(MFPnt2s, ShortPoints, "shortPoints")                                                    \
    VALUES(MFColor4ub, ByteColors, "byteColors")                                                   \
    VALUES(MFString, Labels, "labels")                                                             \
    POINTER(SFNodePtr, Target, "target")

class NumberBox : public NodeCore {
    KV_REACTING_CONTAINER_DECL(NumberBox, NodeCore, KV_NUMBER_BOX_FIELDS, KV_ROW_NOTHING)

    struct Edit {
        BitVector mask;
        UInt32 origin;
    };

    /// Every edit of a box that ended since the list was emptied last.
    static std::vector<Edit>& edits();

    virtual void dump(UInt32 = 0, const BitVector = 0) const {}
};

KV_CONTAINER_INLINE(NumberBox)

OSG_END_NAMESPACE
