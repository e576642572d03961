#pragma once

/// @file
/// A material that describes its own parameters.

#include <OpenSG/OSGChunkMaterial.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGReal32Fields.h>
#include <OpenSG/OSGUInt32Fields.h>
#include <OpenSG/OSGVec3fFields.h>
#include <OpenSG/OSGVec4fFields.h>

#include <OSGContainerTable.h>

#if defined(_WIN32) && !defined(KV_STATIC_HOST)
#if defined(kvOpenSGUberMaterial_EXPORTS)
#define KV_OPENSG_UBER_MATERIAL_API __declspec(dllexport)
#else
#define KV_OPENSG_UBER_MATERIAL_API __declspec(dllimport)
#endif
#else
#define KV_OPENSG_UBER_MATERIAL_API
#endif

#include <string>
#include <utility>
#include <vector>

OSG_BEGIN_NAMESPACE

class UberMaterial;
typedef FCPtr<ChunkMaterialPtr, UberMaterial> UberMaterialPtr;

/// `baseColor` and `emission` are red, green, blue (and intensity) as vectors, because values above
/// 1 are meant to be kept. `revision` counts edits of the material's shader; it is no parameter.
#define KV_UBER_MATERIAL_FIELDS(VALUE, VALUES, POINTER, LIST)                                      \
    VALUE(SFVec3f, BaseColor, "baseColor", Vec3f(1.0f, 1.0f, 1.0f))                                \
    VALUE(SFVec4f, Emission, "emission")                                                           \
    VALUE(SFReal32, Roughness, "roughness", 0.5f)                                                  \
    VALUE(SFUInt32, Revision, "revision")

/// A material whose fields are its parameters, as far as it says so.
class KV_OPENSG_UBER_MATERIAL_API UberMaterial : public ChunkMaterial {
    KV_CONTAINER_DECL(UberMaterial, ChunkMaterial, KV_UBER_MATERIAL_FIELDS)

    /// A parameter: what it is ("Color", "Float"), and the name of the field that holds it.
    class ParameterDescription {
      public:
        ParameterDescription(std::string typeName, std::string name)
            : _typeName(std::move(typeName)), _name(std::move(name)) {}
        const std::string& getTypeName() const { return _typeName; }
        const std::string& getName() const { return _name; }

      private:
        std::string _typeName;
        std::string _name;
    };

    /// The parameters; a material that is derived from this one adds its own.
    virtual std::vector<ParameterDescription> getParameterDescriptions(void) const;
};

KV_CONTAINER_INLINE(UberMaterial)

OSG_END_NAMESPACE
