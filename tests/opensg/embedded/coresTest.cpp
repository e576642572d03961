// Cores where the embedded scene graph does better than OpenSG 1.8: there, taking a matrix apart
// loses the center, a copied light has a beacon that nobody counted, a light whose beacon is its
// own node cannot let go of it, and chunks do not know their materials.
#include "opensg/held.h"

#include <OpenSG/OSGChunkMaterial.h>
#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGLightEnv.h>
#include <OpenSG/OSGMaterialChunk.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGPerspectiveCamera.h>
#include <OpenSG/OSGSimpleGeometry.h>
#include <OpenSG/OSGSimpleMaterial.h>
#include <OpenSG/OSGSpotLight.h>
#include <OpenSG/OSGSwitch.h>
#include <OpenSG/OSGTransform.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using osg::Color4f;
using osg::ComponentTransform;
using osg::ComponentTransformPtr;
using osg::Matrix;
using osg::NodePtr;
using osg::NullFC;
using osg::Quaternion;
using osg::Vec3f;

TEST(EmbeddedComponentTransform, takesAMatrixApartAboutItsCenter) {
    const auto transform = held<ComponentTransform>();
    transform->setCenter(Vec3f(1, 0, 0));
    Matrix quarterAboutCenter;
    quarterAboutCenter.setTransform(Vec3f(), Quaternion(Vec3f(0, 0, 1), 1.57079633f),
                                    Vec3f(1, 1, 1), Quaternion(), Vec3f(1, 0, 0));
    osg::TransformPtr(transform.get())->setMatrix(quarterAboutCenter);
    endEditCP(transform.get(), osg::Transform::MatrixFieldMask);
    EXPECT_EQ(transform->getCenter(), Vec3f(1, 0, 0));
    EXPECT_TRUE(transform->getTranslation().equals(Vec3f(), 1e-6f));
}

TEST(EmbeddedLight, copyCountsTheBeaconOnceMore) {
    const Held<NodePtr> beacon(osg::Node::create());
    const auto light = held<osg::PointLight>();
    light->setBeacon(beacon);
    light->setPosition(1, 2, 3);
    {
        const Held<osg::PointLightPtr> copy(osg::PointLightPtr::dcast(light->shallowCopy()));
        EXPECT_EQ(copy->getPosition(), osg::Pnt3f(1, 2, 3));
        EXPECT_EQ(beacon.get().getRefCount(), 3);
        EXPECT_NE(getContainerId(copy.get()), getContainerId(light.get()));
    }
    EXPECT_EQ(beacon.get().getRefCount(), 2);
}

TEST(EmbeddedLight, mayHaveItsOwnNodeAsBeaconAndThenKeepsIt) {
    osg::PointLightPtr light = osg::PointLight::create();
    NodePtr node = osg::makeNodeFor(light);
    addRefCP(node);
    light->setBeacon(node);
    EXPECT_EQ(node.getRefCount(), 2);
    const osg::UInt32 id = getContainerId(node);
    NodePtr last = node;
    subRefCP(last);
    EXPECT_TRUE(isAlive(id)) << "a counted cycle";
    light->setBeacon(NullFC);
    EXPECT_FALSE(isAlive(id));
}

TEST(EmbeddedChunkMaterial, countsItsChunksAndIsTheirParent) {
    osg::MaterialChunkPtr chunk = osg::MaterialChunk::create();
    const Held<osg::MaterialChunkPtr> kept(chunk);
    {
        const auto material = held<osg::ChunkMaterial>();
        material->addChunk(chunk);
        material->addChunk(NullFC);
        material->addChunk(chunk, 2);
        EXPECT_EQ(chunk.getRefCount(), 3);
        EXPECT_EQ(chunk->getParents().getSize(), 2u);
        EXPECT_EQ(material->getMFChunks()->getSize(), 2u);
        EXPECT_EQ(material->getSlots(1), 2);
        EXPECT_EQ(material->find(osg::MaterialChunk::getClassType()), chunk);
        EXPECT_TRUE(material->subChunk(chunk, 2));
        EXPECT_FALSE(material->subChunk(chunk, 2));
        EXPECT_EQ(chunk.getRefCount(), 2);
        EXPECT_EQ(material->getSlots().getSize(), 1u);
    }
    EXPECT_EQ(chunk.getRefCount(), 1);
    EXPECT_TRUE(chunk->getParents().empty());
}

TEST(EmbeddedChunkMaterial, removesAChunkThatHasNoSlot) {
    const Held<osg::MaterialChunkPtr> chunk(osg::MaterialChunk::create());
    const auto material = held<osg::ChunkMaterial>();
    material->getMFChunks()->push_back(chunk.get());
    endEditCP(material.get(), osg::ChunkMaterial::ChunksFieldMask, osg::ChangedOrigin::Abstract);
    EXPECT_EQ(chunk.get().getRefCount(), 2);
    EXPECT_TRUE(material->subChunk(chunk.get()));
    EXPECT_EQ(chunk.get().getRefCount(), 1);
    material->clearChunks();
}

} // namespace
