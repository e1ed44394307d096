#include "gemat2d.h"
#include "near.h"

namespace {

TEST(Vector2d, Arithmetic) {
    const AcGeVector2d a(1, 2);
    const AcGeVector2d b(10, 20);
    EXPECT_EQ(a + b, AcGeVector2d(11, 22));
    EXPECT_EQ(b - a, AcGeVector2d(9, 18));
    EXPECT_EQ(-a, AcGeVector2d(-1, -2));
    EXPECT_EQ(a * 2.0, AcGeVector2d(2, 4));
    EXPECT_EQ(2.0 * a, AcGeVector2d(2, 4));
    EXPECT_EQ(b / 10.0, a);
    AcGeVector2d v = a;
    EXPECT_EQ(v += b, AcGeVector2d(11, 22));
    EXPECT_EQ(v -= b, a);
    EXPECT_EQ(v *= 4.0, AcGeVector2d(4, 8));
    EXPECT_EQ(v /= 2.0, AcGeVector2d(2, 4));
    EXPECT_EQ(v.negate(), AcGeVector2d(-2, -4));
    EXPECT_EQ(v.setToSum(a, b), AcGeVector2d(11, 22));
    EXPECT_EQ(v.setToProduct(a, 3.0), AcGeVector2d(3, 6));
    EXPECT_EQ(v.set(7, 8), AcGeVector2d(7, 8));
    EXPECT_EQ(v[0], 7.0);
    v[1] = 9;
    EXPECT_EQ(v.y, 9.0);
    EXPECT_EQ(AcGeVector2d(3, 4).length(), 5.0);
    EXPECT_EQ(AcGeVector2d(3, 4).lengthSqrd(), 25.0);
    EXPECT_EQ(a.dotProduct(b), 50.0);
    EXPECT_EQ(AcGeVector2d::kXAxis.perpVector(), AcGeVector2d::kYAxis);
}

TEST(Vector2d, AnglesAndTurns) {
    EXPECT_EQ(AcGeVector2d(2, 0).angle(), 0.0);
    EXPECT_EQ(AcGeVector2d(0, 2).angle(), kRightAngle);
    EXPECT_EQ(AcGeVector2d(0, -2).angle(), 3.0 * kRightAngle);
    EXPECT_EQ(AcGeVector2d().angle(), 0.0);
    EXPECT_EQ(AcGeVector2d(0, -2).angleTo({1, 0}), kRightAngle);
    EXPECT_EQ(AcGeVector2d(1, 0).angleTo({-1, 0}), kPi);
    EXPECT_EQ(AcGeVector2d(1, 2).rotateBy(kRightAngle), AcGeVector2d(-2, 1));
    EXPECT_EQ(AcGeVector2d(1, 2).mirror({5, 5}), AcGeVector2d(2, 1));
    EXPECT_EQ(AcGeVector2d(1, 2).mirror(AcGeVector2d()), AcGeVector2d(1, 2));
}

TEST(Vector2d, AngleBelowAFullTurn) {
    // Too little for a double to be less than a full turn.
    EXPECT_EQ(AcGeVector2d(1, -1e-300).angle(), 0.0);
    EXPECT_LT(AcGeVector2d(1, -1e-15).angle(), 2.0 * kPi);
}

TEST(Vector2d, DirectionsAndTheirFlags) {
    AcGeError flag = AcGe::kOk;
    AcGeVector2d none;
    const AcGeVector2d x(3, 0);
    none.normalize(AcGeContext::gTol, flag);
    EXPECT_EQ(flag, AcGe::k0This);
    EXPECT_FALSE(none.isParallelTo(x, AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::k0This);
    EXPECT_FALSE(x.isCodirectionalTo(none, AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::k0Arg1);
    EXPECT_FALSE(x.isPerpendicularTo(none, AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::k0Arg1);
    EXPECT_TRUE(x.isParallelTo({-1, 0}, AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::kOk);
    EXPECT_TRUE(x.isParallelTo({-1, 0}));
    EXPECT_FALSE(x.isCodirectionalTo({-1, 0}));
    EXPECT_TRUE(x.isCodirectionalTo({0.1, 0}));
    EXPECT_TRUE(x.isPerpendicularTo({0, -0.1}));
    EXPECT_EQ(AcGeVector2d(0, 4).normal(), AcGeVector2d::kYAxis);
    EXPECT_EQ(AcGeVector2d(0, 4).normalize(AcGeContext::gTol, flag), AcGeVector2d::kYAxis);
    EXPECT_EQ(flag, AcGe::kOk);
}

TEST(Point2d, Operations) {
    const AcGePoint2d p(1, 2);
    EXPECT_EQ(p + AcGeVector2d(1, 1), AcGePoint2d(2, 3));
    EXPECT_EQ(p - AcGeVector2d(1, 1), AcGePoint2d(0, 1));
    EXPECT_EQ(p - AcGePoint2d(1, 1), AcGeVector2d(0, 1));
    EXPECT_EQ(p * 2.0, AcGePoint2d(2, 4));
    EXPECT_EQ(2.0 * p, AcGePoint2d(2, 4));
    EXPECT_EQ(p / 2.0, AcGePoint2d(0.5, 1));
    AcGePoint2d q = p;
    EXPECT_EQ(q *= 2.0, AcGePoint2d(2, 4));
    EXPECT_EQ(q /= 2.0, p);
    EXPECT_EQ(q += AcGeVector2d(1, 1), AcGePoint2d(2, 3));
    EXPECT_EQ(q -= AcGeVector2d(1, 1), p);
    EXPECT_EQ(q.setToSum(p, {5, 5}), AcGePoint2d(6, 7));
    EXPECT_EQ(q.setToProduct(p, 5.0), AcGePoint2d(5, 10));
    EXPECT_EQ(q.set(8, 9)[1], 9.0);
    EXPECT_EQ(AcGePoint2d(3, 4).distanceTo(AcGePoint2d::kOrigin), 5.0);
    EXPECT_EQ(AcGePoint2d(2, 1).rotateBy(kRightAngle, {1, 1}), AcGePoint2d(1, 2));
    EXPECT_EQ(AcGePoint2d(2, 1).scaleBy(3.0, {1, 1}), AcGePoint2d(4, 1));
}

TEST(Matrix2d, SetsAndApplies) {
    const AcGePoint2d p(2, 1);
    EXPECT_EQ(AcGeMatrix2d::kIdentity * p, p);
    EXPECT_EQ(AcGeMatrix2d::translation({5, 6}) * p, AcGePoint2d(7, 7));
    EXPECT_EQ(AcGeMatrix2d::translation({5, 6}) * AcGeVector2d(1, 1), AcGeVector2d(1, 1));
    EXPECT_EQ(AcGeMatrix2d::rotation(kRightAngle, {1, 1}) * p, AcGePoint2d(1, 2));
    EXPECT_EQ(AcGeMatrix2d::scaling(3.0, {1, 1}) * p, AcGePoint2d(4, 1));
    EXPECT_EQ(AcGeMatrix2d::mirroring({1, 1}) * p, AcGePoint2d(0, 1));
    EXPECT_EQ(AcGeMatrix2d::alignCoordSys({2, 1}, {1, 0}, {0, 1}, {7, 7}, {0, 2}, {2, 0}) * AcGePoint2d(3, 1),
              AcGePoint2d(7, 9));
    AcGePoint2d moved = p;
    EXPECT_EQ(moved.transformBy(AcGeMatrix2d::translation({1, 1})), AcGePoint2d(3, 2));
    EXPECT_EQ(moved.setToProduct(AcGeMatrix2d::scaling(2.0), p), AcGePoint2d(4, 2));
    AcGeVector2d turned(1, 0);
    EXPECT_EQ(turned.transformBy(AcGeMatrix2d::rotation(kRightAngle)), AcGeVector2d(0, 1));
    EXPECT_EQ(turned.setToProduct(AcGeMatrix2d::scaling(2.0), {1, 1}), AcGeVector2d(2, 2));
}

TEST(Matrix2d, ProductsApplyFromTheLeft) {
    const AcGeMatrix2d scaling = AcGeMatrix2d::scaling(2.0);
    const AcGeMatrix2d moving = AcGeMatrix2d::translation({1, 0});
    const AcGePoint2d p(1, 1);
    EXPECT_EQ((moving * scaling) * p, AcGePoint2d(3, 2));
    EXPECT_EQ((scaling * moving) * p, AcGePoint2d(4, 2));
    AcGeMatrix2d m = scaling;
    EXPECT_EQ(m.preMultBy(moving), moving * scaling);
    m = scaling;
    EXPECT_EQ(m.postMultBy(moving), scaling * moving);
    m = scaling;
    EXPECT_EQ(m *= moving, scaling * moving);
    EXPECT_EQ(m.setToProduct(moving, scaling), moving * scaling);
    EXPECT_NE(moving * scaling, scaling * moving);
}

TEST(Matrix2d, InverseAndWhatHasNone) {
    const AcGeMatrix2d m = AcGeMatrix2d::alignCoordSys({0, 0}, {1, 0}, {0, 1}, {3, 4}, {2, 1}, {0, 5});
    EXPECT_EQ(m * m.inverse(), AcGeMatrix2d::kIdentity);
    EXPECT_DOUBLE_EQ(m.det(), 10.0);
    EXPECT_FALSE(m.isSingular());
    AcGeMatrix2d flat;
    flat.setCoordSystem({1, 1}, {1, 2}, {2, 4});
    EXPECT_TRUE(flat.isSingular());
    EXPECT_EQ(flat.inverse(), flat);
    AcGeMatrix2d inverted = m;
    EXPECT_EQ(inverted.invert(), m.inverse());
    EXPECT_EQ(m.transpose()(0, 1), m(1, 0));
    AcGeMatrix2d turned = m;
    EXPECT_EQ(turned.transposeIt(), m.transpose());
}

TEST(Matrix2d, ShapeOfTheColumns) {
    EXPECT_TRUE(AcGeMatrix2d::rotation(1.0).isUniScaledOrtho());
    AcGeMatrix2d m;
    m.setCoordSystem({1, 2}, {3, 0}, {0, 4});
    EXPECT_TRUE(m.isScaledOrtho());
    EXPECT_FALSE(m.isUniScaledOrtho());
    EXPECT_EQ(m.scale(), 4.0);
    EXPECT_EQ(m.translation(), AcGeVector2d(1, 2));
    m.setCoordSystem({1, 2}, {3, 0}, {1, 4});
    EXPECT_FALSE(m.isScaledOrtho());
    AcGePoint2d origin;
    AcGeVector2d x;
    AcGeVector2d y;
    m.getCoordSystem(origin, x, y);
    EXPECT_EQ(origin, AcGePoint2d(1, 2));
    EXPECT_EQ(x, AcGeVector2d(3, 0));
    EXPECT_EQ(y, AcGeVector2d(1, 4));
    EXPECT_EQ(m.setToIdentity(), AcGeMatrix2d::kIdentity);
}

} // namespace
