#include "gevec3d.h"

#include "geplane.h"
#include "near.h"

namespace {

const AcGeVector3d& X = AcGeVector3d::kXAxis;
const AcGeVector3d& Y = AcGeVector3d::kYAxis;
const AcGeVector3d& Z = AcGeVector3d::kZAxis;

TEST(Vector3d, Constants) {
    EXPECT_TRUE(same(AcGeVector3d(), {0, 0, 0}));
    EXPECT_TRUE(same(AcGeVector3d::kIdentity, {0, 0, 0}));
    EXPECT_TRUE(same(X, {1, 0, 0}));
    EXPECT_TRUE(same(Y, {0, 1, 0}));
    EXPECT_TRUE(same(Z, {0, 0, 1}));
}

TEST(Vector3d, Arithmetic) {
    const AcGeVector3d a(1, 2, 3);
    const AcGeVector3d b(10, 20, 30);
    EXPECT_TRUE(same(a + b, {11, 22, 33}));
    EXPECT_TRUE(same(b - a, {9, 18, 27}));
    EXPECT_TRUE(same(-a, {-1, -2, -3}));
    EXPECT_TRUE(same(a * 2.0, {2, 4, 6}));
    EXPECT_TRUE(same(2.0 * a, {2, 4, 6}));
    EXPECT_TRUE(same(b / 10.0, {1, 2, 3}));
    AcGeVector3d v = a;
    EXPECT_TRUE(same(v += b, {11, 22, 33}));
    EXPECT_TRUE(same(v -= a, {10, 20, 30}));
    EXPECT_TRUE(same(v *= 0.5, {5, 10, 15}));
    EXPECT_TRUE(same(v /= 5.0, {1, 2, 3}));
    EXPECT_TRUE(same(v.negate(), {-1, -2, -3}));
    EXPECT_TRUE(same(v.setToSum(a, b), {11, 22, 33}));
    EXPECT_TRUE(same(v.setToProduct(a, 3.0), {3, 6, 9}));
    EXPECT_TRUE(same(v.set(7, 8, 9), {7, 8, 9}));
}

TEST(Vector3d, ComponentsByIndex) {
    AcGeVector3d v(1, 2, 3);
    v[0] += 10;
    v[1] += 20;
    v[2] += 30;
    const AcGeVector3d& read = v;
    EXPECT_EQ(read[0], 11);
    EXPECT_EQ(read[1], 22);
    EXPECT_EQ(read[2], 33);
}

TEST(Vector3d, LengthAndProducts) {
    EXPECT_EQ(AcGeVector3d(2, 3, 6).length(), 7.0);
    EXPECT_EQ(AcGeVector3d(2, 3, 6).lengthSqrd(), 49.0);
    EXPECT_EQ(AcGeVector3d(1, 2, 3).dotProduct({4, -5, 6}), 12.0);
    EXPECT_TRUE(same(AcGeVector3d(1, 2, 3).crossProduct({4, 5, 6}), {-3, 6, -3}));
    EXPECT_TRUE(same(X.crossProduct(Y), Z));
    EXPECT_TRUE(same(Y.crossProduct(X), -Z));
}

TEST(Vector3d, NormalHasLengthOne) {
    const AcGeVector3d v(0, -3, 4);
    EXPECT_TRUE(same(v.normal(), {0, -0.6, 0.8}));
    EXPECT_TRUE(same(v, {0, -3, 4}));
    AcGeVector3d w = v;
    EXPECT_TRUE(same(w.normalize(), {0, -0.6, 0.8}));
    EXPECT_TRUE(same(w, {0, -0.6, 0.8}));
    EXPECT_TRUE(w.isUnitLength());
}

TEST(Vector3d, NormalOfOneWithoutLengthIsTheVectorItself) {
    const AcGeVector3d little(1e-13, 0, 0);
    EXPECT_TRUE(same(little.normal(), little));
    EXPECT_TRUE(same(little.normal(tolerance(1e-14)), X));
    EXPECT_TRUE(same(AcGeVector3d(0, 5, 0).normal(tolerance(5.0)), {0, 5, 0}));
}

TEST(Vector3d, NormalizeTellsThatThereIsNoLength) {
    AcGeError flag = AcGe::kOk;
    AcGeVector3d none;
    EXPECT_TRUE(same(none.normalize(AcGeContext::gTol, flag), AcGeVector3d()));
    EXPECT_EQ(flag, AcGe::k0This);
    AcGeVector3d some(0, 0, 4);
    EXPECT_TRUE(same(some.normalize(AcGeContext::gTol, flag), Z));
    EXPECT_EQ(flag, AcGe::kOk);
}

TEST(Vector3d, AngleIsBetweenNothingAndAHalfTurn) {
    EXPECT_EQ(X.angleTo(X * 5.0), 0.0);
    EXPECT_EQ(X.angleTo(Y * 5.0), kRightAngle);
    EXPECT_EQ(Y.angleTo(X), kRightAngle);
    EXPECT_EQ(X.angleTo(-X), kPi);
    EXPECT_DOUBLE_EQ(X.angleTo({1, -1, 0}), kPi / 4.0);
    EXPECT_EQ(X.angleTo(AcGeVector3d()), 0.0);
    // Where an arc cosine would see no angle at all.
    EXPECT_DOUBLE_EQ(X.angleTo({1, 1e-9, 0}), 1e-9);
}

TEST(Vector3d, AngleWithAReferenceGoesAllTheWayRound) {
    EXPECT_EQ(X.angleTo(Y, Z), kRightAngle);
    EXPECT_EQ(X.angleTo(Y, -Z), 3.0 * kRightAngle);
    EXPECT_EQ(Y.angleTo(X, Z), 3.0 * kRightAngle);
    EXPECT_EQ(X.angleTo(X, Z), 0.0);
    EXPECT_EQ(X.angleTo(-X, Z), kPi);
    EXPECT_EQ(X.angleTo(Y, {5, 5, 0.001}), kRightAngle);
    EXPECT_EQ(X.angleTo(Y, X), kRightAngle);
}

TEST(Vector3d, AngleOnAPlaneTurnsFromItsFirstAxis) {
    EXPECT_EQ(X.angleOnPlane(AcGePlane::kXYPlane), 0.0);
    EXPECT_EQ(AcGeVector3d(0, 2, 9).angleOnPlane(AcGePlane::kXYPlane), kRightAngle);
    EXPECT_EQ(AcGeVector3d(0, -2, 9).angleOnPlane(AcGePlane::kXYPlane), 3.0 * kRightAngle);
    EXPECT_EQ(Z.angleOnPlane(AcGePlane::kYZPlane), kRightAngle);
    EXPECT_EQ(X.angleOnPlane(AcGePlane::kZXPlane), kRightAngle);
}

TEST(Vector3d, RotatesCounterClockwiseSeenFromTheAxis) {
    EXPECT_EQ(AcGeVector3d(1, 0, 5).rotateBy(kRightAngle, Z), AcGeVector3d(0, 1, 5));
    EXPECT_EQ(AcGeVector3d(1, 0, 5).rotateBy(kRightAngle, -Z * 7.0), AcGeVector3d(0, -1, 5));
    EXPECT_EQ(AcGeVector3d(1, 2, 3).rotateBy(2.0 * kPi / 3.0, {1, 1, 1}), AcGeVector3d(3, 1, 2));
    EXPECT_TRUE(same(AcGeVector3d(1, 2, 3).rotateBy(1.0, AcGeVector3d()), {1, 2, 3}));
}

TEST(Vector3d, MirrorsAtAPlaneThroughTheOrigin) {
    EXPECT_EQ(AcGeVector3d(1, 2, 3).mirror(Z * 9.0), AcGeVector3d(1, 2, -3));
    EXPECT_EQ(AcGeVector3d(1, 0, 0).mirror({1, -1, 0}), AcGeVector3d(0, 1, 0));
    EXPECT_TRUE(same(AcGeVector3d(1, 2, 3).mirror(AcGeVector3d()), {1, 2, 3}));
}

TEST(Vector3d, PerpendicularVectorFollowsTheDrawingsRule) {
    EXPECT_TRUE(same(Z.perpVector(), X));
    EXPECT_TRUE(same((Z * 40.0).perpVector(), X));
    EXPECT_TRUE(same((-Z).perpVector(), -X));
    EXPECT_TRUE(same(X.perpVector(), Y));
    EXPECT_TRUE(same(Y.perpVector(), -X));
    EXPECT_TRUE(same(AcGeVector3d().perpVector(), AcGeVector3d()));
    // Inside of one part in 64 of the Z axis the Y axis is taken, outside of it the Z axis.
    const AcGeVector3d inside = AcGeVector3d(0, -1.0 / 65.0, 1).normal();
    EXPECT_EQ(inside.perpVector(), Y.crossProduct(inside).normal());
    const AcGeVector3d outside = AcGeVector3d(0, -1.0 / 63.0, 1).normal();
    EXPECT_EQ(outside.perpVector(), Z.crossProduct(outside).normal());
}

TEST(Vector3d, ProjectsAlongADirection) {
    EXPECT_EQ(AcGeVector3d(1, 2, 3).project(Z, {1, 0, 1}), AcGeVector3d(-2, 2, 0));
    EXPECT_EQ(AcGeVector3d(1, 2, 3).project(Z * 4.0, AcGeVector3d(1, 0, 1) * -3.0), AcGeVector3d(-2, 2, 0));
    EXPECT_EQ(AcGeVector3d(1, 2, 3).orthoProject(Z * 4.0), AcGeVector3d(1, 2, 0));
}

TEST(Vector3d, ProjectionThatCannotBeLeavesTheVector) {
    const AcGeVector3d v(1, 2, 3);
    AcGeError flag = AcGe::kOk;
    EXPECT_TRUE(same(v.project(AcGeVector3d(), Z, AcGeContext::gTol, flag), v));
    EXPECT_EQ(flag, AcGe::k0Arg1);
    EXPECT_TRUE(same(v.project(Z, AcGeVector3d(), AcGeContext::gTol, flag), v));
    EXPECT_EQ(flag, AcGe::k0Arg2);
    EXPECT_TRUE(same(v.project(Z, X, AcGeContext::gTol, flag), v));
    EXPECT_EQ(flag, AcGe::kPerpendicularArg1Arg2);
    EXPECT_TRUE(same(v.project(Z, X), v));
    EXPECT_TRUE(same(v.orthoProject(AcGeVector3d(), AcGeContext::gTol, flag), v));
    EXPECT_EQ(flag, AcGe::k0Arg1);
    EXPECT_EQ(v.orthoProject(Y, AcGeContext::gTol, flag), AcGeVector3d(1, 0, 3));
    EXPECT_EQ(flag, AcGe::kOk);
}

TEST(Vector3d, CoordinatesInAPlaneComeBack) {
    const AcGePlane skew({5, 5, 5}, {2, 0, 0}, AcGeVector3d(1, 3, 0));
    EXPECT_TRUE(same(AcGeVector3d(skew, {2, 1}), {5, 3, 0}));
    const AcGeVector2d back = AcGeVector3d(5, 3, 77).convert2d(skew);
    EXPECT_DOUBLE_EQ(back.x, 2.0);
    EXPECT_DOUBLE_EQ(back.y, 1.0);
    const AcGePlane none({0, 0, 0}, AcGeVector3d());
    EXPECT_EQ(X.convert2d(none), AcGeVector2d());
}

TEST(Vector3d, LargestElementIsTheFirstOfEqualOnes) {
    EXPECT_EQ(AcGeVector3d(1, -5, 3).largestElement(), 1u);
    EXPECT_EQ(AcGeVector3d(2, -2, 2).largestElement(), 0u);
    EXPECT_EQ(AcGeVector3d(2, -2, 3).largestElement(), 2u);
}

TEST(Vector3d, TranslationOfAMatrixDoesNotMoveIt) {
    const AcGeMatrix3d moving = AcGeMatrix3d::translation({7, 8, 9});
    EXPECT_TRUE(same(AcGeVector3d(1, 2, 3).transformBy(moving), {1, 2, 3}));
    AcGeVector3d product;
    EXPECT_TRUE(same(product.setToProduct(AcGeMatrix3d::scaling(2.0, {1, 1, 1}), {1, 2, 3}), {2, 4, 6}));
}

} // namespace
