#include "entity_fixture.h"

namespace {

class ArcAndCircle : public EntityFixture {};

AcDbArc quarter() { return AcDbArc({1.0, 1.0, 0.0}, 2.0, 0.0, kTestPi / 2.0); }

} // namespace

TEST_F(ArcAndCircle, AnArcRunsCounterClockwiseFromItsStartAngle) {
    const AcDbArc arc({0.0, 0.0, 0.0}, 1.0, kTestPi * 1.5, kTestPi / 2.0);
    EXPECT_NEAR(arc.totalAngle(), kTestPi, 1.0e-12);
    EXPECT_NEAR(arc.length(), kTestPi, 1.0e-12);
    AcGePoint3d point;
    EXPECT_EQ(arc.getStartPoint(point), Acad::eOk);
    expectNear(point, {0.0, -1.0, 0.0});
    EXPECT_EQ(arc.getEndPoint(point), Acad::eOk);
    expectNear(point, {0.0, 1.0, 0.0});
    EXPECT_EQ(arc.getPointAtDist(kTestPi / 2.0, point), Acad::eOk);
    expectNear(point, {1.0, 0.0, 0.0});
    double number = 0.0;
    EXPECT_EQ(arc.getStartParam(number), Acad::eOk);
    EXPECT_NEAR(number, kTestPi * 1.5, 1.0e-12);
    EXPECT_EQ(arc.getEndParam(number), Acad::eOk);
    EXPECT_NEAR(number, kTestPi * 2.5, 1.0e-12);
    EXPECT_EQ(arc.getParamAtPoint({1.0, 0.0, 0.0}, number), Acad::eOk);
    EXPECT_NEAR(number, kTestPi * 2.0, 1.0e-9);
}

TEST_F(ArcAndCircle, DerivativesAreByTheAngle) {
    const AcDbArc arc = AcDbArc({0.0, 0.0, 0.0}, 3.0, 0.0, kTestPi);
    AcGeVector3d vector;
    EXPECT_EQ(arc.getFirstDeriv(kTestPi / 2.0, vector), Acad::eOk);
    expectNear(vector, {-3.0, 0.0, 0.0});
    EXPECT_EQ(arc.getSecondDeriv(AcGePoint3d(0.0, 3.0, 0.0), vector), Acad::eOk);
    expectNear(vector, {0.0, -3.0, 0.0});
}

TEST_F(ArcAndCircle, ExtentsReachWhereTheArcDoes) {
    const AcDbArc arc = quarter();
    expectBox(extentsOf(arc), {1.0, 1.0, 0.0}, {3.0, 3.0, 0.0});
    const AcDbArc over({0.0, 0.0, 0.0}, 1.0, kTestPi / 4.0, kTestPi * 0.75);
    const double side = std::sqrt(0.5);
    expectBox(extentsOf(over), {-side, side, 0.0}, {side, 1.0, 0.0});
    AcDbCircle standing({0.0, 0.0, 0.0}, AcGeVector3d::kXAxis, 2.0);
    standing.setThickness(1.0);
    expectBox(extentsOf(standing), {0.0, -2.0, -2.0}, {1.0, 2.0, 2.0});
}

TEST_F(ArcAndCircle, ACircleTurnsAndScalesButBecomesNoEllipse) {
    AcDbCircle circle({1.0, 0.0, 0.0}, AcGeVector3d::kZAxis, 2.0);
    EXPECT_EQ(circle.transformBy(AcGeMatrix3d::scaling(3.0)), Acad::eOk);
    EXPECT_DOUBLE_EQ(circle.radius(), 6.0);
    expectNear(circle.center(), {3.0, 0.0, 0.0});
    AcGeMatrix3d flat;
    flat(1, 1) = 0.5;
    EXPECT_EQ(circle.transformBy(flat), Acad::eCannotScaleNonUniformly);
    EXPECT_DOUBLE_EQ(circle.radius(), 6.0);
    AcGeMatrix3d higher;
    higher(2, 2) = 4.0;
    circle.setThickness(1.0);
    EXPECT_EQ(circle.transformBy(higher), Acad::eOk);
    EXPECT_DOUBLE_EQ(circle.thickness(), 4.0);
}

TEST_F(ArcAndCircle, AMirroredArcGoesTheOtherWayRound) {
    AcDbArc arc = quarter();
    AcGePoint3d start, end;
    EXPECT_EQ(arc.transformBy(AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(), AcGeVector3d::kXAxis))),
              Acad::eOk);
    arc.getStartPoint(start);
    arc.getEndPoint(end);
    expectNear(start, {-3.0, 1.0, 0.0});
    expectNear(end, {-1.0, 3.0, 0.0});
    expectNear(arc.center(), {-1.0, 1.0, 0.0});
    EXPECT_NEAR(arc.totalAngle(), kTestPi / 2.0, 1.0e-12);
}

TEST_F(ArcAndCircle, TheGripsOfACircle) {
    AcDbCircle circle({0.0, 0.0, 0.0}, AcGeVector3d::kZAxis, 1.0);
    AcGePoint3dArray points;
    AcDbIntArray modes, ids, which;
    EXPECT_EQ(circle.getGripPoints(points, modes, ids), Acad::eOk);
    ASSERT_EQ(points.length(), 5);
    expectNear(points[2], {0.0, 1.0, 0.0});
    which.append(2);
    EXPECT_EQ(circle.moveGripPointsAt(which, {0.0, 1.5, 0.0}), Acad::eOk);
    EXPECT_DOUBLE_EQ(circle.radius(), 2.5);
    which[0] = 0;
    EXPECT_EQ(circle.moveGripPointsAt(which, {1.0, 0.0, 0.0}), Acad::eOk);
    expectNear(circle.center(), {1.0, 0.0, 0.0});
    which[0] = 5;
    EXPECT_EQ(circle.moveGripPointsAt(which, {1.0, 0.0, 0.0}), Acad::eInvalidIndex);
    which[0] = 1;
    EXPECT_EQ(circle.moveGripPointsAt(which, {-2.5, 0.0, 0.0}), Acad::eDegenerateGeometry);
}

TEST_F(ArcAndCircle, TheGripsOfAnArcLeaveTheOthersWhereTheyAre) {
    AcDbArc arc({0.0, 0.0, 0.0}, 1.0, 0.0, kTestPi);
    AcGePoint3dArray before, after;
    AcDbIntArray modes, ids, which;
    arc.getGripPoints(before, modes, ids);
    ASSERT_EQ(before.length(), 4);
    which.append(2);
    EXPECT_EQ(arc.moveGripPointsAt(which, {0.0, 0.5, 0.0}), Acad::eOk);
    arc.getGripPoints(after, modes, ids);
    expectNear(after[0], before[0]);
    expectNear(after[1], before[1]);
    // Through the three points, the middle of them the arc's middle here.
    expectNear(after[2], {0.0, 1.5, 0.0});
    which[0] = 3;
    EXPECT_EQ(arc.moveGripPointsAt(which, {2.0, 0.0, 0.0}), Acad::eOk);
    arc.getGripPoints(modes.isEmpty() ? before : after, modes, ids);
    AcGePoint3d start;
    arc.getStartPoint(start);
    expectNear(start, {3.0, 0.0, 0.0});
}

TEST_F(ArcAndCircle, AMiddlePulledThroughTheChordTurnsTheArcOver) {
    AcDbArc arc({0.0, 0.0, 0.0}, 1.0, 0.0, kTestPi);
    AcDbIntArray which;
    which.append(2);
    EXPECT_EQ(arc.moveGripPointsAt(which, {0.0, -2.0, 0.0}), Acad::eOk);
    expectNear(arc.normal(), AcGeVector3d::kZAxis);
    expectBox(extentsOf(arc), {-1.0, -1.0, 0.0}, {1.0, 0.0, 0.0});
    EXPECT_EQ(arc.moveGripPointsAt(which, {0.0, 1.0, 0.0}), Acad::eDegenerateGeometry);
}

TEST_F(ArcAndCircle, ACircleHasNeitherEndsNorAMiddleToSnapTo) {
    const AcDbCircle circle({0.0, 0.0, 0.0}, AcGeVector3d::kZAxis, 1.0);
    AcGePoint3dArray points;
    AcDbIntArray ids;
    for (const AcDb::OsnapMode mode : {AcDb::kOsModeEnd, AcDb::kOsModeMid})
        circle.getOsnapPoints(mode, 0, {}, {}, AcGeMatrix3d(), points, ids);
    EXPECT_TRUE(points.isEmpty());
    circle.getOsnapPoints(AcDb::kOsModeQuad, 0, {}, {}, AcGeMatrix3d(), points, ids);
    EXPECT_EQ(points.length(), 4);
    circle.getOsnapPoints(AcDb::kOsModeCen, 0, {}, {}, AcGeMatrix3d(), points, ids);
    EXPECT_EQ(points.length(), 5);
}

TEST_F(ArcAndCircle, SettersRefuseWhatNoArcHas) {
    AcDbArc arc = quarter();
    AcDbCircle circle;
    for (const double radius : {0.0, -1.0, std::nan("")}) {
        EXPECT_EQ(arc.setRadius(radius), Acad::eInvalidInput);
        EXPECT_EQ(circle.setRadius(radius), Acad::eInvalidInput);
    }
    EXPECT_EQ(arc.setNormal({0.0, 0.0, 0.0}), Acad::eInvalidInput);
    EXPECT_EQ(circle.setNormal({0.0, 0.0, 0.0}), Acad::eInvalidInput);
    EXPECT_EQ(arc.radius(), 2.0);
}

TEST_F(ArcAndCircle, TheCentreStaysWhenTheNormalTurns) {
    AcDbArc arc = quarter();
    EXPECT_EQ(arc.setNormal({1.0, 2.0, 3.0}), Acad::eOk);
    expectNear(arc.center(), {1.0, 1.0, 0.0});
    AcDbCircle circle({1.0, 2.0, 3.0}, AcGeVector3d::kZAxis, 1.0);
    EXPECT_EQ(circle.setNormal({1.0, 0.0, 1.0}), Acad::eOk);
    expectNear(circle.center(), {1.0, 2.0, 3.0});
}

TEST_F(ArcAndCircle, ReversedAnArcIsTheSameCurveFromTheOtherEnd) {
    AcDbArc arc = quarter();
    arc.setThickness(1.0);
    const AcDbExtents before = extentsOf(arc);
    EXPECT_EQ(arc.reverseCurve(), Acad::eOk);
    AcGePoint3d point;
    arc.getStartPoint(point);
    expectNear(point, {1.0, 3.0, 0.0});
    arc.getEndPoint(point);
    expectNear(point, {3.0, 1.0, 0.0});
    expectBox(extentsOf(arc), before.minPoint(), before.maxPoint());
}

TEST_F(ArcAndCircle, AreasAreThoseOfTheSchoolBook) {
    double area = 0.0;
    EXPECT_EQ(AcDbCircle({5.0, 5.0, 5.0}, {1.0, 1.0, 1.0}, 2.0).getArea(area), Acad::eOk);
    EXPECT_NEAR(area, kTestPi * 4.0, 1.0e-9);
    // Closed by its chord.
    EXPECT_EQ(quarter().getArea(area), Acad::eOk);
    EXPECT_NEAR(area, kTestPi - 2.0, 1.0e-9);
}

TEST_F(ArcAndCircle, ComeBackFromAFile) {
    auto* fresh = new AcDbArc({1.0, 2.0, 3.0}, {0.0, 1.0, 0.0}, 2.5, 0.5, 1.5);
    fresh->setThickness(-1.0);
    const AcDbObjectId circleId = add(new AcDbCircle({1.0, 2.0, 3.0}, {0.0, 1.0, 1.0}, 4.0));
    const AcDbHandle handle = circleId.handle();
    auto* arc = open<AcDbArc>(reopened(add(fresh)));
    expectNear(arc->center(), {1.0, 2.0, 3.0});
    EXPECT_EQ(arc->startAngle(), 0.5);
    EXPECT_EQ(arc->endAngle(), 1.5);
    EXPECT_EQ(arc->thickness(), -1.0);
    arc->close();
    AcDbObjectId id;
    m_database->getAcDbObjectId(id, false, handle);
    auto* circle = open<AcDbCircle>(id);
    EXPECT_EQ(circle->radius(), 4.0);
    expectNear(circle->center(), {1.0, 2.0, 3.0});
    circle->close();
}
