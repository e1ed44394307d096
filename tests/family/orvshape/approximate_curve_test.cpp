#include "orvshape/approximate_curve.h"

#include "curve_fixture.h"

#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

using orv::ApproximateCurve;

namespace {

AcGePoint3dArray pointsOf(const ORV_SegmentedCurve& curve, double chordLength) {
    AcGePoint3dArray points;
    EXPECT_TRUE(ApproximateCurve(chordLength).create(curve, points));
    return points;
}

bool isSame(const AcGePoint3d& a, const AcGePoint3d& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

} // namespace

TEST(ApproximateCurve, EmptyCurveGivesNoPoints) {
    const ORV_SegmentedCurve curve;
    AcGePoint3dArray points;
    points.append({1, 1, 1});
    EXPECT_FALSE(ApproximateCurve(1.0).create(curve, points));
    EXPECT_TRUE(points.isEmpty());
}

TEST(ApproximateCurve, StraightPieceIsSplitEvenlyIntoChordsNoLongerThanAsked) {
    ORV_SegmentedCurve curve;
    ASSERT_EQ(curve.append(lineOf({0, 0, 0}, {10, 0, 0})), Acad::eOk);
    ASSERT_EQ(curve.appendLineTo({10, 5, 0}), Acad::eOk);
    const AcGePoint3dArray points = pointsOf(curve, 3.0);
    const AcGePoint3d expected[] = {{0, 0, 0},  {2.5, 0, 0},  {5, 0, 0}, {7.5, 0, 0},
                                    {10, 0, 0}, {10, 2.5, 0}, {10, 5, 0}};
    ASSERT_EQ(points.length(), 7);
    for (int i = 0; i < 7; ++i)
        expectNear(points[i], expected[i]);
    EXPECT_EQ(pointsOf(curve, 2.5).length(), 7);
    EXPECT_EQ(pointsOf(curve, 2.499999).length(), 9);
    EXPECT_EQ(pointsOf(curve, 10.0).length(), 3);
}

// A quarter of radius 2 is 3.1 chords of length 1 long; the straight pieces are 4 and 3 long.
TEST(ApproximateCurve, ArcIsSplitEvenlyIntoChordsNoLongerThanAsked) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    const AcGePoint3dArray points = pointsOf(curve, 1.0);
    ASSERT_EQ(points.length(), 12);
    expectNear(points[0], {0, 0, 0});
    for (int i = 0; i <= 4; ++i)
        expectNear(points[4 + i], {4 + 2 * std::sin(i * kPi / 8), 2 - 2 * std::cos(i * kPi / 8), 0});
    expectNear(points[11], {6, 5, 0});
    // Six and four chords for the straight pieces.
    const double four = points[4].distanceTo(points[5]);
    EXPECT_EQ(pointsOf(curve, four * 1.000001).length(), 6 + 4 + 4 + 1);
    EXPECT_EQ(pointsOf(curve, four * 0.999999).length(), 6 + 5 + 4 + 1);
}

TEST(ApproximateCurve, ClosedCurveComesBackToItsFirstPoint) {
    ORV_SegmentedCurve curve;
    makeStadium(curve);
    const AcGePoint3dArray points = pointsOf(curve, 0.3);
    EXPECT_GT(points.length(), 20);
    EXPECT_TRUE(isSame(points.first(), points.last()));
    ORV_SegmentedCurve circle;
    ASSERT_EQ(circle.append(arcAbout({5, 0, 0}, {3, 0, 0}, 2 * kPi)), Acad::eOk);
    const AcGePoint3dArray around = pointsOf(circle, 0.0);
    ASSERT_EQ(around.length(), 5);
    EXPECT_TRUE(isSame(around.first(), around.last()));
    expectNear(around[1], {3, 2, 0});
}

TEST(ApproximateCurve, WithoutAChordLengthThereIsAPointForEachQuarterTurn) {
    ORV_SegmentedCurve curve;
    makeStadium(curve);
    const AcGePoint3d expected[] = {{0, 0, 0}, {4, 0, 0},  {5, 1, 0}, {4, 2, 0},
                                    {0, 2, 0}, {-1, 1, 0}, {0, 0, 0}};
    for (const double chord : {0.0, -1.0, std::nan(""), 100.0, std::numeric_limits<double>::infinity()}) {
        const AcGePoint3dArray points = pointsOf(curve, chord);
        ASSERT_EQ(points.length(), 7) << chord;
        for (int i = 0; i < 7; ++i)
            expectNear(points[i], expected[i]);
    }
}

TEST(ApproximateCurve, AbsurdChordLengthsAreBoundedAndSharedOut) {
    ORV_SegmentedCurve curve;
    makeStadium(curve);
    for (const double chord : {1.0e-12, 1.0e-300, std::numeric_limits<double>::denorm_min()}) {
        const AcGePoint3dArray points = pointsOf(curve, chord);
        ASSERT_EQ(points.length(), ApproximateCurve::kMostChords + 1);
        // All four pieces have as many.
        expectNear(points[ApproximateCurve::kMostChords / 4], {4, 0, 0});
        expectNear(points[ApproximateCurve::kMostChords / 2], {4, 2, 0});
    }
}

TEST(ApproximateCurve, PointsOfTheLongestPiecesAreNumbers) {
    ORV_SegmentedCurve curve;
    ASSERT_EQ(curve.append(lineOf({0, 0, 0}, {1.0e154, 0, 0})), Acad::eOk);
    ASSERT_EQ(curve.appendLineTo({1.0e154, 1.3e154, 0}), Acad::eOk);
    const AcGePoint3dArray points = pointsOf(curve, 1.0e149);
    ASSERT_EQ(points.length(), ApproximateCurve::kMostChords + 1);
    for (const AcGePoint3d& point : points)
        ASSERT_TRUE(std::isfinite(point.x) && std::isfinite(point.y) && point.z == 0.0);
}

TEST(ApproximateCurve, ManySmallArcsStillHaveTheirVertices) {
    ORV_SegmentedCurve curve;
    std::vector<orv::CurveSegment> segments;
    constexpr int kArcs = 300;
    for (int i = 0; i < kArcs; ++i)
        segments.push_back(arcAbout({2.0 * i, 0, 0}, {2.0 * i + 1, 0, 0}, i % 2 == 0 ? kPi : -kPi));
    ASSERT_EQ(curve.setSegments(segments), Acad::eOk);
    const AcGePoint3dArray points = pointsOf(curve, 1.0e-9);
    EXPECT_LE(points.length(), ApproximateCurve::kMostChords + 1);
    int found = 0;
    for (const AcGePoint3d& point : points)
        if (found <= kArcs && point.distanceTo({2.0 * found, 0, 0}) < 1.0e-9)
            ++found;
    EXPECT_EQ(found, kArcs + 1);
}

RC_GTEST_PROP(ApproximateCurveProperty, PointsLieAlongTheCurveAndNoChordIsTooLong, ()) {
    const auto number = [](double low, double high) {
        return low + (high - low) * *rc::gen::inRange(0, 1000001) / 1000000.0;
    };
    ORV_SegmentedCurve curve;
    AcGePoint3d at(number(-5, 5), number(-5, 5), number(-5, 5));
    const int count = *rc::gen::inRange(1, 6);
    for (int i = 0; i < count; ++i) {
        AcGeVector3d way(number(-1, 1), number(-1, 1), number(-1, 1));
        way = way.length() < 0.1 ? AcGeVector3d::kXAxis : way.normal();
        orv::CurveSegment segment;
        if (*rc::gen::arbitrary<bool>()) {
            RC_ASSERT(orv::CurveSegment::arcAbout(at, at + way.perpVector() * number(0.5, 20.0), way,
                                                  number(0.1, 6.2), segment));
        } else {
            RC_ASSERT(orv::CurveSegment::line(at, at + way * number(0.5, 30.0), segment));
        }
        RC_ASSERT(curve.append(segment) == Acad::eOk);
        at = segment.end();
    }
    const double chord = number(0.05, 10.0);
    AcGePoint3dArray points;
    RC_ASSERT(ApproximateCurve(chord).create(curve, points));
    // Piece by piece: each begins and ends at a point, and what is between lies on it, one behind the other.
    int next = 0;
    for (int i = 0; i < curve.getSegmentCount(); ++i) {
        const orv::CurveSegment& piece = *curve.getSegmentAt(i);
        RC_ASSERT(points[next].distanceTo(piece.start()) < 1.0e-9);
        double distance = 0.0;
        int chords = 0;
        while (distance < piece.length()) {
            ++next;
            ++chords;
            RC_ASSERT(next < points.length());
            const bool isEnd = points[next].distanceTo(piece.end()) < 1.0e-9;
            const double there = isEnd ? piece.length() : piece.nearestTo(points[next]);
            RC_ASSERT(piece.pointAt(there).distanceTo(points[next]) < 1.0e-8);
            RC_ASSERT(there > distance);
            RC_ASSERT(points[next].distanceTo(points[next - 1]) <= chord + 1.0e-9);
            distance = there;
        }
        // No finer than asked for.
        RC_ASSERT(piece.isArc() || chords < piece.length() / chord + 1.0);
    }
    RC_ASSERT(next == points.length() - 1);
}
