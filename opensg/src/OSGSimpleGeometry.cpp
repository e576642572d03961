// Planes, boxes and spheres: grids of quadrilaterals, each row of cells one strip.

#include <OpenSG/OSGSimpleGeometry.h>

#include <cmath>

namespace osg {

namespace {

const UInt32 kQuadStrip = 8; // as OpenGL numbers it

/// The lists of a geometry while it grows.
class Builder {
  public:
    Builder()
        : _types(GeoPTypesUI8::create()), _lengths(GeoPLengthsUI32::create()),
          _positions(GeoPositions3f::create()), _normals(GeoNormals3f::create()),
          _texCoords(GeoTexCoords2f::create()), _indices(GeoIndicesUI32::create()) {}

    UInt32 addVertex(const Pnt3f& position, const Vec3f& normal, const Vec2f& texCoord) {
        _positions->push_back(position);
        _normals->push_back(normal);
        _texCoords->push_back(texCoord);
        return _positions->getSize() - 1;
    }

    /// Strips over a grid of vertices that begins with vertex `first`, rows of `columns` + 1 of
    /// them; the vertices of each next row are above or behind the last.
    void addGrid(UInt32 first, UInt32 columns, UInt32 rows) {
        for (UInt32 row = 0; row < rows; ++row) {
            const UInt32 lower = first + row * (columns + 1);
            for (UInt32 column = 0; column <= columns; ++column) {
                _indices->push_back(lower + columns + 1 + column);
                _indices->push_back(lower + column);
            }
            _types->push_back(kQuadStrip);
            _lengths->push_back(2 * (columns + 1));
        }
    }

    GeometryPtr finish() const {
        const GeometryPtr geometry = Geometry::create();
        beginEditCP(geometry);
        geometry->setMaterial(getDefaultMaterial());
        geometry->setTypes(_types);
        geometry->setLengths(_lengths);
        geometry->setPositions(_positions);
        geometry->setNormals(_normals);
        geometry->setTexCoords(_texCoords);
        geometry->setIndices(_indices);
        geometry->getIndexMapping().push_back(Geometry::MapPosition | Geometry::MapNormal |
                                              Geometry::MapTexCoords);
        endEditCP(geometry);
        return geometry;
    }

  private:
    GeoPTypesUI8Ptr _types;
    GeoPLengthsUI32Ptr _lengths;
    GeoPositions3fPtr _positions;
    GeoNormals3fPtr _normals;
    GeoTexCoords2fPtr _texCoords;
    GeoIndicesUI32Ptr _indices;
};

/// A rectangle from `corner` along two sides, seen from the side of their cross product.
void addRectangle(Builder& builder, const Pnt3f& corner, const Vec3f& right, const Vec3f& up,
                  UInt32 columns, UInt32 rows) {
    Vec3f normal = right.cross(up);
    const Real32 size = normal.length();
    if (size > 0) normal /= size;
    UInt32 first = 0;
    for (UInt32 row = 0; row <= rows; ++row) {
        const Real32 v = static_cast<Real32>(row) / static_cast<Real32>(rows);
        for (UInt32 column = 0; column <= columns; ++column) {
            const Real32 u = static_cast<Real32>(column) / static_cast<Real32>(columns);
            const UInt32 vertex =
                builder.addVertex(corner + right * u + up * v, normal, Vec2f(u, v));
            if (row == 0 && column == 0) first = vertex;
        }
    }
    builder.addGrid(first, columns, rows);
}

} // namespace

GeometryPtr makePlaneGeo(Real32 xSize, Real32 ySize, UInt16 horizontal, UInt16 vertical) {
    if (horizontal == 0 || vertical == 0) return NullFC;
    Builder builder;
    addRectangle(builder, Pnt3f(-xSize / 2, -ySize / 2, 0), Vec3f(xSize, 0, 0), Vec3f(0, ySize, 0),
                 horizontal, vertical);
    return builder.finish();
}

GeometryPtr makeBoxGeo(Real32 xSize, Real32 ySize, Real32 zSize, UInt16 horizontal, UInt16 vertical,
                       UInt16 depth) {
    if (horizontal == 0 || vertical == 0 || depth == 0) return NullFC;
    const Vec3f x(xSize, 0, 0);
    const Vec3f y(0, ySize, 0);
    const Vec3f z(0, 0, zSize);
    const Pnt3f low(-xSize / 2, -ySize / 2, -zSize / 2);
    Builder builder;
    addRectangle(builder, low + z, x, y, horizontal, vertical);   // front
    addRectangle(builder, low + x, -x, y, horizontal, vertical);  // back
    addRectangle(builder, low + x + z, -z, y, depth, vertical);   // right
    addRectangle(builder, low, z, y, depth, vertical);            // left
    addRectangle(builder, low + y + z, x, -z, horizontal, depth); // top
    addRectangle(builder, low, x, z, horizontal, depth);          // bottom
    return builder.finish();
}

GeometryPtr makeLatLongSphereGeo(UInt16 latitudes, UInt16 longitudes, Real32 radius) {
    if (latitudes < 2 || longitudes < 3) return NullFC;
    const Real64 pi = 3.14159265358979323846;
    Builder builder;
    for (UInt32 row = 0; row <= latitudes; ++row) {
        const Real64 v = static_cast<Real64>(row) / latitudes;
        const Real64 latitude = (v - .5) * pi;
        for (UInt32 column = 0; column <= longitudes; ++column) {
            const Real64 u = static_cast<Real64>(column) / longitudes;
            const Real64 longitude = u * 2 * pi;
            const Vec3f normal(static_cast<Real32>(std::cos(latitude) * std::sin(longitude)),
                               static_cast<Real32>(std::sin(latitude)),
                               static_cast<Real32>(std::cos(latitude) * std::cos(longitude)));
            builder.addVertex(Pnt3f() + normal * radius, normal,
                              Vec2f(static_cast<Real32>(u), static_cast<Real32>(v)));
        }
    }
    builder.addGrid(0, longitudes, latitudes);
    return builder.finish();
}

NodePtr makePlane(Real32 xSize, Real32 ySize, UInt16 horizontal, UInt16 vertical) {
    const GeometryPtr geometry = makePlaneGeo(xSize, ySize, horizontal, vertical);
    return geometry == NullFC ? NodePtr(NullFC) : makeNodeFor(geometry);
}

NodePtr makeBox(Real32 xSize, Real32 ySize, Real32 zSize, UInt16 horizontal, UInt16 vertical,
                UInt16 depth) {
    const GeometryPtr geometry = makeBoxGeo(xSize, ySize, zSize, horizontal, vertical, depth);
    return geometry == NullFC ? NodePtr(NullFC) : makeNodeFor(geometry);
}

NodePtr makeLatLongSphere(UInt16 latitudes, UInt16 longitudes, Real32 radius) {
    const GeometryPtr geometry = makeLatLongSphereGeo(latitudes, longitudes, radius);
    return geometry == NullFC ? NodePtr(NullFC) : makeNodeFor(geometry);
}

} // namespace osg
