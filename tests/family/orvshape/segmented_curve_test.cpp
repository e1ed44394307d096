#include "curve_fixture.h"
#include "geplane.h"
#include "rxclass.h"
#include "rxdict.h"
#include "rxregsvc.h"

#include <cmath>
#include <limits>

using orv::CurveSegment;

namespace {

const AcGeVector3d kZ = AcGeVector3d::kZAxis;

double distanceAt(const ORV_SegmentedCurve& curve, const AcGePoint3d& point) {
    double distance = -1.0;
    EXPECT_EQ(curve.getDistAtPoint(point, distance), Acad::eOk);
    return distance;
}

AcGePoint3d pointAt(const ORV_SegmentedCurve& curve, double distance) {
    AcGePoint3d point;
    EXPECT_EQ(curve.getPointAtDist(distance, point), Acad::eOk);
    return point;
}

} // namespace

TEST(SegmentedCurve, CanBeMadeByTheNameOfItsClass) {
    AcRxDictionary* classes = AcRxDictionary::cast(acrxSysRegistry()->at(L"ClassDictionary"));
    ASSERT_NE(classes, nullptr);
    AcRxClass* kind = AcRxClass::cast(classes->at(L"ORV_SegmentedCurve"));
    ASSERT_NE(kind, nullptr);
    EXPECT_TRUE(kind->isDerivedFrom(AcDbCurve::desc()));
    std::unique_ptr<AcRxObject> made(kind->create());
    EXPECT_NE(ORV_SegmentedCurve::cast(made.get()), nullptr);
}

TEST(SegmentedCurve, EmptyOneAnswersThatItHasNoGeometry) {
    ORV_SegmentedCurve curve;
    EXPECT_TRUE(curve.isEmpty());
    EXPECT_TRUE(curve.empty());
    EXPECT_EQ(curve.getSegmentCount(), 0);
    EXPECT_EQ(curve.getSegmentAt(0), nullptr);
    EXPECT_EQ(curve.getLength(), 0.0);
    EXPECT_FALSE(curve.isClosed());
    EXPECT_FALSE(curve.isPlanar());
    EXPECT_TRUE(curve.getVertices().empty());
    double number = 7.0;
    AcGePoint3d point(7, 7, 7);
    AcGeVector3d vector(7, 7, 7);
    std::unique_ptr<ORV_SegmentedCurve> part;
    EXPECT_EQ(curve.getStartParam(number), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.getEndParam(number), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.getStartPoint(point), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.getEndPoint(point), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.getPointAtParam(0, point), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.getParamAtPoint(point, number), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.getDistAtParam(0, number), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.getFirstDeriv(0.0, vector), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.getSecondDeriv(0.0, vector), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.getClosestPointTo({1, 1, 1}, point), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.getArea(number), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.createCurve(0, 0, part), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.appendLineTo({1, 0, 0}), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.appendClosingLine(), Acad::eDegenerateGeometry);
    EXPECT_FALSE(curve.getNormalFromSegments(vector));
    EXPECT_EQ(curve.reverseCurve(), Acad::eOk);
    EXPECT_EQ(number, 7.0);
    EXPECT_EQ(point.x, 7.0);
    EXPECT_EQ(vector.x, 7.0);
    EXPECT_EQ(part, nullptr);
}

TEST(SegmentedCurve, StartAndEndAreTheVeryEndsOfThePieces) {
    ORV_SegmentedCurve curve;
    expectNear(curve.startPoint(), {0, 0, 0});
    expectNear(curve.endPoint(), {0, 0, 0});
    ASSERT_EQ(curve.append(lineOf({1, 2, 3}, {4, 2, 3})), Acad::eOk);
    ASSERT_EQ(curve.appendLineTo({4, 9, 3}), Acad::eOk);
    EXPECT_EQ(curve.startPoint(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(curve.endPoint(), AcGePoint3d(4, 9, 3));
}

TEST(SegmentedCurve, ParameterIsTheDistanceFromTheStart) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    double start = -1, end = -1;
    ASSERT_EQ(curve.getStartParam(start), Acad::eOk);
    ASSERT_EQ(curve.getEndParam(end), Acad::eOk);
    EXPECT_EQ(start, 0.0);
    EXPECT_NEAR(end, kHookLength, 1e-12);
    EXPECT_EQ(curve.getLength(), end);
    expectNear(pointAt(curve, 1), {1, 0, 0});
    expectNear(pointAt(curve, 4 + kPi / 2), {4 + std::sqrt(2.0), 2 - std::sqrt(2.0), 0});
    expectNear(pointAt(curve, end), {6, 5, 0}, 0.0);
    EXPECT_NEAR(distanceAt(curve, {6, 3, 0}), 4 + kPi + 1, 1e-9);
    double same = -1;
    ASSERT_EQ(curve.getDistAtParam(5.5, same), Acad::eOk);
    EXPECT_EQ(same, 5.5);
    ASSERT_EQ(curve.getParamAtDist(5.5, same), Acad::eOk);
    EXPECT_EQ(same, 5.5);
}

TEST(SegmentedCurve, OutsideOfTheCurveIsRefused) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    AcGePoint3d point(7, 7, 7);
    double number = 7;
    for (const double outside : {-0.01, kHookLength + 0.01, std::numeric_limits<double>::quiet_NaN(),
                                 std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(curve.getPointAtDist(outside, point), Acad::eInvalidInput);
        EXPECT_EQ(curve.getDistAtParam(outside, number), Acad::eInvalidInput);
    }
    EXPECT_EQ(curve.getParamAtPoint({3, 0.1, 0}, number), Acad::eInvalidInput);
    EXPECT_EQ(curve.getParamAtPoint({std::nan(""), 0, 0}, number), Acad::eInvalidInput);
    EXPECT_EQ(point.x, 7.0);
    EXPECT_EQ(number, 7.0);
}

TEST(SegmentedCurve, DerivativesAreThoseOfTheArcLength) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    AcGeVector3d first, second;
    ASSERT_EQ(curve.getFirstDeriv(4 + kPi / 2, first), Acad::eOk);
    ASSERT_EQ(curve.getSecondDeriv(4 + kPi / 2, second), Acad::eOk);
    expectNear(first, AcGeVector3d(1, 1, 0).normal());
    expectNear(second, AcGeVector3d(-1, 1, 0).normal() * 0.5);
    ASSERT_EQ(curve.getFirstDeriv(AcGePoint3d(6, 4, 0), first), Acad::eOk);
    expectNear(first, {0, 1, 0});
    ASSERT_EQ(curve.getSecondDeriv(AcGePoint3d(6, 4, 0), second), Acad::eOk);
    expectNear(second, {0, 0, 0});
}

TEST(SegmentedCurve, AtACornerThePieceBehindItCounts) {
    ORV_SegmentedCurve curve;
    curve.append(lineOf({0, 0, 0}, {2, 0, 0}));
    curve.appendLineTo({2, 3, 0});
    AcGeVector3d first;
    ASSERT_EQ(curve.getFirstDeriv(2.0, first), Acad::eOk);
    expectNear(first, {0, 1, 0});
    ASSERT_EQ(curve.getFirstDeriv(5.0, first), Acad::eOk);
    expectNear(first, {0, 1, 0});
}

TEST(SegmentedCurve, PiecesHangTogetherOrAreRefused) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    EXPECT_EQ(curve.append(lineOf({0, 0, 0}, {1, 1, 0})), Acad::eInvalidInput);
    EXPECT_EQ(curve.setSegments({lineOf({0, 0, 0}, {1, 0, 0}), lineOf({1.1, 0, 0}, {2, 0, 0})}),
              Acad::eInvalidInput);
    EXPECT_EQ(curve.appendLineTo({6, 5, 0}), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.appendArcTo({7, 5, 0}, 0, kZ), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.appendArcThrough({6, 6, 0}, {6, 7, 0}), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.appendArcAbout({6, 5, 0}, kZ, 1), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.getSegmentCount(), 3);
    // What begins a rounding away begins at the very end.
    EXPECT_EQ(curve.append(lineOf({6 + 1e-10, 5, 0}, {9, 5, 0})), Acad::eOk);
    EXPECT_EQ(curve.getSegmentAt(3)->start().x, curve.getSegmentAt(2)->end().x);
    EXPECT_EQ(curve.setSegments({lineOf({0, 0, 0}, {1, 0, 0}), lineOf({1, 0, 0}, {2, 0, 0})}), Acad::eOk);
    EXPECT_EQ(curve.getSegmentCount(), 2);
    EXPECT_DOUBLE_EQ(curve.getLength(), 2);
    EXPECT_EQ(curve.getSegmentAt(2), nullptr);
    EXPECT_EQ(curve.getSegmentAt(-1), nullptr);
    curve.clear();
    EXPECT_TRUE(curve.isEmpty());
    EXPECT_EQ(curve.getLength(), 0.0);
}

TEST(SegmentedCurve, ClosesWithALine) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    EXPECT_FALSE(curve.isClosed());
    EXPECT_EQ(curve.getVertices().size(), 4u);
    EXPECT_EQ(curve.appendClosingLine(), Acad::eOk);
    EXPECT_TRUE(curve.isClosed());
    EXPECT_EQ(curve.getVertices().size(), 4u);
    EXPECT_EQ(curve.appendClosingLine(), Acad::eOk);
    EXPECT_EQ(curve.getSegmentCount(), 4);
    EXPECT_FALSE(curve.isPeriodic());
    // The start of a closed curve is where its first piece begins.
    EXPECT_EQ(distanceAt(curve, {0, 0, 0}), 0.0);
}

TEST(SegmentedCurve, SingleCircleIsClosedAndPeriodic) {
    ORV_SegmentedCurve curve;
    curve.append(arcAbout({2, 0, 0}, {0, 0, 0}, 2 * kPi));
    EXPECT_TRUE(curve.isClosed());
    EXPECT_TRUE(curve.isPeriodic());
    EXPECT_EQ(curve.getVertices().size(), 1u);
    double area = 0;
    ASSERT_EQ(curve.getArea(area), Acad::eOk);
    EXPECT_NEAR(area, 4 * kPi, 1e-9);
    AcGePoint3d end;
    ASSERT_EQ(curve.getEndPoint(end), Acad::eOk);
    expectNear(end, {2, 0, 0}, 0.0);
}

TEST(SegmentedCurve, AreaOfAStadium) {
    ORV_SegmentedCurve curve;
    makeStadium(curve);
    EXPECT_TRUE(curve.isClosed());
    double area = 0;
    ASSERT_EQ(curve.getArea(area), Acad::eOk);
    EXPECT_NEAR(area, 8 + kPi, 1e-9);
    // Far from the origin, and turned out of the plane of X and Y.
    ASSERT_EQ(curve.transformBy(AcGeMatrix3d::translation({4e6, 5e6, 300}) *
                                AcGeMatrix3d::rotation(0.7, {1, 2, 3})),
              Acad::eOk);
    ASSERT_EQ(curve.getArea(area), Acad::eOk);
    EXPECT_NEAR(area, 8 + kPi, 1e-6);
}

TEST(SegmentedCurve, OpenCurveCountsAsClosedForItsArea) {
    ORV_SegmentedCurve curve;
    curve.append(arcAbout({1, 0, 0}, {0, 0, 0}, kPi));
    double area = 0;
    ASSERT_EQ(curve.getArea(area), Acad::eOk);
    EXPECT_NEAR(area, kPi / 2, 1e-12);
}

TEST(SegmentedCurve, NormalOnlyForPiecesThatSpanOnePlane) {
    ORV_SegmentedCurve curve;
    AcGeVector3d normal(7, 7, 7);
    curve.append(lineOf({0, 0, 1}, {4, 0, 1}));
    curve.appendLineTo({6, 0, 1});
    EXPECT_FALSE(curve.getNormalFromSegments(normal)); // on a line
    EXPECT_EQ(normal.x, 7.0);
    EXPECT_TRUE(curve.isPlanar());
    curve.appendLineTo({6, 2, 1});
    ASSERT_TRUE(curve.getNormalFromSegments(normal));
    expectNear(normal, {0, 0, 1});
    ASSERT_EQ(curve.reverseCurve(), Acad::eOk);
    ASSERT_TRUE(curve.getNormalFromSegments(normal));
    expectNear(normal, {0, 0, -1});
    curve.appendLineTo({0, 5, 5});
    normal.set(7, 7, 7);
    EXPECT_FALSE(curve.getNormalFromSegments(normal)); // in space
    EXPECT_EQ(normal.x, 7.0);
    EXPECT_FALSE(curve.isPlanar());
    double area = 7;
    EXPECT_EQ(curve.getArea(area), Acad::eNonPlanarEntity);
    EXPECT_EQ(area, 7.0);
}

TEST(SegmentedCurve, ArcOutOfThePlaneOfTheOthersIsInSpace) {
    ORV_SegmentedCurve curve;
    curve.append(lineOf({0, 0, 0}, {4, 0, 0}));
    curve.appendLineTo({4, 4, 0});
    // Its ends lie in the plane, what is between them does not.
    ASSERT_EQ(curve.appendArcTo({0, 4, 0}, 1, {0, 1, 0}), Acad::eOk);
    AcGeVector3d normal;
    EXPECT_FALSE(curve.getNormalFromSegments(normal));
}

TEST(SegmentedCurve, ZigzagWithoutAreaHasANormal) {
    ORV_SegmentedCurve curve;
    curve.append(lineOf({0, 0, 0}, {1, 1, 0}));
    curve.appendLineTo({3, -1, 0});
    curve.appendLineTo({4, 0, 0});
    AcGeVector3d normal;
    ASSERT_TRUE(curve.getNormalFromSegments(normal));
    EXPECT_NEAR(std::fabs(normal.z), 1, 1e-12);
    double area = 7;
    ASSERT_EQ(curve.getArea(area), Acad::eOk);
    EXPECT_NEAR(area, 0, 1e-12);
}

TEST(SegmentedCurve, PlaneGoesThroughTheStart) {
    ORV_SegmentedCurve curve;
    curve.append(lineOf({0, 0, 5}, {4, 0, 5}));
    AcGePlane plane;
    AcDb::Planarity planarity = AcDb::kNonPlanar;
    ASSERT_EQ(curve.getPlane(plane, planarity), Acad::eOk);
    EXPECT_EQ(planarity, AcDb::kLinear);
    EXPECT_NEAR(plane.normal().dotProduct(AcGeVector3d::kXAxis), 0, 1e-12);
    curve.appendLineTo({4, 4, 5});
    ASSERT_EQ(curve.getPlane(plane, planarity), Acad::eOk);
    EXPECT_EQ(planarity, AcDb::kPlanar);
    EXPECT_NEAR(plane.distanceTo({0, 0, 0}), 5, 1e-12);
    curve.appendLineTo({4, 4, 9});
    EXPECT_EQ(curve.getPlane(plane, planarity), Acad::eNonPlanarEntity);
    EXPECT_EQ(planarity, AcDb::kNonPlanar);
}

TEST(SegmentedCurve, NearestPointGoesOnOnlyWhenItMay) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    AcGePoint3d nearest;
    ASSERT_EQ(curve.getClosestPointTo({-2, 1, 0}, nearest), Acad::eOk);
    expectNear(nearest, {0, 0, 0});
    ASSERT_EQ(curve.getClosestPointTo({-2, 1, 0}, nearest, true), Acad::eOk);
    expectNear(nearest, {-2, 0, 0});
    ASSERT_EQ(curve.getClosestPointTo({7, 9, 3}, nearest, true), Acad::eOk);
    expectNear(nearest, {6, 9, 0});
    ASSERT_EQ(curve.getClosestPointTo({6, 0, 0}, nearest), Acad::eOk);
    expectNear(nearest, {4 + std::sqrt(2.0), 2 - std::sqrt(2.0), 0});
}

TEST(SegmentedCurve, ReversedRunsBack) {
    ORV_SegmentedCurve curve, back;
    makeHook(curve);
    makeHook(back);
    ASSERT_EQ(back.reverseCurve(), Acad::eOk);
    for (const double distance : {0.0, 1.0, 5.0, 8.0, curve.getLength()})
        expectNear(pointAt(back, curve.getLength() - distance), pointAt(curve, distance));
    ASSERT_EQ(back.reverseCurve(), Acad::eOk);
    expectSameShape(back, curve);
}

TEST(SegmentedCurve, PartBetweenTwoDistances) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    std::unique_ptr<ORV_SegmentedCurve> part;
    ASSERT_EQ(curve.createCurve(3, 4 + kPi / 2, part), Acad::eOk);
    ASSERT_EQ(part->getSegmentCount(), 2);
    EXPECT_NEAR(part->getLength(), 1 + kPi / 2, 1e-12);
    expectNear(pointAt(*part, 0), {3, 0, 0});
    expectNear(pointAt(*part, part->getLength()), {4 + std::sqrt(2.0), 2 - std::sqrt(2.0), 0});
    EXPECT_TRUE(part->objectId().isNull());
    // From a corner to a corner there is one piece, without slivers of its neighbours.
    ASSERT_EQ(curve.createCurve(4, 4 + kPi, part), Acad::eOk);
    ASSERT_EQ(part->getSegmentCount(), 1);
    expectNear(part->getSegmentAt(0)->centre(), {4, 2, 0});
    ASSERT_EQ(curve.createCurve(0, curve.getLength(), part), Acad::eOk);
    expectSameShape(*part, curve);
}

TEST(SegmentedCurve, PartAgainstTheCurve) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    std::unique_ptr<ORV_SegmentedCurve> part;
    ASSERT_EQ(curve.createCurve(5, 1, part), Acad::eOk);
    expectNear(pointAt(*part, 0), pointAt(curve, 5));
    expectNear(pointAt(*part, 4), {1, 0, 0});
}

TEST(SegmentedCurve, PartWithoutLengthOrOutsideIsNone) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    std::unique_ptr<ORV_SegmentedCurve> part;
    EXPECT_EQ(curve.createCurve(2, 2, part), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.createCurve(-1, 2, part), Acad::eInvalidInput);
    EXPECT_EQ(curve.createCurve(2, 99, part), Acad::eInvalidInput);
    EXPECT_EQ(curve.createCurve(std::nan(""), 2, part), Acad::eInvalidInput);
    EXPECT_EQ(part, nullptr);
}

TEST(SegmentedCurve, NonUniformScaleLeavesARoundCurveAsItWas) {
    ORV_SegmentedCurve curve, before;
    makeHook(curve);
    makeHook(before);
    AcGeMatrix3d squeeze;
    squeeze(0, 0) = 2.0;
    EXPECT_EQ(curve.transformBy(squeeze), Acad::eCannotScaleNonUniformly);
    expectSameShape(curve, before);
    ORV_SegmentedCurve straight;
    straight.append(lineOf({0, 0, 0}, {1, 1, 0}));
    EXPECT_EQ(straight.transformBy(squeeze), Acad::eOk);
    expectNear(straight.getSegmentAt(0)->end(), {2, 1, 0});
    AcGeMatrix3d flat;
    flat(0, 0) = flat(1, 1) = 0.0;
    EXPECT_EQ(straight.transformBy(flat), Acad::eDegenerateGeometry);
    expectNear(straight.getSegmentAt(0)->end(), {2, 1, 0});
}

TEST(SegmentedCurve, CloneAndCopyHaveTheShape) {
    ORV_SegmentedCurve curve;
    makeStadium(curve);
    std::unique_ptr<AcRxObject> clone(curve.clone());
    ASSERT_NE(ORV_SegmentedCurve::cast(clone.get()), nullptr);
    expectSameShape(*ORV_SegmentedCurve::cast(clone.get()), curve);
    ORV_SegmentedCurve copy;
    makeHook(copy);
    ASSERT_EQ(copy.copyFrom(&curve), Acad::eOk);
    expectSameShape(copy, curve);
    EXPECT_NEAR(copy.getLength(), 8 + 2 * kPi, 1e-9);
}

TEST(SegmentedCurve, MovedVertexTakesItsNeighboursAlong) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    ASSERT_EQ(curve.moveVertices({1}, {0, -1, 0}), Acad::eOk);
    expectNear(curve.getSegmentAt(0)->end(), {4, -1, 0});
    expectNear(curve.getSegmentAt(1)->start(), {4, -1, 0});
    expectNear(curve.getSegmentAt(1)->end(), {6, 2, 0});
    EXPECT_NEAR(curve.getSegmentAt(1)->sweep(), kPi / 2, 1e-12);
    EXPECT_NEAR(curve.getLength(), std::sqrt(17.0) + std::sqrt(13.0) / std::sqrt(2.0) * kPi / 2 + 3, 1e-9);
}

TEST(SegmentedCurve, StartOfAClosedCurveIsItsEndToo) {
    ORV_SegmentedCurve curve;
    makeStadium(curve);
    ASSERT_EQ(curve.moveVertices({0}, {-1, 0, 0}), Acad::eOk);
    EXPECT_TRUE(curve.isClosed());
    expectNear(curve.getSegmentAt(0)->start(), {-1, 0, 0});
    expectNear(curve.getSegmentAt(3)->end(), {-1, 0, 0});
    EXPECT_EQ(curve.moveVertices({4}, {1, 0, 0}), Acad::eInvalidIndex);
}

TEST(SegmentedCurve, VerticesThatWouldMeetStayWhereTheyAre) {
    ORV_SegmentedCurve curve, before;
    makeHook(curve);
    makeHook(before);
    EXPECT_EQ(curve.moveVertices({0}, {4, 0, 0}), Acad::eDegenerateGeometry);
    EXPECT_EQ(curve.moveVertices({0, 9}, {1, 0, 0}), Acad::eInvalidIndex);
    EXPECT_EQ(curve.moveVertices({-1}, {1, 0, 0}), Acad::eInvalidIndex);
    EXPECT_EQ(curve.moveVertices({}, {1, 0, 0}), Acad::eOk);
    expectSameShape(curve, before);
    // Both at once: the first goes to where the second was.
    EXPECT_EQ(curve.moveVertices({0, 1}, {4, 0, 0}), Acad::eOk);
    expectNear(curve.getSegmentAt(0)->start(), {4, 0, 0});
    expectNear(curve.getSegmentAt(0)->end(), {8, 0, 0});
}
