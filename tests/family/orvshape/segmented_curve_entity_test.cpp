#include "curve_fixture.h"
#include "embedded/display_list.h"
#include "embedded/session.h"
#include "host/gi/sketch.h"
#include "orvshape/grip_manager.h"

#include <cmath>

using orv::GripManager;

namespace {

std::vector<AcGePoint3d> snapsOf(const AcDbEntity& entity, AcDb::OsnapMode mode,
                                 const AcGePoint3d& pick = AcGePoint3d(),
                                 const AcGePoint3d& last = AcGePoint3d()) {
    AcGePoint3dArray points;
    AcDbIntArray ids;
    EXPECT_EQ(entity.getOsnapPoints(mode, 0, pick, last, AcGeMatrix3d(), points, ids), Acad::eOk);
    return {points.begin(), points.end()};
}

void expectPoints(const std::vector<AcGePoint3d>& found, const std::vector<AcGePoint3d>& expected) {
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        expectNear(found[i], expected[i]);
}

// An element with a grip of its own beside those of its curve.
class Element : public ORV_SegmentedCurve {
public:
    int moved = 0;

protected:
    Acad::ErrorStatus subGetGripPoints(AcDbGripDataPtrArray& grips, double unitSize, int gripSize,
                                       const AcGeVector3d& viewDir, int flags) const override {
        GripManager::ScopedCreator creator(*this, grips);
        creator.createPointGrip({9, 9, 9}, [](AcDbEntity& entity, const AcGeVector3d&) {
            ++static_cast<Element&>(entity).moved;
        });
        return ORV_SegmentedCurve::subGetGripPoints(grips, unitSize, gripSize, viewDir, flags);
    }
};

} // namespace

class DrawnCurve : public CurveDrawing {};

TEST_F(DrawnCurve, GripsStandAtTheVertices) {
    ORV_SegmentedCurve* curve = open(addHook());
    const Grips grips(*curve);
    ASSERT_EQ(grips.array.length(), 4);
    expectNear(grips.array[0]->gripPoint(), {0, 0, 0});
    expectNear(grips.array[1]->gripPoint(), {4, 0, 0});
    expectNear(grips.array[2]->gripPoint(), {6, 2, 0});
    expectNear(grips.array[3]->gripPoint(), {6, 5, 0});
    AcGePoint3dArray points, stretched;
    AcDbIntArray modes, ids;
    ASSERT_EQ(curve->getGripPoints(points, modes, ids), Acad::eOk);
    ASSERT_EQ(curve->getStretchPoints(stretched), Acad::eOk);
    EXPECT_EQ(points.length(), 4);
    EXPECT_EQ(stretched.length(), 4);
    expectNear(stretched[2], {6, 2, 0});
    curve->close();
}

TEST_F(DrawnCurve, DraggedGripMovesItsVertexAndUndoBringsItBack) {
    const AcDbObjectId id = addHook();
    ORV_SegmentedCurve* curve = open(id);
    const Grips grips(*curve);
    curve->close();
    embedded::beginCommand(*m_database);
    curve = open(id, AcDb::kForWrite);
    ASSERT_EQ(curve->moveGripPointsAt(grips.held({3}), {1, 1, 1}, 0), Acad::eOk);
    expectNear(curve->getSegmentAt(2)->end(), {7, 6, 1});
    expectNear(curve->getSegmentAt(2)->start(), {6, 2, 0});
    curve->close();
    ASSERT_TRUE(embedded::undo(*m_database));
    curve = open(id);
    expectNear(curve->getSegmentAt(2)->end(), {6, 5, 0});
    curve->close();
}

TEST_F(DrawnCurve, TwoGripsThatAreHeldMoveAtOnce) {
    const AcDbObjectId id = addHook();
    ORV_SegmentedCurve* curve = open(id, AcDb::kForWrite);
    const Grips grips(*curve);
    // One behind the other, the first would come to lie on the second.
    ASSERT_EQ(curve->moveGripPointsAt(grips.held({0, 1}), {4, 0, 0}, 0), Acad::eOk);
    expectNear(curve->getSegmentAt(0)->start(), {4, 0, 0});
    expectNear(curve->getSegmentAt(0)->end(), {8, 0, 0});
    EXPECT_EQ(curve->moveGripPointsAt(grips.held({0}), {4, 0, 0}, 0), Acad::eDegenerateGeometry);
    expectNear(curve->getSegmentAt(0)->start(), {4, 0, 0});
    curve->close();
}

TEST_F(DrawnCurve, DraggedCopyMovesAndTheOriginalStays) {
    ORV_SegmentedCurve* curve = open(addHook());
    const Grips grips(*curve);
    std::unique_ptr<AcRxObject> clone(curve->clone());
    auto* copy = ORV_SegmentedCurve::cast(clone.get());
    ASSERT_EQ(copy->moveGripPointsAt(grips.held({0}), {-1, 0, 0}, 0), Acad::eOk);
    expectNear(copy->getSegmentAt(0)->start(), {-1, 0, 0});
    expectNear(curve->getSegmentAt(0)->start(), {0, 0, 0});
    curve->close();
}

TEST_F(DrawnCurve, ForeignGripDataIsLeftAlone) {
    ORV_SegmentedCurve* curve = open(addHook(), AcDb::kForWrite);
    AcDbVoidPtrArray foreign;
    int something = 0;
    foreign.append(&something);
    foreign.append(nullptr);
    EXPECT_EQ(curve->moveGripPointsAt(foreign, {1, 0, 0}, 0), Acad::eOk);
    expectNear(curve->getSegmentAt(0)->start(), {0, 0, 0});
    curve->close();
}

TEST_F(DrawnCurve, ElementAddsGripsToThoseOfItsCurve) {
    auto* made = new Element;
    makeHook(*made);
    add(made);
    ASSERT_EQ(made->isWriteEnabled(), false);
    AcDbObject* opened = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(opened, made->objectId(), AcDb::kForWrite), Acad::eOk);
    const Grips grips(*made);
    ASSERT_EQ(grips.array.length(), 5);
    ASSERT_EQ(made->moveGripPointsAt(grips.held({0, 2}), {0, -1, 0}, 0), Acad::eOk);
    EXPECT_EQ(made->moved, 1);
    expectNear(made->getSegmentAt(1)->start(), {4, -1, 0});
    made->close();
}

TEST_F(DrawnCurve, StretchMovesTheNamedVertices) {
    ORV_SegmentedCurve* curve = open(addHook(), AcDb::kForWrite);
    AcDbIntArray indices;
    indices.append(2);
    indices.append(3);
    ASSERT_EQ(curve->moveStretchPointsAt(indices, {0, 1, 0}), Acad::eOk);
    expectNear(curve->getSegmentAt(2)->start(), {6, 3, 0});
    expectNear(curve->getSegmentAt(2)->end(), {6, 6, 0});
    ASSERT_EQ(curve->moveGripPointsAt(indices, {0, -1, 0}), Acad::eOk);
    expectNear(curve->getSegmentAt(2)->end(), {6, 5, 0});
    indices.append(4);
    EXPECT_EQ(curve->moveStretchPointsAt(indices, {0, 1, 0}), Acad::eInvalidIndex);
    curve->close();
}

TEST_F(DrawnCurve, ExtentsHoldTheArc) {
    ORV_SegmentedCurve curve;
    AcDbExtents box;
    EXPECT_EQ(curve.getGeomExtents(box), Acad::eInvalidExtents);
    makeStadium(curve);
    ASSERT_EQ(curve.getGeomExtents(box), Acad::eOk);
    expectNear(box.minPoint(), {-1, 0, 0});
    expectNear(box.maxPoint(), {5, 2, 0});
}

TEST_F(DrawnCurve, SnapPoints) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    const double half = std::sqrt(2.0);
    expectPoints(snapsOf(curve, AcDb::kOsModeEnd), {{0, 0, 0}, {4, 0, 0}, {6, 2, 0}, {6, 5, 0}});
    expectPoints(snapsOf(curve, AcDb::kOsModeMid), {{2, 0, 0}, {4 + half, 2 - half, 0}, {6, 3.5, 0}});
    expectPoints(snapsOf(curve, AcDb::kOsModeCen), {{4, 2, 0}});
    expectPoints(snapsOf(curve, AcDb::kOsModeNear, {1, 1, 0}), {{1, 0, 0}});
    expectPoints(snapsOf(curve, AcDb::kOsModeNear, {-9, 1, 0}), {{0, 0, 0}});
    expectPoints(snapsOf(curve, AcDb::kOsModePerp, {}, {-9, 1, 0}), {{-9, 0, 0}});
    expectPoints(snapsOf(curve, AcDb::kOsModeNode), {});
    // The quarter turn has the two of its ends.
    EXPECT_EQ(snapsOf(curve, AcDb::kOsModeQuad).size(), 2u);
}

TEST_F(DrawnCurve, CircleHasQuadrantsAndNoEnds) {
    ORV_SegmentedCurve curve;
    curve.append(arcAbout({2, 0, 0}, {0, 0, 0}, 2 * kPi));
    EXPECT_EQ(snapsOf(curve, AcDb::kOsModeQuad).size(), 4u);
    expectPoints(snapsOf(curve, AcDb::kOsModeEnd), {});
    expectPoints(snapsOf(curve, AcDb::kOsModeMid), {});
}

TEST_F(DrawnCurve, ExplodesIntoLinesAndArcsWithItsSettings) {
    ORV_SegmentedCurve* curve = open(addHook(), AcDb::kForWrite);
    curve->setColorIndex(3);
    curve->setLinetypeScale(2.5);
    AcDbVoidPtrArray set;
    ASSERT_EQ(curve->explode(set), Acad::eOk);
    ASSERT_EQ(set.length(), 3);
    std::vector<std::unique_ptr<AcDbEntity>> pieces;
    for (void* piece : set)
        pieces.emplace_back(static_cast<AcDbEntity*>(piece));
    const AcDbLine* line = AcDbLine::cast(pieces[0].get());
    const AcDbArc* arc = AcDbArc::cast(pieces[1].get());
    ASSERT_NE(line, nullptr);
    ASSERT_NE(arc, nullptr);
    ASSERT_NE(AcDbLine::cast(pieces[2].get()), nullptr);
    expectNear(line->endPoint(), {4, 0, 0});
    expectNear(arc->center(), {4, 2, 0});
    EXPECT_NEAR(arc->radius(), 2, 1e-12);
    EXPECT_NEAR(arc->totalAngle(), kPi / 2, 1e-12);
    AcGePoint3d start;
    ASSERT_EQ(arc->getStartPoint(start), Acad::eOk);
    expectNear(start, {4, 0, 0});
    for (const auto& piece : pieces) {
        EXPECT_EQ(piece->colorIndex(), 3);
        EXPECT_EQ(piece->linetypeScale(), 2.5);
        EXPECT_EQ(piece->layerId(), curve->layerId());
    }
    curve->close();
}

TEST_F(DrawnCurve, ExplodedArcsLieWhereTheyWereInAnyPlane) {
    ORV_SegmentedCurve curve;
    curve.append(arcAbout({1, 2, 3}, {1, 0, 3}, 2, {1, 0, 0}));
    curve.appendArcAbout(curve.getSegmentAt(0)->centre(), {1, 0, 0}, -1.5);
    AcDbVoidPtrArray set;
    ASSERT_EQ(curve.explode(set), Acad::eOk);
    for (int i = 0; i < set.length(); ++i) {
        const std::unique_ptr<AcDbEntity> piece(static_cast<AcDbEntity*>(set[i]));
        const AcDbArc* arc = AcDbArc::cast(piece.get());
        AcGePoint3d start, end;
        arc->getStartPoint(start);
        arc->getEndPoint(end);
        expectNear(start, curve.getSegmentAt(i)->start());
        expectNear(end, curve.getSegmentAt(i)->end());
    }
}

TEST_F(DrawnCurve, AFullCircleExplodesIntoACircleWhereverItStarts) {
    const AcGeVector3d normals[] = {{0, 0, 1}, {0, 0, -1}, {1, 2, 3}, {-1, 0, 0.5}};
    constexpr int kStarts = 500;
    for (const AcGeVector3d& normal : normals)
        for (int i = 0; i < kStarts; ++i) {
            const AcGePoint3d centre(3, -4, 5);
            AcGeVector3d out = normal.perpVector() * 7.5;
            out.rotateBy(2 * kPi * i / kStarts, normal);
            ORV_SegmentedCurve curve;
            ASSERT_EQ(curve.append(arcAbout(centre + out, centre, 2 * kPi, normal)), Acad::eOk);
            curve.setColorIndex(3);
            AcDbVoidPtrArray set;
            ASSERT_EQ(curve.explode(set), Acad::eOk);
            ASSERT_EQ(set.length(), 1);
            const std::unique_ptr<AcDbEntity> piece(static_cast<AcDbEntity*>(set[0]));
            const AcDbCircle* circle = AcDbCircle::cast(piece.get());
            ASSERT_NE(circle, nullptr);
            expectNear(circle->center(), centre);
            expectNear(circle->normal(), normal.normal());
            EXPECT_NEAR(circle->radius(), 7.5, 1e-9);
            EXPECT_EQ(circle->colorIndex(), 3);
        }
}

TEST_F(DrawnCurve, PerpendicularSnapLeavesCornersOut) {
    // An L: right to (4, 0), then up to (4, 3).
    ORV_SegmentedCurve curve;
    curve.append(lineOf({0, 0, 0}, {4, 0, 0}));
    curve.appendLineTo({4, 3, 0});
    const auto perpendicular = [&](const AcGePoint3d& last) {
        return snapsOf(curve, AcDb::kOsModePerp, {}, last);
    };
    // The corner would be the nearest place of all; neither piece goes on through it.
    expectPoints(perpendicular({6, -1, 0}), {});
    // The nearest place is the corner, the nearest at a right angle is on the second piece.
    expectPoints(perpendicular({4.5, 0.25, 0}), {{4, 0.25, 0}});
    expectPoints(perpendicular({5, -4, 0}), {});
    // Beyond the ends an open curve goes on.
    expectPoints(perpendicular({-2, 1, 0}), {{-2, 0, 0}});
    expectPoints(perpendicular({-2, 7, 0}), {{4, 7, 0}});
    curve.appendClosingLine();
    expectPoints(perpendicular({-2, 5, 0}), {{1.12, 0.84, 0}});
    expectPoints(perpendicular({5, 2, 0}), {{4, 2, 0}});
}

TEST_F(DrawnCurve, PerpendicularSnapFindsTheFarSideOfAnArc) {
    // The upper half of a circle with radius 2, closed by its chord.
    ORV_SegmentedCurve curve;
    curve.append(arcAbout({2, 0, 0}, {0, 0, 0}, kPi));
    curve.appendClosingLine();
    expectPoints(snapsOf(curve, AcDb::kOsModePerp, {}, {0, -5, 0}), {{0, 0, 0}});
    // Beside the chord: only the way through the centre is left, and it ends on the far side.
    expectPoints(snapsOf(curve, AcDb::kOsModePerp, {}, {-3, -3, 0}), {{std::sqrt(2.0), std::sqrt(2.0), 0}});
    ORV_SegmentedCurve circle;
    circle.append(arcAbout({2, 0, 0}, {0, 0, 0}, 2 * kPi));
    expectPoints(snapsOf(circle, AcDb::kOsModePerp, {}, {0, 6, 0}), {{0, 2, 0}});
}

TEST_F(DrawnCurve, IsDrawnAsChainsAndArcs) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    ASSERT_EQ(curve.appendLineTo({9, 5, 0}), Acad::eOk);
    const auto lines = told(embedded::draw(curve));
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "polyline (0 0 0) (4 0 0)",
                         "arc (4 2 0) radius 2 normal (0 0 1) from (0 -1 0) sweep 1.5708",
                         "polyline (6 2 0) (6 5 0) (9 5 0)",
                     }));
}

TEST_F(DrawnCurve, FullCircleIsDrawnAsOne) {
    ORV_SegmentedCurve curve;
    curve.append(arcAbout({2, 0, 0}, {0, 0, 0}, 2 * kPi));
    EXPECT_EQ(told(embedded::draw(curve)),
              (std::vector<std::string>{"circle (0 0 0) radius 2 normal (0 0 1)"}));
    curve.clear();
    EXPECT_TRUE(embedded::draw(curve).primitives.empty());
}

TEST_F(DrawnCurve, DrawingStopsWhenItIsToldTo) {
    ORV_SegmentedCurve curve;
    makeHook(curve);
    embedded::ViewParameters view;
    view.mostPrimitives = 1;
    const embedded::DisplayList list = embedded::draw(curve, view);
    EXPECT_EQ(list.primitives.size(), 1u);
}
