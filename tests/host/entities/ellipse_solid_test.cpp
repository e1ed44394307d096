#include "dbelipse.h"
#include "embedded/display_list.h"
#include "entities/solid.h"
#include "filed_entities.h"

TEST_F(FiledEntities, AnEllipse) {
    FiledBits bits;
    bits.data.threeBitDoubles({1.0, 2.0, 3.0});
    bits.data.threeBitDoubles({0.0, 4.0, 0.0});
    bits.data.threeBitDoubles({0.0, 0.0, 1.0});
    bits.data.bitDouble(0.25);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(kTestPi);
    expectBothWays<AcDbEllipse>(bits, [](const AcDbEllipse& ellipse) {
        expectNear(ellipse.center(), {1.0, 2.0, 3.0}, 0.0);
        expectNear(ellipse.majorAxis(), {0.0, 4.0, 0.0}, 0.0);
        expectNear(ellipse.minorAxis(), {-1.0, 0.0, 0.0}, 0.0);
        EXPECT_EQ(ellipse.radiusRatio(), 0.25);
        EXPECT_FALSE(ellipse.isClosed());
        AcGePoint3d point;
        EXPECT_EQ(ellipse.getStartPoint(point), Acad::eOk);
        expectNear(point, {1.0, 6.0, 3.0});
        EXPECT_EQ(ellipse.getEndPoint(point), Acad::eOk);
        expectNear(point, {1.0, -2.0, 3.0});
        AcDbExtents box;
        EXPECT_EQ(ellipse.getGeomExtents(box), Acad::eOk);
        expectBox(box, {0.0, -2.0, 3.0}, {1.0, 6.0, 3.0});
    });
}

TEST_F(FiledEntities, ASolid) {
    FiledBits bits;
    bits.data.thickness(2.0);
    bits.data.bitDouble(5.0);
    for (const double corner : {0.0, 0.0, 4.0, 0.0, 0.0, 3.0, 4.0, 3.0})
        bits.data.rawDouble(corner);
    bits.data.extrusion({0.0, 0.0, 1.0});
    expectBothWays<AcDbSolid>(bits, [](const AcDbSolid& solid) {
        AcGePoint3d point;
        EXPECT_EQ(solid.getPointAt(2, point), Acad::eOk);
        expectNear(point, {0.0, 3.0, 5.0}, 0.0);
        EXPECT_EQ(solid.getPointAt(4, point), Acad::eInvalidIndex);
        EXPECT_EQ(solid.thickness(), 2.0);
        AcDbExtents box;
        EXPECT_EQ(solid.getGeomExtents(box), Acad::eOk);
        expectBox(box, {0.0, 0.0, 5.0}, {4.0, 3.0, 7.0});
    });
}

TEST_F(EntityFixture, AWholeEllipseIsClosedAndRunsRoundItsChords) {
    const AcDbEllipse ellipse({0, 0, 0}, AcGeVector3d::kZAxis, {2, 0, 0}, 0.5);
    EXPECT_TRUE(ellipse.isClosed());
    double area = 0.0, length = 0.0, end = 0.0;
    EXPECT_EQ(ellipse.getArea(area), Acad::eOk);
    EXPECT_NEAR(area, 2.0 * kTestPi, 1.0e-3);
    EXPECT_EQ(ellipse.getEndParam(end), Acad::eOk);
    EXPECT_NEAR(end, 2.0 * kTestPi, 1.0e-12);
    EXPECT_EQ(ellipse.getDistAtParam(end, length), Acad::eOk);
    EXPECT_NEAR(length, 9.688448, 1.0e-3);
    AcGePoint3d point;
    AcGeVector3d derivative;
    EXPECT_EQ(ellipse.getPointAtParam(1.0, point), Acad::eOk);
    expectNear(point, {2.0 * std::cos(1.0), std::sin(1.0), 0.0}, 1.0e-15);
    EXPECT_EQ(ellipse.getFirstDeriv(1.0, derivative), Acad::eOk);
    expectNear(derivative, {-2.0 * std::sin(1.0), std::cos(1.0), 0.0}, 1.0e-15);
    EXPECT_EQ(ellipse.getClosestPointTo({0, 5, 0}, point), Acad::eOk);
    expectNear(point, {0, 1, 0}, 1.0e-9);
}

TEST_F(EntityFixture, AnglesOfAnEllipseAreAsTheyAreSeen) {
    AcDbEllipse ellipse({0, 0, 0}, AcGeVector3d::kZAxis, {2, 0, 0}, 0.5, 0.0, kTestPi / 4.0);
    EXPECT_NEAR(ellipse.endAngle(), kTestPi / 4.0, 1.0e-12);
    AcGePoint3d point;
    EXPECT_EQ(ellipse.getEndPoint(point), Acad::eOk);
    EXPECT_NEAR(point.x, point.y, 1.0e-12);
    EXPECT_EQ(ellipse.getPointAtParam(3.0, point), Acad::eInvalidInput);
    EXPECT_EQ(ellipse.setRadiusRatio(1.5), Acad::eInvalidInput);
    EXPECT_EQ(ellipse.set({0, 0, 0}, AcGeVector3d::kZAxis, {0, 0, 1}, 0.5), Acad::eInvalidInput);
    AcGeMatrix3d uneven;
    uneven.entry[0][0] = 2.0;
    EXPECT_EQ(ellipse.transformBy(uneven), Acad::eCannotScaleNonUniformly);
}

TEST_F(EntityFixture, AMirroredEllipseArcIsWhereItsMirrorImageIs) {
    AcDbEllipse ellipse({1, 0, 0}, AcGeVector3d::kZAxis, {2, 0, 0}, 0.5, 0.0, kTestPi / 2.0);
    const AcDbExtents before = extentsOf(ellipse);
    AcGeMatrix3d mirror;
    mirror.entry[0][0] = -1.0;
    ASSERT_EQ(ellipse.transformBy(mirror), Acad::eOk);
    expectBox(extentsOf(ellipse), {-before.maxPoint().x, before.minPoint().y, 0},
              {-before.minPoint().x, before.maxPoint().y, 0});
}

TEST_F(EntityFixture, ASolidIsFilledAroundItsCornersCrosswise) {
    AcDbSolid solid({0, 0, 1}, {4, 0, 1}, {0, 3, 1}, {4, 3, 1});
    const embedded::DisplayList list = embedded::draw(solid);
    ASSERT_EQ(list.primitives.size(), 1u);
    const embedded::Primitive& area = list.primitives[0];
    EXPECT_EQ(area.kind, embedded::PrimitiveKind::kPolygon);
    EXPECT_EQ(area.traits.fill, kAcGiFillAlways);
    ASSERT_EQ(area.points.size(), 4u);
    expectNear(area.points[2], {4, 3, 1}, 0.0);
    expectNear(area.points[3], {0, 3, 1}, 0.0);
    AcDbSolid triangle({0, 0, 0}, {4, 0, 0}, {0, 3, 0});
    EXPECT_EQ(embedded::draw(triangle).primitives[0].points.size(), 3u);
    AcDbIntArray second;
    second.append(1);
    ASSERT_EQ(solid.moveGripPointsAt(second, {1, 0, 0}), Acad::eOk);
    AcGePoint3d moved;
    EXPECT_EQ(solid.getPointAt(1, moved), Acad::eOk);
    expectNear(moved, {5, 0, 1}, 0.0);
}
