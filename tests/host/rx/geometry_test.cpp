#include "gemat3d.h"
#include "gepnt2d.h"
#include "gescl3d.h"

#include <gtest/gtest.h>

namespace {

TEST(Geometry, PointsAndVectors) {
    const AcGePoint3d point = AcGePoint3d(1, 2, 3) + AcGeVector3d(1, 0, -1) * 2.0;
    EXPECT_EQ(point, AcGePoint3d(3, 2, 1));
    EXPECT_EQ(point - AcGePoint3d(1, 2, 3), AcGeVector3d(2, 0, -2));
    EXPECT_DOUBLE_EQ(AcGePoint3d(1, 2, 2).distanceTo(AcGePoint3d::kOrigin), 3.0);
    EXPECT_EQ(AcGeVector3d::kXAxis.crossProduct(AcGeVector3d::kYAxis), AcGeVector3d::kZAxis);
    EXPECT_DOUBLE_EQ(AcGeVector3d(0, 3, 4).normal().length(), 1.0);
    EXPECT_EQ(AcGeVector3d().normal(), AcGeVector3d());
    EXPECT_DOUBLE_EQ(AcGeVector3d::kXAxis.angleTo(AcGeVector3d(0, -2, 0)), std::acos(-1.0) / 2.0);
    EXPECT_EQ(AcGeVector2d(1, 0).perpVector(), AcGeVector2d::kYAxis);
    EXPECT_EQ(AcGePoint2d(3, 4) - AcGeVector2d(3, 4), AcGePoint2d::kOrigin);
}

TEST(Geometry, EqualityHasATolerance) {
    EXPECT_EQ(AcGePoint3d(0, 0, 0), AcGePoint3d(1e-11, 0, 0));
    EXPECT_NE(AcGePoint3d(0, 0, 0), AcGePoint3d(1e-9, 0, 0));
    AcGeTol wide;
    wide.setEqualPoint(0.1);
    EXPECT_TRUE(AcGePoint3d(0, 0, 0).isEqualTo(AcGePoint3d(0.05, 0, 0), wide));
}

TEST(Geometry, MatricesApplyFromTheLeft) {
    AcGeMatrix3d scaling;
    scaling.setToScaling(2.0, AcGePoint3d(1, 1, 1));
    AcGeMatrix3d moving;
    moving.setToTranslation({0, 0, 5});
    EXPECT_EQ(scaling * AcGePoint3d(1, 1, 1), AcGePoint3d(1, 1, 1));
    EXPECT_EQ(moving * scaling * AcGePoint3d(2, 1, 1), AcGePoint3d(3, 1, 6));
    EXPECT_EQ(scaling * moving * AcGePoint3d(2, 1, 1), AcGePoint3d(3, 1, 11));
    EXPECT_EQ(moving * AcGeVector3d::kXAxis, AcGeVector3d::kXAxis);
    EXPECT_EQ(AcGeMatrix3d::kIdentity * moving, moving);
}

TEST(Geometry, CoordinateSystemComesBack) {
    AcGeMatrix3d matrix;
    matrix.setCoordSystem({1, 2, 3}, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis);
    EXPECT_EQ(matrix * AcGePoint3d(1, 0, 0), AcGePoint3d(1, 3, 3));
    AcGePoint3d origin;
    AcGeVector3d x;
    AcGeVector3d y;
    AcGeVector3d z;
    matrix.getCoordSystem(origin, x, y, z);
    EXPECT_EQ(origin, AcGePoint3d(1, 2, 3));
    EXPECT_EQ(x, AcGeVector3d::kYAxis);
    EXPECT_EQ(z, AcGeVector3d::kXAxis);
}

TEST(Geometry, Scales) {
    EXPECT_EQ(AcGeScale3d(1, 2, 4) * AcGeScale3d(1, 2, 4).inverse(), AcGeScale3d::kIdentity);
    EXPECT_EQ(AcGeScale3d(3.0)[2], 3.0);
}

} // namespace
