#pragma once

/// @file
/// A camera as a node core.

#include <OpenSG/OSGBoolFields.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNodeCore.h>
#include <OpenSG/OSGPnt3fFields.h>
#include <OpenSG/OSGReal32Fields.h>
#include <OpenSG/OSGVec3fFields.h>

#include "OSGContainerTable.h"

OSG_BEGIN_NAMESPACE

class CameraSetting;
typedef FCPtr<NodeCorePtr, CameraSetting> CameraSettingPtr;

/// `fieldOfView` and `roll` are radians, `shutterSpeed` seconds, `orbitAngle` degrees; lengths are
/// in scene units. The last three rows hold what is reached through accessors of other names: no
/// field is called "fStop", "focalLength" or "turnTableAngle".
#define KV_CAMERA_SETTING_FIELDS(VALUE, POINTER, LIST)                                             \
    VALUE(SFBool, IsViewpoint, "isViewpoint")                                                      \
    VALUE(SFPnt3f, From, "from")                                                                   \
    VALUE(SFPnt3f, At, "at")                                                                       \
    VALUE(SFVec3f, Up, "up")                                                                       \
    VALUE(SFReal32, FieldOfView, "fieldOfView")                                                    \
    VALUE(SFReal32, Roll, "roll")                                                                  \
    VALUE(SFReal32, ShutterSpeed, "shutterSpeed")                                                  \
    VALUE(SFReal32, FocusDistance, "focusDistance")                                                \
    VALUE(SFReal32, ApertureDiameter, "apertureDiameter")                                          \
    VALUE(SFReal32, LensStop, "lensStop")                                                          \
    VALUE(SFReal32, LensLength, "lensLength")                                                      \
    VALUE(SFReal32, OrbitAngle, "orbitAngle")

/// A camera with a lens and an orbit around the point that it looks at.
///
/// The orbit is a cylinder about the vertical through `at`: `distance` is its radius,
/// `turnTableAngle` the direction from `at` to `from` in the horizontal plane, and `height` how far
/// `from` is above `at`. Setting one of the three moves `from` and leaves the other two as they
/// are.
///
/// The angle is in degrees. With y up it is measured from +x towards +z, with z up from +x towards
/// +y. It is remembered while the distance is 0, and as it was set (370 stays 370) for as long as
/// `from` and `at` are where it puts them; once one of them is edited elsewhere it is taken from
/// them, from 0 to below 360.
///
/// Nothing here opens an edit bracket; end an edit after direct writes to the fields `from` and
/// `at`, so that the angle follows.
class KV_OPENSG_EXT_API CameraSetting : public NodeCore {
    KV_REACTING_CONTAINER_DECL(CameraSetting, NodeCore, KV_CAMERA_SETTING_FIELDS)

    /// Tells whether z, not y, is up. Null, the start value, means y. One for the whole process.
    typedef bool (*ZUpCB)(void);
    static void setZUpCB(ZUpCB callback);

    /// The f-number; unitless.
    Real32 getFStop(void) const { return getLensStop(); }
    void setFStop(Real32 value) { setLensStop(value); }
    /// Millimetres by convention; nothing is computed from it.
    Real32 getFocalLength(void) const { return getLensLength(); }
    void setFocalLength(Real32 value) { setLensLength(value); }

    /// Radius of the orbit, never below 0 on reading. A negative distance is set as its absolute
    /// value.
    Real32 getDistance(void) const;
    void setDistance(Real32 value);
    /// Signed: below 0 when `from` is below `at`.
    Real32 getHeight(void) const;
    void setHeight(Real32 value);
    Real32 getTurnTableAngle(void) const;
    void setTurnTableAngle(Real32 degrees);

  private:
    void placeOnOrbit(Real32 distance, Real32 degrees);
};

KV_CONTAINER_INLINE(CameraSetting)

OSG_END_NAMESPACE
