// A writer that remembers what its binding means does what the binding says: the same numbers in
// the fields and the same edits, whatever the field and the value.

#include "fields/boundWriter.h"
#include "fields/fieldsFixture.h"

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGFieldDescription.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

using kv::detail::BoundWriter;
using kvtest::bindingTo;
using kvtest::Field;
using kvtest::Owned;
using osg::NumberBox;
using osg::NumberBoxPtr;

NumberBoxPtr makeBox() {
    const NumberBoxPtr box = NumberBox::create();
    box->getWeights().resize(3);
    box->getPoints().resize(2);
    box->getSwitches().resize(2);
    box->getCounts().resize(2);
    box->setLabel("1 2 3");
    return box;
}

std::string textOf(const osg::FieldContainerPtr& container, const std::string& name) {
    std::string text;
    if (const osg::Field* const field = container->getField(name.c_str()))
        field->getValueByStr(text);
    return text;
}

std::vector<std::pair<osg::BitVector, osg::UInt32>> takeEdits() {
    std::vector<std::pair<osg::BitVector, osg::UInt32>> result;
    for (const NumberBox::Edit& edit : NumberBox::edits())
        result.emplace_back(edit.mask, edit.origin);
    NumberBox::edits().clear();
    return result;
}

const char* const kNames[] = {"flag",
                              "small",
                              "byte",
                              "short",
                              "count",
                              "wide",
                              "amount",
                              "precise",
                              "fieldOfView",
                              "pair",
                              "direction",
                              "four",
                              "place",
                              "shortVector",
                              "tint",
                              "frame",
                              "turn",
                              "label",
                              "weights",
                              "points",
                              "switches",
                              "counts",
                              "nothing of the kind"};

TEST(BoundWriters, writeAndEditLikeLiteralWrites) {
    const float values[] = {0.25F,
                            -3.5F,
                            1.0e9F,
                            -0.0F,
                            std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::quiet_NaN(),
                            7.0F};
    for (const char* const name : kNames) {
        for (const unsigned position : {0U, 1U, 2U, 3U, 4U, 15U, 16U}) {
            const Owned<NumberBoxPtr> literal(makeBox());
            const Owned<NumberBoxPtr> bound(makeBox());
            const Field binding = bindingTo(bound.get(), name, position);
            BoundWriter writer(binding);
            takeEdits();
            for (const float value : values) {
                SCOPED_TRACE(std::string(name) + " " + std::to_string(position) + " " +
                             std::to_string(value));
                kvtest::write(literal.get(), name, position, value);
                const auto edits = takeEdits();
                writer.write(binding, value);
                EXPECT_EQ(takeEdits(), edits);
                EXPECT_EQ(textOf(bound.get(), name), textOf(literal.get(), name));
            }
        }
    }
}

TEST(BoundWriters, ofFloatVectorsMakeOneEditAWrite) {
    const Owned<NumberBoxPtr> box(makeBox());
    const Field binding = bindingTo(box.get(), "direction", 2);
    BoundWriter writer(binding);
    takeEdits();
    for (int i = 1; i <= 3; ++i)
        writer.write(binding, static_cast<float>(i));
    const std::vector<std::pair<osg::BitVector, osg::UInt32>> expected(
        3, {NumberBox::DirectionFieldMask, osg::ChangedOrigin::External});
    EXPECT_EQ(takeEdits(), expected);
    EXPECT_EQ(box.get()->getDirection()[2], 3.0F);
}

TEST(BoundWriters, writeNothingOnceTheContainerIsGone) {
    Field binding;
    BoundWriter writer;
    {
        const Owned<NumberBoxPtr> box(makeBox());
        binding = bindingTo(box.get(), "direction", 0);
        writer = BoundWriter(binding);
        writer.write(binding, 1.0F);
        EXPECT_EQ(box.get()->getDirection()[0], 1.0F);
    }
    takeEdits();
    writer.write(binding, 2.0F);
    EXPECT_TRUE(takeEdits().empty());
}

// The matrix is made when somebody looks, and at once when somebody holds its field.
TEST(BoundWriters, ofAMatrixFindItUpToDate) {
    const Owned<osg::ComponentTransformPtr> core(osg::ComponentTransform::create());
    const Field translation = bindingTo(core.get(), "translation", 1);
    const Field matrix = bindingTo(core.get(), "matrix", 0);
    BoundWriter toTranslation(translation);
    BoundWriter toMatrix(matrix);
    for (const float value : {2.0F, 3.0F}) {
        toTranslation.write(translation, value);
        toMatrix.write(matrix, value);
        EXPECT_EQ(core.get()->getTranslation()[1], value);
        EXPECT_NEAR(core.get()->getScale()[0], value, 1e-6F);
        EXPECT_EQ(kvtest::read(core.get(), "matrix", 7), value);
    }
}

} // namespace
