// The load entity's geometry through the host's calls: grips, stretch points, snaps, transforms.

#include "dbgrip.h"
#include "embedded/display_list.h"
#include "module/dbx/elem/legacy_loads.h"
#include "orvshape/grip_icons.h"
#include "support/beep_recorder.h"

#include <memory>
#include <stdexcept>

using namespace testing_support;

namespace {

const Texts kTold = {"onGeometryModified", "onEdited"};

// The grips of an entity, for as long as it lives.
class GripsOf {
public:
    explicit GripsOf(const AcDbEntity& entity) {
        status = entity.getGripPoints(array, 1.0, 5, AcGeVector3d::kZAxis, 0);
    }
    ~GripsOf() {
        for (AcDbGripData* const grip : array)
            delete grip;
    }
    GripsOf(const GripsOf&) = delete;
    GripsOf& operator=(const GripsOf&) = delete;

    AcDbVoidPtrArray held(const std::vector<int>& indices) const {
        AcDbVoidPtrArray data;
        for (const int index : indices)
            data.append(array[index]->appData());
        return data;
    }

    AcDbGripDataPtrArray array;
    Acad::ErrorStatus status;
};

class LegacyLoadEdit : public LegacyLoadsInDrawing {
protected:
    ~LegacyLoadEdit() override { LoadHooks::all().call = {}; }

    static AcDbIntArray indices(const std::vector<int>& numbers) {
        AcDbIntArray array;
        for (const int number : numbers)
            array.append(number);
        return array;
    }
    // What the host calls for the snap at some mode.
    static Acad::ErrorStatus snap(const ORV_Load& load, AcDb::OsnapMode mode, AcGePoint3dArray& points) {
        AcDbIntArray geomIds;
        return load.getOsnapPoints(mode, 0, {9, 9, 9}, {8, 8, 8}, AcGeMatrix3d(), points, geomIds);
    }
    static Points listOf(const AcGePoint3dArray& array) { return Points(array.begin(), array.end()); }
    // The vertices whose position is not their point's.
    static void detach(ORV_Load& load, int index) {
        load.getVertices()[static_cast<std::size_t>(index)].posSource =
            static_cast<orv::elem::PositionSource>(2);
    }

    BeepRecorder beeps;
    const Points kThree = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}};
};

} // namespace

// Points.

TEST_F(LegacyLoadEdit, StretchPointsAreThePointsOfAllVertices) {
    change(loadWith(), [](ORV_Load& load) {
        detach(load, 1);
        AcGePoint3dArray points;
        points.append(AcGePoint3d(7, 7, 7));
        EXPECT_EQ(load.getStretchPoints(points), Acad::eOk);
        EXPECT_EQ(listOf(points), (Points{{7, 7, 7}, {0, 0, 0}, {1, 0, 0}, {2, 0, 0}})) << "appended";
    });
}

TEST_F(LegacyLoadEdit, EverySnapModeHasThePointsOfAllVertices) {
    look(loadWith(), [this](ORV_Load& load) {
        for (const AcDb::OsnapMode mode :
             {AcDb::kOsModeEnd, AcDb::kOsModeMid, AcDb::kOsModeCen, AcDb::kOsModeNode, AcDb::kOsModeQuad,
              AcDb::kOsModeIns, AcDb::kOsModePerp, AcDb::kOsModeTan, AcDb::kOsModeNear}) {
            AcGePoint3dArray points;
            EXPECT_EQ(snap(load, mode, points), Acad::eOk);
            EXPECT_EQ(listOf(points), kThree) << mode;
        }
    });
}

TEST_F(LegacyLoadEdit, GripsStandAtThePointsOfAllVertices) {
    look(loadWith(), [this](ORV_Load& load) {
        const GripsOf grips(load);
        EXPECT_EQ(grips.status, Acad::eOk);
        Points points;
        for (AcDbGripData* const grip : grips.array) {
            points.push_back(grip->gripPoint());
            EXPECT_EQ(grip->toolTipFunc(), nullptr);
            EXPECT_NE(grip->appData(), nullptr);
        }
        EXPECT_EQ(points, kThree);
    });
}

TEST_F(LegacyLoadEdit, ADerivedEntitysStretchPointsAreNoSnapPoints) {
    struct Derived : ORV_Load {
        Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray&) const override {
            return Acad::eNotApplicable;
        }
    };
    Derived load;
    addPluginTo<FreeLoad>(load);
    load.setVertices(verticesOf(3));
    AcGePoint3dArray points;
    EXPECT_EQ(load.getStretchPoints(points), Acad::eNotApplicable);
    EXPECT_EQ(snap(load, AcDb::kOsModeEnd, points), Acad::eOk);
    EXPECT_EQ(listOf(points), kThree);
}

TEST_F(LegacyLoadEdit, ALoadWithoutAFreeLoadHasNoPointsAndTakesNoStretch) {
    for (const AcDbObjectId& id : {loadWith<PlainLoad>(), loadWith<BeamLoad>(), loadWith<RecordingPlugin>()})
        change(id, [this](ORV_Load& load) {
            AcGePoint3dArray points;
            EXPECT_EQ(static_cast<int>(load.getStretchPoints(points)), 1);
            EXPECT_EQ(static_cast<int>(snap(load, AcDb::kOsModeEnd, points)), 1);
            EXPECT_TRUE(points.isEmpty());
            const GripsOf grips(load);
            EXPECT_EQ(static_cast<int>(grips.status), 1);
            EXPECT_TRUE(grips.array.isEmpty());
            EXPECT_EQ(static_cast<int>(load.moveStretchPointsAt(indices({0}), {1, 1, 1})), 1);
            EXPECT_EQ(static_cast<int>(load.moveStretchPointsAt(AcDbIntArray(), {1, 1, 1})), 1);
            EXPECT_EQ(pointsOf(load), kThree);
        });
}

TEST_F(LegacyLoadEdit, AFreeLoadBehindOtherPluginsCounts) {
    const AcDbObjectId id = loadWith<PlainLoad>();
    change(id, [](ORV_Load& load) {
        FreeLoad& free = addPluginTo<FreeLoad>(load);
        addPluginTo<FreeLoad>(load);
        EXPECT_EQ(load.moveStretchPointsAt(indices({0}), {1, 1, 1}), Acad::eOk);
        EXPECT_EQ(free.hooks, kTold);
        EXPECT_TRUE(pluginAt<FreeLoad>(load, 2).hooks.empty()) << "the first one is told";
    });
}

TEST_F(LegacyLoadEdit, AGripLooksAsThoseOfReferenceGeometryDo) {
    look(loadWith(1), [](ORV_Load& load) {
        const GripsOf grips(load);
        ASSERT_EQ(grips.array.length(), 1);
        AcDbGripData* const grip = grips.array[0];
        ASSERT_NE(grip->viewportDraw(), nullptr);
        // Whatever draws for a viewport shows the icon twice: through the grip and straight.
        struct Stage : AcDbEntity {
            std::function<void(AcGiViewportDraw&)> show;
            Adesk::Boolean subWorldDraw(AcGiWorldDraw*) override { return false; }
            void subViewportDraw(AcGiViewportDraw* draw) override { show(*draw); }
        };
        Stage stage;
        stage.show = [grip](AcGiViewportDraw& draw) {
            grip->viewportDraw()(grip, &draw, AcDbObjectId(), AcDbGripOperations::kHotGrip, nullptr, 10);
        };
        const auto icon = embedded::draw(stage).primitives;
        stage.show = [](AcGiViewportDraw& draw) {
            orv::drawGripPointIcon_GripButton(draw, {0, 0, 0}, AcDbGripOperations::kHotGrip, 10,
                                              orv::getReferenceGeometryGripPointColors());
        };
        const auto expected = embedded::draw(stage).primitives;
        ASSERT_EQ(icon.size(), 2u);
        ASSERT_EQ(expected.size(), icon.size());
        for (std::size_t i = 0; i < icon.size(); ++i) {
            EXPECT_EQ(icon[i].points, expected[i].points);
            EXPECT_EQ(icon[i].traits.trueColour.red(), expected[i].traits.trueColour.red());
            EXPECT_EQ(icon[i].traits.trueColour.blue(), expected[i].traits.trueColour.blue());
        }
    });
}

// Moving grips.

TEST_F(LegacyLoadEdit, AGripMovesItsVertexAndTheLoadIsTold) {
    change(loadWith(), [](ORV_Load& load) {
        const GripsOf grips(load);
        EXPECT_EQ(load.moveGripPointsAt(grips.held({1}), {0, 3, 0}, 0), Acad::eOk);
        EXPECT_EQ(pointsOf(load), (Points{{0, 0, 0}, {1, 3, 0}, {2, 0, 0}}));
        EXPECT_EQ(hooksOf(load), kTold);
    });
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadEdit, SeveralGripsMoveTheirVerticesAndTheLoadIsToldOnce) {
    change(loadWith(), [](ORV_Load& load) {
        const GripsOf grips(load);
        EXPECT_EQ(load.moveGripPointsAt(grips.held({2, 0}), {0, 3, 0}, 0), Acad::eOk);
        EXPECT_EQ(pointsOf(load), (Points{{0, 3, 0}, {1, 0, 0}, {2, 3, 0}}));
        EXPECT_EQ(hooksOf(load), kTold);
    });
}

TEST_F(LegacyLoadEdit, TheVerticesHaveMovedWhenTheLoadIsTold) {
    change(loadWith(), [](ORV_Load& load) {
        std::vector<Points> seen;
        LoadHooks::all().call = [&](orv::elem::GenericLoad&, const std::string&) {
            seen.push_back(pointsOf(load));
        };
        const GripsOf grips(load);
        load.moveGripPointsAt(grips.held({0}), {0, 3, 0}, 0);
        const Points moved = {{0, 3, 0}, {1, 0, 0}, {2, 0, 0}};
        EXPECT_EQ(seen, (std::vector<Points>{moved, moved}));
    });
}

TEST_F(LegacyLoadEdit, AGripOfAVertexThatIsNotAtItsPointIsReportedAndMovesIt) {
    change(loadWith(), [](ORV_Load& load) {
        detach(load, 1);
        const GripsOf grips(load);
        EXPECT_EQ(load.moveGripPointsAt(grips.held({1}), {0, 3, 0}, 0), Acad::eOk);
        EXPECT_EQ(pointsOf(load)[1], AcGePoint3d(1, 3, 0));
    });
    EXPECT_EQ(reports.conditions(), Texts{"vertices[i].posSource == ORV_Load::PS_POINT"});
}

TEST_F(LegacyLoadEdit, AUniformLoadStaysUniformWhenAGripMoves) {
    change(loadWith(), [](ORV_Load& load) {
        load.setUDL(true);
        const GripsOf grips(load);
        load.moveGripPointsAt(grips.held({1}), {0, 3, 0}, 0);
        for (const ORV_Load::Vertex& vertex : load.getVertices())
            EXPECT_EQ(vertex.value, 1.0);
    });
}

TEST_F(LegacyLoadEdit, AGripWhoseVertexIsGoneMovesNothing) {
    change(loadWith(), [](ORV_Load& load) {
        const GripsOf grips(load);
        load.setVertices(verticesOf(1));
        EXPECT_EQ(load.moveGripPointsAt(grips.held({2}), {0, 3, 0}, 0), Acad::eOk);
        EXPECT_EQ(pointsOf(load), (Points{{0, 0, 0}}));
    });
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadEdit, GripsOfOthersMoveNothing) {
    int foreign = 0;
    AcDbVoidPtrArray data;
    data.append(&foreign);
    data.append(nullptr);
    change(loadWith(), [this, &data](ORV_Load& load) {
        EXPECT_EQ(load.moveGripPointsAt(data, {0, 3, 0}, 0), Acad::eOk);
        EXPECT_EQ(pointsOf(load), kThree);
        EXPECT_EQ(hooksOf(load), kTold);
    });
}

TEST_F(LegacyLoadEdit, GripsOfALoadInAnotherDrawingMoveNothing) {
    AcDbDatabase other(true);
    auto* const load = new ORV_Load;
    load->setVertices(verticesOf(3));
    addPluginTo<FreeLoad>(*load);
    look(putEntity(other, load), [this](ORV_Load& elsewhere) {
        const GripsOf grips(elsewhere);
        change(loadWith(), [this, &grips](ORV_Load& here) {
            EXPECT_EQ(here.moveGripPointsAt(grips.held({1}), {0, 3, 0}, 0), Acad::eOk);
            EXPECT_EQ(pointsOf(here), kThree);
        });
        EXPECT_EQ(pointsOf(elsewhere), kThree);
    });
}

TEST_F(LegacyLoadEdit, EachOfTwoLoadsInTwoDrawingsMovesByItsOwnGrips) {
    AcDbDatabase other(true);
    auto* const load = new ORV_Load;
    load->setVertices(verticesOf(3));
    addPluginTo<FreeLoad>(*load);
    const AcDbObjectId there = putEntity(other, load);
    const AcDbObjectId here = loadWith();
    ASSERT_TRUE(there.handle() == here.handle()) << "what tells them apart is the drawing";
    change(there, [this](ORV_Load& moved) {
        const GripsOf grips(moved);
        EXPECT_EQ(moved.moveGripPointsAt(grips.held({1}), {0, 3, 0}, 0), Acad::eOk);
        EXPECT_EQ(hooksOf(moved), kTold);
    });
    EXPECT_EQ(pointsOf(there), (Points{{0, 0, 0}, {1, 3, 0}, {2, 0, 0}}));
    EXPECT_EQ(pointsOf(here), kThree);
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadEdit, AGripThatMovesSomethingElseIsReported) {
    const AcDbObjectId id = line();
    change(loadWith(), [this, &id](ORV_Load& load) {
        const GripsOf grips(load);
        AcDbLine* other = nullptr;
        ASSERT_EQ(acdbOpenObject(other, id, AcDb::kForWrite), Acad::eOk);
        orv::GripManager::onMove(*other, grips.held({1}), {0, 3, 0});
        EXPECT_EQ(other->startPoint(), AcGePoint3d(0, 0, 0));
        other->close();
        EXPECT_EQ(pointsOf(load), kThree);
    });
    EXPECT_EQ(reports.conditions(), Texts{"elem"});
}

TEST_F(LegacyLoadEdit, ADraggedCopyMovesItsOwnVertices) {
    look(loadWith(), [this](ORV_Load& load) {
        const GripsOf grips(load);
        const std::unique_ptr<AcRxObject> copied(load.clone());
        ORV_Load* const copy = ORV_Load::cast(copied.get());
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(copy->moveGripPointsAt(grips.held({1}), {0, 3, 0}, 0), Acad::eOk);
        EXPECT_EQ(pointsOf(*copy), (Points{{0, 0, 0}, {1, 3, 0}, {2, 0, 0}}));
        EXPECT_EQ(hooksOf(*copy), kTold);
        EXPECT_EQ(pointsOf(load), kThree);
        EXPECT_TRUE(hooksOf(load).empty());
    });
}

TEST_F(LegacyLoadEdit, UndoTakesAMovedGripBack) {
    const AcDbObjectId id = loadWith();
    embedded::beginCommand(db);
    change(id, [](ORV_Load& load) {
        const GripsOf grips(load);
        load.moveGripPointsAt(grips.held({1}), {0, 3, 0}, 0);
    });
    ASSERT_TRUE(embedded::undo(db));
    EXPECT_EQ(pointsOf(id), kThree);
    ASSERT_TRUE(embedded::redo(db));
    EXPECT_EQ(pointsOf(id)[1], AcGePoint3d(1, 3, 0));
}

// Stretching.

TEST_F(LegacyLoadEdit, AStretchMovesTheVerticesThatItNames) {
    change(loadWith(), [](ORV_Load& load) {
        detach(load, 2);
        EXPECT_EQ(load.moveStretchPointsAt(indices({2, 0}), {0, 0, 4}), Acad::eOk);
        EXPECT_EQ(pointsOf(load), (Points{{0, 0, 4}, {1, 0, 0}, {2, 0, 4}}));
        EXPECT_EQ(hooksOf(load), kTold);
    });
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(LegacyLoadEdit, AStretchOfNothingTellsNobody) {
    change(loadWith(), [this](ORV_Load& load) {
        EXPECT_EQ(load.moveStretchPointsAt(AcDbIntArray(), {0, 0, 4}), Acad::eOk);
        EXPECT_EQ(pointsOf(load), kThree);
        EXPECT_TRUE(hooksOf(load).empty());
    });
}

TEST_F(LegacyLoadEdit, AStretchOfAVertexThatIsNotThereThrowsAndChangesNothing) {
    for (const int index : {3, -1})
        change(loadWith(), [this, index](ORV_Load& load) {
            EXPECT_THROW(load.moveStretchPointsAt(indices({0, index}), {0, 0, 4}), std::out_of_range);
            EXPECT_EQ(pointsOf(load), kThree);
            EXPECT_TRUE(hooksOf(load).empty());
        });
}

TEST_F(LegacyLoadEdit, UndoTakesAStretchBack) {
    const AcDbObjectId id = loadWith();
    embedded::beginCommand(db);
    change(id, [](ORV_Load& load) { load.moveStretchPointsAt(indices({0}), {0, 0, 4}); });
    ASSERT_TRUE(embedded::undo(db));
    EXPECT_EQ(pointsOf(id), kThree);
}

// Transforming.

TEST_F(LegacyLoadEdit, ATransformTakesThePointsAlong) {
    const AcDbObjectId id = loadWith();
    change(id, [](ORV_Load& load) {
        EXPECT_EQ(load.transformBy(AcGeMatrix3d::rotation(1.5707963267948966, AcGeVector3d::kZAxis)),
                  Acad::eOk);
        const Points points = pointsOf(load);
        ASSERT_EQ(points.size(), 3u);
        EXPECT_TRUE(points[2].isEqualTo({0, 2, 0}));
        EXPECT_EQ(hooksOf(load), kTold);
        EXPECT_TRUE(load.isModifiedGraphics());
    });
}

TEST_F(LegacyLoadEdit, ATransformLeavesVerticesThatAreNotAtTheirPoint) {
    change(loadWith(), [](ORV_Load& load) {
        detach(load, 1);
        EXPECT_EQ(load.transformBy(AcGeMatrix3d::translation({0, 5, 0})), Acad::eOk);
        EXPECT_EQ(pointsOf(load), (Points{{0, 5, 0}, {1, 0, 0}, {2, 5, 0}}));
    });
}

TEST_F(LegacyLoadEdit, ALoadWithAnElementDoesNotFollowAMoveAndIsDrawnAnew) {
    const AcDbObjectId element = line();
    const AcDbObjectId id = loadWith();
    change(id, [&element](ORV_Load& load) { load.setElement(element); });
    look(id, [](ORV_Load& load) { ASSERT_FALSE(load.isModifiedGraphics()); });
    change(id, [this](ORV_Load& load) {
        EXPECT_EQ(load.transformBy(AcGeMatrix3d::translation({0, 5, 0})), Acad::eOk);
        EXPECT_EQ(pointsOf(load), kThree);
        EXPECT_TRUE(hooksOf(load).empty());
        EXPECT_TRUE(load.isModifiedGraphics());
    });
}

TEST_F(LegacyLoadEdit, ALoadWithoutAFreeLoadIsTransformedToo) {
    change(loadWith<PlainLoad>(1), [](ORV_Load& load) {
        EXPECT_EQ(load.transformBy(AcGeMatrix3d::translation({0, 5, 0})), Acad::eOk);
        EXPECT_EQ(pointsOf(load), (Points{{0, 5, 0}}));
        EXPECT_TRUE(pluginAt<PlainLoad>(load, 0).hooks.empty());
    });
}

TEST_F(LegacyLoadEdit, UndoTakesATransformBack) {
    const AcDbObjectId id = loadWith();
    embedded::beginCommand(db);
    change(id, [](ORV_Load& load) { load.transformBy(AcGeMatrix3d::translation({0, 5, 0})); });
    ASSERT_TRUE(embedded::undo(db));
    EXPECT_EQ(pointsOf(id), kThree);
}

TEST_F(LegacyLoadEdit, WhatTheLoadThrowsIsPrintedAndTheEditStays) {
    LoadHooks::all().call = [](orv::elem::GenericLoad&, const std::string& hook) {
        if (hook == "onGeometryModified")
            throw std::runtime_error("not so");
    };
    change(loadWith(), [](ORV_Load& load) {
        EXPECT_EQ(load.moveStretchPointsAt(indices({0}), {0, 0, 4}), Acad::eOk);
        EXPECT_EQ(pointsOf(load)[0], AcGePoint3d(0, 0, 4));
        EXPECT_EQ(hooksOf(load), Texts{"onGeometryModified"});
    });
    ASSERT_EQ(beeps.lines().size(), 1u);
    EXPECT_EQ(beeps.lines()[0].find(L"Caught Exception: not so "), 0u);
}
