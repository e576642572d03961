// The key: what its constructors set, what copies share, how keys compare.
#include <kvControlPoint.h>

#include "keys/draws.h"
#include "manager/identifiers.h"
#include "support/access/kvControlPoint.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <type_traits>
#include <utility>

namespace {

using Links = kvTestAccess<kvControlPoint>;
using kv::test::drawsOf;

} // namespace

TEST(ControlPoint, aDefaultKeyIsAllZeroAndAuto) {
    kvControlPoint cp;
    double dx = 1.0;
    double dy = 1.0;
    cp.getDistance2Mouse(dx, dy);
    for (const kvControlPoint::Point p :
         {cp.getPoint(), cp.getOldPoint(), cp.getInTangent(), cp.getOutTangent()}) {
        EXPECT_EQ(p.x, 0.0);
        EXPECT_EQ(p.y, 0.0);
    }
    EXPECT_EQ(dx, 0.0);
    EXPECT_EQ(dy, 0.0);
    EXPECT_EQ(cp.getMinX(), 0.0);
    EXPECT_EQ(cp.getMaxX(), 0.0);
    EXPECT_FALSE(cp.isSelected());
    EXPECT_FALSE(cp.isUnderMouse());
    EXPECT_FALSE(cp.getAutoTangents());
    EXPECT_EQ(cp.getTangentType(), 5);
    EXPECT_EQ(Links::next(cp), nullptr);
    EXPECT_EQ(Links::previous(cp), nullptr);
}

TEST(ControlPoint, aKeyBuiltAtAPointHasHandlesOfNoLength) {
    const kvControlPoint cp(3.5, -2.0, 2);
    EXPECT_EQ(cp.getInTangentDx(), 0.0);
    EXPECT_EQ(cp.getInTangentDy(), 0.0);
    EXPECT_EQ(cp.getOutTangentDx(), 0.0);
    EXPECT_EQ(cp.getOutTangentDy(), 0.0);
    EXPECT_EQ(cp.getPoint().x, 3.5);
    EXPECT_EQ(cp.getPoint().y, -2.0);
    EXPECT_EQ(cp.getTangentType(), 2);
}

TEST(ControlPoint, aKeyBuiltAtAPointHasItsOldPointAtZero) {
    const kvControlPoint cp(3.5, -2.0, 2);
    EXPECT_EQ(cp.getOldPoint().x, 0.0);
    EXPECT_EQ(cp.getOldPoint().y, 0.0);
}

TEST(ControlPoint, everyConstructorDrawsOneIdAndCopiesDrawNone) {
    EXPECT_EQ(drawsOf([] { kvControlPoint(); }), 1U);
    EXPECT_EQ(drawsOf([] { kvControlPoint(1.0, 2.0, 0); }), 1U);
    const kvControlPoint source;
    kvControlPoint target;
    EXPECT_EQ(drawsOf([&] {
                  kvControlPoint copy(source);
                  target = copy;
                  const kvControlPoint moved(std::move(copy));
              }),
              0U);
}

TEST(ControlPoint, theIdIsTheOneDrawn) {
    const kvControlPoint cp;
    EXPECT_EQ(static_cast<unsigned>(cp.getId()), kv::detail::identifierStore().issued().back());
}

TEST(ControlPoint, theIdOfADeletedKeyStaysIssued) {
    int id = 0;
    {
        const kvControlPoint cp;
        id = cp.getId();
    }
    EXPECT_TRUE(kv::detail::isIssuedId(static_cast<std::uint64_t>(id)));
}

TEST(ControlPoint, copyingAKeyKeepsItsIdAndItsLinks) {
    kvControlPoint neighbour;
    kvControlPoint source(1.0, 2.0, 3);
    Links::next(source) = &neighbour;
    Links::previous(source) = &source;
    source.setOldPoint({5, 6});
    source.setDistance2Mouse(7, 8);
    source.setInTangent({9, 10});
    source.setOutTangent({11, 12});
    source.setMinX(13);
    source.setMaxX(14);
    source.setSelected(true);
    source.setUnderMouse(true);
    source.setAutoTangents(true);

    kvControlPoint assigned;
    assigned = source;
    kvControlPoint constructed(source);
    for (kvControlPoint* copy : {&assigned, &constructed}) {
        EXPECT_EQ(copy->getId(), source.getId());
        EXPECT_EQ(Links::next(*copy), &neighbour);
        EXPECT_EQ(Links::previous(*copy), &source);
        EXPECT_EQ(copy->getPoint().x, 1.0);
        EXPECT_EQ(copy->getPoint().y, 2.0);
        EXPECT_EQ(copy->getOldPoint().x, 5.0);
        EXPECT_EQ(copy->getOldPoint().y, 6.0);
        double dx = 0.0;
        double dy = 0.0;
        copy->getDistance2Mouse(dx, dy);
        EXPECT_EQ(dx, 7.0);
        EXPECT_EQ(dy, 8.0);
        EXPECT_EQ(copy->getInTangent().x, 9.0);
        EXPECT_EQ(copy->getInTangent().y, 10.0);
        EXPECT_EQ(copy->getOutTangent().x, 11.0);
        EXPECT_EQ(copy->getOutTangent().y, 12.0);
        EXPECT_EQ(copy->getMinX(), 13.0);
        EXPECT_EQ(copy->getMaxX(), 14.0);
        EXPECT_TRUE(copy->isSelected());
        EXPECT_TRUE(copy->isUnderMouse());
        EXPECT_TRUE(copy->getAutoTangents());
        EXPECT_EQ(copy->getTangentType(), 3);
    }
}

TEST(ControlPoint, handleDistancesArePositiveOnTheirOwnSideOfTheKey) {
    kvControlPoint cp(10.0, 20.0, 6);
    cp.setInTangent({8.0, 17.0});
    cp.setOutTangent({14.0, 25.0});
    EXPECT_EQ(cp.getInTangentDx(), 2.0);
    EXPECT_EQ(cp.getInTangentDy(), 3.0);
    EXPECT_EQ(cp.getOutTangentDx(), 4.0);
    EXPECT_EQ(cp.getOutTangentDy(), 5.0);
}

TEST(ControlPoint, movingThePointLeavesTheHandles) {
    kvControlPoint cp(10.0, 20.0, 6);
    cp.setPoint({11.0, 22.0});
    EXPECT_EQ(cp.getInTangent().x, 10.0);
    EXPECT_EQ(cp.getOutTangent().y, 20.0);
}

TEST(ControlPoint, keysCompareByFrameOnly) {
    const kvControlPoint early(1.0, 100.0, 5);
    const kvControlPoint late(2.0, -100.0, 5);
    EXPECT_TRUE(early < late);
    EXPECT_FALSE(late < early);
}

TEST(ControlPoint, ofTwoKeysAtOneFrameNeitherIsLess) {
    const kvControlPoint a(1.0, 1.0, 5);
    const kvControlPoint b(1.0, 2.0, 5);
    EXPECT_FALSE(a < b);
    EXPECT_FALSE(b < a);
}

TEST(ControlPoint, aNanFrameComparesFalseBothWays) {
    const kvControlPoint nan(std::numeric_limits<double>::quiet_NaN(), 0.0, 5);
    const kvControlPoint one(1.0, 0.0, 5);
    EXPECT_FALSE(nan < one);
    EXPECT_FALSE(one < nan);
}

TEST(ControlPoint, anUnknownTangentTypeReadsBackUnchanged) {
    kvControlPoint cp;
    cp.setTangentType(99);
    EXPECT_EQ(cp.getTangentType(), 99);
    cp.setTangentType(-1);
    EXPECT_EQ(cp.getTangentType(), -1);
    EXPECT_EQ(kvControlPoint(0.0, 0.0, 4711).getTangentType(), 4711);
}

TEST(ControlPoint, anIdSetByHandReadsBack) {
    kvControlPoint cp;
    cp.setId(-5);
    EXPECT_EQ(cp.getId(), -5);
}

TEST(ControlPoint, aKeyStaysSmallAndWithoutAVirtualTable) {
    EXPECT_FALSE(std::is_polymorphic_v<kvControlPoint>);
    EXPECT_LE(sizeof(kvControlPoint), 128U);
}
