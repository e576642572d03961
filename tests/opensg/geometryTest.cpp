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
    EXPECT_EQ(positions->getSize(), 0u);
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
    EXPECT_EQ(positions->getParents()[0], geometry);
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

TEST(SimpleGeometry, isNullWithoutCells) {
    EXPECT_EQ(osg::makeBox(1, 1, 1, 1, 0, 1), NullFC);
    EXPECT_EQ(osg::makePlane(1, 1, 0, 1), NullFC);
    EXPECT_EQ(osg::makeLatLongSphere(1, 3, 1), NullFC);
    EXPECT_EQ(osg::makeLatLongSphere(2, 2, 1), NullFC);
}

} // namespace
