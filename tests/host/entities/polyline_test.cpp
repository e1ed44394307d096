#include "entity_fixture.h"

namespace {

class Polyline : public EntityFixture {
protected:
    // A square of two, its last side open unless closed, the second side an arc to the outside.
    static std::unique_ptr<AcDbPolyline> square(bool closed) {
        auto made = std::make_unique<AcDbPolyline>(4);
        made->addVertexAt(0, {0.0, 0.0});
        made->addVertexAt(1, {2.0, 0.0}, 1.0);
        made->addVertexAt(2, {2.0, 2.0});
        made->addVertexAt(3, {0.0, 2.0});
        made->setClosed(closed);
        return made;
    }
};

} // namespace

TEST_F(Polyline, TheParameterCountsSegments) {
    const auto line = square(true);
    double number = 0.0;
    AcGePoint3d point;
    EXPECT_EQ(line->getEndParam(number), Acad::eOk);
    EXPECT_EQ(number, 4.0);
    EXPECT_EQ(line->getPointAtParam(0.5, point), Acad::eOk);
    expectNear(point, {1.0, 0.0, 0.0});
    EXPECT_EQ(line->getPointAtParam(1.5, point), Acad::eOk);
    expectNear(point, {3.0, 1.0, 0.0});
    EXPECT_EQ(line->getDistAtParam(2.0, number), Acad::eOk);
    EXPECT_NEAR(number, 2.0 + kTestPi, 1.0e-12);
    EXPECT_EQ(line->getParamAtDist(2.0 + kTestPi / 2.0, number), Acad::eOk);
    EXPECT_NEAR(number, 1.5, 1.0e-12);
    EXPECT_EQ(line->getParamAtPoint({0.0, 1.0, 0.0}, number), Acad::eOk);
    EXPECT_NEAR(number, 3.5, 1.0e-12);
    EXPECT_TRUE(line->isClosed());
    line->getEndPoint(point);
    expectNear(point, {0.0, 0.0, 0.0});
}

TEST_F(Polyline, AreaAndExtentsCountTheArcs) {
    double area = 0.0;
    EXPECT_EQ(square(true)->getArea(area), Acad::eOk);
    EXPECT_NEAR(area, 4.0 + kTestPi / 2.0, 1.0e-9);
    expectBox(extentsOf(*square(false)), {0.0, 0.0, 0.0}, {3.0, 2.0, 0.0});
}

TEST_F(Polyline, OfFewerThanTwoPointsIsNoCurve) {
    AcDbPolyline line;
    double number = 0.0;
    AcDbExtents box;
    AcDbVoidPtrArray parts;
    EXPECT_EQ(line.getStartParam(number), Acad::eNotImplementedYet);
    EXPECT_EQ(line.getGeomExtents(box), Acad::eInvalidExtents);
    EXPECT_EQ(line.explode(parts), Acad::eCannotExplodeEntity);
    line.addVertexAt(0, {1.0, 1.0});
    EXPECT_EQ(line.getEndParam(number), Acad::eNotImplementedYet);
    EXPECT_EQ(line.segType(0), AcDbPolyline::kPoint);
    EXPECT_EQ(line.segType(1), AcDbPolyline::kEmpty);
}

TEST_F(Polyline, KindsOfSegments) {
    const auto line = square(false);
    line->addVertexAt(4, {0.0, 2.0});
    EXPECT_EQ(line->segType(0), AcDbPolyline::kLine);
    EXPECT_EQ(line->segType(1), AcDbPolyline::kArc);
    EXPECT_EQ(line->segType(3), AcDbPolyline::kCoincident);
    EXPECT_EQ(line->segType(4), AcDbPolyline::kPoint);
    EXPECT_TRUE(line->hasBulges());
    EXPECT_FALSE(line->isOnlyLines());
}

TEST_F(Polyline, VerticesComeAndGo) {
    const auto line = square(false);
    double number = 0.0;
    AcGePoint2d point;
    EXPECT_EQ(line->addVertexAt(9, {0.0, 0.0}), Acad::eInvalidIndex);
    EXPECT_EQ(line->addVertexAt(1, {1.0, 0.0}), Acad::eOk);
    EXPECT_EQ(line->getBulgeAt(2, number), Acad::eOk);
    EXPECT_EQ(number, 1.0);
    EXPECT_EQ(line->removeVertexAt(1), Acad::eOk);
    EXPECT_EQ(line->removeVertexAt(4), Acad::eInvalidIndex);
    EXPECT_EQ(line->getPointAt(4, point), Acad::eInvalidIndex);
    EXPECT_EQ(line->setPointAt(4, point), Acad::eInvalidIndex);
    EXPECT_EQ(line->setBulgeAt(4, 1.0), Acad::eInvalidIndex);
    EXPECT_EQ(line->removeVertexAt(0), Acad::eOk);
    EXPECT_EQ(line->removeVertexAt(0), Acad::eOk);
    EXPECT_EQ(line->removeVertexAt(0), Acad::eDegenerateGeometry);
    EXPECT_EQ(line->numVerts(), 2u);
}

TEST_F(Polyline, WidthsAreConstantOrOfEachSegment) {
    const auto line = square(false);
    double start = 0.0, end = 0.0;
    EXPECT_FALSE(line->hasWidth());
    EXPECT_EQ(line->setConstantWidth(0.5), Acad::eOk);
    EXPECT_EQ(line->setConstantWidth(-1.0), Acad::eInvalidInput);
    EXPECT_EQ(line->getWidthsAt(2, start, end), Acad::eOk);
    EXPECT_EQ(end, 0.5);
    EXPECT_EQ(line->setWidthsAt(1, 0.5, 2.0), Acad::eOk);
    EXPECT_EQ(line->setWidthsAt(1, -0.5, 2.0), Acad::eInvalidInput);
    EXPECT_EQ(line->getConstantWidth(start), Acad::eInvalidInput);
    EXPECT_EQ(line->getWidthsAt(0, start, end), Acad::eOk);
    EXPECT_EQ(start, 0.5);
    EXPECT_TRUE(line->hasWidth());
}

TEST_F(Polyline, StandsInItsOwnPlane) {
    const auto line = square(false);
    line->setElevation(4.0);
    line->setNormal(AcGeVector3d::kYAxis);
    AcGePoint3d point;
    AcGeMatrix3d ecs;
    line->getPointAt(2, point);
    line->getEcs(ecs);
    expectNear(point, ecs * AcGePoint3d(2.0, 2.0, 4.0));
    AcGePlane plane;
    AcDb::Planarity planarity = AcDb::kNonPlanar;
    EXPECT_EQ(line->getPlane(plane, planarity), Acad::eOk);
    EXPECT_EQ(planarity, AcDb::kPlanar);
    EXPECT_TRUE(plane.isOn(point));
}

TEST_F(Polyline, TransformsInSpaceWithItsArcs) {
    const auto line = square(true);
    line->setConstantWidth(0.5);
    const AcGeMatrix3d turn =
        AcGeMatrix3d::scaling(2.0) * AcGeMatrix3d::rotation(1.0, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
    AcGePoint3d before, after;
    line->getPointAtParam(1.25, before);
    EXPECT_EQ(line->transformBy(turn), Acad::eOk);
    line->getPointAtParam(1.25, after);
    expectNear(after, turn * before);
    double width = 0.0;
    line->getConstantWidth(width);
    EXPECT_NEAR(width, 1.0, 1.0e-12);
}

TEST_F(Polyline, AMirrorKeepsArcsOnTheirSide) {
    const auto line = square(true);
    const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(), AcGeVector3d::kXAxis));
    EXPECT_EQ(line->transformBy(mirror), Acad::eOk);
    expectBox(extentsOf(*line), {-3.0, 0.0, 0.0}, {0.0, 2.0, 0.0});
}

TEST_F(Polyline, OnlyLinesMayBeSquashed) {
    AcGeMatrix3d flat;
    flat(0, 0) = 0.5;
    const auto round = square(true);
    EXPECT_EQ(round->transformBy(flat), Acad::eCannotScaleNonUniformly);
    expectBox(extentsOf(*round), {0.0, 0.0, 0.0}, {3.0, 2.0, 0.0});
    round->setBulgeAt(1, 0.0);
    EXPECT_EQ(round->transformBy(flat), Acad::eOk);
    expectBox(extentsOf(*round), {0.0, 0.0, 0.0}, {1.0, 2.0, 0.0});
}

TEST_F(Polyline, AGripMovesItsVertexInThePlane) {
    const auto line = square(true);
    AcDbIntArray which;
    AcGePoint3d point;
    which.append(2);
    EXPECT_EQ(line->moveGripPointsAt(which, {1.0, 1.0, 7.0}), Acad::eOk);
    line->getPointAt(2, point);
    expectNear(point, {3.0, 3.0, 0.0});
    which[0] = 4;
    EXPECT_EQ(line->moveGripPointsAt(which, {1.0, 1.0, 7.0}), Acad::eInvalidIndex);
    for (int i = 0; i < 4; ++i)
        i == 0 ? which.setAt(0, 0) : (which.append(i), which);
    EXPECT_EQ(line->moveStretchPointsAt(which, {0.0, 0.0, 7.0}), Acad::eOk);
    EXPECT_EQ(line->elevation(), 7.0);
}

TEST_F(Polyline, ExplodesIntoLinesAndArcsThatDrawTheSame) {
    const auto line = square(true);
    line->setColorIndex(5);
    line->setThickness(2.0);
    AcDbVoidPtrArray parts;
    EXPECT_EQ(line->explode(parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 4);
    AcDbExtents box;
    for (void* part : parts) {
        const std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(part));
        EXPECT_EQ(owned->colorIndex(), 5);
        EXPECT_EQ(owned->isKindOf(AcDbArc::desc()), part == parts[1]);
        box.addExt(extentsOf(*owned));
    }
    const AcDbExtents whole = extentsOf(*line);
    expectBox(box, whole.minPoint(), whole.maxPoint());
}

TEST_F(Polyline, ReversedItRunsThroughTheSamePointsBackwards) {
    const auto line = square(false);
    line->setWidthsAt(1, 0.25, 0.75);
    AcGePoint3d before, after;
    line->getPointAtParam(1.25, before);
    EXPECT_EQ(line->reverseCurve(), Acad::eOk);
    line->getPointAtParam(1.75, after);
    expectNear(after, before);
    double start = 0.0, end = 0.0;
    line->getWidthsAt(1, start, end);
    EXPECT_EQ(start, 0.75);
    EXPECT_EQ(end, 0.25);
}

TEST_F(Polyline, ComesBackFromAFileWithAllItHas) {
    auto made = square(true);
    made->setElevation(1.5);
    made->setThickness(0.5);
    made->setNormal({0.0, 1.0, 1.0});
    made->setWidthsAt(2, 0.1, 0.2);
    made->setPlinegen(true);
    auto* line = open<AcDbPolyline>(reopened(add(made.release())));
    double start = 0.0, end = 0.0, bulge = 0.0;
    EXPECT_EQ(line->numVerts(), 4u);
    EXPECT_TRUE(line->isClosed());
    EXPECT_TRUE(line->hasPlinegen());
    EXPECT_EQ(line->elevation(), 1.5);
    EXPECT_EQ(line->thickness(), 0.5);
    line->getBulgeAt(1, bulge);
    EXPECT_EQ(bulge, 1.0);
    line->getWidthsAt(2, start, end);
    EXPECT_EQ(start, 0.1);
    EXPECT_EQ(end, 0.2);
    expectNear(line->normal(), AcGeVector3d(0.0, 1.0, 1.0).normal());
    line->close();
}

TEST_F(Polyline, ModifiedUndoneRedone) {
    const AcDbObjectId id = add(square(false).release());
    embedded::beginCommand(*m_database);
    auto* line = open<AcDbPolyline>(id, AcDb::kForWrite);
    line->removeVertexAt(1);
    line->setClosed(true);
    line->close();
    ASSERT_TRUE(embedded::undo(*m_database));
    line = open<AcDbPolyline>(id);
    EXPECT_EQ(line->numVerts(), 4u);
    EXPECT_FALSE(line->isClosed());
    EXPECT_TRUE(line->hasBulges());
    line->close();
    ASSERT_TRUE(embedded::redo(*m_database));
    line = open<AcDbPolyline>(id);
    EXPECT_EQ(line->numVerts(), 3u);
    EXPECT_TRUE(line->isClosed());
    line->close();
}

TEST_F(Polyline, ExtentsHoldTheWidths) {
    AcDbPolyline line;
    line.addVertexAt(0, {0.0, 0.0});
    line.addVertexAt(1, {10.0, 0.0}, 1.0);
    line.addVertexAt(2, {10.0, 4.0});
    line.setThickness(3.0);
    expectBox(extentsOf(line), {0.0, 0.0, 0.0}, {12.0, 4.0, 3.0});
    line.setConstantWidth(1.0);
    expectBox(extentsOf(line), {0.0, -0.5, 0.0}, {12.5, 4.5, 3.0}, 1.0e-6);
    line.setWidthsAt(0, 2.0, 0.0);
    expectBox(extentsOf(line), {0.0, -1.0, 0.0}, {12.5, 4.5, 3.0}, 1.0e-6);
}
