#include "gepnt3d.h"

#include "geplane.h"
#include "near.h"

namespace {

TEST(Point3d, Arithmetic) {
    const AcGePoint3d p(1, 2, 3);
    const AcGeVector3d v(10, 20, 30);
    EXPECT_TRUE(same(AcGePoint3d(), AcGePoint3d::kOrigin));
    EXPECT_TRUE(same(p + v, {11, 22, 33}));
    EXPECT_TRUE(same(p - v, {-9, -18, -27}));
    EXPECT_TRUE(same(AcGePoint3d(11, 22, 33) - p, v));
    EXPECT_TRUE(same(p * 2.0, {2, 4, 6}));
    EXPECT_TRUE(same(2.0 * p, {2, 4, 6}));
    EXPECT_TRUE(same(p / 2.0, {0.5, 1, 1.5}));
    AcGePoint3d q = p;
    EXPECT_TRUE(same(q += v, {11, 22, 33}));
    EXPECT_TRUE(same(q -= v, {1, 2, 3}));
    EXPECT_TRUE(same(q *= 4.0, {4, 8, 12}));
    EXPECT_TRUE(same(q /= 4.0, {1, 2, 3}));
    EXPECT_TRUE(same(q.setToSum(p, v), {11, 22, 33}));
    EXPECT_TRUE(same(q.setToProduct(p, 3.0), {3, 6, 9}));
    EXPECT_TRUE(same(q.set(4, 5, 6), {4, 5, 6}));
    EXPECT_TRUE(same(p.asVector(), {1, 2, 3}));
    q[2] = 60;
    EXPECT_EQ(q[2], 60);
}

TEST(Point3d, DistanceAndEquality) {
    EXPECT_EQ(AcGePoint3d(1, 1, 1).distanceTo({3, 4, 7}), 7.0);
    EXPECT_EQ(AcGePoint3d(0, 0, 0), AcGePoint3d(1e-11, 0, 0));
    EXPECT_NE(AcGePoint3d(0, 0, 0), AcGePoint3d(1e-9, 0, 0));
}

TEST(Point3d, MatrixMovesItWithItsTranslation) {
    AcGeMatrix3d frame;
    frame.setCoordSystem({10, 20, 30}, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis);
    EXPECT_TRUE(same(AcGePoint3d(1, 2, 3).transformBy(frame), {13, 21, 32}));
    EXPECT_TRUE(same(frame * AcGePoint3d(1, 2, 3), {13, 21, 32}));
    AcGePoint3d product;
    EXPECT_TRUE(same(product.setToProduct(frame, {1, 2, 3}), {13, 21, 32}));
}

TEST(Point3d, RotatesAndScalesAboutAPointThatStays) {
    EXPECT_EQ(AcGePoint3d(2, 1, 5).rotateBy(kRightAngle, AcGeVector3d::kZAxis, {1, 1, 0}),
              AcGePoint3d(1, 2, 5));
    EXPECT_EQ(AcGePoint3d(1, 0, 0).rotateBy(kRightAngle, AcGeVector3d::kZAxis), AcGePoint3d(0, 1, 0));
    EXPECT_EQ(AcGePoint3d(2, 1, 5).scaleBy(3.0, {1, 1, 1}), AcGePoint3d(4, 1, 13));
    EXPECT_EQ(AcGePoint3d(2, 1, 5).scaleBy(3.0), AcGePoint3d(6, 3, 15));
}

TEST(Point3d, MirrorsAndProjectsOnAPlane) {
    const AcGePlane high({0, 0, 10}, AcGeVector3d::kZAxis);
    EXPECT_EQ(AcGePoint3d(1, 2, 3).mirror(high), AcGePoint3d(1, 2, 17));
    EXPECT_EQ(AcGePoint3d(1, 2, 3).orthoProject(high), AcGePoint3d(1, 2, 10));
    EXPECT_EQ(AcGePoint3d(1, 2, 3).project(high, {1, 0, 1}), AcGePoint3d(8, 2, 10));
    EXPECT_EQ(AcGePoint3d(1, 2, 3).project(high, AcGeVector3d::kXAxis), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(AcGePoint3d(1, 2, 3).project(high, AcGeVector3d()), AcGePoint3d(1, 2, 3));
}

TEST(Point3d, CoordinatesInAPlaneComeBack) {
    const AcGePlane plane({1, 1, 1}, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis);
    EXPECT_EQ(AcGePoint3d(plane, {2, 3}), AcGePoint3d(1, 3, 4));
    EXPECT_EQ(AcGePoint3d(99, 3, 4).convert2d(plane), AcGePoint2d(2, 3));
}

} // namespace
