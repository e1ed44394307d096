#include "dbidmap.h"
#include "embedded/display_list.h"
#include "embedded/memory_filer.h"
#include "entity_fixture.h"

#include <algorithm>

namespace {

class VertexPolyline : public EntityFixture {
protected:
    // A square of two, its second side an arc to the outside.
    static std::unique_ptr<AcDb2dPolyline> square(bool closed = true, double width = 0.0) {
        AcGePoint3dArray points;
        AcGeDoubleArray bulges;
        for (const AcGePoint3d& point :
             {AcGePoint3d(0, 0, 0), AcGePoint3d(2, 0, 0), AcGePoint3d(2, 2, 0), AcGePoint3d(0, 2, 0)})
            points.append(point);
        for (const double bulge : {0.0, 1.0, 0.0, 0.0})
            bulges.append(bulge);
        return std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, points, 0.0, closed, width, width,
                                                &bulges);
    }

    static std::unique_ptr<AcDb3dPolyline> climb() {
        AcGePoint3dArray points;
        for (const AcGePoint3d& point : {AcGePoint3d(0, 0, 0), AcGePoint3d(3, 4, 0), AcGePoint3d(3, 4, 5)})
            points.append(point);
        return std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, points);
    }

    template <class Polyline>
    static std::vector<AcDbObjectId> verticesOf(AcDbObjectId id) {
        std::vector<AcDbObjectId> found;
        auto* polyline = open<Polyline>(id);
        const std::unique_ptr<AcDbObjectIterator> it(polyline->vertexIterator());
        for (; !it->done(); it->step())
            found.push_back(it->objectId());
        polyline->close();
        return found;
    }

    template <class Polyline>
    static std::vector<AcGePoint3d> gripsOf(AcDbObjectId id) {
        auto* polyline = open<Polyline>(id);
        AcGePoint3dArray points;
        AcDbIntArray modes, ids;
        EXPECT_EQ(polyline->getGripPoints(points, modes, ids), Acad::eOk);
        polyline->close();
        return std::vector<AcGePoint3d>(points.begin(), points.end());
    }

    template <class Polyline>
    static void expectGrips(AcDbObjectId id, const std::vector<AcGePoint3d>& expected) {
        const std::vector<AcGePoint3d> found = gripsOf<Polyline>(id);
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t i = 0; i < found.size(); ++i)
            expectNear(found[i], expected[i]);
    }

    static void erase(AcDbObjectId id, bool erasing = true) {
        auto* object = open<AcDbObject>(id, AcDb::kForWrite, true);
        EXPECT_EQ(object->erase(erasing), Acad::eOk);
        object->close();
    }

    AcDbObjectId cloneOf(AcDbIdMapping& mapping, AcDbObjectId key) {
        AcDbIdPair pair(key, AcDbObjectId(), true);
        EXPECT_TRUE(mapping.compute(pair));
        return pair.value();
    }
};

const std::vector<AcGePoint3d> kCorners = {
    {0.0, 0.0, 0.0}, {2.0, 0.0, 0.0}, {2.0, 2.0, 0.0}, {0.0, 2.0, 0.0}};

} // namespace

TEST_F(VertexPolyline, IsACurveBeforeItIsInADatabase) {
    const auto line = square();
    double length = 0.0, area = 0.0, end = 0.0;
    EXPECT_EQ(line->getEndParam(end), Acad::eOk);
    EXPECT_EQ(end, 4.0);
    EXPECT_EQ(line->getDistAtParam(4.0, length), Acad::eOk);
    EXPECT_NEAR(length, 6.0 + kTestPi, 1.0e-12);
    EXPECT_EQ(line->getArea(area), Acad::eOk);
    EXPECT_NEAR(area, 4.0 + kTestPi / 2.0, 1.0e-12);
    expectBox(extentsOf(*line), {0.0, 0.0, 0.0}, {3.0, 2.0, 0.0});
    const std::unique_ptr<AcDbObjectIterator> it(line->vertexIterator());
    EXPECT_TRUE(it->objectId().isNull());
    EXPECT_TRUE(it->entity()->isKindOf(AcDb2dVertex::desc()));
}

TEST_F(VertexPolyline, ItsVerticesBecomeObjectsWhenItIsClosed) {
    const AcDbObjectId id = add(square().release());
    const std::vector<AcDbObjectId> vertices = verticesOf<AcDb2dPolyline>(id);
    ASSERT_EQ(vertices.size(), 4u);
    auto* polyline = open<AcDb2dPolyline>(id);
    AcDb2dVertex* vertex = nullptr;
    ASSERT_EQ(polyline->openVertex(vertex, vertices[1], AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(vertex->bulge(), 1.0);
    EXPECT_TRUE(vertex->ownerId() == id);
    EXPECT_TRUE(vertex->layerId() == polyline->layerId());
    expectNear(polyline->vertexPosition(*vertex), {2.0, 0.0, 0.0});
    vertex->close();
    EXPECT_EQ(polyline->openVertex(vertex, id, AcDb::kForRead), Acad::eKeyNotFound);
    AcDbSequenceEnd* end = nullptr;
    EXPECT_EQ(polyline->openSequenceEnd(end, AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(end->ownerId() == id);
    end->close();
    polyline->close();
}

TEST_F(VertexPolyline, VerticesAreAppendedAndInsertedBehindOthers) {
    const AcDbObjectId id = add(square(false).release());
    const AcDbObjectId second = verticesOf<AcDb2dPolyline>(id)[1];
    auto* polyline = open<AcDb2dPolyline>(id, AcDb::kForWrite);
    AcDbObjectId made;
    auto* vertex = new AcDb2dVertex({5.0, 5.0, 0.0});
    EXPECT_EQ(polyline->insertVertexAt(made, second, vertex), Acad::eOk);
    EXPECT_EQ(polyline->appendVertex(made, vertex), Acad::eAlreadyInDb);
    vertex->close();
    vertex = new AcDb2dVertex({-1.0, 0.0, 0.0});
    EXPECT_EQ(polyline->insertVertexAt(made, id, vertex), Acad::eKeyNotFound);
    EXPECT_EQ(polyline->insertVertexAt(made, AcDbObjectId(), vertex), Acad::eOk);
    vertex->close();
    vertex = new AcDb2dVertex({9.0, 9.0, 0.0});
    EXPECT_EQ(polyline->appendVertex(vertex), Acad::eOk);
    vertex->close();
    EXPECT_EQ(polyline->appendVertex(nullptr), Acad::eNullEntityPointer);
    polyline->close();
    const std::vector<AcGePoint3d> all = {{-1, 0, 0}, {0, 0, 0}, {2, 0, 0}, {5, 5, 0},
                                          {2, 2, 0},  {0, 2, 0}, {9, 9, 0}};
    expectGrips<AcDb2dPolyline>(id, all);
    expectGrips<AcDb2dPolyline>(reopened(id), all);
}

TEST_F(VertexPolyline, SavedAndReadAgainItIsTheSame) {
    auto line = square(true, 0.5);
    line->setNormal({0.0, 1.0, 1.0});
    line->setElevation(3.0);
    line->setThickness(2.0);
    line->setLinetypeGenerationOn();
    const AcDbExtents before = extentsOf(*line);
    const AcDbObjectId again = reopened(add(line.release()));
    auto* read = open<AcDb2dPolyline>(again);
    EXPECT_TRUE(read->isClosed());
    EXPECT_TRUE(read->isLinetypeGenerationOn());
    EXPECT_EQ(read->thickness(), 2.0);
    EXPECT_EQ(read->elevation(), 3.0);
    EXPECT_EQ(read->defaultEndWidth(), 0.5);
    expectBox(extentsOf(*read), before.minPoint(), before.maxPoint());
    read->close();
    EXPECT_EQ(verticesOf<AcDb2dPolyline>(again).size(), 4u);
    const AcDbObjectId climbing = reopened(add(climb().release()));
    expectGrips<AcDb3dPolyline>(climbing, {{0, 0, 0}, {3, 4, 0}, {3, 4, 5}});
}

TEST_F(VertexPolyline, TransformingTakesTheVerticesAlongAndUndoBringsThemBack) {
    const AcDbObjectId id = add(square().release());
    embedded::beginCommand(*m_database);
    auto* polyline = open<AcDb2dPolyline>(id, AcDb::kForWrite);
    const AcGeMatrix3d move = AcGeMatrix3d::translation({10.0, 0.0, 5.0}) *
                              AcGeMatrix3d::rotation(kTestPi / 2.0, AcGeVector3d::kXAxis) *
                              AcGeMatrix3d::scaling(2.0);
    EXPECT_EQ(polyline->transformBy(move), Acad::eOk);
    polyline->close();
    std::vector<AcGePoint3d> moved;
    for (const AcGePoint3d& corner : kCorners)
        moved.push_back(move * corner);
    expectGrips<AcDb2dPolyline>(id, moved);
    polyline = open<AcDb2dPolyline>(id);
    expectBox(extentsOf(*polyline), {10.0, 0.0, 5.0}, {16.0, 0.0, 9.0});
    polyline->close();
    ASSERT_TRUE(embedded::undo(*m_database));
    expectGrips<AcDb2dPolyline>(id, kCorners);
    ASSERT_TRUE(embedded::redo(*m_database));
    expectGrips<AcDb2dPolyline>(id, moved);
}

TEST_F(VertexPolyline, ATransformThatWouldMakeAnArcAnEllipseChangesNothing) {
    AcGeMatrix3d stretch;
    stretch(0, 0) = 2.0;
    const AcDbObjectId id = add(square().release());
    auto* polyline = open<AcDb2dPolyline>(id, AcDb::kForWrite);
    EXPECT_EQ(polyline->transformBy(stretch), Acad::eCannotScaleNonUniformly);
    polyline->close();
    expectGrips<AcDb2dPolyline>(id, kCorners);
    auto straight = climb();
    EXPECT_EQ(straight->transformBy(stretch), Acad::eOk);
    expectBox(extentsOf(*straight), {0.0, 0.0, 0.0}, {6.0, 4.0, 5.0});
}

TEST_F(VertexPolyline, AVertexThatSomebodyWritesRefusesTheTransformOfAll) {
    const AcDbObjectId id = add(square().release());
    auto* vertex = open<AcDb2dVertex>(verticesOf<AcDb2dPolyline>(id)[2], AcDb::kForWrite);
    auto* polyline = open<AcDb2dPolyline>(id, AcDb::kForWrite);
    EXPECT_EQ(polyline->transformBy(AcGeMatrix3d::translation({1.0, 0.0, 0.0})), Acad::eWasOpenForWrite);
    polyline->close();
    vertex->close();
    expectGrips<AcDb2dPolyline>(id, kCorners);
}

TEST_F(VertexPolyline, AGripMovesOneVertexInThePlaneAndAllMoveTheWhole) {
    const AcDbObjectId id = add(square().release());
    auto* polyline = open<AcDb2dPolyline>(id, AcDb::kForWrite);
    AcDbIntArray which;
    which.append(3);
    EXPECT_EQ(polyline->moveGripPointsAt(which, {-1.0, 0.0, 7.0}), Acad::eOk);
    which[0] = 4;
    EXPECT_EQ(polyline->moveGripPointsAt(which, {-1.0, 0.0, 7.0}), Acad::eInvalidIndex);
    polyline->close();
    expectGrips<AcDb2dPolyline>(id, {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {-1, 2, 0}});
    polyline = open<AcDb2dPolyline>(id, AcDb::kForWrite);
    which.setLogicalLength(0);
    for (int i = 0; i < 4; ++i)
        which.append(i);
    EXPECT_EQ(polyline->moveGripPointsAt(which, {0.0, 0.0, 7.0}), Acad::eOk);
    EXPECT_EQ(polyline->elevation(), 7.0);
    polyline->close();
}

TEST_F(VertexPolyline, AVertexByItselfMovesInItsPolylinesPlane) {
    auto line = square();
    line->setNormal(AcGeVector3d::kYAxis);
    const AcDbObjectId id = add(line.release());
    const AcGePoint3d before = gripsOf<AcDb2dPolyline>(id)[1];
    auto* vertex = open<AcDb2dVertex>(verticesOf<AcDb2dPolyline>(id)[1], AcDb::kForWrite);
    EXPECT_EQ(vertex->transformBy(AcGeMatrix3d::translation({1.0, 5.0, 2.0})), Acad::eOk);
    vertex->close();
    expectNear(gripsOf<AcDb2dPolyline>(id)[1], before + AcGeVector3d(1.0, 0.0, 2.0));
}

TEST_F(VertexPolyline, ExplodesIntoLinesAndArcs) {
    auto line = square();
    line->setThickness(2.0);
    AcDbVoidPtrArray parts;
    EXPECT_EQ(line->explode(parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 4);
    AcDbExtents box;
    int arcs = 0;
    for (void* part : parts) {
        const std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(part));
        box.addExt(extentsOf(*owned));
        arcs += owned->isKindOf(AcDbArc::desc()) ? 1 : 0;
    }
    EXPECT_EQ(arcs, 1);
    expectBox(box, {0.0, 0.0, 0.0}, {3.0, 2.0, 2.0});
    AcDb2dPolyline none;
    EXPECT_EQ(none.explode(parts), Acad::eCannotExplodeEntity);
}

TEST_F(VertexPolyline, IsDrawnWithItsBulgesAndItsWidths) {
    add(square(true, 0.0).release());
    embedded::DisplayList list = embedded::draw(*m_database);
    EXPECT_TRUE(list.failures.empty());
    EXPECT_EQ(list.primitives.size(), 3u); // a line, an arc, the two other sides as one chain
    m_database = std::make_unique<AcDbDatabase>(true);
    add(square(true, 0.5).release());
    list = embedded::draw(*m_database);
    EXPECT_EQ(list.primitives.size(), 4u); // an outline for each
    AcDbExtents box;
    for (const embedded::Primitive& primitive : list.primitives)
        for (const AcGePoint3d& point : primitive.points)
            box.addPoint(point);
    EXPECT_NEAR(box.minPoint().y, -0.25, 1.0e-9);
}

TEST_F(VertexPolyline, OfASplineTheFrameIsNotSeenOnceItIsFitted) {
    AcGePoint3dArray frame;
    for (const AcGePoint3d& point : {AcGePoint3d(0, 0, 0), AcGePoint3d(5, 9, 0), AcGePoint3d(10, 0, 0)})
        frame.append(point);
    AcDb3dPolyline spline(AcDb::k3dQuadSplinePoly, frame);
    expectBox(extentsOf(spline), {0.0, 0.0, 0.0}, {10.0, 9.0, 0.0});
    // As a product files it: corners of the frame, and vertices of the curve.
    const auto filed = [](Adesk::UInt8 flags, const AcGePoint3d& point) {
        std::vector<std::uint8_t> bytes;
        AcDb3dPolylineVertex plain(point);
        embedded::MemoryFiler out(AcDb::kUndoFiler, bytes);
        plain.dwgOutFields(&out);
        bytes[bytes.size() - 3 * sizeof(double) - 1] = flags;
        auto* vertex = new AcDb3dPolylineVertex;
        embedded::MemoryFiler in(AcDb::kUndoFiler, bytes.data(), bytes.size());
        EXPECT_EQ(vertex->dwgInFields(&in), Acad::eOk);
        return vertex;
    };
    AcGePoint3dArray none;
    AcDb3dPolyline fitted(AcDb::k3dQuadSplinePoly, none);
    EXPECT_EQ(fitted.appendVertex(filed(32 | 16, {5.0, 9.0, 0.0})), Acad::eOk);
    for (const AcGePoint3d& point : {AcGePoint3d(0, 0, 0), AcGePoint3d(5, 4, 0), AcGePoint3d(10, 0, 0)})
        EXPECT_EQ(fitted.appendVertex(filed(32 | 8, point)), Acad::eOk);
    expectBox(extentsOf(fitted), {0.0, 0.0, 0.0}, {10.0, 4.0, 0.0});
}

TEST_F(VertexPolyline, ErasingTakesTheVerticesAlongAndUndoBringsThemBack) {
    const AcDbObjectId id = add(square().release());
    const std::vector<AcDbObjectId> vertices = verticesOf<AcDb2dPolyline>(id);
    erase(vertices[0]);
    embedded::beginCommand(*m_database);
    erase(id);
    EXPECT_TRUE(vertices[3].isErased());
    ASSERT_TRUE(embedded::undo(*m_database));
    EXPECT_TRUE(vertices[0].isErased());
    EXPECT_FALSE(vertices[3].isErased());
    expectGrips<AcDb2dPolyline>(id, {{2, 0, 0}, {2, 2, 0}, {0, 2, 0}});
    expectGrips<AcDb2dPolyline>(reopened(id), {{2, 0, 0}, {2, 2, 0}, {0, 2, 0}});
}

TEST_F(VertexPolyline, MakingItIsUndoneWithItsVertices) {
    embedded::beginCommand(*m_database);
    const AcDbObjectId id = add(climb().release());
    const std::vector<AcDbObjectId> vertices = verticesOf<AcDb3dPolyline>(id);
    ASSERT_TRUE(embedded::undo(*m_database));
    EXPECT_TRUE(id.isErased());
    EXPECT_TRUE(vertices[0].isErased());
    ASSERT_TRUE(embedded::redo(*m_database));
    expectGrips<AcDb3dPolyline>(id, {{0, 0, 0}, {3, 4, 0}, {3, 4, 5}});
}

TEST_F(VertexPolyline, ACopyInNoDatabaseHasCopiesOfTheVertices) {
    const AcDbObjectId id = add(square().release());
    auto* polyline = open<AcDb2dPolyline>(id);
    AcDbEntity* copied = nullptr;
    EXPECT_EQ(polyline->getTransformedCopy(AcGeMatrix3d::translation({0.0, 5.0, 0.0}), copied), Acad::eOk);
    polyline->close();
    const std::unique_ptr<AcDbEntity> copy(copied);
    expectBox(extentsOf(*copy), {0.0, 5.0, 0.0}, {3.0, 7.0, 0.0});
    expectGrips<AcDb2dPolyline>(id, kCorners);
}

TEST_F(VertexPolyline, AClonesVerticesAreItsOwn) {
    const AcDbObjectId id = add(square().release());
    AcDbIdMapping mapping;
    AcDbObjectIdArray ids;
    ids.append(id);
    ASSERT_EQ(m_database->deepCloneObjects(ids, m_database->core().roots.modelSpace, mapping), Acad::eOk);
    const AcDbObjectId copy = cloneOf(mapping, id);
    const std::vector<AcDbObjectId> vertices = verticesOf<AcDb2dPolyline>(copy);
    ASSERT_EQ(vertices.size(), 4u);
    for (const AcDbObjectId& vertex : verticesOf<AcDb2dPolyline>(id))
        EXPECT_EQ(std::count(vertices.begin(), vertices.end(), vertex), 0);
    erase(copy);
    expectGrips<AcDb2dPolyline>(id, kCorners);
}

TEST_F(VertexPolyline, ACloneInAnotherDrawingIsSavedWithItsVertices) {
    const AcDbObjectId id = add(square().release());
    const AcDbObjectId climbing = add(climb().release());
    auto target = std::make_unique<AcDbDatabase>(true);
    AcDbIdMapping mapping;
    AcDbObjectIdArray ids;
    ids.append(id);
    ids.append(climbing);
    ASSERT_EQ(m_database->wblockCloneObjects(ids, target->core().roots.modelSpace, mapping, AcDb::kDrcIgnore),
              Acad::eOk);
    const AcDbHandle copy = cloneOf(mapping, id).handle(), other = cloneOf(mapping, climbing).handle();
    m_database = std::move(target);
    AcDbObjectId found;
    m_database->getAcDbObjectId(found, false, copy);
    expectGrips<AcDb2dPolyline>(reopened(found), kCorners);
    m_database->getAcDbObjectId(found, false, other);
    expectGrips<AcDb3dPolyline>(found, {{0, 0, 0}, {3, 4, 0}, {3, 4, 5}});
}

TEST_F(VertexPolyline, InABlockItExplodesWithTheReference) {
    const AcDbObjectId block = addBlock(L"B");
    add(square().release(), block);
    AcDbBlockReference reference({10.0, 0.0, 0.0}, block);
    AcDbVoidPtrArray parts;
    ASSERT_EQ(reference.explode(parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 1);
    const std::unique_ptr<AcDbEntity> part(static_cast<AcDbEntity*>(parts[0]));
    expectBox(extentsOf(*part), {10.0, 0.0, 0.0}, {13.0, 2.0, 0.0});
}
