#include "entity_fixture.h"

#include <random>

namespace {

using Points = std::vector<AcGePoint3d>;

Points meet(const AcDbEntity& a, const AcDbEntity& b, AcDb::Intersect type = AcDb::kOnBothOperands) {
    AcGePoint3dArray points;
    EXPECT_EQ(a.intersectWith(&b, type, points), Acad::eOk);
    return Points(points.begin(), points.end());
}

Points meetSeenFrom(const AcGeVector3d& normal, const AcDbEntity& a, const AcDbEntity& b,
                    AcDb::Intersect type = AcDb::kOnBothOperands) {
    AcGePoint3dArray points;
    EXPECT_EQ(a.intersectWith(&b, type, AcGePlane(AcGePoint3d(), normal), points), Acad::eOk);
    return Points(points.begin(), points.end());
}

void expectPoints(const Points& found, const Points& expected, double distance = 1.0e-8) {
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        expectNear(found[i], expected[i], distance);
}

std::unique_ptr<AcDbCircle> newCircle(const AcGePoint3d& centre, double radius,
                                      const AcGeVector3d& normal = AcGeVector3d::kZAxis) {
    return std::make_unique<AcDbCircle>(centre, normal, radius);
}

} // namespace

TEST(Intersection, LinesMeetWhereTheyCross) {
    const AcDbLine a({0.0, 0.0, 1.0}, {4.0, 4.0, 1.0}), b({0.0, 4.0, 1.0}, {4.0, 0.0, 1.0});
    expectPoints(meet(a, b), {{2.0, 2.0, 1.0}});
}

TEST(Intersection, LinesAboveEachOtherMeetOnlyInTheView) {
    const AcDbLine a({0.0, 0.0, 1.0}, {4.0, 4.0, 1.0}), b({0.0, 4.0, 3.0}, {4.0, 0.0, 3.0});
    expectPoints(meet(a, b), {});
    // On this entity, not on the other one and not on the plane.
    expectPoints(meetSeenFrom(AcGeVector3d::kZAxis, a, b), {{2.0, 2.0, 1.0}});
    expectPoints(meetSeenFrom(AcGeVector3d::kZAxis, b, a), {{2.0, 2.0, 3.0}});
    expectPoints(meetSeenFrom(AcGeVector3d::kXAxis, a, b), {});
}

TEST(Intersection, TheTypeSaysWhichLineGoesOn) {
    const AcDbLine a({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}), b({3.0, -1.0, 0.0}, {3.0, 1.0, 0.0});
    const AcDbLine c({3.0, 1.0, 0.0}, {3.0, 2.0, 0.0});
    for (const bool seen : {false, true}) {
        const auto points = [&](const AcDbLine& one, const AcDbLine& other, AcDb::Intersect type) {
            return seen ? meetSeenFrom(AcGeVector3d::kZAxis, one, other, type) : meet(one, other, type);
        };
        expectPoints(points(a, b, AcDb::kOnBothOperands), {});
        expectPoints(points(a, b, AcDb::kExtendThis), {{3.0, 0.0, 0.0}});
        expectPoints(points(a, b, AcDb::kExtendArg), {});
        expectPoints(points(b, a, AcDb::kExtendArg), {{3.0, 0.0, 0.0}});
        expectPoints(points(a, c, AcDb::kExtendThis), {});
        expectPoints(points(a, c, AcDb::kExtendBoth), {{3.0, 0.0, 0.0}});
    }
}

TEST(Intersection, LinesOnOneLineMeetAtTheEndsOfWhatTheyShare) {
    const AcDbLine a({0.0, 0.0, 0.0}, {4.0, 0.0, 0.0}), b({3.0, 0.0, 0.0}, {9.0, 0.0, 0.0});
    const AcDbLine touching({4.0, 0.0, 0.0}, {9.0, 0.0, 0.0}), apart({5.0, 0.0, 0.0}, {9.0, 0.0, 0.0});
    const AcDbLine beside({0.0, 1.0, 0.0}, {4.0, 1.0, 0.0});
    expectPoints(meet(a, b), {{3.0, 0.0, 0.0}, {4.0, 0.0, 0.0}});
    expectPoints(meetSeenFrom(AcGeVector3d::kZAxis, a, b), {{3.0, 0.0, 0.0}, {4.0, 0.0, 0.0}});
    expectPoints(meet(a, touching), {{4.0, 0.0, 0.0}});
    expectPoints(meet(a, apart), {});
    expectPoints(meet(a, beside), {});
    expectPoints(meet(a, beside, AcDb::kExtendBoth), {});
}

TEST(Intersection, ALineMeetsACircleTwiceOnceOrNever) {
    const auto round = newCircle({0.0, 0.0, 0.0}, 5.0);
    const AcDbLine through({-9.0, 3.0, 0.0}, {9.0, 3.0, 0.0}), touching({-9.0, 5.0, 0.0}, {9.0, 5.0, 0.0});
    const AcDbLine ending({0.0, 3.0, 0.0}, {9.0, 3.0, 0.0}), above({-9.0, 3.0, 1.0}, {9.0, 3.0, 1.0});
    const AcDbLine piercing({4.0, 3.0, -1.0}, {4.0, 3.0, 1.0});
    expectPoints(meet(through, *round), {{-4.0, 3.0, 0.0}, {4.0, 3.0, 0.0}});
    expectPoints(meet(*round, through), {{4.0, 3.0, 0.0}, {-4.0, 3.0, 0.0}});
    expectPoints(meet(touching, *round), {{0.0, 5.0, 0.0}});
    expectPoints(meet(ending, *round), {{4.0, 3.0, 0.0}});
    expectPoints(meet(ending, *round, AcDb::kExtendThis), {{-4.0, 3.0, 0.0}, {4.0, 3.0, 0.0}});
    expectPoints(meet(above, *round), {});
    expectPoints(meet(piercing, *round), {{4.0, 3.0, 0.0}});
    expectPoints(meetSeenFrom(AcGeVector3d::kZAxis, above, *round), {{-4.0, 3.0, 1.0}, {4.0, 3.0, 1.0}});
    expectPoints(meetSeenFrom(AcGeVector3d::kZAxis, *round, above), {{4.0, 3.0, 0.0}, {-4.0, 3.0, 0.0}});
    expectPoints(meetSeenFrom(AcGeVector3d::kZAxis, *round, piercing), {{4.0, 3.0, 0.0}});
}

TEST(Intersection, AnArcGoesOnToItsCircleOnlyIfItMay) {
    const AcDbArc arc({0.0, 0.0, 0.0}, 5.0, 0.0, kTestPi / 2.0);
    const AcDbLine line({-9.0, 3.0, 0.0}, {9.0, 3.0, 0.0});
    expectPoints(meet(arc, line), {{4.0, 3.0, 0.0}});
    expectPoints(meet(arc, line, AcDb::kExtendThis), {{4.0, 3.0, 0.0}, {-4.0, 3.0, 0.0}});
    expectPoints(meet(line, arc, AcDb::kExtendArg), {{-4.0, 3.0, 0.0}, {4.0, 3.0, 0.0}});
    expectPoints(meet(arc, line, AcDb::kExtendArg), {{4.0, 3.0, 0.0}});
    expectPoints(meetSeenFrom(AcGeVector3d::kZAxis, line, arc), {{4.0, 3.0, 0.0}});
    // An end counts, on either side of the start's angle.
    const AcDbLine atStart({5.0, -1.0, 0.0}, {5.0, 0.0, 0.0});
    expectPoints(meet(atStart, arc), {{5.0, 0.0, 0.0}});
}

TEST(Intersection, CirclesInOnePlane) {
    const auto a = newCircle({0.0, 0.0, 0.0}, 5.0), b = newCircle({6.0, 0.0, 0.0}, 5.0);
    const auto outside = newCircle({7.0, 0.0, 0.0}, 2.0), inside = newCircle({4.0, 0.0, 0.0}, 1.0);
    const auto within = newCircle({1.0, 0.0, 0.0}, 1.0), same = newCircle({0.0, 0.0, 0.0}, 5.0);
    const auto above = newCircle({6.0, 0.0, 9.0}, 5.0);
    expectPoints(meet(*a, *b), {{3.0, 4.0, 0.0}, {3.0, -4.0, 0.0}});
    expectPoints(meet(*a, *outside), {{5.0, 0.0, 0.0}});
    expectPoints(meet(*a, *inside), {{5.0, 0.0, 0.0}});
    expectPoints(meet(*a, *within), {});
    expectPoints(meet(*a, *same), {});
    expectPoints(meet(*a, *above), {});
    expectPoints(meetSeenFrom(AcGeVector3d::kZAxis, *a, *above), {{3.0, 4.0, 0.0}, {3.0, -4.0, 0.0}});
}

TEST(Intersection, ArcsOfOneCircleMeetAtTheEndsOfWhatTheyShare) {
    const AcDbArc a({0.0, 0.0, 0.0}, 1.0, 0.0, kTestPi), b({0.0, 0.0, 0.0}, 1.0, kTestPi / 2.0, 5.0);
    expectPoints(meet(a, b), {{0.0, 1.0, 0.0}, {-1.0, 0.0, 0.0}});
}

TEST(Intersection, CirclesInCrossingPlanes) {
    const auto flat = newCircle({0.0, 0.0, 0.0}, 5.0);
    const auto upright = newCircle({4.0, 0.0, 0.0}, 3.0, AcGeVector3d::kXAxis);
    expectPoints(meet(*flat, *upright), {{4.0, 3.0, 0.0}, {4.0, -3.0, 0.0}});
    expectPoints(meet(*flat, *newCircle({4.0, 0.0, 4.0}, 3.0, AcGeVector3d::kXAxis)), {});
    // Seen from above the upright one is a stretch of a line.
    const auto higher = newCircle({4.0, 0.0, 9.0}, 4.0, AcGeVector3d::kXAxis);
    expectPoints(meetSeenFrom(AcGeVector3d::kZAxis, *flat, *higher), {{4.0, 3.0, 0.0}, {4.0, -3.0, 0.0}});
    EXPECT_EQ(meetSeenFrom(AcGeVector3d::kZAxis, *higher, *flat).size(), 4u);
}

TEST(Intersection, SeenAskewCirclesAreEllipses) {
    // Half as wide in x: (x / 5)^2 + (y / 10)^2 = 1 meets the circle of radius 8 four times.
    const AcGeVector3d tilted(std::sqrt(3.0), 0.0, 1.0);
    const auto ellipse = newCircle({0.0, 0.0, 3.0}, 10.0, tilted), round = newCircle({0.0, 0.0, 0.0}, 8.0);
    const double x = std::sqrt(12.0), y = std::sqrt(52.0);
    const Points found = meetSeenFrom(AcGeVector3d::kZAxis, *round, *ellipse);
    ASSERT_EQ(found.size(), 4u);
    for (const AcGePoint3d& point : found) {
        EXPECT_NEAR(std::fabs(point.x), x, 1.0e-9);
        EXPECT_NEAR(std::fabs(point.y), y, 1.0e-9);
    }
    EXPECT_EQ(meetSeenFrom(AcGeVector3d::kZAxis, *ellipse, *round).size(), 4u);
    // Touching at two points from outside.
    EXPECT_EQ(meetSeenFrom(AcGeVector3d::kZAxis, *newCircle({0.0, 0.0, 0.0}, 10.0), *ellipse).size(), 2u);
    EXPECT_EQ(meetSeenFrom(AcGeVector3d::kZAxis, *newCircle({0.0, 0.0, 0.0}, 10.1), *ellipse).size(), 0u);
    const AcDbLine line({-9.0, 6.0, 0.0}, {9.0, 6.0, 0.0});
    expectPoints(meetSeenFrom(AcGeVector3d::kZAxis, line, *ellipse), {{-4.0, 6.0, 0.0}, {4.0, 6.0, 0.0}});
}

TEST(Intersection, APolylineMeetsAlongItselfEachPointOnce) {
    AcDbPolyline zigzag;
    zigzag.addVertexAt(0, {0.0, -1.0});
    zigzag.addVertexAt(1, {1.0, 0.0});
    zigzag.addVertexAt(2, {2.0, -1.0}, -1.0);
    zigzag.addVertexAt(3, {4.0, -1.0});
    const AcDbLine axis({-9.0, 0.0, 0.0}, {9.0, 0.0, 0.0});
    // A corner belongs to two pieces, and the arc touches.
    expectPoints(meet(zigzag, axis), {{1.0, 0.0, 0.0}, {3.0, 0.0, 0.0}});
    expectPoints(meetSeenFrom(AcGeVector3d::kZAxis, zigzag, axis), {{1.0, 0.0, 0.0}, {3.0, 0.0, 0.0}});
    // Only its first and last piece may be lengthened.
    const AcDbLine below({-9.0, -2.0, 0.0}, {9.0, -2.0, 0.0});
    expectPoints(meet(zigzag, below, AcDb::kExtendThis), {{-1.0, -2.0, 0.0}, {3.0, -2.0, 0.0}});
    zigzag.setClosed(true);
    expectPoints(meet(zigzag, below, AcDb::kExtendThis), {});
}

TEST(Intersection, OldPolylinesMeetToo) {
    AcGePoint3dArray points;
    points.append({0.0, 0.0, 0.0});
    points.append({4.0, 4.0, 4.0});
    const AcDb3dPolyline climb(AcDb::k3dSimplePoly, points);
    expectPoints(meet(climb, *newCircle({0.0, 0.0, 2.0}, std::sqrt(8.0))), {{2.0, 2.0, 2.0}});
    const AcDb2dPolyline flat(AcDb::k2dSimplePoly, points, 1.0);
    expectPoints(meet(flat, climb), {{1.0, 1.0, 1.0}});
}

TEST(Intersection, WhatHasNoPathIsRefused) {
    const AcDbLine line({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0});
    const AcDbPoint point({0.0, 0.0, 0.0});
    const AcDbPolyline empty;
    AcGePoint3dArray points;
    EXPECT_EQ(line.intersectWith(&point, AcDb::kOnBothOperands, points), Acad::eNotImplementedYet);
    EXPECT_EQ(point.intersectWith(&line, AcDb::kOnBothOperands, points), Acad::eNotImplementedYet);
    EXPECT_EQ(empty.intersectWith(&line, AcDb::kOnBothOperands, points), Acad::eNotImplementedYet);
    EXPECT_EQ(line.intersectWith(nullptr, AcDb::kOnBothOperands, points), Acad::eNullEntityPointer);
    EXPECT_TRUE(points.isEmpty());
}

// Whatever the pair, each point lies on both, and turning the pair round finds the same points.
TEST(Intersection, OfRandomPairsLieOnBothAndAreTheSameTurnedRound) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(-5.0, 5.0), angle(0.0, 6.0), size(1.0, 6.0);
    std::size_t count = 0;
    for (int i = 0; i < 400; ++i) {
        const auto any = [&]() -> std::unique_ptr<AcDbCurve> {
            const AcGePoint3d at(place(random), place(random), 0.0);
            if (i % 3 == 0)
                return std::make_unique<AcDbLine>(at, AcGePoint3d(place(random), place(random), 0.0));
            return std::make_unique<AcDbArc>(at, size(random), angle(random), angle(random));
        };
        const std::unique_ptr<AcDbCurve> a = any();
        ++i;
        const std::unique_ptr<AcDbCurve> b = any();
        const Points found = meet(*a, *b), back = meet(*b, *a);
        EXPECT_EQ(found.size(), back.size());
        EXPECT_EQ(meetSeenFrom(AcGeVector3d::kZAxis, *a, *b).size(), found.size());
        for (const AcGePoint3d& point : found)
            for (const AcDbCurve* curve : {a.get(), b.get()}) {
                AcGePoint3d nearest;
                EXPECT_EQ(curve->getClosestPointTo(point, nearest), Acad::eOk);
                expectNear(nearest, point, 1.0e-7);
            }
        count += found.size();
    }
    EXPECT_GT(count, 50u);
}
