#include "dbspline.h"
#include "embedded/display_list.h"
#include "filed_entities.h"

TEST_F(FiledEntities, ASplineByControlPointsWithWeights) {
    FiledBits bits;
    bits.data.bitLong(1);
    bits.data.bitLong(2);
    bits.data.bit(true);  // rational
    bits.data.bit(false); // closed
    bits.data.bit(false); // periodic
    bits.data.bitDouble(1.0e-7);
    bits.data.bitDouble(1.0e-6);
    bits.data.bitLong(6);
    bits.data.bitLong(3);
    bits.data.bit(true); // weights
    for (const double knot : {0.0, 0.0, 0.0, 1.0, 1.0, 1.0})
        bits.data.bitDouble(knot);
    bits.data.threeBitDoubles({1.0, 0.0, 0.0});
    bits.data.bitDouble(1.0);
    bits.data.threeBitDoubles({1.0, 1.0, 0.0});
    bits.data.bitDouble(std::sqrt(0.5));
    bits.data.threeBitDoubles({0.0, 1.0, 0.0});
    bits.data.bitDouble(1.0);
    expectBothWays<AcDbSpline>(bits, [](const AcDbSpline& spline) {
        EXPECT_EQ(spline.degree(), 2);
        EXPECT_TRUE(spline.isRational());
        EXPECT_FALSE(spline.hasFitData());
        EXPECT_EQ(spline.numControlPoints(), 3);
        EXPECT_EQ(spline.weightAt(1), std::sqrt(0.5));
        // A quarter of the unit circle.
        AcGePoint3d point;
        EXPECT_EQ(spline.getPointAtParam(0.5, point), Acad::eOk);
        expectNear(point, {std::sqrt(0.5), std::sqrt(0.5), 0.0}, 1.0e-12);
        EXPECT_EQ(spline.getEndPoint(point), Acad::eOk);
        expectNear(point, {0.0, 1.0, 0.0}, 1.0e-12);
    });
}

TEST_F(FiledEntities, ASplineByThePointsThatItFits) {
    FiledBits bits;
    bits.data.bitLong(2);
    bits.data.bitLong(3);
    bits.data.bitDouble(1.0e-9);
    bits.data.threeBitDoubles({1.0, 0.0, 0.0});
    bits.data.threeBitDoubles({0.0, 1.0, 0.0});
    bits.data.bitLong(2);
    bits.data.threeBitDoubles({1.0, 2.0, 3.0});
    bits.data.threeBitDoubles({4.0, 6.0, 3.0});
    expectBothWays<AcDbSpline>(bits, [](const AcDbSpline& spline) {
        EXPECT_TRUE(spline.hasFitData());
        AcGePoint3d point;
        EXPECT_EQ(spline.getFitPointAt(1, point), Acad::eOk);
        expectNear(point, {4.0, 6.0, 3.0}, 0.0);
        EXPECT_EQ(spline.getFitPointAt(2, point), Acad::eInvalidIndex);
        double length = 0.0;
        EXPECT_EQ(spline.getDistAtParam(1.0, length), Acad::eOk);
        EXPECT_NEAR(length, 5.0, 1.0e-12);
    });
}

TEST_F(FiledEntities, ASplineOfAnUnknownFormBecomesAProxyAndHugeCountsAreRefused) {
    FiledBits strange;
    strange.data.bitLong(7);
    strange.data.bitLong(3);
    AcDbSpline spline;
    EXPECT_EQ(read(spline, strange), Acad::eMakeMeProxy);
    FiledBits huge;
    huge.data.bitLong(2);
    huge.data.bitLong(3);
    huge.data.bitDouble(0.0);
    huge.data.threeBitDoubles({0.0, 0.0, 0.0});
    huge.data.threeBitDoubles({0.0, 0.0, 0.0});
    huge.data.bitLong(0xFFFFFFFF);
    EXPECT_EQ(read(spline, huge), Acad::eDwgObjectImproperlyRead);
    EXPECT_EQ(spline.numFitPoints(), 0);
}

// The middle of a cubic over one span: an eighth, three, three, and an eighth of its points.
TEST_F(EntityFixture, ACubicSplineIsDrawnThroughItsPoints) {
    AcGePoint3dArray controls;
    for (const AcGePoint3d& point : {AcGePoint3d(0, 0, 0), {1, 4, 0}, {3, 4, 2}, {4, 0, 2}})
        controls.append(point);
    AcGeDoubleArray knots;
    for (const double knot : {0.0, 0.0, 0.0, 0.0, 2.0, 2.0, 2.0, 2.0})
        knots.append(knot);
    AcDbSpline spline(3, false, false, false, controls, knots, AcGeDoubleArray());
    AcGePoint3d middle;
    ASSERT_EQ(spline.getPointAtParam(1.0, middle), Acad::eOk);
    expectNear(middle, {2.0, 3.0, 1.0}, 1.0e-12);
    const embedded::DisplayList list = embedded::draw(spline);
    ASSERT_EQ(list.primitives.size(), 1u);
    EXPECT_EQ(list.primitives[0].points.size(), 9u);
    ASSERT_EQ(spline.transformBy(AcGeMatrix3d::translation({0, 0, 5})), Acad::eOk);
    ASSERT_EQ(spline.getPointAtParam(1.0, middle), Acad::eOk);
    expectNear(middle, {2.0, 3.0, 6.0}, 1.0e-12);
}

TEST_F(EntityFixture, ASplineWhoseNumbersDoNotBelongTogetherIsTheChainOfItsPoints) {
    AcGePoint3dArray controls;
    controls.append({0, 0, 0});
    controls.append({3, 4, 0});
    AcDbSpline spline(3, false, false, false, controls, AcGeDoubleArray(), AcGeDoubleArray());
    expectBox(extentsOf(spline), {0, 0, 0}, {3, 4, 0}, 0.0);
}
