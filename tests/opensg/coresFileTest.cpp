// The scene that OpenSG 1.8 itself wrote, read from its ASCII and its binary form: node by node and
// field by field what the file says. Short values are stated by hand; the long lists of the
// geometries are compared with what the C library reads in the text.

#include "sceneFileSupport.h"

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSimpleMaterial.h>
#include <OpenSG/OSGSpotLight.h>
#include <OpenSG/OSGSwitch.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

using namespace osg;

namespace {

/// The numbers in the brackets of a field, at its `occurrence` in the text, by the C library.
std::vector<double> numbersInText(const std::string& text, const std::string& field,
                                  unsigned occurrence) {
    std::size_t place = 0;
    for (unsigned i = 0; i <= occurrence; ++i)
        place = text.find(" " + field + " [\n", place + 1);
    std::vector<double> numbers;
    if (place == std::string::npos) return numbers;
    const char* next = text.c_str() + text.find('[', place) + 1;
    for (;;) {
        while (*next == ' ' || *next == '\n' || *next == ',')
            ++next;
        char* behind = nullptr;
        const double number = std::strtod(next, &behind);
        if (behind == next) return numbers;
        numbers.push_back(number);
        next = behind;
    }
}

/// The numbers of a multi field as its own text shows them.
std::vector<double> numbersInField(const FieldContainerPtr& container, const char* name) {
    std::vector<double> numbers;
    const Field* const field = container->getField(name);
    if (field == nullptr) return numbers;
    if (const auto* points = dynamic_cast<const MFPnt3f*>(field)) {
        for (const Pnt3f& point : *points)
            for (UInt32 i = 0; i < 3; ++i)
                numbers.push_back(point[i]);
    } else if (const auto* vectors = dynamic_cast<const MFVec3f*>(field)) {
        for (const Vec3f& vector : *vectors)
            for (UInt32 i = 0; i < 3; ++i)
                numbers.push_back(vector[i]);
    } else if (const auto* pairs = dynamic_cast<const MFVec2f*>(field)) {
        for (const Vec2f& pair : *pairs)
            for (UInt32 i = 0; i < 2; ++i)
                numbers.push_back(pair[i]);
    } else if (const auto* integers = dynamic_cast<const MFUInt32*>(field)) {
        numbers.assign(integers->begin(), integers->end());
    } else if (const auto* bytes = dynamic_cast<const MFUInt8*>(field)) {
        numbers.assign(bytes->begin(), bytes->end());
    } else if (const auto* shorts = dynamic_cast<const MFUInt16*>(field)) {
        numbers.assign(shorts->begin(), shorts->end());
    }
    return numbers;
}

/// Equal as floats, or, when the text has only seven digits, as far as these tell.
void expectNumbers(const std::vector<double>& found, const std::vector<double>& expected,
                   bool exact) {
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        const float wanted = static_cast<float>(expected[i]);
        if (exact)
            ASSERT_EQ(static_cast<float>(found[i]), wanted) << "number " << i;
        else
            ASSERT_NEAR(found[i], wanted, std::fabs(wanted) * 5.2e-7) << "number " << i;
    }
}

struct CoresFile {
    const char* name;
    /// Whether the numbers in the file are those of the text: the binary form has all digits.
    bool isText;
};

/// The scene of the file as it stands there: by default, OpenSG's reader makes strips of
/// geometries.
NodePtr readAsItIs(const char* name) {
    const std::string path = std::string(KV_TEST_DATA) + "/" + name;
    return SceneFileHandler::the().read(path.c_str(), nullptr);
}

class CoresFileTest : public ::testing::TestWithParam<CoresFile> {
  protected:
    CoresFileTest() : _file(readAsItIs(GetParam().name)) {}

    /// The node that was the root when the scene was written.
    NodePtr written() const {
        if (_file.isNull()) return NullFC;
        return GetParam().isText ? _file.at({0}) : _file.root();
    }
    NodePtr at(std::initializer_list<UInt32> path) const {
        NodePtr node = written();
        for (const UInt32 child : path) {
            if (node == NullFC || child >= node->getNChildren()) return NullFC;
            node = node->getChild(child);
        }
        return node;
    }

    template <class Core>
    typename Core::Ptr coreAt(std::initializer_list<UInt32> path) const {
        const NodePtr node = at(path);
        return node == NullFC ? typename Core::Ptr() : Core::Ptr::dcast(node->getCore());
    }

    /// 90 % of what the binary file tells is in seven digits of the text.
    void expectClose(float found, float expected) const {
        if (GetParam().isText)
            EXPECT_EQ(found, expected);
        else
            EXPECT_NEAR(found, expected, std::fabs(expected) * 5.2e-7f);
    }

    void expectLists(const GeometryPtr& geometry, unsigned occurrence, std::size_t positions,
                     std::size_t indices) const {
        static const std::string text = testData("cores.osg");
        const struct {
            FieldContainerPtr property;
            const char* field;
            std::size_t size;
        } lists[] = {{geometry->getPositions(), "positions", 3 * positions},
                     {geometry->getNormals(), "normals", 3 * positions},
                     {geometry->getIndices(), "indices", indices}};
        for (const auto& list : lists) {
            SCOPED_TRACE(list.field);
            ASSERT_NE(list.property, NullFC);
            const std::vector<double> expected = numbersInText(text, list.field, occurrence);
            EXPECT_EQ(expected.size(), list.size);
            expectNumbers(numbersInField(list.property, list.field), expected, GetParam().isText);
        }
        expectNumbers(numbersInField(geometry->getTexCoords(), "TexCoords"),
                      numbersInText(text, "TexCoords", occurrence), GetParam().isText);
    }

    Scene _file;
};

TEST_P(CoresFileTest, readingSaysNothing) {
    LogLines log;
    const Scene again(readAsItIs(GetParam().name));
    EXPECT_FALSE(again.isNull());
    EXPECT_EQ(log.take(), std::vector<std::string>());
}

TEST_P(CoresFileTest, theReturnedNodeIsNotCounted) {
    NodePtr root = readAsItIs(GetParam().name);
    ASSERT_NE(root, NullFC);
    EXPECT_EQ(root.getRefCount(), 0);
    EXPECT_EQ(root->getParent(), NullFC);
    addRefCP(root);
    subRefCP(root);
}

TEST_P(CoresFileTest, onlyTheTextComesInAnExtraGroup) {
    ASSERT_FALSE(_file.isNull());
    if (!GetParam().isText) {
        EXPECT_EQ(nameOf(_file.root()), "root");
        return;
    }
    EXPECT_EQ(nameOf(_file.root()), "(none)");
    EXPECT_EQ(_file->getNChildren(), 1u);
    EXPECT_STREQ(_file->getCore()->getTypeName(), "Group");
    EXPECT_EQ(_file.at({0}).getRefCount(), 1);
    EXPECT_EQ(_file.at({0})->getParent(), _file.root());
}

TEST_P(CoresFileTest, everyNodeHasItsNameCoreAndChildren) {
    const struct {
        std::vector<UInt32> path;
        const char* name;
        const char* core;
        UInt32 children;
        UInt32 mask;
    } nodes[] = {{{}, "root", "Group", 7, 0xffffffffu},
                 {{0}, "arm", "ComponentTransform", 1, 0xffffffffu},
                 {{0, 0}, "armGeo", "Geometry", 0, 0xffffffffu},
                 {{1}, "lift", "Transform", 1, 0xffffffffu},
                 {{1, 0}, "liftGeo", "Geometry", 0, 0xffffffffu},
                 {{2}, "red", "MaterialGroup", 1, 0xffffffffu},
                 {{2, 0}, "redGeo", "Geometry", 0, 0xffffffffu},
                 {{3}, "chooser", "Switch", 2, 0xffffffffu},
                 {{3, 0}, "a", "Group", 0, 0xffffffffu},
                 {{3, 1}, "b", "Group", 0, 0xffffffffu},
                 {{4}, "lampBeacon", "ComponentTransform", 0, 0xffffffffu},
                 {{5}, "lamp", "PointLight", 2, 0xffffffffu},
                 {{5, 0}, "spot", "SpotLight", 0, 0xffffffffu},
                 {{5, 1}, "sun", "DirectionalLight", 0, 0xffffffffu},
                 {{6}, "hidden", "Group", 0, 0u}};
    for (const auto& expected : nodes) {
        SCOPED_TRACE(expected.name);
        NodePtr node = written();
        ASSERT_NE(node, NullFC);
        for (const UInt32 child : expected.path) {
            ASSERT_LT(child, node->getNChildren());
            const NodePtr parent = node;
            node = node->getChild(child);
            EXPECT_EQ(node->getParent(), parent);
        }
        EXPECT_EQ(nameOf(node), expected.name);
        ASSERT_NE(node->getCore(), NullFC);
        EXPECT_STREQ(node->getCore()->getTypeName(), expected.core);
        EXPECT_EQ(node->getCore()->getParents().size(), 1u);
        EXPECT_EQ(node->getCore().getRefCount(), 1);
        EXPECT_EQ(node->getNChildren(), expected.children);
        EXPECT_EQ(node->getTravMask(), expected.mask);
        // The name, and nothing else, is attached; cores have no attachments.
        EXPECT_EQ(node->getSFAttachments()->getValue().size(), 1u);
        EXPECT_EQ(node->getCore()->getSFAttachments()->getValue().size(), 0u);
        EXPECT_FALSE(node->findAttachment(Name::getClassType())->getSFInternal()->getValue());
    }
}

TEST_P(CoresFileTest, theComponentTransformHasItsComponentsAndTheirMatrix) {
    const ComponentTransformPtr core = coreAt<ComponentTransform>({0});
    ASSERT_NE(core, NullFC);
    EXPECT_EQ(core->getCenter(), Vec3f(0, 0, 0));
    EXPECT_EQ(core->getScale(), Vec3f(1, 2, 0.5f));
    EXPECT_EQ(core->getTranslation(), Vec3f(1.5f, -2.25f, 3));
    Real32 axis[3];
    Real32 angle = 0;
    core->getRotation().getValueAsAxisRad(axis[0], axis[1], axis[2], angle);
    EXPECT_FLOAT_EQ(axis[1], 1.f);
    EXPECT_NEAR(angle, 0.5, 1e-6);
    EXPECT_EQ(core->getScaleOrientation(), Quaternion());
    const float rows[16] = {8.775826e-01f,  0, 2.397128e-01f, 1.5f, 0, 2, 0, -2.25f,
                            -4.794255e-01f, 0, 4.387913e-01f, 3,    0, 0, 0, 1};
    for (UInt32 i = 0; i < 16; ++i)
        EXPECT_NEAR(core->getMatrix()[i % 4][i / 4], rows[i], 2e-7) << "element " << i;
}

TEST_P(CoresFileTest, theTransformHasItsMatrix) {
    const TransformPtr core = coreAt<Transform>({1});
    ASSERT_NE(core, NullFC);
    Matrix expected;
    expected.setTranslate(0, 4, 0);
    for (UInt32 i = 0; i < 16; ++i)
        EXPECT_EQ(core->getMatrix()[i % 4][i / 4], expected[i % 4][i / 4]) << "element " << i;
}

TEST_P(CoresFileTest, theMaterialOfThreeGeometriesIsOne) {
    const GeometryPtr first = coreAt<Geometry>({0, 0});
    ASSERT_NE(first, NullFC);
    const SimpleMaterialPtr material = SimpleMaterialPtr::dcast(first->getMaterial());
    ASSERT_NE(material, NullFC);
    EXPECT_EQ(coreAt<Geometry>({1, 0})->getMaterial(), material);
    EXPECT_EQ(coreAt<Geometry>({2, 0})->getMaterial(), material);
    EXPECT_EQ(material.getRefCount(), 3);
    EXPECT_EQ(material->getSortKey(), 0);
    EXPECT_EQ(material->getTransparencyMode(), 0);
    EXPECT_EQ(material->getChunks().size(), 0u);
    EXPECT_EQ(material->getSlots().size(), 0u);
    EXPECT_EQ(material->getAmbient(), Color3f(0.1f, 0.1f, 0.1f));
    EXPECT_EQ(material->getDiffuse(), Color3f(0.7f, 0.7f, 0.5f));
    EXPECT_EQ(material->getSpecular(), Color3f(1, 1, 1));
    EXPECT_EQ(material->getShininess(), 20.f);
    EXPECT_EQ(material->getEmission(), Color3f(0, 0, 0));
    EXPECT_EQ(material->getTransparency(), 0.f);
    EXPECT_TRUE(material->getLit());
    EXPECT_EQ(material->getColorMaterial(), 4609u);
    // What stands behind DEF becomes the name of what had none; binary files have no DEF.
    EXPECT_EQ(nameOf(material), GetParam().isText ? "SimpleMaterial193" : "(none)");
}

TEST_P(CoresFileTest, theMaterialGroupHasAMaterialOfItsOwn) {
    const MaterialGroupPtr core = coreAt<MaterialGroup>({2});
    ASSERT_NE(core, NullFC);
    const SimpleMaterialPtr material = SimpleMaterialPtr::dcast(core->getMaterial());
    ASSERT_NE(material, NullFC);
    EXPECT_EQ(material.getRefCount(), 1);
    EXPECT_EQ(nameOf(material), "(none)");
    EXPECT_EQ(material->getDiffuse(), Color3f(0.8f, 0.1f, 0.2f));
    EXPECT_EQ(material->getTransparency(), 0.25f);
    EXPECT_EQ(material->getShininess(), 20.f);
}

TEST_P(CoresFileTest, theGeometriesHaveTheirProperties) {
    const struct {
        std::initializer_list<UInt32> path;
        std::vector<double> types;
        std::vector<double> lengths;
        std::size_t positions;
        std::size_t indices;
        std::vector<double> mapping;
    } geometries[] = {
        {{0, 0}, std::vector<double>(8, 5), std::vector<double>(8, 26), 117, 208, {19}},
        {{1, 0}, std::vector<double>(6, 5), std::vector<double>(6, 4), 24, 24, {19}},
        {{2, 0}, {4}, {240}, 72, 480, {3, 16}}};
    unsigned occurrence = 0;
    for (const auto& expected : geometries) {
        SCOPED_TRACE(occurrence);
        const GeometryPtr geometry = coreAt<Geometry>(expected.path);
        ASSERT_NE(geometry, NullFC);
        EXPECT_EQ(numbersInField(geometry->getTypes(), "types"), expected.types);
        EXPECT_EQ(numbersInField(geometry->getLengths(), "lengths"), expected.lengths);
        EXPECT_EQ(numbersInField(geometry, "indexMapping"), expected.mapping);
        expectLists(geometry, occurrence, expected.positions, expected.indices);
        EXPECT_EQ(geometry->getColors(), NullFC);
        EXPECT_EQ(geometry->getSecondaryColors(), NullFC);
        EXPECT_EQ(geometry->getTexCoords1(), NullFC);
        EXPECT_EQ(geometry->getTexCoords7(), NullFC);
        EXPECT_TRUE(geometry->getDlistCache());
        EXPECT_FALSE(geometry->getVbo());
        EXPECT_EQ(geometry->getPositions().getRefCount(), 1);
        EXPECT_EQ(geometry->getPositions()->getParents().size(), 1u);
        ++occurrence;
    }
}

TEST_P(CoresFileTest, theSwitchHasItsChoice) {
    const SwitchPtr core = coreAt<Switch>({3});
    ASSERT_NE(core, NullFC);
    EXPECT_EQ(core->getChoice(), 1);
}

TEST_P(CoresFileTest, theLightsHaveTheirColoursAndBeacons) {
    const PointLightPtr lamp = coreAt<PointLight>({5});
    const SpotLightPtr spot = coreAt<SpotLight>({5, 0});
    const DirectionalLightPtr sun = coreAt<DirectionalLight>({5, 1});
    ASSERT_NE(lamp, NullFC);
    ASSERT_NE(spot, NullFC);
    ASSERT_NE(sun, NullFC);
    EXPECT_EQ(lamp->getBeacon(), at({4}));
    EXPECT_EQ(spot->getBeacon(), at({0}));
    EXPECT_EQ(sun->getBeacon(), NullFC);
    // The tree and the lights count them.
    EXPECT_EQ(at({4}).getRefCount(), 2);
    EXPECT_EQ(at({0}).getRefCount(), 2);
    EXPECT_EQ(lamp->getDiffuse(), Color4f(1, 0.9f, 0.8f, 1));
    EXPECT_EQ(lamp->getAmbient(), Color4f(0, 0, 0, 1));
    EXPECT_EQ(lamp->getSpecular(), Color4f(1, 1, 1, 1));
    EXPECT_TRUE(lamp->getOn());
    EXPECT_EQ(lamp->getConstantAttenuation(), 1.f);
    EXPECT_EQ(lamp->getLinearAttenuation(), 0.f);
    EXPECT_EQ(lamp->getQuadraticAttenuation(), 0.f);
    EXPECT_EQ(lamp->getShadowIntensity(), 0.f);
    EXPECT_EQ(lamp->getShadowMode(), 0u);
    EXPECT_EQ(lamp->getPosition(), Pnt3f(0, 0, 0));
    EXPECT_EQ(spot->getDirection(), Vec3f(0, 0, 1));
    EXPECT_EQ(spot->getSpotExponent(), 0.f);
    expectClose(spot->getSpotCutOff(), 0.4f);
    EXPECT_EQ(sun->getDirection(), Vec3f(0, -1, 0));
}

TEST_P(CoresFileTest, releasingTheRootDestroysAllOfIt) {
    const std::size_t before = countContainers();
    {
        const Scene again(readAsItIs(GetParam().name));
        EXPECT_GT(countContainers(), before + 60);
    }
    EXPECT_EQ(countContainers(), before);
}

TEST_P(CoresFileTest, savedInEitherFormatItComesBackTheSame) {
    ASSERT_FALSE(_file.isNull());
    for (const char* format : {"osg", "osb"}) {
        SCOPED_TRACE(format);
        const std::string first = writeText(written(), format);
        const Scene again(readText(first, format));
        ASSERT_FALSE(again.isNull());
        const bool text = std::string(format) == "osg";
        // The text names what was shared and had no name; from then on nothing changes any more.
        const Scene third(readText(writeText(text ? again.at({0}) : again.root(), "osg")));
        const Scene fourth(readText(writeText(third.at({0}), "osg")));
        const std::string thirdText = writeText(third.at({0}));
        const std::string fourthText = writeText(fourth.at({0}));
        EXPECT_EQ(thirdText, fourthText);
        EXPECT_GT(thirdText.size(), 20000u);
    }
}

INSTANTIATE_TEST_SUITE_P(WrittenByOpenSG18, CoresFileTest,
                         ::testing::Values(CoresFile{"cores.osg", true},
                                           CoresFile{"cores.osb", false}),
                         [](const auto& info) { return info.param.isText ? "text" : "binary"; });

} // namespace
