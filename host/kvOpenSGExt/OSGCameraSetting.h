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
#define KV_CAMERA_SETTING_FIELDS(VALUE, VALUES, POINTER, LIST)                                     \
    VALUE(SFBool, IsViewpoint, "isViewpoint")                                                      \
    VALUE(SFPnt3f, From, "from")                                                                   \
    VALUE(SFPnt3f, At, "at")                                                                       \
    VALUE(SFVec3f, Up, "up", Vec3f(0.0f, 1.0f, 0.0f))                                              \
    VALUE(SFReal32, FieldOfView, "fieldOfView", 0.78539819f)                                       \
    VALUE(SFReal32, Roll, "roll")                                                                  \
    VALUE(SFReal32, ShutterSpeed, "shutterSpeed")                                                  \
    VALUE(SFReal32, FocusDistance, "focusDistance")                                                \
    VALUE(SFReal32, ApertureDiameter, "apertureDiameter")                                          \
    VALUE(SFReal32, LensStop, "lensStop")                                                          \
    VALUE(SFReal32, LensLength, "lensLength")                                                      \
    VALUE(SFReal32, OrbitRadius, "orbitRadius")                                                    \
    VALUE(SFReal32, OrbitHeight, "orbitHeight")                                                    \
    VALUE(SFReal32, OrbitAngle, "orbitAngle")

/// A camera with a lens and an orbit around the point that it looks at.
///
/// The orbit is a cylinder about the vertical through `at`: `distance` is its radius,
/// `turnTableAngle` the direction from `at` to `from` in the horizontal plane, and `height` how far
/// `from` is above `at`. Setting one of the three moves `from` and leaves the other two as they
/// are.
///
/// The angle is in degrees. With y up it is measured from +x towards +z, with z up from +x towards
/// +y.
///
/// The three are remembered exactly as they were set (an angle of 370 stays 370, and nothing drifts
/// however often one of them is animated) for as long as `from` and `at` are where they put them.
/// Once `from` or `at` is edited elsewhere they are taken from there, the angle from 0 to below
/// 360; at distance 0, where there is no direction, the angle stays what it was.
///
/// Nothing here opens an edit bracket; end an edit after direct writes to the fields `from` and
/// `at`, so that the angle is remembered.
class KV_OPENSG_EXT_API CameraSetting : public NodeCore {
    KV_REACTING_CONTAINER_DECL(CameraSetting, NodeCore, KV_CAMERA_SETTING_FIELDS, KV_ROW_NOTHING)

    /// Tells whether z, not y, is up.
    typedef bool (*ZUpCB)(void);
    /// Null, the start value, means y. One for the whole process.
    static void setZUpCB(ZUpCB callback);

    /// @{
    /// The f-number; unitless.
    Real32 getFStop(void) const { return getLensStop(); }
    void setFStop(Real32 value) { setLensStop(value); }
    /// @}
    /// @{
    /// Millimetres by convention; nothing is computed from it.
    Real32 getFocalLength(void) const { return getLensLength(); }
    void setFocalLength(Real32 value) { setLensLength(value); }
    /// @}

    /// @{
    /// Radius of the orbit. A negative distance is set as its absolute value.
    Real32 getDistance(void) const { return getOrbit().radius; }
    void setDistance(Real32 value);
    /// @}
    /// @{
    /// Below 0 when `from` is below `at`.
    Real32 getHeight(void) const { return getOrbit().height; }
    void setHeight(Real32 value);
    /// @}
    /// @{
    /// Degrees around the up axis; remembered while the distance is 0.
    Real32 getTurnTableAngle(void) const { return getOrbit().degrees; }
    void setTurnTableAngle(Real32 degrees);
    /// @}

  private:
    struct Orbit {
        Real32 radius;
        Real32 height;
        Real32 degrees;
    };

    /// @{
    /// The stored orbit while it leads to `from`, else the one that does.
    Orbit getOrbit(void) const;
    void storeOrbit(const Orbit& orbit);
    Pnt3f pointOnOrbit(const Orbit& orbit) const;
    void moveOnOrbit(const Orbit& orbit);
    /// @}
};

KV_CONTAINER_INLINE(CameraSetting)

OSG_END_NAMESPACE
