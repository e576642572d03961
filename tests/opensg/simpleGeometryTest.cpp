// Lists of geometry that store less than they are given, and the simple shapes.
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGSimpleGeometry.h>

#include <gtest/gtest.h>

namespace {

using osg::Color3f;
using osg::Geometry;
using osg::GeometryPtr;
using osg::Pnt3f;
using osg::Vec3f;

/// Checks that the lists fit together and that all triangles of the strips face outwards from a
/// point inside.
void expectSoundStrips(const GeometryPtr& geometry, const Pnt3f& inside) {
    const osg::GeoIndicesPtr indices = geometry->getIndices();
    const osg::GeoPositionsPtr positions = geometry->getPositions();
    ASSERT_EQ(geometry->getTypes()->getSize(), geometry->getLengths()->getSize());
    ASSERT_EQ(geometry->getNormals()->getSize(), positions->getSize());
    ASSERT_EQ(geometry->getTexCoords()->getSize(), positions->getSize());
    osg::UInt32 next = 0;
    for (osg::UInt32 strip = 0; strip < geometry->getTypes()->getSize(); ++strip) {
        // Strips of quadrilaterals or, in OpenSG, of triangles: their corners stand in one order.
        const unsigned type = geometry->getTypes()->getValue(strip);
        EXPECT_TRUE(type == 8 || type == 5) << type;
        const osg::UInt32 length = geometry->getLengths()->getValue(strip);
        ASSERT_LE(next + length, indices->getSize());
        for (osg::UInt32 i = 0; i + 3 < length; i += 2) {
            Pnt3f corner[4];
            for (osg::UInt32 k = 0; k < 4; ++k) {
                const osg::UInt32 index = indices->getValue(next + i + k);
                ASSERT_LT(index, positions->getSize());
                corner[k] = positions->getValue(index);
            }
            // Two steps of a strip go round as 0, 1, 3, 2.
            const Vec3f normal = (corner[1] - corner[0]).cross(corner[3] - corner[0]) +
                                 (corner[3] - corner[0]).cross(corner[2] - corner[0]);
            EXPECT_GT(normal.dot(corner[0] - inside), 0.f) << "strip " << strip << " at " << i;
            EXPECT_GT(normal.dot(geometry->getNormals()->getValue(indices->getValue(next + i))),
                      0.f);
        }
        next += length;
    }
    EXPECT_EQ(next, indices->getSize());
}

TEST(GeoProperty, convertsToWhatItStores) {
    osg::GeoPositions2fPtr flat = osg::GeoPositions2f::create();
    osg::GeoPositions3sPtr whole = osg::GeoPositions3s::create();
    osg::GeoColors4fPtr colors = osg::GeoColors4f::create();
    osg::GeoTexCoords1fPtr line = osg::GeoTexCoords1f::create();
    for (const osg::AttachmentPtr& list : {osg::AttachmentPtr(flat), osg::AttachmentPtr(whole),
                                           osg::AttachmentPtr(colors), osg::AttachmentPtr(line)})
        addRefCP(list);

    flat->push_back(Pnt3f(1, 2, 3));
    EXPECT_EQ(flat->getValue(0), Pnt3f(1, 2, 0));
    whole->push_back(Pnt3f(1, -2, 3));
    EXPECT_EQ((*whole->getFieldPtr())[0], osg::Pnt3s(1, -2, 3));
    colors->push_back(Color3f(.1f, .2f, .3f));
    EXPECT_EQ((*colors->getFieldPtr())[0], osg::Color4f(.1f, .2f, .3f, 1));
    line->push_back(osg::Vec2f(.25f, 9));
    EXPECT_EQ(line->getValue(0), osg::Vec2f(.25f, 0));

    subRefCP(flat);
    subRefCP(whole);
    subRefCP(colors);
    subRefCP(line);
}

TEST(SimpleGeometry, boxFacesOutwards) {
    GeometryPtr box = osg::makeBoxGeo(1, 2, 3, 2, 3, 4);
    addRefCP(box);
    expectSoundStrips(box, Pnt3f());
    // two faces each of 2 x 3, 4 x 3 and 2 x 4 cells
    EXPECT_EQ(box->getPositions()->getSize(), 2u * (3 * 4 + 5 * 4 + 3 * 5));
    EXPECT_EQ(box->getMaterial(), osg::getDefaultMaterial());
    subRefCP(box);
}

TEST(SimpleGeometry, planeIsSeenFromPositiveZ) {
    GeometryPtr plane = osg::makePlaneGeo(2, 4, 3, 5);
    addRefCP(plane);
    expectSoundStrips(plane, Pnt3f(0, 0, -1));
    EXPECT_EQ(plane->getPositions()->getSize(), 4u * 6u);
    EXPECT_EQ(plane->getPositions()->getValue(0), Pnt3f(-1, -2, 0));
    subRefCP(plane);
}

TEST(SimpleGeometry, sphereHasItsRadius) {
    GeometryPtr sphere = osg::makeLatLongSphereGeo(6, 9, 2);
    addRefCP(sphere);
    expectSoundStrips(sphere, Pnt3f());
    for (osg::UInt32 i = 0; i < sphere->getPositions()->getSize(); ++i)
        EXPECT_NEAR(sphere->getPositions()->getValue(i).dist(Pnt3f()), 2, 1e-5);
    subRefCP(sphere);
}

} // namespace
