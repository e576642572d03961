// Triangles of a model as a geometry of the scene.
#include "importMesh.h"

#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGeoProperty.h>
#include <OpenSG/OSGSimpleAttachments.h>
#include <OpenSG/OSGSimpleMaterial.h>

#include <assimp/scene.h>

namespace kvanim {
namespace {

constexpr osg::UInt8 kTriangles = 4; // GL_TRIANGLES, without the GL headers

osg::MaterialPtr materialOf(const aiScene& model, const aiMesh& mesh) {
    osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
    aiColor4D colour(0.8F, 0.8F, 0.8F, 1.0F);
    if (mesh.mMaterialIndex < model.mNumMaterials)
        aiGetMaterialColor(model.mMaterials[mesh.mMaterialIndex], AI_MATKEY_COLOR_DIFFUSE, &colour);
    osg::beginEditCP(material);
    material->setDiffuse(osg::Color3f(colour.r, colour.g, colour.b));
    material->setTransparency(1.0F - colour.a);
    osg::endEditCP(material);
    return material;
}

template <class Property>
typename Property::PtrType filled(const aiVector3D* values, unsigned count) {
    typename Property::PtrType property = Property::create();
    osg::beginEditCP(property);
    for (unsigned i = 0; i < count; ++i)
        property->getFieldPtr()->push_back({values[i].x, values[i].y, values[i].z});
    osg::endEditCP(property);
    return property;
}

osg::GeoIndicesUI32Ptr trianglesOf(const aiMesh& mesh, osg::UInt32& corners) {
    osg::GeoIndicesUI32Ptr indices = osg::GeoIndicesUI32::create();
    osg::beginEditCP(indices);
    for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
        const aiFace& face = mesh.mFaces[f];
        if (face.mNumIndices != 3) continue; // points and lines
        for (unsigned c = 0; c < 3; ++c)
            indices->getFieldPtr()->push_back(face.mIndices[c]);
        corners += 3;
    }
    osg::endEditCP(indices);
    return indices;
}

} // namespace

osg::NodePtr makeMeshNode(const aiScene& model, unsigned int number) {
    const aiMesh& mesh = *model.mMeshes[number];
    osg::UInt32 corners = 0;
    osg::GeoIndicesUI32Ptr indices = trianglesOf(mesh, corners);
    if (corners == 0) {
        osg::addRefCP(indices);
        osg::subRefCP(indices);
        return osg::NullFC;
    }
    osg::GeoPTypesUI8Ptr types = osg::GeoPTypesUI8::create();
    osg::GeoPLengthsUI32Ptr lengths = osg::GeoPLengthsUI32::create();
    types->getFieldPtr()->push_back(kTriangles);
    lengths->getFieldPtr()->push_back(corners);

    osg::GeometryPtr geometry = osg::Geometry::create();
    osg::beginEditCP(geometry);
    geometry->setTypes(types);
    geometry->setLengths(lengths);
    geometry->setIndices(indices);
    geometry->setPositions(filled<osg::GeoPositions3f>(mesh.mVertices, mesh.mNumVertices));
    if (mesh.HasNormals())
        geometry->setNormals(filled<osg::GeoNormals3f>(mesh.mNormals, mesh.mNumVertices));
    geometry->setMaterial(materialOf(model, mesh));
    osg::endEditCP(geometry);

    osg::NodePtr node = osg::Node::create();
    osg::beginEditCP(node);
    node->setCore(geometry);
    osg::setName(node, mesh.mName.C_Str());
    osg::endEditCP(node);
    return node;
}

} // namespace kvanim
