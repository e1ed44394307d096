#include "gelnsg3d.h"

#include "geline3d.h"
#include "geplane.h"
#include "near.h"

#include <cmath>
#include <limits>

namespace {

const AcGeVector3d& X = AcGeVector3d::kXAxis;
const AcGeVector3d& Y = AcGeVector3d::kYAxis;
const AcGeVector3d& Z = AcGeVector3d::kZAxis;

TEST(LineSegment, RunsFromItsStartToItsEnd) {
    const AcGeLineSeg3d segment(AcGePoint3d(1, 2, 3), AcGePoint3d(1, 6, 3));
    EXPECT_TRUE(same(segment.startPoint(), {1, 2, 3}));
    EXPECT_TRUE(same(segment.endPoint(), {1, 6, 3}));
    EXPECT_EQ(segment.midPoint(), AcGePoint3d(1, 4, 3));
    EXPECT_EQ(segment.direction(), Y);
    EXPECT_EQ(segment.length(), 4.0);
    EXPECT_EQ(segment.length(0.25, 0.75), 2.0);
    EXPECT_EQ(segment.length(0.75, 0.25), 2.0);
    AcGeInterval interval;
    AcGePoint3d start;
    AcGePoint3d end;
    segment.getInterval(interval, start, end);
    EXPECT_EQ(interval, AcGeInterval(0.0, 1.0));
    EXPECT_TRUE(same(start, {1, 2, 3}));
    EXPECT_TRUE(same(end, {1, 6, 3}));
    EXPECT_EQ(segment.evalPoint(0.25), AcGePoint3d(1, 3, 3));
    EXPECT_EQ(segment.evalPoint(2.0), AcGePoint3d(1, 10, 3));
    EXPECT_FALSE(segment.isClosed());
}

TEST(LineSegment, TakesAPointAndAWay) {
    EXPECT_TRUE(same(AcGeLineSeg3d().endPoint(), {1, 0, 0}));
    AcGeLineSeg3d segment(AcGePoint3d(1, 0, 0), Z * 5.0);
    EXPECT_EQ(segment.endPoint(), AcGePoint3d(1, 0, 5));
    EXPECT_EQ(segment.set(AcGePoint3d(), X * 2.0).endPoint(), AcGePoint3d(2, 0, 0));
    EXPECT_EQ(segment.set(AcGePoint3d(), AcGePoint3d(0, 3, 0)).direction(), Y);
}

// start + (end - start) is not this end: the sum loses the last digits of the smaller number.
TEST(LineSegment, EndIsKeptWhereAdditionLosesDigits) {
    const AcGePoint3d start(1.0e17, 0, 0);
    const AcGePoint3d end(1.0, 0, 0);
    const AcGeLineSeg3d segment(start, end);
    ASSERT_NE((start + (end - start)).x, 1.0);
    EXPECT_TRUE(same(segment.evalPoint(1.0), end));
    EXPECT_TRUE(same(segment.endPoint(), end));
}

TEST(LineSegment, DerivativesAreTheWayAndNothing) {
    const AcGeLineSeg3d segment(AcGePoint3d(1, 0, 0), AcGePoint3d(4, 0, 0));
    AcGeVector3dArray derivatives;
    derivatives.append(Z);
    EXPECT_EQ(segment.evalPoint(0.5, 2, derivatives), AcGePoint3d(2.5, 0, 0));
    ASSERT_EQ(derivatives.length(), 2);
    EXPECT_TRUE(same(derivatives[0], {3, 0, 0}));
    EXPECT_TRUE(same(derivatives[1], {0, 0, 0}));
    AcGeLine3d::kYAxis.evalPoint(0.5, 2, derivatives);
    EXPECT_TRUE(same(derivatives[0], Y));
    EXPECT_TRUE(same(derivatives[1], {0, 0, 0}));
    segment.evalPoint(0.5, 0, derivatives);
    EXPECT_TRUE(derivatives.isEmpty());
}

TEST(LineSegment, NearestPlaceIsBetweenTheEnds) {
    const AcGeLineSeg3d segment(AcGePoint3d(0, 0, 0), AcGePoint3d(4, 0, 0));
    EXPECT_EQ(segment.closestPointTo({1, 7, 0}), AcGePoint3d(1, 0, 0));
    EXPECT_EQ(segment.closestPointTo({-3, 4, 0}), AcGePoint3d(0, 0, 0));
    EXPECT_EQ(segment.distanceTo({-3, 4, 0}), 5.0);
    EXPECT_EQ(segment.paramOf({3, 1, 1}), 0.75);
    EXPECT_EQ(segment.paramOf({30, 1, 1}), 1.0);
    EXPECT_TRUE(segment.isOn(AcGePoint3d(4, 0, 0)));
    EXPECT_FALSE(segment.isOn(AcGePoint3d(5, 0, 0)));
    EXPECT_TRUE(AcGeLine3d::kXAxis.isOn(AcGePoint3d(5, 0, 0)));
    double param = -1.0;
    EXPECT_TRUE(segment.isOn(AcGePoint3d(2, 0, 0), param));
    EXPECT_EQ(param, 0.5);
    EXPECT_FALSE(segment.isOn(AcGePoint3d(2, 1, 0), param));
    EXPECT_EQ(param, 0.5);
    EXPECT_TRUE(segment.isOn(1.0));
    EXPECT_FALSE(segment.isOn(1.5));
    EXPECT_TRUE(AcGeLine3d::kXAxis.isOn(1.0e9));
}

TEST(LineSegment, MeetsAPlaneOnlyBetweenItsEnds) {
    const AcGePlane wall({3, 0, 0}, X);
    AcGePoint3d at(9, 9, 9);
    EXPECT_TRUE(AcGeLineSeg3d(AcGePoint3d(0, 1, 0), AcGePoint3d(3, 1, 0)).intersectWith(wall, at));
    EXPECT_EQ(at, AcGePoint3d(3, 1, 0));
    EXPECT_TRUE(AcGeLineSeg3d(AcGePoint3d(4, 2, 0), AcGePoint3d(2, 2, 0)).intersectWith(wall, at));
    EXPECT_EQ(at, AcGePoint3d(3, 2, 0));
    EXPECT_FALSE(AcGeLineSeg3d(AcGePoint3d(0, 1, 0), AcGePoint3d(2, 1, 0)).intersectWith(wall, at));
    EXPECT_FALSE(wall.intersectWith(AcGeLineSeg3d(AcGePoint3d(4, 1, 0), AcGePoint3d(5, 1, 0)), at));
    EXPECT_EQ(at, AcGePoint3d(3, 2, 0));
}

TEST(LineSegment, OneBehindTheOtherAreColinear) {
    const AcGeLineSeg3d segment(AcGePoint3d(0, 0, 0), AcGePoint3d(4, 0, 0));
    EXPECT_TRUE(segment.isColinearTo(AcGeLineSeg3d(AcGePoint3d(9, 0, 0), AcGePoint3d(8, 0, 0))));
    EXPECT_FALSE(segment.isColinearTo(AcGeLineSeg3d(AcGePoint3d(9, 1, 0), AcGePoint3d(8, 1, 0))));
}

TEST(LineSegment, TurnsRoundAndMoves) {
    AcGeLineSeg3d segment(AcGePoint3d(0, 0, 0), AcGePoint3d(4, 0, 0));
    AcGeCurve3d& curve = segment;
    curve.reverseParam();
    EXPECT_TRUE(same(segment.startPoint(), {4, 0, 0}));
    EXPECT_TRUE(same(segment.endPoint(), {0, 0, 0}));
    EXPECT_EQ(segment.direction(), -X);
    segment.transformBy(AcGeMatrix3d::rotation(kRightAngle, Z) * AcGeMatrix3d::scaling(2.0));
    EXPECT_EQ(segment.startPoint(), AcGePoint3d(0, 8, 0));
    EXPECT_EQ(segment.direction(), -Y);
    AcGeLine3d line = AcGeLine3d::kXAxis;
    EXPECT_EQ(line.reverseParam().evalPoint(2.0), AcGePoint3d(-2, 0, 0));
}

TEST(LineSegment, OfOnePointHasNoDirection) {
    const AcGeLineSeg3d segment(AcGePoint3d(1, 2, 3), AcGePoint3d(1, 2, 3));
    EXPECT_TRUE(segment.direction().isZeroLength());
    EXPECT_EQ(segment.length(), 0.0);
    EXPECT_EQ(segment.paramOf({9, 9, 9}), 0.0);
    EXPECT_TRUE(same(segment.closestPointTo({9, 9, 9}), {1, 2, 3}));
    EXPECT_TRUE(segment.isClosed());
}

TEST(LineSegment, SamplesAreItsTwoEndsHoweverNear) {
    const AcGeLineSeg3d segment(AcGePoint3d(0, 0, 0), AcGePoint3d(4.0e6, 0, 0));
    AcGePoint3dArray points;
    AcGeDoubleArray params;
    points.append({7, 7, 7});
    params.append(7.0);
    for (const double eps : {1.0, 1.0e-9, 0.0, -1.0, std::nan("")}) {
        segment.getSamplePoints(0.0, 1.0, eps, points, params);
        ASSERT_EQ(points.length(), 2);
        ASSERT_EQ(params.length(), 2);
        EXPECT_TRUE(same(points[0], {0, 0, 0}));
        EXPECT_TRUE(same(points[1], {4.0e6, 0, 0}));
        EXPECT_EQ(params[0], 0.0);
        EXPECT_EQ(params[1], 1.0);
    }
    segment.getSamplePoints(1.0, 0.5, 0.1, points, params);
    ASSERT_EQ(points.length(), 2);
    EXPECT_TRUE(same(points[0], {4.0e6, 0, 0}));
    EXPECT_TRUE(same(points[1], {2.0e6, 0, 0}));
}

TEST(LineSegment, SamplesOfOnePlaceOrOfNoNumber) {
    const AcGeLineSeg3d segment;
    AcGePoint3dArray points;
    AcGeDoubleArray params;
    segment.getSamplePoints(0.5, 0.5, 0.1, points, params);
    ASSERT_EQ(points.length(), 1);
    EXPECT_EQ(points[0], AcGePoint3d(0.5, 0, 0));
    EXPECT_EQ(params[0], 0.5);
    segment.getSamplePoints(0.0, std::nan(""), 0.1, points, params);
    EXPECT_TRUE(points.isEmpty());
    EXPECT_TRUE(params.isEmpty());
    segment.getSamplePoints(0.0, std::numeric_limits<double>::infinity(), 0.1, points, params);
    EXPECT_TRUE(points.isEmpty());
}

TEST(LineSegment, AsManySamplesAsAreAskedFor) {
    const AcGeLineSeg3d segment(AcGePoint3d(0, 0, 0), AcGePoint3d(4, 0, 0));
    AcGePoint3dArray points;
    AcGeDoubleArray params;
    segment.getSamplePoints(5, points, params);
    ASSERT_EQ(points.length(), 5);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(points[i], AcGePoint3d(i, 0, 0));
        EXPECT_EQ(params[i], i / 4.0);
    }
    segment.getSamplePoints(1, points);
    ASSERT_EQ(points.length(), 1);
    EXPECT_EQ(points[0], AcGePoint3d(0, 0, 0));
    segment.getSamplePoints(0, points);
    EXPECT_TRUE(points.isEmpty());
    segment.getSamplePoints(-3, points);
    EXPECT_TRUE(points.isEmpty());
    AcGeLine3d::kXAxis.getSamplePoints(5, points);
    EXPECT_TRUE(points.isEmpty());
}

TEST(Line, HasNoEnds) {
    const AcGeCurve3d& line = AcGeLine3d::kXAxis;
    AcGeInterval interval(0.0, 1.0);
    AcGePoint3d start(9, 9, 9);
    AcGePoint3d end(8, 8, 8);
    line.getInterval(interval, start, end);
    EXPECT_TRUE(interval.isUnBounded());
    EXPECT_TRUE(same(start, {9, 9, 9}));
    EXPECT_TRUE(same(end, {8, 8, 8}));
    EXPECT_FALSE(line.hasStartPoint(start));
    EXPECT_FALSE(line.hasEndPoint(end));
    EXPECT_FALSE(line.isClosed());
    EXPECT_EQ(line.evalPoint(-3.0), AcGePoint3d(-3, 0, 0));
    EXPECT_EQ(line.length(-3.0, 4.0), 7.0);
    EXPECT_EQ(line.paramOf({5, 5, 5}), 5.0);
}

} // namespace
