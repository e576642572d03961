// The matrix of a component transform is made when somebody looks. Nobody can tell: it is always
// the one that would have been made at the end of the last edit. OpenSG makes it with the edit, so
// that there is nothing to test there.

#include "../held.h"

#include <OpenSG/OSGBinaryDataHandler.h>
#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace {

using osg::ComponentTransform;
using osg::ComponentTransformPtr;
using osg::Matrix;
using osg::Quaternion;
using osg::Vec3f;

constexpr osg::BitVector kParts =
    ComponentTransform::CenterFieldMask | ComponentTransform::RotationFieldMask |
    ComponentTransform::ScaleFieldMask | ComponentTransform::ScaleOrientationFieldMask |
    ComponentTransform::TranslationFieldMask;

Matrix matrixOf(const ComponentTransformPtr& transform) {
    Matrix matrix;
    matrix.setTransform(transform->getTranslation(), transform->getRotation(),
                        transform->getScale(), transform->getScaleOrientation(),
                        transform->getCenter());
    return matrix;
}

bool sameBits(const Matrix& a, const Matrix& b) {
    return std::memcmp(a.getValues(), b.getValues(), 16 * sizeof(float)) == 0;
}

class PostponedMatrix : public testing::Test {
  protected:
    PostponedMatrix() : transform(ComponentTransform::create()) {}

    float number() { return std::uniform_real_distribution<float>(-3, 3)(random); }
    Vec3f vector() {
        const float x = number(), y = number(), z = number();
        return Vec3f(x, y, z);
    }
    Quaternion rotation() { return Quaternion(vector(), number()); }

    /// Writes one part, or all, without ending the edit; the part's mask.
    osg::BitVector write(int part) {
        if (part == 0) transform->setTranslation(vector());
        if (part == 1) transform->setRotation(rotation());
        if (part == 2) transform->setScale(vector());
        if (part == 3) transform->setScaleOrientation(rotation());
        if (part == 4) transform->setCenter(vector());
        const osg::BitVector masks[] = {
            ComponentTransform::TranslationFieldMask, ComponentTransform::RotationFieldMask,
            ComponentTransform::ScaleFieldMask, ComponentTransform::ScaleOrientationFieldMask,
            ComponentTransform::CenterFieldMask};
        return masks[part];
    }
    void edit(int part) { endEditCP(transform.get(), write(part)); }
    void editAll() {
        for (int part = 0; part < 5; ++part)
            write(part);
        endEditCP(transform.get(), kParts);
    }

    std::mt19937 random{4};
    const Held<ComponentTransformPtr> transform;
};

TEST_F(PostponedMatrix, isThatOfThePartsAfterAnyEdits) {
    for (int i = 0; i < 2000; ++i) {
        const int edits = 1 + i % 4;
        for (int e = 0; e < edits; ++e)
            edit(static_cast<int>(random() % 5));
        ASSERT_TRUE(sameBits(transform->getMatrix(), matrixOf(transform))) << i;
        ASSERT_TRUE(sameBits(osg::TransformPtr(transform.get())->getMatrix(), matrixOf(transform)));
    }
}

TEST_F(PostponedMatrix, isThatOfThePartsWhereTheScaleIsNotTurned) {
    const float infinity = std::numeric_limits<float>::infinity();
    const float special[] = {0.F,   -0.F,     1.F,       -1.F,
                             3e38F, infinity, -infinity, std::numeric_limits<float>::quiet_NaN(),
                             1e-45F};
    const auto any = [&] { return random() % 3 == 0 ? special[random() % 9] : number(); };
    const auto finite = [&] { return random() % 3 == 0 ? special[random() % 5] : number(); };
    for (int i = 0; i < 50000; ++i) {
        const bool isOdd = i % 8 == 0;
        const auto next = [&] { return isOdd ? any() : finite(); };
        const auto three = [&] {
            const float x = next(), y = next(), z = next();
            return Vec3f(x, y, z);
        };
        transform->setTranslation(three());
        transform->setScale(three());
        transform->setCenter(i % 3 == 0 ? Vec3f() : three());
        Quaternion turn;
        if (i % 5 != 0) {
            const Vec3f axis = three();
            turn.setValueAsQuat(axis[0], axis[1], axis[2], next());
        }
        transform->setRotation(turn);
        Quaternion none;
        if (i % 7 == 0) none.setValueAsQuat(-0.F, i % 2 == 0 ? 0.F : -0.F, 0.F, 1.F);
        if (i % 7 == 1) none.setValueAsQuat(0.F, 0.F, 1e-7F, 1.F); // as good as none, but not quite
        transform->setScaleOrientation(none);
        endEditCP(transform.get(), kParts);
        const Matrix actual = transform->getMatrix(), expected = matrixOf(transform);
        for (osg::UInt32 n = 0; n < 16; ++n) {
            const float a = actual.getValues()[n], b = expected.getValues()[n];
            // One that is no number is as good as another.
            if (std::isnan(a) && std::isnan(b)) continue;
            ASSERT_EQ(std::memcmp(&a, &b, sizeof(a)), 0) << i << " " << n << ": " << a << " " << b;
        }
    }
}

TEST_F(PostponedMatrix, doesNotShowWhatWasWrittenSinceTheEndOfTheLastEdit) {
    for (int part = 0; part < 5; ++part) {
        editAll();
        const Matrix expected = matrixOf(transform);
        const osg::BitVector mask = write(part);
        EXPECT_TRUE(sameBits(transform->getMatrix(), expected)) << part;
        endEditCP(transform.get(), mask);
        EXPECT_TRUE(sameBits(transform->getMatrix(), matrixOf(transform))) << part;
    }
}

TEST_F(PostponedMatrix, isSeenThroughAFieldThatWasAskedForBefore) {
    editAll();
    osg::SFMatrix* const bySelf = transform->getSFMatrix();
    osg::Field* const byNumber = transform->getField(osg::Transform::MatrixFieldId);
    osg::Field* const byName = transform->getField("matrix");
    EXPECT_EQ(bySelf, byNumber);
    EXPECT_EQ(bySelf, byName);
    EXPECT_TRUE(sameBits(bySelf->getValue(), matrixOf(transform)));
    edit(0);
    EXPECT_TRUE(sameBits(bySelf->getValue(), matrixOf(transform)));
    edit(1);
    std::string text, expected;
    byName->getValueByStr(text);
    osg::SFMatrix(matrixOf(transform)).getValueByStr(expected);
    EXPECT_EQ(text, expected);
}

TEST_F(PostponedMatrix, isAskedForByOneOfTwoCopiesOnly) {
    editAll();
    EXPECT_NE(transform->getSFMatrix(), nullptr);
    edit(0);
    const Held<ComponentTransformPtr> copy(ComponentTransformPtr::dcast(transform->shallowCopy()));
    EXPECT_TRUE(sameBits(copy->getMatrix(), matrixOf(transform)));
    edit(2);
    EXPECT_TRUE(sameBits(transform->getMatrix(), matrixOf(transform)));
    EXPECT_TRUE(sameBits(copy->getMatrix(), matrixOf(copy)));
}

TEST_F(PostponedMatrix, goesIntoCopiesThatAreMadeBeforeAnybodyLooked) {
    editAll();
    const Matrix expected = matrixOf(transform);
    write(0); // in the copy's part, not yet in its matrix
    const Held<ComponentTransformPtr> copy(ComponentTransformPtr::dcast(transform->shallowCopy()));
    EXPECT_TRUE(sameBits(copy->getMatrix(), expected));
}

TEST_F(PostponedMatrix, givesWayToOneThatIsSet) {
    editAll();
    Matrix set;
    set.setTranslate(1, 2, 3);
    osg::TransformPtr(transform.get())->setMatrix(set);
    EXPECT_TRUE(sameBits(transform->getMatrix(), set)) << "before the end of the edit";
    endEditCP(transform.get(), osg::Transform::MatrixFieldMask);
    EXPECT_TRUE(sameBits(transform->getMatrix(), set));
    EXPECT_EQ(transform->getScale(), Vec3f(1, 1, 1));
}

TEST_F(PostponedMatrix, canBeEditedInPlace) {
    editAll();
    Matrix expected = matrixOf(transform);
    expected[3][0] = 77;
    osg::TransformPtr(transform.get())->editMatrix()[3][0] = 77;
    EXPECT_TRUE(sameBits(transform->getMatrix(), expected));
    endEditCP(transform.get(), osg::Transform::MatrixFieldMask);
    EXPECT_TRUE(sameBits(transform->getMatrix(), expected));
}

/// A stream of bytes in memory.
class Bytes : public osg::BinaryDataHandler {
  public:
    std::string bytes;
    std::size_t next = 0;

  protected:
    void read(MemoryHandle destination, osg::UInt32 size) override {
        ASSERT_LE(next + size, bytes.size());
        std::memcpy(destination, bytes.data() + next, size);
        next += size;
    }
    void write(MemoryHandle source, osg::UInt32 size) override {
        bytes.append(reinterpret_cast<const char*>(source), size);
    }
};

TEST_F(PostponedMatrix, isWrittenToFilesAndReplacedByThem) {
    editAll();
    const Matrix expected = matrixOf(transform);
    Bytes stream;
    transform->copyToBin(stream, osg::Transform::MatrixFieldMask);
    editAll();
    transform->copyFromBin(stream, osg::Transform::MatrixFieldMask);
    EXPECT_TRUE(sameBits(transform->getMatrix(), expected));
}

TEST_F(PostponedMatrix, movesWhatIsBelowAndItsVolume) {
    const Held<osg::NodePtr> root(osg::Node::create());
    root->setCore(transform.get());
    const osg::NodePtr child = osg::Node::create();
    root->addChild(child);
    editAll();
    EXPECT_TRUE(sameBits(child->getToWorld(), matrixOf(transform)));
    edit(4);
    EXPECT_TRUE(sameBits(child->getToWorld(), matrixOf(transform)));
}

} // namespace
