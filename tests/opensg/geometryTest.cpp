// Geometry, its lists, the ready-made shapes, and volumes of nodes.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSimpleGeometry.h>
#include <OpenSG/OSGTransform.h>

#include <gtest/gtest.h>

namespace {

using osg::Color3f;
using osg::Geometry;
using osg::GeometryPtr;
using osg::GeoPositions3f;
using osg::GeoPositions3fPtr;
using osg::NodePtr;
using osg::NullFC;
using osg::Pnt3f;
using osg::Vec3f;

void expectBounds(const osg::DynamicVolume& volume, const Pnt3f& low, const Pnt3f& high) {
    Pnt3f minimum, maximum;
    volume.getBounds(minimum, maximum);
    EXPECT_TRUE(minimum.equals(low, 1e-5f)) << minimum << " instead of " << low;
    EXPECT_TRUE(maximum.equals(high, 1e-5f)) << maximum << " instead of " << high;
}

TEST(GeoProperty, isUsedThroughItsKind) {
    osg::GeoPositionsPtr positions = GeoPositions3f::create();
    addRefCP(positions);
    EXPECT_TRUE(positions->empty());
    positions->push_back(Pnt3f(1, 2, 3));
    positions->push_back(Pnt3f(4, 5, 6));
    positions->setValue(Pnt3f(7, 8, 9), 0);
    EXPECT_EQ(positions->getSize(), 2u);
    EXPECT_EQ(positions->getValue(0), Pnt3f(7, 8, 9));
    Pnt3f value;
    positions->getValue(value, 1);
    EXPECT_EQ(value, Pnt3f(4, 5, 6));
    positions->resize(3);
    EXPECT_EQ(positions->getValue(2), Pnt3f());
    positions->clear();
    EXPECT_EQ(positions->size(), 0u);
    subRefCP(positions);
}

TEST(GeoProperty, convertsToWhatItStores) {
    osg::GeoPositions2fPtr flat = osg::GeoPositions2f::create();
    osg::GeoPositions3sPtr whole = osg::GeoPositions3s::create();
    osg::GeoColors4ubPtr bytes = osg::GeoColors4ub::create();
    osg::GeoColors4fPtr colors = osg::GeoColors4f::create();
    osg::GeoTexCoords1fPtr line = osg::GeoTexCoords1f::create();
    for (const osg::AttachmentPtr& list :
         {osg::AttachmentPtr(flat), osg::AttachmentPtr(whole), osg::AttachmentPtr(bytes),
          osg::AttachmentPtr(colors), osg::AttachmentPtr(line)})
        addRefCP(list);

    flat->push_back(Pnt3f(1, 2, 3));
    EXPECT_EQ(flat->getValue(0), Pnt3f(1, 2, 0));
    whole->push_back(Pnt3f(1, -2, 3));
    EXPECT_EQ((*whole->getFieldPtr())[0], osg::Pnt3s(1, -2, 3));
    bytes->push_back(Color3f(0, .5f, 2));
    EXPECT_EQ((*bytes->getFieldPtr())[0], osg::Color4ub(0, 128, 255, 255));
    EXPECT_EQ(bytes->getValue(0)[2], 1.f);
    colors->push_back(Color3f(.1f, .2f, .3f));
    EXPECT_EQ((*colors->getFieldPtr())[0], osg::Color4f(.1f, .2f, .3f, 1));
    line->push_back(osg::Vec2f(.25f, 9));
    EXPECT_EQ(line->getValue(0), osg::Vec2f(.25f, 0));

    subRefCP(flat);
    subRefCP(whole);
    subRefCP(bytes);
    subRefCP(colors);
    subRefCP(line);
}

TEST(GeoProperty, hasAPointerClassForItsKindAndOneForItself) {
    GeoPositions3fPtr positions = GeoPositions3f::create();
    addRefCP(positions);
    const osg::FieldContainerPtr container = positions;
    EXPECT_NE(osg::GeoPositionsPtr::dcast(container), NullFC);
    EXPECT_NE(osg::AttachmentPtr::dcast(container), NullFC);
    EXPECT_EQ(osg::GeoPositions2fPtr::dcast(container), NullFC);
    EXPECT_EQ(osg::GeoNormalsPtr::dcast(container), NullFC);
    subRefCP(positions);
}

TEST(Geometry, countsItsListsAndIsTheirParent) {
    GeometryPtr geometry = Geometry::create();
    addRefCP(geometry);
    GeoPositions3fPtr positions = GeoPositions3f::create();
    addRefCP(positions);
    geometry->setPositions(positions);
    EXPECT_EQ(positions.getRefCount(), 2);
    ASSERT_EQ(positions->getParents().getSize(), 1u);
    EXPECT_EQ(positions->getParents(0), geometry);
    EXPECT_EQ(geometry->getPositions(), positions);
    geometry->setPositions(NullFC);
    EXPECT_EQ(positions.getRefCount(), 1);
    EXPECT_TRUE(positions->getParents().empty());

    geometry->setPositions(positions);
    const osg::UInt32 id = getContainerId(positions);
    GeoPositions3fPtr mine = positions;
    subRefCP(mine);
    EXPECT_NE(osg::FieldContainerFactory::the()->getContainer(id), NullFC);
    subRefCP(geometry);
    EXPECT_EQ(osg::FieldContainerFactory::the()->getContainer(id), NullFC);
}

TEST(Geometry, countsListsThatAReaderPutIntoItsFields) {
    for (const bool parentsAreReadToo : {false, true}) {
        GeometryPtr geometry = Geometry::create();
        addRefCP(geometry);
        GeoPositions3fPtr positions = GeoPositions3f::create();
        geometry->getSFPositions()->setValue(positions);
        osg::UInt32 origin = osg::ChangedOrigin::Abstract;
        if (parentsAreReadToo) {
            positions->getParents().push_back(geometry);
            origin |= osg::ChangedOrigin::AbstrIncRefCount;
        }
        endEditCP(geometry, osg::FieldBits::AllFields, origin);
        EXPECT_EQ(positions.getRefCount(), 1);
        EXPECT_EQ(positions->getParents().getSize(), 1u);
        subRefCP(geometry);
    }
}

TEST(Geometry, mapsIndices) {
    GeometryPtr geometry = Geometry::create();
    addRefCP(geometry);
    geometry->getIndexMapping().push_back(Geometry::MapPosition | Geometry::MapNormal);
    geometry->getIndexMapping().push_back(Geometry::MapTexCoords);
    EXPECT_EQ(geometry->getMFIndexMapping()->getSize(), 2u);
    EXPECT_EQ(geometry->getIndexMapping(0), 3);
    EXPECT_EQ(geometry->getIndexMapping(1), 16);
    subRefCP(geometry);
}

TEST(NodeVolume, isThatOfThePositions) {
    NodePtr node = osg::makeBox(2, 4, 6, 1, 1, 1);
    addRefCP(node);
    expectBounds(node->getVolume(true), Pnt3f(-1, -2, -3), Pnt3f(1, 2, 3));
    subRefCP(node);
}

TEST(NodeVolume, isMovedByTheTransformOfTheNode) {
    osg::TransformPtr transform = osg::Transform::create();
    NodePtr root = osg::makeNodeFor(transform);
    addRefCP(root);
    beginEditCP(root);
    root->addChild(osg::makeBox(2, 2, 2, 1, 1, 1));
    endEditCP(root);
    expectBounds(root->getVolume(true), Pnt3f(-1, -1, -1), Pnt3f(1, 1, 1));
    osg::Matrix matrix;
    matrix.setTranslate(10, 0, 0);
    beginEditCP(transform, osg::Transform::MatrixFieldMask);
    transform->setMatrix(matrix);
    endEditCP(transform, osg::Transform::MatrixFieldMask);
    expectBounds(root->getVolume(true), Pnt3f(9, -1, -1), Pnt3f(11, 1, 1));
    subRefCP(root);
}

TEST(NodeVolume, followsAnEditInsideTheListOfPositions) {
    NodePtr node = osg::makeBox(2, 2, 2, 1, 1, 1);
    addRefCP(node);
    expectBounds(node->getVolume(true), Pnt3f(-1, -1, -1), Pnt3f(1, 1, 1));
    const osg::GeoPositionsPtr positions = GeometryPtr::dcast(node->getCore())->getPositions();
    beginEditCP(positions);
    positions->setValue(Pnt3f(5, 0, 0), 0);
    endEditCP(positions);
    expectBounds(node->getVolume(true), Pnt3f(-1, -1, -1), Pnt3f(5, 1, 1));
    subRefCP(node);
}

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
        EXPECT_EQ(geometry->getTypes()->getValue(strip), 8u);
        const osg::UInt32 length = geometry->getLengths()->getValue(strip);
        ASSERT_LE(next + length, indices->getSize());
        for (osg::UInt32 i = 0; i + 3 < length; i += 2) {
            Pnt3f corner[4];
            for (osg::UInt32 k = 0; k < 4; ++k) {
                const osg::UInt32 index = indices->getValue(next + i + k);
                ASSERT_LT(index, positions->getSize());
                corner[k] = positions->getValue(index);
            }
            // A quadrilateral of a strip goes round as 0, 1, 3, 2.
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

TEST(SimpleGeometry, isNullWithoutCells) {
    EXPECT_EQ(osg::makeBox(1, 1, 1, 1, 0, 1), NullFC);
    EXPECT_EQ(osg::makePlane(1, 1, 0, 1), NullFC);
    EXPECT_EQ(osg::makeLatLongSphere(1, 3, 1), NullFC);
    EXPECT_EQ(osg::makeLatLongSphere(2, 2, 1), NullFC);
}

} // namespace
