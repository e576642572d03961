#pragma once

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

struct aiScene;

namespace kvanim {

/// A node with a Geometry core for one mesh of the model: positions, normals where the mesh has
/// them, and triangles in the mesh's diffuse colour. Null for a mesh without faces.
osg::NodePtr makeMeshNode(const aiScene& model, unsigned int mesh);

} // namespace kvanim
