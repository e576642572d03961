#pragma once

/// @file
/// The core of nodes that show primitives.

#include <OpenSG/OSGGeoProperty.h>
#include <OpenSG/OSGMaterialDrawable.h>

namespace osg {

class Geometry;
typedef FCPtr<MaterialDrawablePtr, Geometry> GeometryPtr;

/// The hidden rows have no use without a graphics card; they are there because `vbo` has the number
/// 27 and the number of a field is its place among the descriptions.
#define OSG_GEOMETRY_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                                \
    POINTER(SFGeoPTypesPtr, Types, "types")                                                        \
    POINTER(SFGeoPLengthsPtr, Lengths, "lengths")                                                  \
    POINTER(SFGeoPositionsPtr, Positions, "positions")                                             \
    POINTER(SFGeoNormalsPtr, Normals, "normals")                                                   \
    POINTER(SFGeoColorsPtr, Colors, "colors")                                                      \
    POINTER(SFGeoColorsPtr, SecondaryColors, "secondaryColors")                                    \
    POINTER(SFGeoTexCoordsPtr, TexCoords, "texCoords")                                             \
    POINTER(SFGeoTexCoordsPtr, TexCoords1, "texCoords1")                                           \
    POINTER(SFGeoTexCoordsPtr, TexCoords2, "texCoords2")                                           \
    POINTER(SFGeoTexCoordsPtr, TexCoords3, "texCoords3")                                           \
    POINTER(SFGeoTexCoordsPtr, TexCoords4, "texCoords4")                                           \
    POINTER(SFGeoTexCoordsPtr, TexCoords5, "texCoords5")                                           \
    POINTER(SFGeoTexCoordsPtr, TexCoords6, "texCoords6")                                           \
    POINTER(SFGeoTexCoordsPtr, TexCoords7, "texCoords7")                                           \
    POINTER(SFGeoIndicesPtr, Indices, "indices")                                                   \
    LIST(MFUInt16, IndexMapping, "indexMapping")                                                   \
    VALUE(SFBool, DlistCache, "dlistCache", true)                                                  \
    HIDDEN(SFInt32, GLId, "GLId")                                                                  \
    HIDDEN(SFInt32, GLId2, "GLId2")                                                                \
    HIDDEN(SFInt32, GLId3, "GLId3")                                                                \
    HIDDEN(SFInt32, GLId4, "GLId4")                                                                \
    HIDDEN(SFInt32, GLId5, "GLId5")                                                                \
    HIDDEN(SFInt32, GLId6, "GLId6")                                                                \
    VALUE(SFBool, Vbo, "vbo")

OSG_TABLE_BASE(Geometry, MaterialDrawable, OSG_GEOMETRY_FIELDS)

/// Primitives: entry i of `types` is the kind of primitive i as OpenGL numbers them, entry i of
/// `lengths` the number of its vertices. The lists may be shared between geometries.
///
/// Without `indices` the vertices take positions, normals, colours and texture coordinates one
/// after the other. With indices and an empty `indexMapping` each index says which of all of them.
/// Otherwise each vertex has as many indices as `indexMapping` has entries, and the bits of an
/// entry (MapPosition, MapNormal, ...) say which lists its index is for.
class Geometry : public GeometryBase {
    OSG_TABLE_MEMBERS(Geometry)

  public:
    enum {
        MapPosition = 1,
        MapNormal = MapPosition << 1,
        MapColor = MapNormal << 1,
        MapSecondaryColor = MapColor << 1,
        MapTexCoords = MapSecondaryColor << 1,
        MapTexCoords1 = MapTexCoords << 1,
        MapTexCoords2 = MapTexCoords1 << 1,
        MapTexCoords3 = MapTexCoords2 << 1,
        MapTexCoords4 = MapTexCoords3 << 1,
        MapTexCoords5 = MapTexCoords4 << 1,
        MapTexCoords6 = MapTexCoords5 << 1,
        MapTexCoords7 = MapTexCoords6 << 1,
        MapEmpty = MapTexCoords7 << 1
    };

    /// Adds all positions, used by a primitive or not.
    void adjustVolume(Volume& volume) override;

    /// An edit of the positions, also inside their list, invalidates the volumes of the nodes that
    /// use the core.
    void changed(BitVector whichField, UInt32 origin) override;
};

OSG_TABLE_INLINE(Geometry)

} // namespace osg
