// Every class of the scene graph: its parent and its fields in order, as OpenSG 1.8 prints them.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerType.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSpotLight.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace {

/// One field: its name, its field type, and what it says in a new container; null where the text
/// is an address or nothing at all.
struct Row {
    const char* name;
    const char* type;
    const char* text;
    bool internal;
};

Row shown(const char* name, const char* type, const char* text = nullptr) {
    return {name, type, text, false};
}
Row internal(const char* name, const char* type, const char* text = nullptr) {
    return {name, type, text, true};
}

/// A field that a scene graph has for itself: in no file, and of any name and type.
Row ownBusiness() {
    return {nullptr, nullptr, nullptr, true};
}

struct ClassTable {
    const char* name;
    const char* parent;
    bool abstract;
    std::vector<Row> ownRows;
};

std::ostream& operator<<(std::ostream& stream, const ClassTable& table) {
    return stream << table.name;
}

const char* const k0 = "0.000000e+00";
const char* const k1 = "1.000000e+00";
const char* const k10 = "1.000000e+01";
const char* const kNull3 = "0.000000e+00  0.000000e+00  0.000000e+00";
const char* const kOnes3 = "1.000000e+00  1.000000e+00  1.000000e+00";
const char* const kZ3 = "0.000000e+00  0.000000e+00  1.000000e+00";
const char* const kBlack3 = "0.000000e+00 0.000000e+00 0.000000e+00";
const char* const kBlack = "0.000000e+00 0.000000e+00 0.000000e+00 1.000000e+00";
const char* const kWhite = "1.000000e+00 1.000000e+00 1.000000e+00 1.000000e+00";
const char* const kNoTurn = "0.000000e+00 0.000000e+00 1.000000e+00 0.000000e+00";
const char* const kIdentity = "1.000000e+00 0.000000e+00 0.000000e+00 0.000000e+00 "
                              "0.000000e+00 1.000000e+00 0.000000e+00 0.000000e+00 "
                              "0.000000e+00 0.000000e+00 1.000000e+00 0.000000e+00 "
                              "0.000000e+00 0.000000e+00 0.000000e+00 1.000000e+00";
const char* const kNoBox = "0.000000e+00 0.000000e+00 0.000000e+00 "
                           "0.000000e+00 0.000000e+00 0.000000e+00";

const std::vector<Row>& simpleMaterialRows() {
    static const std::vector<Row> rows = {
        shown("ambient", "SFColor3f", kBlack3),  shown("diffuse", "SFColor3f", kBlack3),
        shown("specular", "SFColor3f", kBlack3), shown("shininess", "SFReal32", k1),
        shown("emission", "SFColor3f", kBlack3), shown("transparency", "SFReal32", k0),
        shown("lit", "SFBool", "TRUE"),          shown("colorMaterial", "SFGLenum", "4609")};
    return rows;
}

const std::vector<ClassTable>& tables() {
    static const std::vector<ClassTable> all = {
        {"AttachmentContainer",
         "FieldContainer",
         true,
         {shown("attachments", "SFAttachmentMap", "AttachmentMap")}},
        {"Attachment",
         "FieldContainer",
         true,
         {internal("parents", "MFFieldContainerPtr", ""), shown("internal", "SFBool", "FALSE")}},
        {"Name", "Attachment", false, {shown("name", "SFString", "\"\"")}},
        {"Node",
         "AttachmentContainer",
         false,
         {shown("volume", "SFDynamicVolume", kNoBox), shown("travMask", "SFUInt32", "4294967295"),
          internal("parent", "SFNodePtr"), shown("children", "MFNodePtr", ""),
          shown("core", "SFNodeCorePtr")}},
        {"NodeCore", "AttachmentContainer", true, {internal("parents", "MFNodePtr", "")}},
        {"Group", "NodeCore", false, {}},
        {"Transform", "Group", false, {shown("matrix", "SFMatrix", kIdentity)}},
        {"ComponentTransform",
         "Transform",
         false,
         {shown("center", "SFVec3f", kNull3), shown("rotation", "SFQuaternion", kNoTurn),
          shown("scale", "SFVec3f", kOnes3), shown("scaleOrientation", "SFQuaternion", kNoTurn),
          shown("translation", "SFVec3f", kNull3)}},
        {"Switch", "Group", false, {shown("choice", "SFInt32", "-1")}},
        {"MaterialGroup", "Group", false, {shown("material", "SFMaterialPtr")}},
        {"Drawable", "NodeCore", true, {}},
        {"MaterialDrawable", "Drawable", true, {shown("material", "SFMaterialPtr")}},
        {"Geometry",
         "MaterialDrawable",
         false,
         {shown("types", "SFGeoPTypesPtr"),
          shown("lengths", "SFGeoPLengthsPtr"),
          shown("positions", "SFGeoPositionsPtr"),
          shown("normals", "SFGeoNormalsPtr"),
          shown("colors", "SFGeoColorsPtr"),
          shown("secondaryColors", "SFGeoColorsPtr"),
          shown("texCoords", "SFGeoTexCoordsPtr"),
          shown("texCoords1", "SFGeoTexCoordsPtr"),
          shown("texCoords2", "SFGeoTexCoordsPtr"),
          shown("texCoords3", "SFGeoTexCoordsPtr"),
          shown("texCoords4", "SFGeoTexCoordsPtr"),
          shown("texCoords5", "SFGeoTexCoordsPtr"),
          shown("texCoords6", "SFGeoTexCoordsPtr"),
          shown("texCoords7", "SFGeoTexCoordsPtr"),
          shown("indices", "SFGeoIndicesPtr"),
          shown("indexMapping", "MFUInt16", ""),
          shown("dlistCache", "SFBool", "TRUE"),
          internal("GLId", "SFInt32"),
          ownBusiness(),
          ownBusiness(),
          ownBusiness(),
          ownBusiness(),
          ownBusiness(),
          shown("vbo", "SFBool", "FALSE")}},
        {"Light",
         "Group",
         true,
         {shown("ambient", "SFColor4f", kBlack), shown("diffuse", "SFColor4f", kWhite),
          shown("specular", "SFColor4f", kWhite), shown("beacon", "SFNodePtr"),
          shown("on", "SFBool", "TRUE"), shown("constantAttenuation", "SFReal32", k1),
          shown("linearAttenuation", "SFReal32", k0), shown("quadraticAttenuation", "SFReal32", k0),
          shown("shadowIntensity", "SFReal32", k0), shown("shadowMode", "SFUInt32", "0")}},
        {"PointLight", "Light", false, {shown("position", "SFPnt3f", kNull3)}},
        {"SpotLight",
         "PointLight",
         false,
         {shown("direction", "SFVec3f", kZ3), shown("spotExponent", "SFReal32", k0),
          shown("spotCutOff", "SFReal32", k0)}},
        {"DirectionalLight", "Light", false, {shown("direction", "SFVec3f", kZ3)}},
        {"LightEnv", "NodeCore", false, {}},
        {"Material",
         "AttachmentContainer",
         true,
         {shown("sortKey", "SFInt32", "0"), shown("transparencyMode", "SFInt32", "0")}},
        {"ChunkMaterial",
         "Material",
         false,
         {shown("chunks", "MFStateChunkPtr"), shown("slots", "MFInt32", "")}},
        {"SimpleMaterial", "ChunkMaterial", false, simpleMaterialRows()},
        {"SimpleTexturedMaterial",
         "SimpleMaterial",
         false,
         {shown("image", "SFImagePtr"), shown("minFilter", "SFGLenum", "9987"),
          shown("magFilter", "SFGLenum", "9729"), shown("envMode", "SFGLenum", "7681"),
          shown("envMap", "SFBool", "FALSE")}},
        {"PhongMaterial", "ChunkMaterial", false, simpleMaterialRows()},
        {"SwitchMaterial",
         "Material",
         false,
         {shown("materials", "MFMaterialPtr"), shown("choice", "SFUInt32", "0")}},
        {"StateChunk", "Attachment", true, {shown("ignore", "SFBool", "FALSE")}},
        {"MaterialChunk",
         "StateChunk",
         false,
         {shown("diffuse", "SFColor4f"), shown("ambient", "SFColor4f"),
          shown("specular", "SFColor4f"), shown("emission", "SFColor4f"),
          shown("shininess", "SFReal32", k10), shown("lit", "SFBool", "TRUE"),
          shown("colorMaterial", "SFGLenum", "4609"), shown("backMaterial", "SFBool", "FALSE"),
          shown("backDiffuse", "SFColor4f"), shown("backAmbient", "SFColor4f"),
          shown("backSpecular", "SFColor4f"), shown("backEmission", "SFColor4f"),
          shown("backShininess", "SFReal32", k10), shown("backColorMaterial", "SFGLenum", "4609")}},
        {"Camera",
         "AttachmentContainer",
         true,
         {shown("beacon", "SFNodePtr"), shown("near", "SFReal32", k0),
          shown("far", "SFReal32", k0)}},
        {"PerspectiveCamera",
         "Camera",
         false,
         {shown("fov", "SFReal32", k0), shown("fovMode", "SFUInt32", "0"),
          shown("aspect", "SFReal32", k1)}},
        {"GeoPTypesUI8", "GeoPTypes", false, {shown("types", "MFUInt8", "")}},
        {"GeoPLengthsUI32", "GeoPLengths", false, {shown("lengths", "MFUInt32", "")}},
        {"GeoPositions3f", "GeoPositions", false, {shown("positions", "MFPnt3f", "")}},
        {"GeoNormals3f", "GeoNormals", false, {shown("normals", "MFVec3f", "")}},
        {"GeoColors3f", "GeoColors", false, {shown("colors", "MFColor3f", "")}},
        {"GeoColors4f", "GeoColors", false, {shown("Colors", "MFColor4f", "")}},
        {"GeoTexCoords2f", "GeoTexCoords", false, {shown("TexCoords", "MFVec2f", "")}},
        {"GeoIndicesUI32", "GeoIndices", false, {shown("indices", "MFUInt32", "")}}};
    return all;
}

const ClassTable* findTable(const std::string& name) {
    for (const ClassTable& table : tables()) {
        if (table.name == name) return &table;
    }
    return nullptr;
}

/// The rows of a class behind those of its parents.
std::vector<Row> allRows(const ClassTable& table) {
    std::vector<Row> rows;
    if (const ClassTable* parent = findTable(table.parent)) {
        rows = allRows(*parent);
    } else if (std::string(table.parent).compare(0, 3, "Geo") == 0) {
        rows = allRows(*findTable("Attachment"));
    }
    rows.insert(rows.end(), table.ownRows.begin(), table.ownRows.end());
    return rows;
}

class FieldTable : public ::testing::TestWithParam<ClassTable> {
  protected:
    osg::FieldContainerType* type() const {
        return osg::FieldContainerFactory::the()->findType(GetParam().name);
    }
};

TEST_P(FieldTable, hasTheParent) {
    ASSERT_NE(type(), nullptr);
    ASSERT_NE(type()->getParent(), nullptr);
    EXPECT_STREQ(type()->getParent()->getCName(), GetParam().parent);
    EXPECT_EQ(type()->isAbstract(), GetParam().abstract);
}

TEST_P(FieldTable, hasTheDescriptionsInOrder) {
    ASSERT_NE(type(), nullptr);
    const std::vector<Row> rows = allRows(GetParam());
    ASSERT_EQ(type()->getNumFieldDescs(), rows.size());
    EXPECT_EQ(type()->getFieldDescription(0u), nullptr);
    for (osg::UInt32 i = 0; i < rows.size(); ++i) {
        const osg::FieldDescription* description = type()->getFieldDescription(i + 1);
        ASSERT_NE(description, nullptr) << i + 1;
        if (rows[i].name != nullptr) {
            EXPECT_STREQ(description->getCName(), rows[i].name);
        }
        EXPECT_EQ(description->getFieldId(), i + 1) << rows[i].name;
        EXPECT_EQ(description->getFieldMask(), osg::BitVector(1) << (i + 1)) << rows[i].name;
        EXPECT_EQ(description->isInternal(), rows[i].internal) << rows[i].name;
    }
    EXPECT_EQ(type()->getFieldDescription(static_cast<osg::UInt32>(rows.size()) + 1), nullptr);
}

TEST_P(FieldTable, newContainersHaveTheFieldsAndTheirValues) {
    ASSERT_NE(type(), nullptr);
    osg::FieldContainerPtr container = type()->createFieldContainer();
    ASSERT_EQ(container == osg::NullFC, GetParam().abstract);
    if (GetParam().abstract) return;
    addRefCP(container);
    const std::vector<Row> rows = allRows(GetParam());
    for (osg::UInt32 i = 0; i < rows.size(); ++i) {
        osg::Field* field = container->getField(i + 1);
        ASSERT_NE(field, nullptr) << i;
        if (rows[i].name == nullptr) continue;
        EXPECT_EQ(field, container->getField(rows[i].name));
        EXPECT_STREQ(field->getType().getCName(), rows[i].type) << rows[i].name;
        std::string text;
        if (rows[i].text == nullptr) continue;
        EXPECT_EQ(field->getValueByStr(text), rows[i].text) << rows[i].name;
    }
    subRefCP(container);
}

INSTANTIATE_TEST_SUITE_P(AllClasses, FieldTable, ::testing::ValuesIn(tables()),
                         [](const ::testing::TestParamInfo<ClassTable>& info) {
                             return std::string(info.param.name);
                         });

TEST(FieldTables, namesAndMasksBelongToTheClasses) {
    EXPECT_EQ(osg::UInt32(osg::Light::DiffuseFieldId), 4u);
    EXPECT_EQ(osg::Light::DiffuseFieldMask, osg::BitVector(16));
    EXPECT_EQ(osg::UInt32(osg::SpotLight::SpotCutOffFieldId), 16u);
    EXPECT_EQ(osg::SpotLight::PositionFieldMask, osg::BitVector(1) << 13);
    EXPECT_EQ(osg::Geometry::VboFieldMask, osg::BitVector(1) << 27);
    EXPECT_EQ(osg::GeometryBase::MaterialFieldMask, osg::BitVector(8));
}

TEST(FieldTables, contentTypesAreNamedAsDiscoveryComparesThem) {
    osg::SpotLightPtr light = osg::SpotLight::create();
    addRefCP(light);
    EXPECT_STREQ(light->getField("ambient")->getContentType().getCName(), "Color4f");
    EXPECT_STREQ(light->getField("direction")->getContentType().getCName(), "Vec3f");
    EXPECT_STREQ(light->getField("position")->getContentType().getCName(), "Pnt3f");
    EXPECT_STREQ(light->getField("on")->getContentType().getCName(), "bool");
    EXPECT_STREQ(light->getField("spotCutOff")->getContentType().getCName(), "Real32");
    EXPECT_STREQ(light->getField("beacon")->getContentType().getCName(), "NodePtr");
    subRefCP(light);
}

TEST(FieldTables, groupsAreTheTypesOwn) {
    EXPECT_EQ(osg::Geometry::getClassType().getGroupId(),
              osg::FieldContainerFactory::the()->findGroupId("Geometry"));
    EXPECT_NE(osg::SpotLight::getClassType().getGroupId(),
              osg::PointLight::getClassType().getGroupId());
}

TEST(FieldTables, kindsFollowFromDescent) {
    EXPECT_TRUE(osg::SpotLight::getClassType().isNodeCore());
    EXPECT_TRUE(osg::GeoPositions3f::getClassType().isAttachment());
    EXPECT_FALSE(osg::Material::getClassType().isNodeCore());
    EXPECT_TRUE(osg::SpotLight::getClassType().isDerivedFrom(osg::Light::getClassType()));
    EXPECT_FALSE(osg::PointLight::getClassType().isDerivedFrom(osg::SpotLight::getClassType()));
}

} // namespace
