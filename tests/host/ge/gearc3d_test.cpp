#include "gearc3d.h"

#include "geplane.h"
#include "near.h"

#include <rapidcheck/gtest.h>

#include <cmath>

namespace {

const AcGeVector3d& X = AcGeVector3d::kXAxis;
const AcGeVector3d& Y = AcGeVector3d::kYAxis;
const AcGeVector3d& Z = AcGeVector3d::kZAxis;
const AcGeTol kNear = tolerance(1.0e-9, 1.0e-9);

bool near(const AcGePoint3d& a, const AcGePoint3d& b) { return a.isEqualTo(b, kNear); }
bool near(const AcGeVector3d& a, const AcGeVector3d& b) { return a.isEqualTo(b, kNear); }

// A quarter from (3, 0, 1) to (1, 2, 1).
AcGeCircArc3d quarter() { return AcGeCircArc3d({1, 0, 1}, Z, X, 2.0, 0.0, kRightAngle); }

TEST(CircArc, IsTheUnitCircleAtFirst) {
    const AcGeCircArc3d circle;
    EXPECT_EQ(circle.center(), AcGePoint3d());
    EXPECT_EQ(circle.normal(), Z);
    EXPECT_EQ(circle.refVec(), X);
    EXPECT_EQ(circle.radius(), 1.0);
    EXPECT_EQ(circle.startAng(), 0.0);
    EXPECT_EQ(circle.endAng(), 2.0 * kPi);
    EXPECT_TRUE(circle.isClosed());
}

TEST(CircArc, ParameterIsTheAngle) {
    const AcGeCircArc3d arc = quarter();
    AcGeInterval interval;
    AcGePoint3d start;
    AcGePoint3d end;
    arc.getInterval(interval, start, end);
    EXPECT_EQ(interval, AcGeInterval(0.0, kRightAngle));
    EXPECT_TRUE(near(start, {3, 0, 1}));
    EXPECT_TRUE(near(end, {1, 2, 1}));
    EXPECT_TRUE(near(arc.startPoint(), start));
    EXPECT_TRUE(near(arc.endPoint(), end));
    EXPECT_TRUE(near(arc.evalPoint(kPi / 4.0), {1.0 + std::sqrt(2.0), std::sqrt(2.0), 1.0}));
    EXPECT_TRUE(near(arc.evalPoint(kPi), {-1, 0, 1}));
    EXPECT_NEAR(arc.length(0.0, kRightAngle), kPi, 1.0e-12);
    EXPECT_NEAR(arc.length(kRightAngle, 0.0), kPi, 1.0e-12);
    EXPECT_FALSE(arc.isClosed());
    AcGePlane plane;
    arc.getPlane(plane);
    EXPECT_EQ(plane.pointOnPlane(), AcGePoint3d(1, 0, 1));
    EXPECT_EQ(plane.normal(), Z);
}

TEST(CircArc, DerivativesTurnByAQuarter) {
    AcGeVector3dArray derivatives;
    quarter().evalPoint(0.0, 5, derivatives);
    ASSERT_EQ(derivatives.length(), 5);
    EXPECT_TRUE(near(derivatives[0], Y * 2.0));
    EXPECT_TRUE(near(derivatives[1], X * -2.0));
    EXPECT_TRUE(near(derivatives[2], Y * -2.0));
    EXPECT_TRUE(near(derivatives[3], X * 2.0));
    EXPECT_TRUE(near(derivatives[4], Y * 2.0));
}

TEST(CircArc, AxesArePutInOrder) {
    const AcGeCircArc3d arc({0, 0, 0}, Z * 7.0, AcGeVector3d(0, 3, 5), -2.0, 0.0, 1.0);
    EXPECT_EQ(arc.normal(), Z);
    EXPECT_EQ(arc.refVec(), Y);
    EXPECT_EQ(arc.radius(), 2.0);
    AcGeCircArc3d other;
    other.setAxes(AcGeVector3d(), AcGeVector3d());
    EXPECT_EQ(other.normal(), Z);
    EXPECT_EQ(other.refVec(), Z.perpVector());
    other.setAxes(X, X * 4.0);
    EXPECT_EQ(other.refVec(), X.perpVector());
    EXPECT_EQ(AcGeCircArc3d({1, 1, 1}, Y, 3.0).refVec(), Y.perpVector());
}

TEST(CircArc, AnglesRunUpwardsByOneTurnAtMost) {
    struct Row {
        double start, end, expected;
    };
    const Row rows[] = {{0.0, 1.0, 1.0},
                        {1.0, 0.0, 2.0 * kPi},
                        {1.0, 1.0, 1.0 + 2.0 * kPi},
                        {0.0, 2.0 * kPi, 2.0 * kPi},
                        {0.0, 4.0 * kPi + 0.5, 0.5},
                        {-3.0, -5.0, -5.0 + 2.0 * kPi}};
    for (const Row& row : rows) {
        AcGeCircArc3d arc;
        arc.setAngles(row.start, row.end);
        EXPECT_EQ(arc.startAng(), row.start);
        EXPECT_NEAR(arc.endAng(), row.expected, 1.0e-12) << row.start << " to " << row.end;
    }
}

TEST(CircArc, RunsThroughThreePoints) {
    const AcGeCircArc3d arc(AcGePoint3d(3, 0, 1), AcGePoint3d(1, 2, 1), AcGePoint3d(-1, 0, 1));
    EXPECT_TRUE(near(arc.center(), {1, 0, 1}));
    EXPECT_NEAR(arc.radius(), 2.0, 1.0e-12);
    EXPECT_TRUE(near(arc.normal(), Z));
    EXPECT_TRUE(near(arc.refVec(), X));
    EXPECT_EQ(arc.startAng(), 0.0);
    EXPECT_NEAR(arc.endAng(), kPi, 1.0e-12);
    const AcGeCircArc3d large(AcGePoint3d(3, 0, 1), AcGePoint3d(1, 2, 1), AcGePoint3d(1, -2, 1));
    EXPECT_NEAR(large.endAng(), 1.5 * kPi, 1.0e-12);
    EXPECT_TRUE(near(large.endPoint(), {1, -2, 1}));
    const AcGeCircArc3d clockwise(AcGePoint3d(3, 0, 1), AcGePoint3d(1, -2, 1), AcGePoint3d(-1, 0, 1));
    EXPECT_TRUE(near(clockwise.normal(), -Z));
    EXPECT_TRUE(near(clockwise.evalPoint(kRightAngle), {1, -2, 1}));
}

TEST(CircArc, PointsOnALineChangeNothing) {
    AcGeCircArc3d arc = quarter();
    arc.set(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 1), AcGePoint3d(2, 2, 2));
    arc.set(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 0, 0), AcGePoint3d(2, 2, 2));
    arc.set(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), AcGePoint3d(0, 0, 0));
    EXPECT_EQ(arc.center(), AcGePoint3d(1, 0, 1));
    EXPECT_EQ(arc.radius(), 2.0);
    EXPECT_EQ(AcGeCircArc3d(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 1), AcGePoint3d(2, 2, 2)).radius(), 1.0);
}

TEST(CircArc, SmallArcsRunThroughTheirPointsToo) {
    const double size = 1.0e-8;
    const AcGeCircArc3d arc(AcGePoint3d(size, 0, 0), AcGePoint3d(0, size, 0), AcGePoint3d(-size, 0, 0));
    EXPECT_NEAR(arc.radius(), size, 1.0e-20);
    EXPECT_EQ(arc.normal(), Z);
}

TEST(CircArc, NearestPlaceIsBetweenTheEnds) {
    const AcGeCircArc3d arc = quarter();
    EXPECT_TRUE(near(arc.closestPointTo({5, 4, 9}), {1.0 + std::sqrt(2.0), std::sqrt(2.0), 1.0}));
    EXPECT_EQ(arc.paramOf({3, -1, 1}), 0.0);
    EXPECT_EQ(arc.paramOf({0, 2, 1}), kRightAngle);
    EXPECT_EQ(arc.paramOf({1, 0, 7}), 0.0) << "on the axis";
    EXPECT_EQ(arc.paramOf(AcGePoint3d(3, -1.0e-15, 1)), 0.0) << "a rounding before the start";
    EXPECT_TRUE(arc.isOn(AcGePoint3d(3, 0, 1)));
    EXPECT_FALSE(arc.isOn(AcGePoint3d(-1, 0, 1)));
    EXPECT_FALSE(arc.isOn(AcGePoint3d(3, 0, 2)));
    EXPECT_TRUE(arc.isInside({0, -1, 1}));
    EXPECT_FALSE(arc.isInside({0, -1, 2}));
    EXPECT_FALSE(arc.isInside({3.1, 0, 1}));
}

TEST(CircArc, TurnsRound) {
    AcGeCircArc3d arc = quarter();
    AcGeCurve3d& curve = arc;
    curve.reverseParam();
    EXPECT_TRUE(near(arc.startPoint(), {1, 2, 1}));
    EXPECT_TRUE(near(arc.endPoint(), {3, 0, 1}));
    EXPECT_EQ(arc.normal(), -Z);
    AcGeVector3dArray derivatives;
    arc.evalPoint(arc.startAng(), 1, derivatives);
    EXPECT_TRUE(near(derivatives[0], X * 2.0));
}

TEST(CircArc, MovesAndStaysRoundThroughAMirror) {
    AcGeCircArc3d arc = quarter();
    arc.transformBy(AcGeMatrix3d::scaling(3.0) * AcGeMatrix3d::mirroring(AcGePlane::kYZPlane));
    EXPECT_EQ(arc.radius(), 6.0);
    EXPECT_TRUE(near(arc.startPoint(), {-9, 0, 3}));
    EXPECT_TRUE(near(arc.endPoint(), {-3, 6, 3}));
    EXPECT_TRUE(near(arc.evalPoint(kPi / 4.0), {-3.0 - 3.0 * std::sqrt(2.0), 3.0 * std::sqrt(2.0), 3.0}));
}

TEST(CircArc, SamplesHaveAPointForEachQuarterTurn) {
    AcGePoint3dArray points;
    AcGeDoubleArray params;
    const AcGeCircArc3d circle({0, 0, 0}, Z, X, 2.0, 0.0, 2.0 * kPi);
    circle.getSamplePoints(0.0, 2.0 * kPi, 100.0, points, params);
    ASSERT_EQ(points.length(), 5);
    const AcGePoint3d corners[] = {{2, 0, 0}, {0, 2, 0}, {-2, 0, 0}, {0, -2, 0}, {2, 0, 0}};
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(near(points[i], corners[i])) << i;
        EXPECT_NEAR(params[i], kRightAngle * i, 1.0e-12);
    }
    EXPECT_EQ(params.last(), 2.0 * kPi);
    circle.getSamplePoints(kPi, 0.0, 100.0, points, params);
    ASSERT_EQ(points.length(), 3);
    EXPECT_TRUE(near(points[0], {-2, 0, 0}));
    EXPECT_TRUE(near(points[2], {2, 0, 0}));
}

// Chords of a sixth of a turn stand off by r (1 - cos 30°).
TEST(CircArc, SamplesAreNoMoreThanTheDeviationAsksFor) {
    AcGePoint3dArray points;
    AcGeDoubleArray params;
    const AcGeCircArc3d circle({0, 0, 0}, Z, 2.0);
    const double sixth = 2.0 * (1.0 - std::sqrt(0.75));
    circle.getSamplePoints(0.0, 2.0 * kPi, sixth, points, params);
    EXPECT_EQ(points.length(), 7);
    circle.getSamplePoints(0.0, 2.0 * kPi, sixth * 0.999, points, params);
    EXPECT_EQ(points.length(), 8);
}

TEST(CircArc, SamplesAreBoundedForAbsurdDeviations) {
    AcGePoint3dArray points;
    AcGeDoubleArray params;
    const AcGeCircArc3d circle;
    for (const double eps : {1.0e-30, 0.0, -1.0, std::nan("")}) {
        circle.getSamplePoints(0.0, 2.0 * kPi, eps, points, params);
        EXPECT_EQ(points.length(), AcGeCurve3d::kMostChords + 1);
        EXPECT_EQ(params.length(), AcGeCurve3d::kMostChords + 1);
        EXPECT_TRUE(near(points.last(), {1, 0, 0}));
    }
    circle.getSamplePoints(0.0, 1.0e300, 0.1, points, params);
    EXPECT_EQ(points.length(), AcGeCurve3d::kMostChords + 1);
}

TEST(CircArc, AsManySamplesAsAreAskedFor) {
    AcGePoint3dArray points;
    quarter().getSamplePoints(3, points);
    ASSERT_EQ(points.length(), 3);
    EXPECT_TRUE(near(points[0], {3, 0, 1}));
    EXPECT_TRUE(near(points[1], {1.0 + std::sqrt(2.0), std::sqrt(2.0), 1.0}));
    EXPECT_TRUE(near(points[2], {1, 2, 1}));
}

double real(double low, double high) {
    return low + (high - low) * (*rc::gen::inRange(0, 1 << 30)) / static_cast<double>(1 << 30);
}

AcGeVector3d direction() {
    const AcGeVector3d v(real(-1, 1), real(-1, 1), real(-1, 1));
    RC_PRE(v.length() > 0.1);
    return v.normal();
}

AcGeCircArc3d anyArc() {
    const AcGeVector3d normal = direction();
    return AcGeCircArc3d({real(-9, 9), real(-9, 9), real(-9, 9)}, normal, direction(), real(0.01, 100.0),
                         real(-7.0, 7.0), real(-7.0, 7.0));
}

RC_GTEST_PROP(CircArcProperty, NoChordOfTheSamplesIsFurtherFromTheArcThanAsked, ()) {
    const AcGeCircArc3d arc = anyArc();
    const double eps = arc.radius() * std::pow(10.0, real(-5.0, 1.0));
    AcGePoint3dArray points;
    AcGeDoubleArray params;
    arc.getSamplePoints(arc.startAng(), arc.endAng(), eps, points, params);
    RC_ASSERT(points.length() >= 2);
    RC_ASSERT(points.length() == params.length());
    const double slack = 1.0e-10 * (arc.radius() + 20.0);
    RC_ASSERT(points.first().distanceTo(arc.startPoint()) <= slack);
    RC_ASSERT(points.last().distanceTo(arc.endPoint()) <= slack);
    for (int i = 1; i < points.length(); ++i) {
        RC_ASSERT(params[i] > params[i - 1]);
        RC_ASSERT(points[i].distanceTo(arc.evalPoint(params[i])) <= slack);
        // The chord is furthest from the arc in the middle.
        const AcGePoint3d middle = points[i - 1] + (points[i] - points[i - 1]) * 0.5;
        RC_ASSERT(middle.distanceTo(arc.evalPoint((params[i] + params[i - 1]) / 2.0)) <= eps + slack);
    }
}

RC_GTEST_PROP(CircArcProperty, ThreePointsOfAnArcMakeTheSameArc, ()) {
    const AcGeCircArc3d arc = anyArc();
    const double sweep = arc.endAng() - arc.startAng();
    RC_PRE(sweep > 0.3 && sweep < 6.0);
    const AcGePoint3d middle = arc.evalPoint(arc.startAng() + sweep * real(0.3, 0.7));
    const AcGeCircArc3d made(arc.startPoint(), middle, arc.endPoint());
    const double slack = 1.0e-8 * (arc.radius() + 20.0);
    RC_ASSERT(made.center().distanceTo(arc.center()) <= slack);
    RC_ASSERT(std::fabs(made.radius() - arc.radius()) <= slack);
    RC_ASSERT(std::fabs(made.endAng() - sweep) <= 1.0e-6);
    for (const double share : {0.0, 0.25, 0.5, 1.0})
        RC_ASSERT(made.evalPoint(sweep * share).distanceTo(arc.evalPoint(arc.startAng() + sweep * share)) <=
                  1.0e-6 * (arc.radius() + 20.0));
}

RC_GTEST_PROP(CircArcProperty, NoSampleIsNearerThanTheNearestPlace, ()) {
    const AcGeCircArc3d arc = anyArc();
    const AcGePoint3d from(real(-50, 50), real(-50, 50), real(-50, 50));
    double param = 0.0;
    RC_ASSERT(arc.isOn(arc.closestPointTo(from), param, tolerance(1e-6, 1e-6)));
    RC_ASSERT(arc.isOn(param));
    AcGePoint3dArray points;
    arc.getSamplePoints(200, points);
    for (const AcGePoint3d& point : points)
        RC_ASSERT(arc.distanceTo(from) <= point.distanceTo(from) + 1.0e-7);
}

} // namespace
