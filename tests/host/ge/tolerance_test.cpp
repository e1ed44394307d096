#include "near.h"

namespace {

// A direction of the XY plane.
AcGeVector3d atDegrees(double degrees) {
    return {std::cos(degrees * kPi / 180.0), std::sin(degrees * kPi / 180.0), 0.0};
}

TEST(Tolerance, IsTenDigitsForPointsAndTwelveForVectors) {
    EXPECT_EQ(AcGeContext::gTol.equalPoint(), 1.0e-10);
    EXPECT_EQ(AcGeContext::gTol.equalVector(), 1.0e-12);
    EXPECT_EQ(AcGeTol().equalPoint(), 1.0e-10);
    EXPECT_EQ(AcGeTol().equalVector(), 1.0e-12);
}

TEST(Tolerance, BoundOfPointsCountsAsEqual) {
    const AcGeTol tol = tolerance(1.0e-12, 0.25);
    EXPECT_TRUE(AcGePoint3d(1, 1, 1).isEqualTo({1.25, 1, 1}, tol));
    EXPECT_FALSE(AcGePoint3d(1, 1, 1).isEqualTo({1.2500001, 1, 1}, tol));
    EXPECT_TRUE(AcGePoint2d(1, 1).isEqualTo({1, 0.75}, tol));
    EXPECT_FALSE(AcGePoint2d(1, 1).isEqualTo({1, 0.74}, tol));
}

TEST(Tolerance, IsADistanceAndNoShareOfTheLength) {
    EXPECT_FALSE(AcGePoint3d(1e6, 0, 0).isEqualTo({1e6 + 1e-6, 0, 0}));
    EXPECT_FALSE(AcGeVector3d(1e6, 0, 0).isEqualTo({1e6 + 1e-6, 0, 0}));
}

TEST(Tolerance, OfPointsSaysNothingAboutVectors) {
    const AcGeTol pointsOnly = tolerance(1.0e-12, 1.0);
    EXPECT_FALSE(AcGeVector3d(1, 0, 0).isEqualTo({1.5, 0, 0}, pointsOnly));
    const AcGeTol vectorsOnly = tolerance(1.0, 1.0e-12);
    EXPECT_TRUE(AcGeVector3d(1, 0, 0).isEqualTo({1.5, 0, 0}, vectorsOnly));
    EXPECT_FALSE(AcGePoint3d(1, 0, 0).isEqualTo({1.5, 0, 0}, vectorsOnly));
}

TEST(Tolerance, BetweenDirectionsIsAChordOfTheUnitCircle) {
    const AcGeTol tenDegrees = tolerance(0.17453292519943295);
    EXPECT_TRUE(atDegrees(10.0).isCodirectionalTo(AcGeVector3d::kXAxis, tenDegrees));
    EXPECT_TRUE(atDegrees(-10.0).isCodirectionalTo(AcGeVector3d::kXAxis, tenDegrees));
    EXPECT_FALSE(atDegrees(10.1).isCodirectionalTo(AcGeVector3d::kXAxis, tenDegrees));
    EXPECT_FALSE(atDegrees(180.0).isCodirectionalTo(AcGeVector3d::kXAxis, tenDegrees));
    // However long the vectors are.
    EXPECT_TRUE((atDegrees(10.0) * 1000.0).isCodirectionalTo(AcGeVector3d::kXAxis * 20.0, tenDegrees));
    EXPECT_FALSE((atDegrees(11.0) * 0.2).isCodirectionalTo(AcGeVector3d::kXAxis * 0.2, tenDegrees));
}

TEST(Tolerance, ChordAtItsBoundIsTooFar) {
    const AcGeTol quarter = tolerance(std::sqrt(2.0));
    EXPECT_FALSE((AcGeVector3d::kXAxis * 2.0).isCodirectionalTo(AcGeVector3d::kYAxis * 2.0, quarter));
    EXPECT_TRUE((AcGeVector3d::kXAxis * 2.0)
                    .isCodirectionalTo(AcGeVector3d::kYAxis * 2.0, tolerance(std::sqrt(2.0) + 1e-9)));
}

TEST(Tolerance, ParallelTakesTheOppositeDirectionToo) {
    const AcGeTol tenDegrees = tolerance(0.17453292519943295);
    for (double degrees : {0.0, 9.9, 170.1, 180.0, 189.9})
        EXPECT_TRUE(atDegrees(degrees).isParallelTo(AcGeVector3d::kXAxis, tenDegrees)) << degrees;
    for (double degrees : {10.1, 90.0, 169.9, 191.0})
        EXPECT_FALSE(atDegrees(degrees).isParallelTo(AcGeVector3d::kXAxis, tenDegrees)) << degrees;
    EXPECT_TRUE(AcGeVector3d(0, 0, -3).isParallelTo(AcGeVector3d::kZAxis));
    EXPECT_FALSE(AcGeVector3d(0, 0, -3).isCodirectionalTo(AcGeVector3d::kZAxis));
}

TEST(Tolerance, PerpendicularIsACosine) {
    const AcGeTol tol = tolerance(0.01);
    EXPECT_TRUE((atDegrees(90.5) * 50.0).isPerpendicularTo(AcGeVector3d::kXAxis * 30.0, tol));
    EXPECT_FALSE((atDegrees(91.0) * 0.5).isPerpendicularTo(AcGeVector3d::kXAxis * 0.5, tol));
    EXPECT_TRUE(AcGeVector3d::kXAxis.isPerpendicularTo(AcGeVector3d::kZAxis));
}

TEST(Tolerance, VectorsWithoutLengthAreInNoRelation) {
    const AcGeVector3d none;
    const AcGeVector3d& x = AcGeVector3d::kXAxis;
    AcGeError flag = AcGe::kOk;
    EXPECT_FALSE(none.isParallelTo(x, AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::k0This);
    EXPECT_FALSE(x.isParallelTo(none, AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::k0Arg1);
    EXPECT_FALSE(none.isCodirectionalTo(none, AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::k0This);
    EXPECT_FALSE(x.isCodirectionalTo(none, AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::k0Arg1);
    EXPECT_FALSE(none.isPerpendicularTo(x, AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::k0This);
    EXPECT_FALSE(x.isPerpendicularTo(none, AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::k0Arg1);
    EXPECT_TRUE(x.isPerpendicularTo(AcGeVector3d::kYAxis, AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::kOk);
    EXPECT_FALSE(none.isParallelTo(none));
    EXPECT_FALSE(none.isPerpendicularTo(x));
}

TEST(Tolerance, ShortVectorHasNoLengthByAWideTolerance) {
    const AcGeVector3d little(0.5, 0, 0);
    EXPECT_TRUE(little.isZeroLength(tolerance(0.5)));
    EXPECT_FALSE(little.isZeroLength(tolerance(0.49)));
    EXPECT_FALSE(little.isParallelTo(little, tolerance(0.5)));
    EXPECT_TRUE(AcGeVector3d(1.25, 0, 0).isUnitLength(tolerance(0.25)));
    EXPECT_TRUE(AcGeVector3d(0, 0.75, 0).isUnitLength(tolerance(0.25)));
    EXPECT_FALSE(AcGeVector3d(0, 0.74, 0).isUnitLength(tolerance(0.25)));
    EXPECT_TRUE(AcGeVector2d(0, 0.75).isUnitLength(tolerance(0.25)));
    EXPECT_TRUE(AcGeVector2d(0, 0.5).isZeroLength(tolerance(0.5)));
}

TEST(Tolerance, GlobalOneIsWhatOperationsUseUnasked) {
    const AcGeTol before = AcGeContext::gTol;
    AcGeContext::gTol.setEqualPoint(2.0);
    AcGeContext::gTol.setEqualVector(2.0);
    EXPECT_TRUE(AcGePoint3d(0, 0, 0) == AcGePoint3d(2, 0, 0));
    EXPECT_TRUE(AcGeVector3d(0, 0, 0) == AcGeVector3d(2, 0, 0));
    EXPECT_TRUE(AcGeVector3d(0, 2, 0).isZeroLength());
    EXPECT_TRUE(same(AcGeVector3d(0, 2, 0).normal(), {0, 2, 0}));
    AcGeContext::gTol = before;
    EXPECT_FALSE(AcGePoint3d(0, 0, 0) == AcGePoint3d(2, 0, 0));
}

} // namespace
