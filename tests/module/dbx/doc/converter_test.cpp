#include "dbx/doc/converter.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

using orv::Converter;

constexpr double kRightAngle = 1.5707963267948966;

const AcGeVector3d& X = AcGeVector3d::kXAxis;
const AcGeVector3d& Y = AcGeVector3d::kYAxis;
const AcGeVector3d& Z = AcGeVector3d::kZAxis;

// The same numbers, not only within a tolerance.
template <class Triple>
void expectSame(const Triple& value, double x, double y, double z) {
    EXPECT_EQ(value.x, x);
    EXPECT_EQ(value.y, y);
    EXPECT_EQ(value.z, z);
}

void expectSame(const AcGeMatrix3d& a, const AcGeMatrix3d& b) {
    for (unsigned row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column)
            EXPECT_EQ(a(row, column), b(row, column)) << row << " " << column;
}

Converter prepared(const AcGeMatrix3d& xform, double scale) {
    Converter converter;
    converter.prepare(xform, scale);
    return converter;
}

void expectNothingChanges(const Converter& converter) {
    EXPECT_EQ(converter.toCdb(1.7), 1.7);
    EXPECT_EQ(converter.fromCdb(1.7), 1.7);
    expectSame(converter.toCdb(AcGePoint3d(1.1, -2.2, 3.3)), 1.1, -2.2, 3.3);
    expectSame(converter.fromCdb(AcGePoint3d(1.1, -2.2, 3.3)), 1.1, -2.2, 3.3);
    expectSame(converter.toCdb(AcGeVector3d(1.1, -2.2, 3.3)), 1.1, -2.2, 3.3);
    expectSame(converter.fromCdb(AcGeVector3d(1.1, -2.2, 3.3)), 1.1, -2.2, 3.3);
    expectSame(converter.normalToCdb(Z), 0, 0, 1);
    expectSame(converter.normalFromCdb(Z), 0, 0, 1);
    EXPECT_EQ(converter.scaleToCdb({1.1, -2.2}).x, 1.1);
    EXPECT_EQ(converter.scaleToCdb({1.1, -2.2}).y, -2.2);
    EXPECT_EQ(converter.scaleFromCdb({1.1, -2.2}).x, 1.1);
    EXPECT_EQ(converter.scaleFromCdb({1.1, -2.2}).y, -2.2);
    expectSame(converter.getWcs2Cdb(), AcGeMatrix3d::kIdentity);
    expectSame(converter.getCdb2Wcs(), AcGeMatrix3d::kIdentity);
}

TEST(Converter, IsTheIdentityAfterConstruction) { expectNothingChanges(Converter()); }

TEST(Converter, ScaleOfOneAndTheIdentityLeaveEveryValueUnchanged) {
    expectNothingChanges(prepared(AcGeMatrix3d::kIdentity, 1.0));
}

TEST(Converter, InverseOfAQuarterTurnAboutXHoldsExactZeros) {
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(kRightAngle, X);
    ASSERT_NE(turn(1, 1), 0.0);
    ASSERT_LT(std::fabs(turn.inverse()(1, 1)), 1e-15);
    ASSERT_NE(turn.inverse()(1, 1), 0.0);
    const Converter converter = prepared(turn, 1.0);
    AcGeMatrix3d back;
    back.setCoordSystem(AcGePoint3d(), X, -Z, Y);
    expectSame(converter.getCdb2Wcs(), back);
    for (const auto& row : converter.getCdb2Wcs().entry)
        for (double entry : row)
            EXPECT_FALSE(entry == 0.0 && std::signbit(entry));
    // Towards the store the matrix stays as it came.
    expectSame(converter.getWcs2Cdb(), turn);
    expectSame(converter.fromCdb(Y), 0, 0, -1);
    EXPECT_NE(converter.toCdb(Y).y, 0.0);
}

TEST(Converter, EntriesBelowTheBoundAreCleanedAndThoseAtItStay) {
    const double bound = 2.220446049250313e-10;
    AcGeMatrix3d xform;
    xform(0, 1) = -bound;
    xform(0, 2) = -std::nextafter(bound, 0.0);
    xform(1, 3) = -bound;
    xform(2, 3) = std::nextafter(bound, 0.0);
    const Converter converter = prepared(xform, 1.0);
    EXPECT_EQ(converter.getCdb2Wcs()(0, 1), bound);
    EXPECT_EQ(converter.getCdb2Wcs()(0, 2), 0.0);
    EXPECT_EQ(converter.getCdb2Wcs()(1, 3), bound);
    EXPECT_EQ(converter.getCdb2Wcs()(2, 3), 0.0);
    EXPECT_FALSE(std::signbit(converter.getCdb2Wcs()(2, 3)));
    expectSame(converter.getWcs2Cdb(), xform);
}

TEST(Converter, TransformsFirstAndScalesAfterwards) {
    AcGeMatrix3d xform = AcGeMatrix3d::translation({10, 20, 30});
    const Converter converter = prepared(xform, 4.0);
    // So the translation is scaled too.
    expectSame(converter.toCdb(AcGePoint3d(1, 2, 3)), 44, 88, 132);
    expectSame(converter.fromCdb(AcGePoint3d(44, 88, 132)), 8.5, 17, 25.5);
    expectSame(converter.toCdb(AcGeVector3d(1, 2, 3)), 4, 8, 12);
    expectSame(converter.fromCdb(AcGeVector3d(4, 8, 12)), 1, 2, 3);
}

TEST(Converter, ScaleIsALengthInTheStore) {
    const Converter converter = prepared(AcGeMatrix3d::kIdentity, 0.001);
    EXPECT_EQ(converter.toCdb(2500.0), 2500.0 * 0.001);
    EXPECT_EQ(converter.fromCdb(2.5), 2.5 * (1.0 / 0.001));
    EXPECT_EQ(converter.scaleToCdb({1000.0, 2000.0}).y, 2000.0 * 0.001);
    EXPECT_EQ(converter.scaleFromCdb({1.0, 2.0}).y, 2.0 * (1.0 / 0.001));
}

TEST(Converter, NormalHasLengthOneWhateverTheScale) {
    for (double scale : {1e-9, 0.001, 1.0, 1000.0, 1e9}) {
        const Converter converter = prepared(AcGeMatrix3d::rotation(kRightAngle, X), scale);
        EXPECT_DOUBLE_EQ(converter.normalToCdb({0, 5, 0}).length(), 1.0);
        EXPECT_DOUBLE_EQ(converter.normalFromCdb({0, 0.5, 0}).length(), 1.0);
        EXPECT_EQ(converter.normalToCdb({0, 5, 0}), Z);
        expectSame(converter.normalFromCdb({0, 0.5, 0}), 0, 0, -1);
    }
}

TEST(Converter, NormalIsMadeOneThoughTheMatrixStretches) {
    const Converter converter = prepared(AcGeMatrix3d::scaling(8.0), 2.0);
    expectSame(converter.normalToCdb({0, 0, 3}), 0, 0, 1);
    expectSame(converter.normalFromCdb({0, -3, 0}), 0, -1, 0);
}

TEST(Converter, NormalWithoutLengthStaysWithoutByTheGlobalTolerance) {
    const Converter converter = prepared(AcGeMatrix3d::kIdentity, 2.0);
    expectSame(converter.normalToCdb({0, 0, 0}), 0, 0, 0);
    expectSame(converter.normalFromCdb({0, 1e-13, 0}), 0, 1e-13, 0);
    const AcGeTol before = AcGeContext::gTol;
    AcGeContext::gTol.setEqualVector(5.0);
    expectSame(converter.normalToCdb({0, 0, 5}), 0, 0, 5);
    expectSame(converter.normalFromCdb({0, 4, 0}), 0, 4, 0);
    AcGeContext::gTol = before;
    expectSame(converter.normalToCdb({0, 0, 5}), 0, 0, 1);
}

TEST(Converter, ScaleOfZeroMakesTheFactorFromTheStoreInfinite) {
    const Converter converter = prepared(AcGeMatrix3d::kIdentity, 0.0);
    EXPECT_EQ(converter.toCdb(5.0), 0.0);
    EXPECT_EQ(converter.fromCdb(5.0), std::numeric_limits<double>::infinity());
    EXPECT_EQ(converter.fromCdb(-5.0), -std::numeric_limits<double>::infinity());
    expectSame(converter.toCdb(AcGePoint3d(1, 2, 3)), 0, 0, 0);
}

TEST(Converter, ScaleToCdbIgnoresTheMatrices) {
    const AcGeMatrix3d xform = AcGeMatrix3d::rotation(kRightAngle, Z) * AcGeMatrix3d::scaling(9.0);
    const Converter converter = prepared(xform, 2.0);
    EXPECT_EQ(converter.scaleToCdb({3, 4}).x, 6.0);
    EXPECT_EQ(converter.scaleToCdb({3, 4}).y, 8.0);
    EXPECT_EQ(converter.scaleFromCdb({3, 4}).x, 1.5);
    EXPECT_EQ(converter.scaleFromCdb({3, 4}).y, 2.0);
}

TEST(Converter, WayBackOfASingularMatrixIsTheMatrixItselfCleaned) {
    AcGeMatrix3d flat;
    flat.setCoordSystem({1, 2, 3}, X, AcGeVector3d(1, 1, 1e-15), X + Y);
    const Converter converter = prepared(flat, 2.0);
    expectSame(converter.getWcs2Cdb(), flat);
    flat(2, 1) = 0.0;
    expectSame(converter.getCdb2Wcs(), flat);
    expectSame(converter.fromCdb(AcGePoint3d(1, 1, 1)), 2, 2, 1.5);
}

TEST(Converter, PreparedAgainItForgetsWhatItWas) {
    Converter converter = prepared(AcGeMatrix3d::rotation(1.0, {1, 2, 3}, {4, 5, 6}), 7.0);
    converter.prepare(AcGeMatrix3d::kIdentity, 1.0);
    expectNothingChanges(converter);
}

TEST(Converter, FieldsAreTwoMatricesAndTheTwoFactors) {
    const Converter converter = prepared(AcGeMatrix3d::rotation(kRightAngle, Z), 4.0);
    static_assert(sizeof(Converter) == 2 * sizeof(AcGeMatrix3d) + 2 * sizeof(double));
    const auto* fields = reinterpret_cast<const unsigned char*>(&converter);
    EXPECT_EQ(static_cast<const void*>(&converter.getWcs2Cdb()), fields);
    EXPECT_EQ(static_cast<const void*>(&converter.getCdb2Wcs()), fields + sizeof(AcGeMatrix3d));
    double factors[2];
    std::memcpy(factors, fields + 2 * sizeof(AcGeMatrix3d), sizeof factors);
    EXPECT_EQ(factors[0], 0.25);
    EXPECT_EQ(factors[1], 4.0);
}

double real(double low, double high) {
    return low + (high - low) * (*rc::gen::inRange(0, 1 << 30)) / static_cast<double>(1 << 30);
}

RC_GTEST_PROP(ConverterProperty, WhatGoesToTheStoreComesBack, ()) {
    const AcGeVector3d axis(real(-1, 1), real(-1, 1), real(-1, 1));
    RC_PRE(axis.length() > 0.01);
    const Converter converter = prepared(AcGeMatrix3d::rotation(real(-4, 4), axis), real(0.001, 1000.0));
    AcGeTol tol;
    tol.setEqualPoint(1e-6);
    tol.setEqualVector(1e-6);
    const AcGePoint3d p(real(-100, 100), real(-100, 100), real(-100, 100));
    RC_ASSERT(converter.fromCdb(converter.toCdb(p)).isEqualTo(p, tol));
    RC_ASSERT(converter.toCdb(converter.fromCdb(p)).isEqualTo(p, tol));
    const AcGeVector3d v = p.asVector();
    RC_ASSERT(converter.fromCdb(converter.toCdb(v)).isEqualTo(v, tol));
    // A rotation has no translation, so points and vectors go the same way.
    RC_ASSERT((converter.toCdb(p).asVector() - converter.toCdb(v)).length() == 0.0);
    RC_ASSERT(std::fabs(converter.toCdb(v).length() - converter.toCdb(v.length())) < 1e-6);
}

} // namespace
