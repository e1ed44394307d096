#include "entity_fixture.h"

namespace {

class Line : public EntityFixture {};

} // namespace

TEST_F(Line, WalksByDistance) {
    const AcDbLine line({1.0, 0.0, 0.0}, {4.0, 4.0, 0.0});
    double number = -1.0;
    AcGePoint3d point;
    AcGeVector3d vector;
    EXPECT_EQ(line.getStartParam(number), Acad::eOk);
    EXPECT_EQ(number, 0.0);
    EXPECT_EQ(line.getEndParam(number), Acad::eOk);
    EXPECT_EQ(number, 5.0);
    EXPECT_EQ(line.getPointAtParam(2.5, point), Acad::eOk);
    expectNear(point, {2.5, 2.0, 0.0});
    EXPECT_EQ(line.getParamAtPoint(point, number), Acad::eOk);
    EXPECT_DOUBLE_EQ(number, 2.5);
    EXPECT_EQ(line.getDistAtParam(2.5, number), Acad::eOk);
    EXPECT_DOUBLE_EQ(number, 2.5);
    EXPECT_EQ(line.getPointAtDist(5.0, point), Acad::eOk);
    expectNear(point, {4.0, 4.0, 0.0});
    EXPECT_EQ(line.getFirstDeriv(1.0, vector), Acad::eOk);
    expectNear(vector, {0.6, 0.8, 0.0});
    EXPECT_EQ(line.getSecondDeriv(1.0, vector), Acad::eOk);
    expectNear(vector, {0.0, 0.0, 0.0});
    EXPECT_FALSE(line.isClosed());
}

TEST_F(Line, OutsideOfItIsInvalidInputAndChangesNoResult) {
    const AcDbLine line({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0});
    double number = 77.0;
    AcGePoint3d point(7.0, 7.0, 7.0);
    EXPECT_EQ(line.getPointAtParam(1.1, point), Acad::eInvalidInput);
    EXPECT_EQ(line.getPointAtDist(-0.1, point), Acad::eInvalidInput);
    EXPECT_EQ(line.getParamAtPoint({0.5, 0.1, 0.0}, number), Acad::eInvalidInput);
    EXPECT_EQ(line.getDistAtPoint({2.0, 0.0, 0.0}, number), Acad::eInvalidInput);
    EXPECT_EQ(line.getParamAtDist(std::nan(""), number), Acad::eInvalidInput);
    EXPECT_EQ(number, 77.0);
    expectNear(point, {7.0, 7.0, 7.0});
}

TEST_F(Line, TheClosestPointMayLieBeyondTheEndsWhenAsked) {
    const AcDbLine line({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0});
    AcGePoint3d point;
    EXPECT_EQ(line.getClosestPointTo({3.0, 2.0, 0.0}, point), Acad::eOk);
    expectNear(point, {1.0, 0.0, 0.0});
    EXPECT_EQ(line.getClosestPointTo({3.0, 2.0, 0.0}, point, true), Acad::eOk);
    expectNear(point, {3.0, 0.0, 0.0});
}

TEST_F(Line, GripsAreTheEndsAndTheMiddleWhichTakesAllAlong) {
    AcDbLine line({0.0, 0.0, 0.0}, {2.0, 0.0, 0.0});
    AcGePoint3dArray points;
    AcDbIntArray modes, ids, which;
    EXPECT_EQ(line.getGripPoints(points, modes, ids), Acad::eOk);
    ASSERT_EQ(points.length(), 3);
    expectNear(points[2], {1.0, 0.0, 0.0});
    which.append(1);
    EXPECT_EQ(line.moveGripPointsAt(which, {0.0, 1.0, 0.0}), Acad::eOk);
    expectNear(line.endPoint(), {2.0, 1.0, 0.0});
    expectNear(line.startPoint(), {0.0, 0.0, 0.0});
    which[0] = 2;
    EXPECT_EQ(line.moveGripPointsAt(which, {0.0, 0.0, 3.0}), Acad::eOk);
    expectNear(line.startPoint(), {0.0, 0.0, 3.0});
    expectNear(line.endPoint(), {2.0, 1.0, 3.0});
    which[0] = 3;
    EXPECT_EQ(line.moveGripPointsAt(which, {1.0, 0.0, 0.0}), Acad::eInvalidIndex);
    expectNear(line.startPoint(), {0.0, 0.0, 3.0});
}

TEST_F(Line, AStretchTakesTheEndsThatItHolds) {
    AcDbLine line({0.0, 0.0, 0.0}, {2.0, 0.0, 0.0});
    AcGePoint3dArray points;
    AcDbIntArray which;
    EXPECT_EQ(line.getStretchPoints(points), Acad::eOk);
    EXPECT_EQ(points.length(), 2);
    which.append(0);
    EXPECT_EQ(line.moveStretchPointsAt(which, {-1.0, 0.0, 0.0}), Acad::eOk);
    expectNear(line.startPoint(), {-1.0, 0.0, 0.0});
    expectNear(line.endPoint(), {2.0, 0.0, 0.0});
}

TEST_F(Line, SnapsAtEndsMiddleNearestAndPerpendicular) {
    const AcDbLine line({0.0, 0.0, 0.0}, {2.0, 0.0, 0.0});
    const auto snaps = [&](AcDb::OsnapMode mode) {
        AcGePoint3dArray points;
        AcDbIntArray ids;
        EXPECT_EQ(line.getOsnapPoints(mode, 0, {0.5, 1.0, 0.0}, {5.0, 3.0, 0.0}, AcGeMatrix3d(), points, ids),
                  Acad::eOk);
        return points;
    };
    EXPECT_EQ(snaps(AcDb::kOsModeEnd).length(), 2);
    expectNear(snaps(AcDb::kOsModeMid)[0], {1.0, 0.0, 0.0});
    expectNear(snaps(AcDb::kOsModeNear)[0], {0.5, 0.0, 0.0});
    expectNear(snaps(AcDb::kOsModePerp)[0], {5.0, 0.0, 0.0});
    EXPECT_TRUE(snaps(AcDb::kOsModeCen).isEmpty());
    EXPECT_TRUE(snaps(AcDb::kOsModeQuad).isEmpty());
}

TEST_F(Line, ExtentsHoldTheThickness) {
    AcDbLine line({0.0, 0.0, 0.0}, {2.0, 1.0, 0.0});
    expectBox(extentsOf(line), {0.0, 0.0, 0.0}, {2.0, 1.0, 0.0});
    line.setThickness(-4.0);
    expectBox(extentsOf(line), {0.0, 0.0, -4.0}, {2.0, 1.0, 0.0});
}

TEST_F(Line, AMirrorKeepsTheThicknessOnItsSide) {
    AcDbLine line({0.0, 0.0, 0.0}, {2.0, 1.0, 0.0});
    line.setThickness(3.0);
    EXPECT_EQ(line.transformBy(AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(), AcGeVector3d::kXAxis))),
              Acad::eOk);
    expectBox(extentsOf(line), {-2.0, 0.0, 0.0}, {0.0, 1.0, 3.0});
}

TEST_F(Line, ATransformedCopyLeavesTheLineAlone) {
    const AcDbObjectId id = add(new AcDbLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}));
    auto* line = open<AcDbLine>(id, AcDb::kForWrite);
    line->setColorIndex(3);
    AcDbEntity* copy = nullptr;
    EXPECT_EQ(line->getTransformedCopy(AcGeMatrix3d::translation({0.0, 5.0, 0.0}), copy), Acad::eOk);
    const std::unique_ptr<AcDbLine> moved(AcDbLine::cast(copy));
    ASSERT_NE(moved, nullptr);
    expectNear(moved->endPoint(), {1.0, 5.0, 0.0});
    expectNear(line->endPoint(), {1.0, 0.0, 0.0});
    EXPECT_EQ(moved->colorIndex(), 3);
    EXPECT_TRUE(moved->objectId().isNull());
    line->close();
}

TEST_F(Line, ANormalWithoutLengthIsRefused) {
    AcDbLine line;
    EXPECT_EQ(line.setNormal({0.0, 0.0, 0.0}), Acad::eInvalidInput);
    expectNear(line.normal(), AcGeVector3d::kZAxis);
    EXPECT_EQ(line.setNormal({0.0, 3.0, 0.0}), Acad::eOk);
    expectNear(line.normal(), AcGeVector3d::kYAxis);
}

TEST_F(Line, ItsPlaneHoldsIt) {
    AcDbLine line({0.0, 0.0, 1.0}, {0.0, 0.0, 5.0});
    AcGePlane plane;
    AcDb::Planarity planarity = AcDb::kNonPlanar;
    EXPECT_EQ(line.getPlane(plane, planarity), Acad::eOk);
    EXPECT_EQ(planarity, AcDb::kLinear);
    EXPECT_TRUE(plane.isOn(line.startPoint()));
    EXPECT_TRUE(plane.isOn(line.endPoint()));
}

TEST_F(Line, Reversed) {
    AcDbLine line({0.0, 0.0, 1.0}, {0.0, 0.0, 5.0});
    EXPECT_EQ(line.reverseCurve(), Acad::eOk);
    expectNear(line.startPoint(), {0.0, 0.0, 5.0});
}

TEST_F(Line, ModifiedUndoneRedone) {
    const AcDbObjectId id = add(new AcDbLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}));
    embedded::beginCommand(*m_database);
    auto* line = open<AcDbLine>(id, AcDb::kForWrite);
    EXPECT_EQ(line->transformBy(AcGeMatrix3d::translation({0.0, 0.0, 2.0})), Acad::eOk);
    EXPECT_EQ(line->setThickness(1.5), Acad::eOk);
    line->close();
    ASSERT_TRUE(embedded::undo(*m_database));
    line = open<AcDbLine>(id);
    expectNear(line->startPoint(), {0.0, 0.0, 0.0});
    EXPECT_EQ(line->thickness(), 0.0);
    line->close();
    ASSERT_TRUE(embedded::redo(*m_database));
    line = open<AcDbLine>(id);
    expectNear(line->startPoint(), {0.0, 0.0, 2.0});
    EXPECT_EQ(line->thickness(), 1.5);
    line->close();
}

TEST_F(Line, ComesBackFromAFile) {
    auto* fresh = new AcDbLine({1.0, 2.0, 3.0}, {4.0, -5.0, 6.5});
    fresh->setNormal({0.0, 1.0, 1.0});
    fresh->setThickness(0.25);
    auto* line = open<AcDbLine>(reopened(add(fresh)));
    expectNear(line->startPoint(), {1.0, 2.0, 3.0}, 0.0);
    expectNear(line->endPoint(), {4.0, -5.0, 6.5}, 0.0);
    EXPECT_EQ(line->thickness(), 0.25);
    expectNear(line->normal(), AcGeVector3d(0.0, 1.0, 1.0).normal());
    line->close();
}
