#include "curve_fixture.h"
#include "dbextents.h"

#include <cmath>
#include <limits>

using orv::CurveSegment;

namespace {

const AcGeVector3d kZ = AcGeVector3d::kZAxis;
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();

CurveSegment arcThrough(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end) {
    CurveSegment segment;
    EXPECT_TRUE(CurveSegment::arcThrough(start, middle, end, segment));
    return segment;
}

} // namespace

TEST(CurveSegment, LineIsTheShortestWay) {
    const CurveSegment line = lineOf({1, 2, 3}, {4, 6, 3});
    EXPECT_FALSE(line.isArc());
    EXPECT_DOUBLE_EQ(line.length(), 5);
    expectNear(line.pointAt(2.5), {2.5, 4, 3});
    expectNear(line.tangentAt(1), {0.6, 0.8, 0});
    expectNear(line.curvatureAt(1), {0, 0, 0});
    EXPECT_EQ(line.radius(), 0.0);
    EXPECT_EQ(line.sweep(), 0.0);
}

TEST(CurveSegment, ThreeFormsOfOneQuarterTurnAreTheSame) {
    CurveSegment byBulge;
    ASSERT_TRUE(CurveSegment::arcByBulge({2, 0, 0}, {0, 2, 0}, std::tan(kPi / 8), kZ, byBulge));
    const double half = std::sqrt(2.0);
    const CurveSegment through = arcThrough({2, 0, 0}, {half, half, 0}, {0, 2, 0});
    const CurveSegment about = arcAbout({2, 0, 0}, {0, 0, 0}, kPi / 2);
    for (const CurveSegment& arc : {byBulge, through, about}) {
        EXPECT_TRUE(arc.isArc());
        expectNear(arc.centre(), {0, 0, 0});
        expectNear(arc.normal(), kZ);
        expectNear(arc.end(), {0, 2, 0});
        EXPECT_NEAR(arc.radius(), 2, 1e-12);
        EXPECT_NEAR(arc.sweep(), kPi / 2, 1e-12);
        EXPECT_NEAR(arc.length(), kPi, 1e-12);
        expectNear(arc.pointAt(kPi / 2), {half, half, 0});
        expectNear(arc.tangentAt(0), {0, 1, 0});
        expectNear(arc.tangentAt(kPi), {-1, 0, 0});
        expectNear(arc.curvatureAt(0), {-0.5, 0, 0});
    }
}

TEST(CurveSegment, ClockwiseTurnsTheNormalRound) {
    CurveSegment byBulge;
    ASSERT_TRUE(CurveSegment::arcByBulge({0, 2, 0}, {2, 0, 0}, -std::tan(kPi / 8), kZ, byBulge));
    const CurveSegment about = arcAbout({0, 2, 0}, {0, 0, 0}, -kPi / 2);
    for (const CurveSegment& arc : {byBulge, about}) {
        expectNear(arc.normal(), {0, 0, -1});
        expectNear(arc.centre(), {0, 0, 0});
        expectNear(arc.end(), {2, 0, 0});
        expectNear(arc.tangentAt(0), {1, 0, 0});
    }
}

TEST(CurveSegment, ArcThroughThreePointsLiesInTheirPlane) {
    // About (1, 1, 1) with radius 1, in the plane x = 1, nearly all round.
    const AcGePoint3d start(1, 2, 1), middle(1, 0, 1), end(1, 1 + std::cos(-0.1), 1 + std::sin(-0.1));
    const CurveSegment arc = arcThrough(start, middle, end);
    expectNear(arc.centre(), {1, 1, 1}, 1e-8);
    EXPECT_NEAR(arc.sweep(), 2 * kPi - 0.1, 1e-9);
    expectNear(arc.normal(), {1, 0, 0}, 1e-9);
    expectNear(arc.end(), end, 0.0);
}

TEST(CurveSegment, EndsAreTheVeryPointsThatWereGiven) {
    // Coordinates as surveyors have them, where a computed end would be off by more than the tolerance.
    const AcGePoint3d start(4512345.1, 5412345.2, 100.3), end(4512349.7, 5412351.9, 100.3);
    CurveSegment arc;
    ASSERT_TRUE(CurveSegment::arcByBulge(start, end, 0.3, kZ, arc));
    for (unsigned i = 0; i < 3; ++i) {
        EXPECT_EQ(arc.pointAt(0)[i], start[i]);
        EXPECT_EQ(arc.pointAt(arc.length())[i], end[i]);
    }
}

TEST(CurveSegment, FlatArcKeepsItsHeight) {
    // A chord of 100 with a height of a hundredth of a millimetre: the centre is 125 000 km away.
    const double bulge = 1.0e-5 / 50;
    CurveSegment arc;
    ASSERT_TRUE(CurveSegment::arcByBulge({0, 0, 0}, {100, 0, 0}, bulge, kZ, arc));
    expectNear(arc.pointAt(arc.length() / 2), {50, -1.0e-5, 0}, 1e-10);
}

TEST(CurveSegment, FullCircleComesBack) {
    const CurveSegment circle = arcAbout({3, 1, 0}, {1, 1, 0}, 2 * kPi);
    EXPECT_TRUE(circle.isFullCircle());
    EXPECT_EQ(circle.end().x, 3.0);
    EXPECT_DOUBLE_EQ(circle.length(), 4 * kPi);
    EXPECT_EQ(circle.nearestTo({3, 1, 0}), 0.0);
    EXPECT_NEAR(circle.nearestTo({1, -7, 0}), 3 * kPi, 1e-9);
    EXPECT_FALSE(arcAbout({3, 1, 0}, {1, 1, 0}, 1.99 * kPi).isFullCircle());
}

TEST(CurveSegment, WhatMakesNoPieceIsRefusedAndChangesNothing) {
    CurveSegment segment = lineOf({7, 0, 0}, {8, 0, 0});
    const auto isUntouched = [&] {
        return segment.start().x == 7 && segment.end().x == 8 && !segment.isArc();
    };
    const AcGePoint3d a(0, 0, 0), b(1, 0, 0), c(2, 0, 0);
    EXPECT_FALSE(CurveSegment::line(a, a, segment));
    EXPECT_FALSE(CurveSegment::line(a, {1e-11, 0, 0}, segment));
    EXPECT_FALSE(CurveSegment::line(a, {kNotANumber, 0, 0}, segment));
    EXPECT_FALSE(CurveSegment::line(a, {kInfinite, 0, 0}, segment));
    EXPECT_FALSE(CurveSegment::line({-1e308, 0, 0}, {1e308, 0, 0}, segment));
    EXPECT_FALSE(CurveSegment::arcThrough(a, b, c, segment));
    EXPECT_FALSE(CurveSegment::arcThrough(a, b, a, segment));
    EXPECT_FALSE(CurveSegment::arcThrough(a, {kNotANumber, 1, 0}, c, segment));
    EXPECT_FALSE(CurveSegment::arcByBulge(a, b, 0, kZ, segment));
    EXPECT_FALSE(CurveSegment::arcByBulge(a, b, kInfinite, kZ, segment));
    EXPECT_FALSE(CurveSegment::arcByBulge(a, a, 1, kZ, segment));
    EXPECT_FALSE(CurveSegment::arcByBulge(a, b, 1, {0, 0, 0}, segment));
    EXPECT_FALSE(CurveSegment::arcByBulge(a, b, 1, {1, 0, 1}, segment));
    EXPECT_FALSE(CurveSegment::arcAbout(a, a, kZ, 1, segment));
    EXPECT_FALSE(CurveSegment::arcAbout(a, b, kZ, 0, segment));
    EXPECT_FALSE(CurveSegment::arcAbout(a, b, kZ, 6.5, segment));
    EXPECT_FALSE(CurveSegment::arcAbout(a, b, kZ, kNotANumber, segment));
    EXPECT_FALSE(CurveSegment::arcAbout(a, b, {0, 0, 0}, 1, segment));
    EXPECT_FALSE(CurveSegment::arcAbout(a, {1, 0, 0.5}, kZ, 1, segment));
    EXPECT_FALSE(CurveSegment::arcAbout(a, b, {kNotANumber, 0, 1}, 1, segment));
    EXPECT_FALSE(CurveSegment::arcOf({1, 0, 0}, {0, 1.1, 0}, a, kZ, kPi / 2, segment));
    EXPECT_TRUE(isUntouched());
    EXPECT_TRUE(CurveSegment::arcOf({1, 0, 0}, {0, 1, 0}, a, kZ, kPi / 2, segment));
}

TEST(CurveSegment, NearestPlaceStaysOnThePieceUnlessItMayGoOn) {
    const CurveSegment line = lineOf({0, 0, 0}, {4, 0, 0});
    EXPECT_EQ(line.nearestTo({1, 5, 2}), 1.0);
    EXPECT_EQ(line.nearestTo({-3, 1, 0}), 0.0);
    EXPECT_EQ(line.nearestTo({-3, 1, 0}, true, false), -3.0);
    EXPECT_EQ(line.nearestTo({9, 1, 0}, true, false), 4.0);
    EXPECT_EQ(line.nearestTo({9, 1, 0}, false, true), 9.0);

    const CurveSegment arc = arcAbout({2, 0, 0}, {0, 0, 0}, kPi / 2);
    EXPECT_NEAR(arc.nearestTo({5, 5, 3}), kPi / 2, 1e-12);
    EXPECT_EQ(arc.nearestTo({-1, 9, 0}), arc.length());
    EXPECT_EQ(arc.nearestTo({9, -1, 0}), 0.0);
    EXPECT_EQ(arc.nearestTo({0, 0, 7}), 0.0);
    // Both ways round lead to the opposite side.
    EXPECT_NEAR(arc.nearestTo({-3, 0, 0}, false, true), 2 * kPi, 1e-9);
    EXPECT_NEAR(arc.nearestTo({0, -3, 0}, true, false), -kPi, 1e-9);
    expectNear(arc.pointAt(arc.nearestTo({-3, 0, 0}, true, false)), {-2, 0, 0});
    expectNear(arc.pointAt(arc.nearestTo({-3, -0.5, 0}, true, true)),
               AcGePoint3d::kOrigin + AcGeVector3d(-3, -0.5, 0).normal() * 2);
}

TEST(CurveSegment, BoxHoldsTheTopOfAnArcAndNoMore) {
    AcDbExtents upper;
    arcAbout({1, 0, 0}, {0, 0, 0}, kPi).addTo(upper);
    expectNear(upper.minPoint(), {-1, 0, 0});
    expectNear(upper.maxPoint(), {1, 1, 0});
    AcDbExtents whole;
    arcAbout({0, 3, 1}, {0, 1, 1}, 2 * kPi, AcGeVector3d::kXAxis).addTo(whole);
    expectNear(whole.minPoint(), {0, -1, -1});
    expectNear(whole.maxPoint(), {0, 3, 3});
}

TEST(CurveSegment, PartOfAnArc) {
    const CurveSegment arc = arcAbout({2, 0, 0}, {0, 0, 0}, kPi);
    CurveSegment part;
    ASSERT_TRUE(arc.part(kPi / 2, kPi, part));
    expectNear(part.start(), {std::sqrt(2.0), std::sqrt(2.0), 0});
    expectNear(part.end(), {0, 2, 0});
    EXPECT_NEAR(part.sweep(), kPi / 4, 1e-12);
    EXPECT_FALSE(arc.part(1, 1, part));
}

TEST(CurveSegment, ReversedRunsTheSameWayBack) {
    const CurveSegment arc = arcAbout({2, 0, 0}, {0, 0, 0}, 1.2);
    const CurveSegment back = arc.reversed();
    expectNear(back.pointAt(0.3), arc.pointAt(arc.length() - 0.3));
    expectNear(back.tangentAt(0.3), -arc.tangentAt(arc.length() - 0.3));
    const CurveSegment line = lineOf({0, 0, 0}, {1, 2, 3}).reversed();
    expectNear(line.start(), {1, 2, 3});
    expectNear(line.normal(), {0, 0, 0});
}

TEST(CurveSegment, ArcWithAnotherEndKeepsItsSweep) {
    const CurveSegment arc = arcAbout({1, 0, 0}, {0, 0, 0}, kPi); // from (1, 0) over (0, 1) to (-1, 0)
    CurveSegment moved;
    ASSERT_TRUE(arc.withEnds({1, 0, 0}, {-3, 0, 0}, moved));
    expectNear(moved.centre(), {-1, 0, 0});
    expectNear(moved.pointAt(moved.length() / 2), {-1, 2, 0});
    EXPECT_EQ(moved.sweep(), arc.sweep());
    // Out of the plane: half a circle over the new chord, turned with it.
    ASSERT_TRUE(arc.withEnds({1, 0, 0}, {1, 0, 2}, moved));
    expectNear(moved.centre(), {1, 0, 1});
    expectNear(moved.pointAt(moved.length() / 2), {1, 1, 1});
    // The chord turned round: the same plane, the other side.
    ASSERT_TRUE(arc.withEnds({-1, 0, 0}, {1, 0, 0}, moved));
    expectNear(moved.pointAt(moved.length() / 2), {0, -1, 0});
    EXPECT_FALSE(arc.withEnds({1, 0, 0}, {1, 0, 0}, moved));
}

TEST(CurveSegment, TinyArcTurnsWithItsChordToo) {
    const CurveSegment arc = arcAbout({1e-8, 0, 0}, {0, 0, 0}, kPi / 2);
    CurveSegment moved;
    ASSERT_TRUE(arc.withEnds({0, 1e-8, 0}, {-1e-8, 0, 0}, moved));
    EXPECT_NEAR(moved.centre().distanceTo({0, 0, 0}), 0, 1e-15);
}

TEST(CurveSegment, FullCircleGoesWithItsStart) {
    const CurveSegment circle = arcAbout({2, 0, 0}, {0, 0, 0}, 2 * kPi);
    CurveSegment moved;
    ASSERT_TRUE(circle.withEnds({5, 1, 0}, {5, 1, 0}, moved));
    expectNear(moved.centre(), {3, 1, 0});
    EXPECT_TRUE(moved.isFullCircle());
    EXPECT_FALSE(circle.withEnds({5, 1, 0}, {2, 0, 0}, moved));
}

TEST(CurveSegment, TransformedArcStaysRoundOrIsRefused) {
    const CurveSegment arc = arcAbout({2, 0, 0}, {0, 0, 0}, 1);
    CurveSegment changed;
    AcGeMatrix3d across;
    across(2, 2) = 3.0; // along the normal alone, which leaves the circle as it is
    ASSERT_TRUE(arc.transformed(across, changed));
    EXPECT_DOUBLE_EQ(changed.radius(), 2);
    AcGeMatrix3d mirror;
    mirror(0, 0) = -1.0;
    ASSERT_TRUE(arc.transformed(mirror, changed));
    expectNear(changed.normal(), {0, 0, -1});
    expectNear(changed.pointAt(1), {-2 * std::cos(0.5), 2 * std::sin(0.5), 0});
    AcGeMatrix3d squeeze;
    squeeze(0, 0) = 2.0;
    EXPECT_FALSE(arc.transformed(squeeze, changed));
    AcGeMatrix3d shear;
    shear(0, 1) = 0.5;
    EXPECT_FALSE(arc.transformed(shear, changed));
    AcGeMatrix3d flat;
    flat(0, 0) = flat(1, 1) = 0.0;
    EXPECT_FALSE(arc.transformed(flat, changed));
    AcGeMatrix3d broken;
    broken(0, 3) = kNotANumber;
    EXPECT_FALSE(arc.transformed(broken, changed));
}
