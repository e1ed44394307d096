#include "db/database_core.h"
#include "dbents.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "embedded/host_start.h"
#include "geplane.h"
#include "sketch.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <stdexcept>

using Lines = std::vector<std::string>;
using embedded::DisplayList;
using embedded::ViewParameters;

namespace {

const AcGePoint3d kTwo[] = {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}};

class DrawnDrawing : public testing::Test {
protected:
    void SetUp() override { m_database = std::make_unique<AcDbDatabase>(true); }

    template <class T>
    AcDbObjectId add(T* entity, AcDbObjectId block = AcDbObjectId()) {
        if (block.isNull())
            block = m_database->core().roots.modelSpace;
        AcDbBlockTableRecord* record = nullptr;
        AcDbObjectId id;
        EXPECT_EQ(acdbOpenObject(record, block, AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(record->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        record->close();
        return id;
    }

    // Draws one segment, then does what is told.
    Sketch* sketch(const std::function<void(AcGiWorldDraw&)>& more = nullptr) {
        auto* made = new Sketch;
        made->world = [more](AcGiWorldDraw& wd) {
            wd.geometry().polyline(2, kTwo);
            if (more)
                more(wd);
            return true;
        };
        return made;
    }

    AcDbObjectId addBlock(const wchar_t* name) {
        AcDbBlockTable* table = nullptr;
        m_database->getBlockTable(table, AcDb::kForWrite);
        auto* record = new AcDbBlockTableRecord;
        record->setName(name);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        record->close();
        table->close();
        return id;
    }

    AcDbObjectId addLayer(const wchar_t* name, bool off, bool frozen) {
        AcDbLayerTable* table = nullptr;
        m_database->getLayerTable(table, AcDb::kForWrite);
        auto* record = new AcDbLayerTableRecord;
        record->setName(name);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        record->setIsOff(off);
        record->setIsFrozen(frozen);
        record->close();
        table->close();
        return id;
    }

    DisplayList draw() { return embedded::draw(*m_database, m_view); }

    ViewParameters m_view;
    std::unique_ptr<AcDbDatabase> m_database;
};

} // namespace

TEST_F(DrawnDrawing, EntitiesAreDrawnInTheirOrderWithTheirOwners) {
    const AcDbObjectId line = add(new AcDbLine({0, 0, 0}, {1, 2, 3}));
    const AcDbObjectId circle = add(new AcDbCircle({1, 1, 0}, AcGeVector3d::kZAxis, 2.0));
    add(new AcDbArc({0, 0, 0}, 1.0, 0.0, 1.0));
    add(new AcDbPoint({7, 7, 7}));
    add(new AcDbText({1, 2, 0}, L"B17", AcDbObjectId(), 2.0));
    auto* polyline = new AcDbPolyline;
    for (unsigned i = 0; i < 3; ++i)
        polyline->addVertexAt(i, {1.0 * i, 1.0 * i * i});
    polyline->setClosed(true);
    add(polyline);
    const DisplayList list = draw();
    EXPECT_EQ(told(list),
              (Lines{"polyline (0 0 0) (1 2 3)", "circle (1 1 0) radius 2 normal (0 0 1)",
                     "arc (0 0 0) radius 1 normal (0 0 1) from (1 0 0) sweep 1", "polyline (7 7 7) (7 7 7)",
                     "text (1 2 0) 'B17' height 2 width 1 slant 0 along (1 0 0)",
                     "polyline (0 0 0) (1 1 0) (2 4 0) (0 0 0)"}));
    EXPECT_TRUE(list.failures.empty());
    EXPECT_TRUE(list.primitives[0].owner == line);
    EXPECT_TRUE(list.primitives[0].outermost == line);
    EXPECT_EQ(list.primitives[0].ownerClass, AcDbLine::desc());
    EXPECT_TRUE(list.primitives[1].owner == circle);
}

TEST_F(DrawnDrawing, ASegmentWithAWidthIsAFilledPolygon) {
    auto* line = new AcDbPolyline;
    line->addVertexAt(0, {0, 0}, 0.0, 2.0, 4.0);
    line->addVertexAt(1, {10, 0}, 0.0, 0.0, 0.0);
    line->addVertexAt(2, {10, 10}, 1.0, 1.0, 1.0);
    line->addVertexAt(3, {20, 10});
    add(line);
    const DisplayList list = draw();
    ASSERT_EQ(list.primitives.size(), 3u);
    EXPECT_EQ(told(list.primitives[0]), "polygon (0 1 0) (10 2 0) (10 -2 0) (0 -1 0)");
    EXPECT_EQ(list.primitives[0].traits.fill, kAcGiFillAlways);
    EXPECT_EQ(told(list.primitives[1]), "polyline (10 0 0) (10 10 0)");
    EXPECT_EQ(list.primitives[1].traits.fill, kAcGiFillNever);
    // Around (15, 10), half a unit to both sides.
    for (const AcGePoint3d& point : list.primitives[2].points)
        EXPECT_NEAR(std::fabs(point.distanceTo({15, 10, 0}) - 5.0), 0.5, 1.0e-9);
}

TEST_F(DrawnDrawing, TraitsBeginAsTheEntitySaysAndEndWithIt) {
    auto* line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    line->setColorIndex(3);
    line->setLineWeight(AcDb::kLnWt050);
    line->setLinetypeScale(2.5);
    line->setThickness(1.5);
    add(line);
    add(sketch([](AcGiWorldDraw& wd) {
        AcGiSubEntityTraits& traits = wd.subEntityTraits();
        EXPECT_EQ(traits.color(), 256);
        EXPECT_EQ(traits.thickness(), 0.0);
        traits.setTrueColor(AcCmEntityColor(1, 2, 3));
        traits.setFillType(kAcGiFillAlways);
        traits.setSelectionMarker(5);
        EXPECT_TRUE(traits.trueColor().isByColor());
        EXPECT_EQ(traits.fillType(), kAcGiFillAlways);
        wd.geometry().polygon(2, kTwo);
        traits.setColor(9);
        EXPECT_EQ(traits.trueColor().colorIndex(), 9);
        wd.geometry().polygon(2, kTwo);
    }));
    add(sketch());
    const DisplayList list = draw();
    ASSERT_EQ(list.primitives.size(), 5u);
    const embedded::DrawTraits& first = list.primitives[0].traits;
    EXPECT_EQ(first.colour, 3);
    EXPECT_EQ(first.lineWeight, AcDb::kLnWt050);
    EXPECT_EQ(first.lineTypeScale, 2.5);
    EXPECT_EQ(first.thickness, 1.5);
    EXPECT_TRUE(first.layer == m_database->layerZero());
    EXPECT_TRUE(first.lineType == m_database->byLayerLinetype());
    EXPECT_EQ(list.primitives[2].traits.trueColour.green(), 2);
    EXPECT_EQ(list.primitives[2].traits.fill, kAcGiFillAlways);
    EXPECT_EQ(list.primitives[2].traits.marker, 5);
    EXPECT_FALSE(list.primitives[3].traits.trueColour.isByColor());
    EXPECT_EQ(list.primitives[3].traits.colour, 9);
    EXPECT_EQ(list.primitives[4].traits.fill, kAcGiFillNever);
    EXPECT_EQ(list.primitives[4].traits.colour, 256);
}

TEST_F(DrawnDrawing, TheViewportIsDrawnOnlyWhenTheWorldDrawSaysSo) {
    for (const bool done : {true, false}) {
        auto* made = new Sketch;
        made->world = [done](AcGiWorldDraw& wd) {
            EXPECT_EQ(wd.regenType(), kAcGiStandardDisplay);
            EXPECT_FALSE(wd.isDragging());
            EXPECT_FALSE(wd.regenAbort());
            wd.geometry().pushModelTransform(AcGeMatrix3d::scaling(5.0));
            wd.subEntityTraits().setColor(1);
            wd.geometry().polyline(2, kTwo);
            return done;
        };
        made->viewport = [](AcGiViewportDraw& vd) {
            // Neither transform nor traits of the world's draw are left.
            EXPECT_EQ(vd.subEntityTraits().color(), 256);
            vd.geometry().circle({0, 0, 0}, 1.0, vd.viewport().viewDir());
        };
        add(made);
    }
    EXPECT_EQ(told(draw()), (Lines{"polyline (0 0 0) (5 0 0)", "polyline (0 0 0) (5 0 0)",
                                   "viewport circle (0 0 0) radius 1 normal (0 0 1)"}));
}

TEST_F(DrawnDrawing, WhatADrawThrowsEndsThatEntityAlone) {
    const AcDbObjectId bad = add(sketch([](AcGiWorldDraw&) { throw std::runtime_error("no curve"); }));
    add(sketch([](AcGiWorldDraw&) { throw Acad::eInvalidInput; }));
    add(sketch([](AcGiWorldDraw&) { throw 7; }));
    add(sketch([](AcGiWorldDraw& wd) { wd.geometry().pushModelTransform(AcGeMatrix3d::scaling(5.0)); }));
    add(sketch());
    const DisplayList list = draw();
    EXPECT_EQ(told(list), Lines(5, "polyline (0 0 0) (1 0 0)"));
    ASSERT_EQ(list.failures.size(), 3u);
    EXPECT_EQ(list.failures[0].reason, "no curve");
    EXPECT_TRUE(list.failures[0].owner == bad);
    EXPECT_EQ(list.failures[1].reason, "eInvalidInput");
    EXPECT_EQ(list.failures[2].reason, "something that is no std::exception was thrown");
}

TEST_F(DrawnDrawing, AnEntityThatIsBeingWrittenIsAFailure) {
    const AcDbObjectId id = add(new AcDbLine({0, 0, 0}, {1, 0, 0}));
    add(new AcDbLine({2, 0, 0}, {3, 0, 0}));
    AcDbLine* line = nullptr;
    ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForWrite), Acad::eOk);
    const DisplayList list = draw();
    line->close();
    EXPECT_EQ(told(list), (Lines{"polyline (2 0 0) (3 0 0)"}));
    ASSERT_EQ(list.failures.size(), 1u);
    EXPECT_TRUE(list.failures[0].owner == id);
}

TEST_F(DrawnDrawing, InvisibleEntitiesAndHiddenLayersShowNothingUnlessAsked) {
    const AcDbObjectId off = addLayer(L"OFF", true, false);
    const AcDbObjectId frozen = addLayer(L"FROZEN", false, true);
    auto* hidden = sketch();
    hidden->setVisibility(AcDb::kInvisible);
    add(hidden);
    auto* onOff = sketch([&](AcGiWorldDraw& wd) {
        // A part of it on a layer that is shown.
        wd.subEntityTraits().setLayer(m_database->layerZero());
        wd.geometry().polygon(2, kTwo);
    });
    onOff->setLayer(off);
    add(onOff);
    auto* onFrozen = sketch([&](AcGiWorldDraw& wd) {
        wd.subEntityTraits().setLayer(m_database->layerZero());
        wd.geometry().polygon(2, kTwo);
    });
    onFrozen->setLayer(frozen);
    add(onFrozen);
    EXPECT_EQ(told(draw()), (Lines{"polygon (0 0 0) (1 0 0)"}));
    m_view.showsHidden = true;
    EXPECT_EQ(draw().primitives.size(), 5u);
}

TEST_F(DrawnDrawing, WhatIsNotPlottableIsToldWithAllThatIsInside) {
    const AcDbObjectId block = addBlock(L"B");
    add(new AcDbLine({0, 0, 0}, {2, 0, 0}), block);
    auto* around = sketch([&](AcGiWorldDraw& wd) {
        AcDbBlockReference inside({0, 0, 0}, block);
        wd.geometry().draw(&inside);
    });
    around->flags = AcGiDrawable::kDrawableNotPlottable;
    add(around);
    add(sketch());
    const DisplayList list = draw();
    ASSERT_EQ(told(list),
              (Lines{"polyline (0 0 0) (1 0 0)", "polyline (0 0 0) (2 0 0)", "polyline (0 0 0) (1 0 0)"}));
    EXPECT_FALSE(list.primitives[0].isPlottable);
    EXPECT_FALSE(list.primitives[1].isPlottable);
    EXPECT_TRUE(list.primitives[2].isPlottable);
}

TEST_F(DrawnDrawing, TheContentOfABlockIsDrawnWhereItsReferenceStands) {
    const AcDbObjectId block = addBlock(L"B");
    const AcDbObjectId layer = addLayer(L"X", false, false);
    auto* byBlock = new AcDbLine({0, 0, 0}, {1, 0, 0});
    byBlock->setColorIndex(0);
    byBlock->setLineWeight(AcDb::kLnWtByBlock);
    byBlock->setLinetype(m_database->byBlockLinetype());
    add(byBlock, block);
    auto* own = new AcDbLine({0, 0, 0}, {0, 1, 0});
    own->setColorIndex(2);
    const AcDbObjectId ownId = add(own, block);
    auto* reference = new AcDbBlockReference({10, 0, 0}, block);
    reference->setColorIndex(5);
    reference->setLineWeight(AcDb::kLnWt100);
    reference->setLinetype(m_database->continuousLinetype());
    reference->setLayer(layer);
    reference->setScaleFactors({2.0, 2.0, 2.0});
    const AcDbObjectId id = add(reference);
    AcDbBlockReference* opened = nullptr;
    ASSERT_EQ(acdbOpenObject(opened, id, AcDb::kForWrite), Acad::eOk);
    auto* attribute = new AcDbAttribute({10, 5, 0}, L"17", L"NR");
    AcDbObjectId attributeId;
    EXPECT_EQ(opened->appendAttribute(attributeId, attribute), Acad::eOk);
    attribute->close();
    opened->close();
    const DisplayList list = draw();
    EXPECT_EQ(told(list), (Lines{"polyline (10 0 0) (12 0 0)", "polyline (10 0 0) (10 2 0)",
                                 "text (10 5 0) '17' height 0.2 width 1 slant 0 along (1 0 0)"}));
    EXPECT_EQ(list.primitives[0].traits.colour, 5);
    EXPECT_EQ(list.primitives[0].traits.lineWeight, AcDb::kLnWt100);
    EXPECT_TRUE(list.primitives[0].traits.lineType == m_database->continuousLinetype());
    EXPECT_TRUE(list.primitives[0].traits.layer == layer);
    EXPECT_EQ(list.primitives[1].traits.colour, 2);
    EXPECT_TRUE(list.primitives[1].owner == ownId);
    EXPECT_TRUE(list.primitives[1].outermost == id);
    EXPECT_TRUE(list.primitives[2].owner == attributeId);
}

TEST_F(DrawnDrawing, ABlockInABlockTakesBothTransforms) {
    const AcDbObjectId inner = addBlock(L"INNER");
    const AcDbObjectId outer = addBlock(L"OUTER");
    add(new AcDbLine({0, 0, 0}, {1, 0, 0}), inner);
    add(new AcDbBlockReference({1, 0, 0}, inner), outer);
    auto* reference = new AcDbBlockReference({0, 10, 0}, outer);
    reference->setScaleFactors({3.0, 3.0, 3.0});
    add(reference);
    EXPECT_EQ(told(draw()), (Lines{"polyline (3 10 0) (6 10 0)"}));
}

TEST_F(DrawnDrawing, ABlockThatHoldsItselfEndsAsAFailure) {
    const AcDbObjectId block = addBlock(L"SNAKE");
    add(new AcDbLine({0, 0, 0}, {1, 0, 0}), block);
    add(new AcDbBlockReference({1, 0, 0}, block), block);
    add(new AcDbBlockReference({0, 0, 0}, block));
    const DisplayList list = draw();
    EXPECT_EQ(list.primitives.size(), 31u);
    ASSERT_FALSE(list.failures.empty());
    EXPECT_EQ(list.failures[0].reason, "it is nested too deep");
}

TEST_F(DrawnDrawing, ADrawableInNoDatabaseIsAPartOfWhoeverDrawsIt) {
    AcDbCircle part({0, 0, 0}, AcGeVector3d::kZAxis, 1.0);
    part.setColorIndex(0);
    auto* made = sketch([&](AcGiWorldDraw& wd) {
        wd.subEntityTraits().setColor(4);
        wd.geometry().draw(&part);
        EXPECT_EQ(wd.subEntityTraits().color(), 4);
    });
    const AcDbObjectId id = add(made);
    const DisplayList list = draw();
    ASSERT_EQ(list.primitives.size(), 2u);
    EXPECT_TRUE(list.primitives[1].owner == id);
    EXPECT_EQ(list.primitives[1].ownerClass, AcDbCircle::desc());
    EXPECT_EQ(list.primitives[1].traits.colour, 4);
    EXPECT_TRUE(list.primitives[1].traits.layer == m_database->layerZero());
}

TEST_F(DrawnDrawing, DrawingStopsAtTheMostPrimitives) {
    m_view.mostPrimitives = 2;
    bool asked = false;
    add(sketch());
    add(sketch([&](AcGiWorldDraw& wd) {
        asked = true;
        EXPECT_TRUE(wd.geometry().polyline(2, kTwo));
        EXPECT_TRUE(wd.regenAbort());
    }));
    add(sketch([](AcGiWorldDraw&) { FAIL() << "nothing more is drawn"; }));
    const DisplayList list = draw();
    EXPECT_TRUE(asked);
    EXPECT_TRUE(list.isCut);
    EXPECT_EQ(list.primitives.size(), 2u);
}

TEST_F(DrawnDrawing, ABlockThatIsNotThereIsAFailure) {
    EXPECT_EQ(embedded::draw(*m_database, AcDbObjectId()).failures.size(), 1u);
}

TEST_F(DrawnDrawing, ErasedEntitiesAreNotDrawn) {
    const AcDbObjectId id = add(sketch());
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForWrite), Acad::eOk);
    entity->erase();
    entity->close();
    const DisplayList list = draw();
    EXPECT_TRUE(list.primitives.empty());
    EXPECT_TRUE(list.failures.empty());
}

TEST_F(DrawnDrawing, TheExtentsOfAnEntityAreWhatItDrawsOrTells) {
    Sketch drawn, telling, nothing;
    drawn.world = [](AcGiWorldDraw& wd) {
        EXPECT_EQ(wd.regenType(), kAcGiForExtents);
        wd.geometry().polyline(2, kTwo);
        return false;
    };
    drawn.viewport = [](AcGiViewportDraw&) { FAIL() << "extents are those of the world"; };
    telling.world = [](AcGiWorldDraw& wd) {
        AcGePoint3d corners[] = {{5, 5, 5}, {-1, -1, -1}};
        wd.geometry().polyline(2, kTwo);
        wd.geometry().setExtents(corners);
        return true;
    };
    AcDbExtents box;
    EXPECT_EQ(nothing.getGeomExtents(box), Acad::eInvalidExtents);
    EXPECT_TRUE(box.isEmpty());
    EXPECT_EQ(drawn.getGeomExtents(box), Acad::eOk);
    EXPECT_EQ(box.maxPoint().x, 1.0);
    EXPECT_EQ(telling.getGeomExtents(box), Acad::eOk);
    EXPECT_EQ(box.minPoint().y, -1.0);
    EXPECT_EQ(box.maxPoint().x, 5.0);
    EXPECT_TRUE(drawn.bounds(box));
    EXPECT_FALSE(nothing.bounds(box));
}

TEST_F(DrawnDrawing, AnEntityThatSaysNothingAnswersSo) {
    Sketch entity;
    AcDbEntity* copy = &entity;
    AcGePoint3dArray points;
    AcDbIntArray modes, ids, which;
    AcDbGripDataPtrArray grips;
    AcDbVoidPtrArray data;
    AcGePlane plane;
    AcDb::Planarity planarity = AcDb::kPlanar;
    AcGeMatrix3d ecs = AcGeMatrix3d::scaling(2.0);
    CLSID number;
    EXPECT_EQ(entity.transformBy(AcGeMatrix3d()), Acad::eNotImplementedYet);
    EXPECT_EQ(entity.getTransformedCopy(AcGeMatrix3d(), copy), Acad::eNotImplementedYet);
    EXPECT_EQ(copy, nullptr);
    EXPECT_EQ(entity.getGripPoints(points, modes, ids), Acad::eNotImplementedYet);
    EXPECT_EQ(entity.getGripPoints(grips, 1.0, 3, AcGeVector3d::kZAxis, 0), Acad::eNotImplementedYet);
    EXPECT_EQ(entity.moveGripPointsAt(which, AcGeVector3d::kXAxis), Acad::eOk);
    which.append(0);
    EXPECT_EQ(entity.moveGripPointsAt(which, AcGeVector3d::kXAxis), Acad::eNotImplementedYet);
    EXPECT_EQ(entity.moveGripPointsAt(data, AcGeVector3d::kXAxis, 0), Acad::eNotImplementedYet);
    EXPECT_EQ(entity.getStretchPoints(points), Acad::eNotImplementedYet);
    EXPECT_EQ(entity.moveStretchPointsAt(which, AcGeVector3d::kXAxis), Acad::eNotImplementedYet);
    EXPECT_EQ(entity.getOsnapPoints(AcDb::kOsModeEnd, 0, {}, {}, AcGeMatrix3d(), points, ids),
              Acad::eNotImplementedYet);
    EXPECT_EQ(entity.explode(data), Acad::eNotImplementedYet);
    EXPECT_EQ(entity.intersectWith(&entity, AcDb::kOnBothOperands, points), Acad::eNotImplementedYet);
    EXPECT_EQ(entity.intersectWith(&entity, AcDb::kOnBothOperands, plane, points), Acad::eNotImplementedYet);
    EXPECT_EQ(entity.intersectWith(nullptr, AcDb::kOnBothOperands, points), Acad::eNullEntityPointer);
    EXPECT_EQ(entity.getPlane(plane, planarity), Acad::eNotApplicable);
    EXPECT_EQ(entity.getClassID(&number), Acad::eNotImplementedYet);
    EXPECT_EQ(entity.audit(nullptr), Acad::eOk);
    entity.getEcs(ecs);
    EXPECT_TRUE(ecs == AcGeMatrix3d());
    EXPECT_FALSE(entity.isPlanar());
    EXPECT_FALSE(entity.saveImagesByDefault());
    EXPECT_FALSE(entity.isPersistent());
}

TEST_F(DrawnDrawing, AskingForADrawAnewIsRemembered) {
    const AcDbObjectId id = add(new AcDbLine({0, 0, 0}, {1, 0, 0}));
    AcDbEntity* line = nullptr;
    ASSERT_EQ(acdbOpenAcDbEntity(line, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_FALSE(line->isModifiedGraphics());
    line->recordGraphicsModified();
    EXPECT_TRUE(line->isModifiedGraphics());
    line->recordGraphicsModified(false);
    EXPECT_FALSE(line->isModifiedGraphics());
    EXPECT_EQ(line->draw(), Acad::eOk);
    EXPECT_TRUE(line->isModifiedGraphics());
    line->close();
    ASSERT_EQ(acdbOpenAcDbEntity(line, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_FALSE(line->isModifiedGraphics());
    line->close();
    Sketch alone;
    EXPECT_EQ(alone.draw(), Acad::eNoDatabase);
}
