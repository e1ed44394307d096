#include "gemat3d.h"

#include "geline3d.h"
#include "geplane.h"
#include "gescl3d.h"
#include "near.h"

#include <limits>

namespace {

const AcGeVector3d& X = AcGeVector3d::kXAxis;
const AcGeVector3d& Y = AcGeVector3d::kYAxis;
const AcGeVector3d& Z = AcGeVector3d::kZAxis;
const AcGePoint3d& O = AcGePoint3d::kOrigin;

AcGeMatrix3d frame(const AcGePoint3d& origin, const AcGeVector3d& x, const AcGeVector3d& y,
                   const AcGeVector3d& z) {
    AcGeMatrix3d m;
    return m.setCoordSystem(origin, x, y, z);
}

TEST(Matrix3d, IdentityAtFirst) {
    AcGeMatrix3d m;
    EXPECT_TRUE(same(m, AcGeMatrix3d::kIdentity));
    for (unsigned row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column)
            EXPECT_EQ(m(row, column), row == column ? 1.0 : 0.0);
    m(3, 1) = 5.0;
    EXPECT_FALSE(same(m, AcGeMatrix3d::kIdentity));
    EXPECT_TRUE(same(m.setToIdentity(), AcGeMatrix3d::kIdentity));
}

TEST(Matrix3d, ProductsApplyFromTheLeft) {
    const AcGeMatrix3d scaling = AcGeMatrix3d::scaling(2.0, {1, 1, 1});
    const AcGeMatrix3d moving = AcGeMatrix3d::translation({0, 0, 5});
    const AcGePoint3d p(2, 1, 1);
    EXPECT_TRUE(same(moving * scaling * p, {3, 1, 6}));
    EXPECT_TRUE(same(scaling * moving * p, {3, 1, 11}));
    AcGeMatrix3d m = scaling;
    EXPECT_TRUE(same(m.preMultBy(moving), moving * scaling));
    m = scaling;
    EXPECT_TRUE(same(m.postMultBy(moving), scaling * moving));
    m = scaling;
    EXPECT_TRUE(same(m *= moving, scaling * moving));
    EXPECT_TRUE(same(m.setToProduct(moving, scaling), moving * scaling));
    // A factor may be the result.
    m = scaling;
    EXPECT_TRUE(same(m *= m, scaling * scaling));
}

TEST(Matrix3d, QuarterTurnAboutX) {
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(kRightAngle, X);
    EXPECT_EQ(turn * Y, Z);
    EXPECT_EQ(turn * Z, -Y);
    EXPECT_TRUE(same(turn * X, X));
    // The dust of the cosine stays: whoever wants it away cleans it.
    EXPECT_NE(turn(1, 1), 0.0);
    EXPECT_LT(std::fabs(turn(1, 1)), 1e-16);
    EXPECT_TRUE(same(AcGeMatrix3d::rotation(kRightAngle, X * 30.0), turn));
}

TEST(Matrix3d, RotationAboutAnAxisThroughAPoint) {
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(kRightAngle, Z, {1, 1, 0});
    EXPECT_EQ(turn * AcGePoint3d(2, 1, 5), AcGePoint3d(1, 2, 5));
    EXPECT_EQ(turn * AcGePoint3d(1, 1, 5), AcGePoint3d(1, 1, 5));
    EXPECT_EQ(turn * X, Y);
}

TEST(Matrix3d, RotationAboutNoAxisIsNone) {
    AcGeMatrix3d m = AcGeMatrix3d::scaling(3.0);
    EXPECT_TRUE(same(m.setToRotation(1.0, AcGeVector3d(), {1, 2, 3}), AcGeMatrix3d::kIdentity));
}

TEST(Matrix3d, Mirrorings) {
    const AcGePlane high({0, 0, 10}, Z);
    EXPECT_EQ(AcGeMatrix3d::mirroring(high) * AcGePoint3d(1, 2, 3), AcGePoint3d(1, 2, 17));
    EXPECT_EQ(AcGeMatrix3d::mirroring(AcGePoint3d(1, 1, 1)) * AcGePoint3d(1, 2, 3), AcGePoint3d(1, 0, -1));
    EXPECT_EQ(AcGeMatrix3d::mirroring(AcGePoint3d(1, 1, 1)) * X, -X);
    const AcGeLine3d line({1, 1, 0}, Z * 5.0);
    EXPECT_EQ(AcGeMatrix3d::mirroring(line) * AcGePoint3d(2, 3, 4), AcGePoint3d(0, -1, 4));
    EXPECT_DOUBLE_EQ(AcGeMatrix3d::mirroring(high).det(), -1.0);
    EXPECT_DOUBLE_EQ(AcGeMatrix3d::mirroring(line).det(), 1.0);
}

TEST(Matrix3d, ProjectionOntoAPlane) {
    const AcGePlane high({0, 0, 10}, Z);
    const AcGeMatrix3d m = AcGeMatrix3d::projection(high, AcGeVector3d(1, 0, 1) * -4.0);
    EXPECT_EQ(m * AcGePoint3d(1, 2, 3), AcGePoint3d(8, 2, 10));
    EXPECT_EQ(m * m, m);
    EXPECT_TRUE(m.isSingular());
    EXPECT_TRUE(same(AcGeMatrix3d::projection(high, X), AcGeMatrix3d::kIdentity));
    EXPECT_TRUE(same(AcGeMatrix3d::projection(high, AcGeVector3d()), AcGeMatrix3d::kIdentity));
}

TEST(Matrix3d, CoordinateSystemComesBack) {
    const AcGeMatrix3d m = frame({1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12});
    AcGePoint3d origin;
    AcGeVector3d x;
    AcGeVector3d y;
    AcGeVector3d z;
    m.getCoordSystem(origin, x, y, z);
    EXPECT_TRUE(same(origin, {1, 2, 3}));
    EXPECT_TRUE(same(x, {4, 5, 6}));
    EXPECT_TRUE(same(y, {7, 8, 9}));
    EXPECT_TRUE(same(z, {10, 11, 12}));
    EXPECT_TRUE(same(m.translation(), {1, 2, 3}));
    EXPECT_EQ(m(3, 0), 0.0);
    EXPECT_EQ(m(3, 3), 1.0);
    AcGeMatrix3d moved = m;
    EXPECT_TRUE(same(moved.setTranslation({7, 7, 7}).translation(), {7, 7, 7}));
    EXPECT_TRUE(same(moved * X, m * X));
}

TEST(Matrix3d, AlignmentFromTheWorldIsTheFrameItself) {
    const AcGeMatrix3d m = AcGeMatrix3d::alignCoordSys(O, X, Y, Z, {1, 2, 3}, Y * 2.0, Z, X);
    EXPECT_TRUE(same(m, frame({1, 2, 3}, Y * 2.0, Z, X)));
}

TEST(Matrix3d, AlignmentCarriesCoordinatesOver) {
    const AcGeMatrix3d m =
        AcGeMatrix3d::alignCoordSys({1, 1, 1}, Y, Z, X, {5, 5, 5}, X * 2.0, Y * 3.0, Z * 4.0);
    EXPECT_EQ(m * AcGePoint3d(1, 1, 1), AcGePoint3d(5, 5, 5));
    EXPECT_EQ(m * AcGePoint3d(1, 2, 1), AcGePoint3d(7, 5, 5));
    EXPECT_EQ(m * X, Z * 4.0);
}

TEST(Matrix3d, InverseUndoes) {
    const AcGeMatrix3d m =
        AcGeMatrix3d::rotation(0.3, {1, 2, 3}, {4, 5, 6}) * AcGeMatrix3d::scaling(0.001, {7, 8, 9});
    EXPECT_FALSE(m.isSingular());
    EXPECT_TRUE((m * m.inverse()).isEqualTo(AcGeMatrix3d::kIdentity, tolerance(1e-9)));
    AcGeMatrix3d inverted = m;
    EXPECT_TRUE(same(inverted.invert(), m.inverse()));
    EXPECT_TRUE(
        same(AcGeMatrix3d::scaling(4.0, {1, 1, 1}).inverse(), AcGeMatrix3d::scaling(0.25, {1, 1, 1})));
}

TEST(Matrix3d, InverseHasNoNegativeZero) {
    for (const AcGeMatrix3d& m : {AcGeMatrix3d::kIdentity, AcGeMatrix3d::rotation(kPi, X), frame(O, Y, Z, X),
                                  AcGeMatrix3d::translation({0, 1, 0}), AcGeMatrix3d::mirroring(O)}) {
        const AcGeMatrix3d inverse = m.inverse();
        for (const auto& row : inverse.entry)
            for (double entry : row)
                EXPECT_FALSE(entry == 0.0 && std::signbit(entry));
    }
    EXPECT_TRUE(same(AcGeMatrix3d::kIdentity.inverse(), AcGeMatrix3d::kIdentity));
}

TEST(Matrix3d, InverseOfASingularOneIsTheMatrixItself) {
    const AcGeMatrix3d flat = frame({1, 2, 3}, X, Y, X + Y);
    const AcGeMatrix3d none = frame({1, 2, 3}, X, AcGeVector3d(), Z);
    for (const AcGeMatrix3d& m : {flat, none}) {
        EXPECT_TRUE(m.isSingular());
        EXPECT_EQ(m.det(), 0.0);
        EXPECT_TRUE(same(m.inverse(), m));
        AcGeMatrix3d inverted = m;
        EXPECT_TRUE(same(inverted.invert(), m));
    }
}

TEST(Matrix3d, SmallScaleDoesNotMakeItSingular) {
    const AcGeMatrix3d m = AcGeMatrix3d::scaling(1e-30);
    EXPECT_FALSE(m.isSingular());
    EXPECT_DOUBLE_EQ(m.inverse()(0, 0), 1e30);
    // Its determinant is nothing that a double can hold.
    EXPECT_TRUE(AcGeMatrix3d::scaling(1e-110).isSingular());
    EXPECT_TRUE(AcGeMatrix3d::scaling(1e110).isSingular());
}

TEST(Matrix3d, SingularByAWideTolerance) {
    const AcGeMatrix3d nearlyFlat = frame(O, X, Y, AcGeVector3d(1, 1, 1e-3));
    EXPECT_FALSE(nearlyFlat.isSingular());
    EXPECT_TRUE(nearlyFlat.isSingular(tolerance(1e-3)));
    EXPECT_TRUE(same(nearlyFlat.inverse(tolerance(1e-3)), nearlyFlat));
    EXPECT_EQ(nearlyFlat.inverse() * nearlyFlat, AcGeMatrix3d::kIdentity);
}

TEST(Matrix3d, NotANumberIsSingular) {
    AcGeMatrix3d m;
    m(1, 1) = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(m.isSingular());
    m(1, 1) = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(m.isSingular());
    EXPECT_TRUE(std::isinf(m.inverse()(1, 1)));
}

TEST(Matrix3d, LastRowIsInvertedToo) {
    AcGeMatrix3d m = AcGeMatrix3d::translation({1, 2, 3});
    m(3, 3) = 2.0;
    EXPECT_EQ(m * m.inverse(), AcGeMatrix3d::kIdentity);
    EXPECT_DOUBLE_EQ(m.det(), 2.0);
    m(3, 3) = 0.0;
    EXPECT_TRUE(m.isSingular());
}

TEST(Matrix3d, Transposes) {
    const AcGeMatrix3d m = frame({1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12});
    const AcGeMatrix3d t = m.transpose();
    for (unsigned row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column)
            EXPECT_EQ(t(row, column), m(column, row));
    AcGeMatrix3d turned = m;
    EXPECT_TRUE(same(turned.transposeIt(), t));
}

TEST(Matrix3d, ShapeOfTheColumns) {
    EXPECT_TRUE(
        (AcGeMatrix3d::rotation(1.0, {1, 2, 3}, {4, 5, 6}) * AcGeMatrix3d::scaling(7.0)).isUniScaledOrtho());
    EXPECT_TRUE(AcGeMatrix3d::mirroring(AcGePlane::kXYPlane).isUniScaledOrtho());
    const AcGeMatrix3d stretched = frame(O, X * 2.0, Y * 3.0, Z * 6.0);
    EXPECT_FALSE(stretched.isUniScaledOrtho());
    EXPECT_TRUE(stretched.isScaledOrtho());
    const AcGeMatrix3d sheared = frame(O, X, X + Y, Z);
    EXPECT_FALSE(sheared.isScaledOrtho());
    EXPECT_FALSE(frame(O, X, AcGeVector3d(), Z).isScaledOrtho());
    EXPECT_FALSE(frame(O, AcGeVector3d(), Y, Z).isUniScaledOrtho());
    EXPECT_EQ(stretched.scale(), 6.0);
    EXPECT_EQ(frame(O, {3, -4, 0}, Y, Z).scale(), 5.0);
    EXPECT_EQ(frame({9, 9, 9}, {3, -4, 0}, Y, Z).norm(), 7.0);
}

TEST(Matrix3d, EqualityIsByEntry) {
    AcGeMatrix3d m;
    m(0, 3) = 0.25;
    EXPECT_NE(m, AcGeMatrix3d::kIdentity);
    EXPECT_TRUE(m.isEqualTo(AcGeMatrix3d::kIdentity, tolerance(0.25)));
    EXPECT_FALSE(m.isEqualTo(AcGeMatrix3d::kIdentity, tolerance(0.24)));
    m(0, 3) = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(m, m);
}

TEST(Matrix3d, WorldToThePlaneOfANormal) {
    EXPECT_TRUE(same(AcGeMatrix3d::worldToPlane(Z), AcGeMatrix3d::kIdentity));
    // Looking along the Y axis: x goes left, the drawing's z goes up.
    const AcGeMatrix3d front = AcGeMatrix3d::planeToWorld(Y * 3.0);
    EXPECT_EQ(front * X, -X);
    EXPECT_EQ(front * Y, Z);
    EXPECT_EQ(front * Z, Y);
    const AcGeMatrix3d below = AcGeMatrix3d::planeToWorld(-Z);
    EXPECT_EQ(below * AcGePoint3d(1, 2, 3), AcGePoint3d(-1, 2, -3));
    EXPECT_EQ(AcGeMatrix3d::worldToPlane(Y) * front, AcGeMatrix3d::kIdentity);
    EXPECT_TRUE(same(AcGeMatrix3d::planeToWorld(AcGeVector3d()), AcGeMatrix3d::kIdentity));
    EXPECT_TRUE(same(AcGeMatrix3d::worldToPlane(AcGeVector3d()), AcGeMatrix3d::kIdentity));
}

TEST(Matrix3d, WorldToAPlane) {
    const AcGePlane plane({1, 2, 3}, Y, Z);
    EXPECT_EQ(AcGeMatrix3d::planeToWorld(plane) * AcGePoint3d(10, 20, 30), AcGePoint3d(31, 12, 23));
    EXPECT_EQ(AcGeMatrix3d::worldToPlane(plane) * AcGePoint3d(31, 12, 23), AcGePoint3d(10, 20, 30));
}

TEST(Matrix3d, LocalFormOfATurn) {
    // A drawing on the ground at height 5 is put up: what was x stays x, what was y goes up.
    const AcGeMatrix3d up = AcGeMatrix3d::rotation(kRightAngle, X);
    AcGeVector3d normal = Z;
    double elevation = 5.0;
    const AcGeMatrix2d local = up.convertToLocal(normal, elevation);
    EXPECT_EQ(normal, -Y);
    EXPECT_DOUBLE_EQ(elevation, 5.0);
    const AcGePoint2d drawn(2, 3);
    const AcGePoint2d moved = local * drawn;
    EXPECT_EQ(AcGeMatrix3d::planeToWorld(normal) * AcGePoint3d(moved.x, moved.y, elevation),
              up * AcGePoint3d(2, 3, 5));
}

TEST(Matrix3d, LocalFormOfAMove) {
    AcGeVector3d normal = Z;
    double elevation = 1.0;
    const AcGeMatrix2d local = AcGeMatrix3d::translation({3, 4, 5}).convertToLocal(normal, elevation);
    EXPECT_EQ(normal, Z);
    EXPECT_DOUBLE_EQ(elevation, 6.0);
    EXPECT_EQ(local, AcGeMatrix2d::translation({3, 4}));
}

TEST(Scale3d, FactorsAlongTheAxes) {
    EXPECT_EQ(AcGeScale3d(1, 2, 4) * AcGeScale3d(1, 2, 4).inverse(), AcGeScale3d::kIdentity);
    AcGeScale3d scale(1, 2, 4);
    EXPECT_EQ(scale *= 2.0, AcGeScale3d(2, 4, 8));
    EXPECT_EQ(scale *= AcGeScale3d(1, 0.5, 0.25), AcGeScale3d(2.0));
    EXPECT_EQ(scale.invert(), AcGeScale3d(0.5));
    EXPECT_TRUE(AcGeScale3d(2, -2, 2).isProportional());
    EXPECT_FALSE(AcGeScale3d(2, 2, 3).isProportional());
    EXPECT_EQ(scale.set(2, 3, 4)[1], 3.0);
    AcGeMatrix3d m;
    scale.getMatrix(m);
    EXPECT_TRUE(same(m * AcGePoint3d(1, 1, 1), {2, 3, 4}));
}

} // namespace
