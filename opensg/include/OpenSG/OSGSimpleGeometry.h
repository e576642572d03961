#pragma once

/// @file
/// Ready-made geometries with normals, texture coordinates and the default material. Their centre
/// is the origin.

#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGNode.h>

namespace osg {

/// A rectangle in the plane of x and y, seen from +z, of `horizontal` times `vertical` cells.
/// Null when one of the two is 0.
GeometryPtr makePlaneGeo(Real32 xSize, Real32 ySize, UInt16 horizontal, UInt16 vertical);
NodePtr makePlane(Real32 xSize, Real32 ySize, UInt16 horizontal, UInt16 vertical);

/// A box whose sides are divided into cells along x, y and z. Null when one of the three is 0.
GeometryPtr makeBoxGeo(Real32 xSize, Real32 ySize, Real32 zSize, UInt16 horizontal, UInt16 vertical,
                       UInt16 depth);
NodePtr makeBox(Real32 xSize, Real32 ySize, Real32 zSize, UInt16 horizontal, UInt16 vertical,
                UInt16 depth);

/// A sphere of circles of latitude and longitude, its poles on the y axis. Null for fewer than 2
/// and 3 of them.
GeometryPtr makeLatLongSphereGeo(UInt16 latitudes, UInt16 longitudes, Real32 radius);
NodePtr makeLatLongSphere(UInt16 latitudes, UInt16 longitudes, Real32 radius);

} // namespace osg
