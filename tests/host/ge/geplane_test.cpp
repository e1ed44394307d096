#include "geplane.h"

#include "geline3d.h"
#include "near.h"

namespace {

const AcGeVector3d& X = AcGeVector3d::kXAxis;
const AcGeVector3d& Y = AcGeVector3d::kYAxis;
const AcGeVector3d& Z = AcGeVector3d::kZAxis;

void expectFrame(const AcGePlane& plane, const AcGePoint3d& origin, const AcGeVector3d& u,
                 const AcGeVector3d& v) {
    AcGePoint3d o;
    AcGeVector3d a;
    AcGeVector3d b;
    plane.get(o, a, b);
    EXPECT_EQ(o, origin);
    EXPECT_EQ(a, u);
    EXPECT_EQ(b, v);
}

TEST(Plane, ConstantsAreTheWorldsPlanes) {
    EXPECT_EQ(AcGePlane::kXYPlane.normal(), Z);
    EXPECT_EQ(AcGePlane::kYZPlane.normal(), X);
    EXPECT_EQ(AcGePlane::kZXPlane.normal(), Y);
    expectFrame(AcGePlane(), AcGePoint3d::kOrigin, X, Y);
}

TEST(Plane, NormalGivesAxesByTheDrawingsRule) {
    expectFrame(AcGePlane({1, 2, 3}, Y * 7.0), {1, 2, 3}, -X, Z);
    const AcGePlane skew({0, 0, 0}, {1, 2, 3});
    EXPECT_EQ(skew.normal(), AcGeVector3d(1, 2, 3).normal());
}

TEST(Plane, PointsAndAxesAreKeptAsGiven) {
    expectFrame(AcGePlane(AcGePoint3d(3, 1, 1), AcGePoint3d(1, 1, 1), AcGePoint3d(1, 5, 1)), {1, 1, 1},
                X * 2.0, Y * 4.0);
    const AcGePlane skew({0, 0, 0}, X * 1e-6, (X + Y) * 50.0);
    expectFrame(skew, {0, 0, 0}, X * 1e-6, (X + Y) * 50.0);
    EXPECT_EQ(skew.normal(), Z);
}

TEST(Plane, CoefficientsComeBack) {
    const AcGePlane plane(0, 0, 2, -6);
    EXPECT_EQ(plane.pointOnPlane(), AcGePoint3d(0, 0, 3));
    double a = 0;
    double b = 0;
    double c = 0;
    double d = 0;
    plane.getCoefficients(a, b, c, d);
    EXPECT_EQ(a, 0.0);
    EXPECT_EQ(b, 0.0);
    EXPECT_EQ(c, 1.0);
    EXPECT_EQ(d, -3.0);
    EXPECT_TRUE(AcGePlane(0, 0, 0, 1).normal().isZeroLength());
}

TEST(Plane, DistancesHaveASide) {
    const AcGePlane plane({0, 0, 2}, Z);
    EXPECT_EQ(plane.signedDistanceTo({9, 9, 5}), 3.0);
    EXPECT_EQ(plane.signedDistanceTo({9, 9, 0}), -2.0);
    EXPECT_EQ(plane.distanceTo({9, 9, 0}), 2.0);
    EXPECT_EQ(plane.closestPointTo({9, 9, 0}), AcGePoint3d(9, 9, 2));
    EXPECT_TRUE(plane.isOn({7, 7, 2}));
    EXPECT_FALSE(plane.isOn({7, 7, 2.1}));
    EXPECT_TRUE(plane.isOn({7, 7, 2.1}, tolerance(0.0, 0.2)));
}

TEST(Plane, RelationsGoByNormals) {
    const AcGePlane ground({0, 0, 0}, Z);
    const AcGePlane ceiling({0, 0, 3}, -Z);
    const AcGePlane wall({0, 0, 0}, X);
    EXPECT_TRUE(ground.isParallelTo(ceiling));
    EXPECT_FALSE(ground.isCoplanarTo(ceiling));
    EXPECT_TRUE(ground.isCoplanarTo(AcGePlane({5, 5, 0}, -Z)));
    EXPECT_TRUE(ground.isPerpendicularTo(wall));
    EXPECT_FALSE(ground.isParallelTo(wall));
    EXPECT_TRUE(ground.isParallelTo(AcGeLine3d::kXAxis));
    EXPECT_TRUE(ground.isPerpendicularTo(AcGeLine3d::kZAxis));
    EXPECT_FALSE(ground.isPerpendicularTo(AcGeLine3d::kYAxis));
}

TEST(Plane, MeetsALine) {
    const AcGePlane ceiling({0, 0, 3}, Z);
    AcGePoint3d at(9, 9, 9);
    EXPECT_TRUE(ceiling.intersectWith(AcGeLine3d(AcGePoint3d(0, 0, 0), AcGeVector3d(1, 2, 1)), at));
    EXPECT_EQ(at, AcGePoint3d(3, 6, 3));
    EXPECT_FALSE(ceiling.intersectWith(AcGeLine3d::kXAxis, at));
    EXPECT_EQ(at, AcGePoint3d(3, 6, 3));
    EXPECT_FALSE(ceiling.intersectWith(AcGeLine3d(AcGePoint3d(), AcGeVector3d()), at));
    EXPECT_TRUE(AcGeLine3d::kZAxis.intersectWith(ceiling, at));
    EXPECT_EQ(at, AcGePoint3d(0, 0, 3));
}

TEST(Plane, MeetsAPlaneInALine) {
    const AcGePlane ceiling({7, 7, 3}, Z);
    const AcGePlane wall({2, 0, 0}, X + Z);
    AcGeLine3d line;
    EXPECT_TRUE(ceiling.intersectWith(wall, line));
    EXPECT_TRUE(line.direction().isParallelTo(Y));
    EXPECT_TRUE(ceiling.isOn(line.pointOnLine()));
    EXPECT_TRUE(wall.isOn(line.pointOnLine()));
    AcGeLine3d untouched = AcGeLine3d::kYAxis;
    EXPECT_FALSE(ceiling.intersectWith(AcGePlane::kXYPlane, untouched));
    EXPECT_EQ(untouched.direction(), Y);
}

TEST(Plane, MovesWithItsAxes) {
    AcGePlane plane({1, 0, 0}, X * 2.0, Y);
    plane.transformBy(AcGeMatrix3d::rotation(kRightAngle, X) * AcGeMatrix3d::scaling(3.0));
    expectFrame(plane, {3, 0, 0}, X * 6.0, Z * 3.0);
    EXPECT_EQ(plane.normal(), -Y);
    plane.translateBy({1, 1, 1});
    EXPECT_EQ(plane.pointOnPlane(), AcGePoint3d(4, 1, 1));
}

TEST(Line, DirectionHasLengthOne) {
    const AcGeLine3d line(AcGePoint3d(1, 1, 1), AcGePoint3d(1, 1, 9));
    EXPECT_TRUE(same(line.direction(), Z));
    EXPECT_EQ(line.pointOnLine(), AcGePoint3d(1, 1, 1));
    EXPECT_TRUE(AcGeLine3d(AcGePoint3d(1, 1, 1), AcGePoint3d(1, 1, 1)).direction().isZeroLength());
}

TEST(Line, NearestPlaceAndRelations) {
    const AcGeLine3d line(AcGePoint3d(0, 2, 0), X * 5.0);
    EXPECT_EQ(line.closestPointTo({4, 5, 4}), AcGePoint3d(4, 2, 0));
    EXPECT_EQ(line.distanceTo({4, 5, 4}), 5.0);
    EXPECT_TRUE(line.isOn({-100, 2, 0}));
    EXPECT_FALSE(line.isOn({-100, 2, 1}));
    EXPECT_TRUE(line.isParallelTo(AcGeLine3d::kXAxis));
    EXPECT_FALSE(line.isColinearTo(AcGeLine3d::kXAxis));
    EXPECT_TRUE(line.isColinearTo(AcGeLine3d(AcGePoint3d(9, 2, 0), -X)));
    EXPECT_TRUE(line.isPerpendicularTo(AcGeLine3d::kZAxis));
    AcGeLine3d moved = line;
    moved.transformBy(AcGeMatrix3d::rotation(kRightAngle, Z));
    EXPECT_EQ(moved.pointOnLine(), AcGePoint3d(-2, 0, 0));
    EXPECT_EQ(moved.direction(), Y);
    EXPECT_EQ(moved.set(AcGePoint3d(1, 1, 1), Z * 3.0).direction(), Z);
    EXPECT_EQ(moved.set(AcGePoint3d(1, 1, 1), AcGePoint3d(1, 3, 1)).direction(), Y);
}

} // namespace
