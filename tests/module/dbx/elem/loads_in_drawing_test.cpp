// Loads that follow their element: what becomes of both in a drawing.

#include "module/dbx/elem/load_drawing.h"
#include "platform/files.h"
#include "support/beep_recorder.h"

#include <stdexcept>

using namespace testing_support;
using orv::elem::ElementLoad;
using orv::elem::GenericLoad;
using orv::elem::kHardPointer;
using orv::elem::kSoftPointer;

namespace {

// An element of a class of its own, so that it can be missing alone.
class LostBeam : public TestElement {
public:
    ACRX_DECLARE_MEMBERS(LostBeam);
};
ACRX_DXF_DEFINE_MEMBERS(LostBeam, TestElement, AcDb::kDHL_1015, 0, 0, LOSTBEAM, ElementTests)

} // namespace

// The element's axes.

TEST_F(LoadsInDrawing, ALocalLoadHasTheAxesOfItsElement) {
    const AcDbObjectId id = loadOn(beam(), 13);
    change(id, [](TestElement& element) {
        const auto xform = loadOf(element).getElementXform();
        ASSERT_TRUE(xform);
        EXPECT_TRUE(xform->isEqualTo(BeamGeneral::axes()));
    });
}

TEST_F(LoadsInDrawing, ALoadThatIsNotLocalOrHasNoElementHasNoAxes) {
    const AcDbObjectId beamId = beam();
    for (const AcDbObjectId& id : {loadOn(beamId, 10), loadOn(beamId, 16), loadOn(AcDbObjectId(), 13)})
        change(id, [](TestElement& element) { EXPECT_FALSE(loadOf(element).getElementXform()); });
}

TEST_F(LoadsInDrawing, AnElementWithoutAxesOrThatIsNoneGivesNone) {
    auto* const withoutAxes = new TestElement;
    withoutAxes->addPlugin(new RecordingPlugin);
    withoutAxes->addPlugin(new orv::elem::Plugin_General);
    auto* const withoutPlugin = new TestElement;
    for (const AcDbObjectId& target : {put(withoutAxes), put(withoutPlugin), point()}) {
        const AcDbObjectId id = loadOn(AcDbObjectId(), 13);
        change(id, [&target](TestElement& element) {
            loadOf(element).setElement(target);
            EXPECT_FALSE(loadOf(element).getElementXform());
        });
    }
}

TEST_F(LoadsInDrawing, TheFirstGeneralPluginDecidesAboutTheAxes) {
    auto* const made = new TestElement;
    made->addPlugin(new orv::elem::Plugin_General);
    made->addPlugin(new BeamGeneral);
    const AcDbObjectId target = put(made);
    change(loadOn(AcDbObjectId(), 13), [&target](TestElement& element) {
        loadOf(element).setElement(target);
        EXPECT_FALSE(loadOf(element).getElementXform());
    });
}

TEST_F(LoadsInDrawing, AnElementThatIsErasedOpenForWriteOrGoneGivesNoAxes) {
    const AcDbObjectId beamId = beam();
    const AcDbObjectId id = loadOn(beamId, 13);
    const auto hasAxes = [&id] {
        bool has = false;
        use(id, AcDb::kForRead,
            [&has](TestElement& element) { has = static_cast<bool>(loadOf(element).getElementXform()); });
        return has;
    };
    EXPECT_TRUE(hasAxes());
    change(beamId, [&](TestElement&) { EXPECT_FALSE(hasAxes()); });
    use(beamId, AcDb::kForRead, [&](TestElement&) { EXPECT_TRUE(hasAxes()); });
    use(beamId, AcDb::kForNotify, [&](TestElement&) { EXPECT_FALSE(hasAxes()); });
    erase(beamId);
    EXPECT_FALSE(hasAxes());
    erase(beamId, false);
    EXPECT_TRUE(hasAxes());
    AcDbObjectId elsewhere;
    {
        AcDbDatabase other(true);
        elsewhere = putEntity(other, new AcDbPoint);
    }
    change(id, [&elsewhere](TestElement& element) { loadOf(element).setElement(elsewhere); });
    EXPECT_FALSE(hasAxes());
}

// Moving.

TEST_F(LoadsInDrawing, MovingTheElementMarksItsLoadsAndAsksForNewArrows) {
    ReportRecorder recorder;
    const AcDbObjectId beamId = beam(kRefresh);
    const AcDbObjectId first = loadOn(beamId);
    const AcDbObjectId second = loadOn<FreeLoad>(beamId);
    EXPECT_FALSE(wantsArrows(first));
    EXPECT_FALSE(isMarked(first));
    move(beamId);
    for (const AcDbObjectId& id : {first, second}) {
        EXPECT_TRUE(wantsArrows(id));
        EXPECT_TRUE(isMarked(id));
    }
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(LoadsInDrawing, WithoutTheFlagMovingTheElementAsksForNothing) {
    const AcDbObjectId beamId = beam(kErase);
    const AcDbObjectId id = loadOn(beamId);
    move(beamId);
    EXPECT_FALSE(wantsArrows(id));
    EXPECT_FALSE(isMarked(id));
}

TEST_F(LoadsInDrawing, MovingALoadTakesItsPointsAlongAndAsksForNewArrows) {
    const AcDbObjectId beamId = beam(kRefresh);
    const AcDbObjectId id = loadOn(beamId);
    move(id);
    use(id, AcDb::kForRead, [](TestElement& element) {
        AcGePoint3d point;
        loadOf(element).getPointAt(0, point);
        EXPECT_EQ(point, AcGePoint3d(5, 0, 0));
    });
    EXPECT_TRUE(wantsArrows(id));
    EXPECT_FALSE(isMarked(beamId));
    EXPECT_EQ(connected(beamId), Ids{id});
}

TEST_F(LoadsInDrawing, UndoBringsThePointsOfAMovedLoadBack) {
    const AcDbObjectId id = loadOn(beam());
    embedded::beginCommand(db);
    move(id);
    ASSERT_TRUE(embedded::undo(db));
    use(id, AcDb::kForRead, [](TestElement& element) {
        AcGePoint3d point(9, 9, 9);
        loadOf(element).getPointAt(0, point);
        EXPECT_EQ(point, AcGePoint3d(0, 0, 0));
    });
    EXPECT_TRUE(wantsArrows(id)) << "read anew";
}

// The walk over what is connected.

TEST_F(LoadsInDrawing, ALoadThatActsOnAnotherElementEndsTheWalkWithoutAMark) {
    const AcDbObjectId beamId = beam(kRefresh);
    const AcDbObjectId other = beam();
    // Ids ascend as they are made.
    const AcDbObjectId plain = point();
    const AcDbObjectId first = loadOn(beamId);
    const AcDbObjectId foreign = loadOn(other);
    const AcDbObjectId behind = loadOn(beamId);
    const AcDbObjectId plainBehind = point();
    change(beamId, [&](TestElement& element) {
        for (const AcDbObjectId& id : {plain, foreign, plainBehind})
            connectionsOf(element).add(id);
    });
    ASSERT_EQ(connected(beamId), (Ids{plain, first, foreign, behind, plainBehind}));
    move(beamId);
    EXPECT_TRUE(isMarked(plain));
    EXPECT_TRUE(isMarked(first));
    EXPECT_TRUE(wantsArrows(first));
    for (const AcDbObjectId& id : {foreign, behind}) {
        EXPECT_FALSE(isMarked(id));
        EXPECT_FALSE(wantsArrows(id));
    }
    EXPECT_FALSE(isMarked(plainBehind));
    // None of them stays open.
    for (const AcDbObjectId& id : {first, foreign, behind})
        change(id, [](TestElement&) {});
}

TEST_F(LoadsInDrawing, ALoadWithoutAnElementEndsTheWalkToo) {
    const AcDbObjectId beamId = beam(kRefresh);
    const AcDbObjectId free = loadOn(AcDbObjectId());
    const AcDbObjectId behind = loadOn(beamId);
    change(beamId, [&](TestElement& element) { connectionsOf(element).add(free); });
    move(beamId);
    EXPECT_FALSE(isMarked(free));
    EXPECT_FALSE(isMarked(behind));
}

TEST_F(LoadsInDrawing, ALoadOfAnotherElementThatIsErasedIsPassedOver) {
    const AcDbObjectId beamId = beam(kRefresh);
    const AcDbObjectId foreign = loadOn(beam());
    const AcDbObjectId behind = loadOn(beamId);
    change(beamId, [&](TestElement& element) { connectionsOf(element).add(foreign); });
    erase(foreign);
    move(beamId);
    EXPECT_TRUE(isMarked(behind));
}

TEST_F(LoadsInDrawing, TheFirstLoadOfAnElementDecidesAndTheOneBehindItIsLeftAlone) {
    const AcDbObjectId beamId = beam(kRefresh);
    const AcDbObjectId other = beam();
    auto* const made = new TestElement;
    made->addPlugin(new RecordingPlugin);
    auto* const first = new PlainLoad;
    auto* const second = new FreeLoad;
    made->addPlugin(first);
    made->addPlugin(second);
    first->setElement(beamId);
    second->setElement(other);
    drawOnce(*first);
    drawOnce(*second);
    const AcDbObjectId id = put(made);
    const AcDbObjectId behind = loadOn(beamId);
    change(beamId, [&](TestElement& element) { connectionsOf(element).add(id); });
    move(beamId);
    EXPECT_TRUE(isMarked(id));
    EXPECT_TRUE(isMarked(behind));
    use(id, AcDb::kForRead, [](TestElement& element) {
        const auto plugins = element.getConstPluginIterator();
        EXPECT_TRUE(dynamic_cast<PlainLoad&>(*plugins.begin()[1]).refreshGraphics());
        EXPECT_FALSE(dynamic_cast<FreeLoad&>(*plugins.begin()[2]).refreshGraphics());
    });
}

TEST_F(LoadsInDrawing, AnElementLoadGoesByTheElementOfEveryLoad) {
    const AcDbObjectId beamId = beam(kRefresh);
    const AcDbObjectId id = loadOn<BeamLoad>(beamId);
    change(id,
           [](TestElement& element) { dynamic_cast<BeamLoad&>(loadOf(element)).setElement(AcDbObjectId()); });
    move(beamId);
    EXPECT_TRUE(isMarked(id));
    EXPECT_TRUE(wantsArrows(id));
}

TEST_F(LoadsInDrawing, ElementsThatAreNoLoadsAreMarkedAndTheWalkGoesOn) {
    const AcDbObjectId beamId = beam(kRefresh);
    auto* const made = new TestElement;
    made->addPlugin(new RecordingPlugin);
    const AcDbObjectId element = put(made);
    const AcDbObjectId id = loadOn(beamId);
    change(beamId, [&](TestElement& changed) { connectionsOf(changed).add(element); });
    move(beamId);
    EXPECT_TRUE(isMarked(element));
    EXPECT_TRUE(isMarked(id));
}

// Erasing the load.

TEST_F(LoadsInDrawing, ErasingALoadTakesItOutOfItsElement) {
    ReportRecorder recorder;
    const AcDbObjectId beamId = beam();
    const AcDbObjectId id = loadOn(beamId);
    const AcDbObjectId other = loadOn(beamId);
    erase(id);
    EXPECT_EQ(connected(beamId), Ids{other});
    change(beamId, [&](TestElement& element) { EXPECT_EQ(connectionsOf(element).removed, Ids{id}); });
    EXPECT_EQ(elementOf(id), beamId);
    EXPECT_FALSE(beamId.isErased());
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(LoadsInDrawing, UnerasingALoadLeavesTheListOfItsElementAlone) {
    const AcDbObjectId beamId = beam();
    const AcDbObjectId id = loadOn(beamId);
    erase(id);
    change(beamId, [&](TestElement& element) {
        connectionsOf(element).add(id);
        connectionsOf(element).removed.clear();
    });
    erase(id, false);
    EXPECT_EQ(connected(beamId), Ids{id});
    change(beamId, [](TestElement& element) { EXPECT_TRUE(connectionsOf(element).removed.empty()); });
}

TEST_F(LoadsInDrawing, EveryConnectedListOfTheElementForgetsTheLoad) {
    auto* const made = new TestElement;
    auto* const first = new orv::elem::Plugin_ConnectedElements;
    auto* const second = new BeamConnections(kSoftPointer);
    made->addPlugin(first);
    made->addPlugin(new RecordingPlugin);
    made->addPlugin(second);
    const AcDbObjectId beamId = put(made);
    const AcDbObjectId id = loadOn(beamId);
    change(beamId, [&](TestElement&) { first->add(id); });
    erase(id);
    use(beamId, AcDb::kForRead, [&](TestElement&) {
        EXPECT_EQ(first->size(), 0u);
        EXPECT_EQ(second->size(), 0u);
    });
}

TEST_F(LoadsInDrawing, UndoOfAnErasedLoadBringsTheLinkBackOnBothSides) {
    const AcDbObjectId beamId = beam();
    const AcDbObjectId id = loadOn(beamId);
    for (int round = 0; round < 2; ++round) {
        embedded::beginCommand(db);
        erase(id);
        EXPECT_TRUE(connected(beamId).empty());
        ASSERT_TRUE(embedded::undo(db));
        EXPECT_FALSE(id.isErased());
        EXPECT_EQ(connected(beamId), Ids{id});
        EXPECT_EQ(elementOf(id), beamId);
        ASSERT_TRUE(embedded::redo(db));
        EXPECT_TRUE(id.isErased());
        EXPECT_TRUE(connected(beamId).empty());
        ASSERT_TRUE(embedded::undo(db));
    }
}

TEST_F(LoadsInDrawing, DuringAnUndoTheListOfTheElementIsLeftAlone) {
    const AcDbObjectId beamId = beam();
    const AcDbObjectId id = loadOn(beamId);
    erase(id);
    change(beamId, [&](TestElement& element) {
        connectionsOf(element).add(id);
        connectionsOf(element).removed.clear();
    });
    // A step in which the element plays no part: taking it back erases the load once more.
    embedded::beginCommand(db);
    erase(id, false);
    ASSERT_TRUE(embedded::undo(db));
    EXPECT_TRUE(id.isErased());
    EXPECT_EQ(connected(beamId), Ids{id});
    change(beamId, [](TestElement& element) { EXPECT_TRUE(connectionsOf(element).removed.empty()); });
}

TEST_F(LoadsInDrawing, ALoadWhoseElementCannotBeHadIsErasedAllTheSame) {
    ReportRecorder recorder;
    const BeepRecorder beeps;
    const AcDbObjectId beamId = beam();
    const AcDbObjectId openLoad = loadOn(beamId);
    const AcDbObjectId lateLoad = loadOn(beamId);
    use(beamId, AcDb::kForRead, [&](TestElement&) { erase(openLoad); });
    EXPECT_TRUE(openLoad.isErased());
    EXPECT_EQ(connected(beamId), (Ids{openLoad, lateLoad}));
    change(beamId, [&](TestElement&) { erase(lateLoad); });
    EXPECT_EQ(connected(beamId), (Ids{openLoad, lateLoad}));
    const AcDbObjectId noElement = loadOn(AcDbObjectId());
    const AcDbObjectId plain = point();
    change(noElement, [&](TestElement& element) { loadOf(element).setElement(plain); });
    erase(noElement);
    EXPECT_TRUE(noElement.isErased());
    EXPECT_FALSE(plain.isErased());
    EXPECT_EQ(recorder.size(), 0u);
    EXPECT_TRUE(beeps.lines().empty());
}

TEST_F(LoadsInDrawing, WhatTheElementThrowsIsPrintedAndTheLoadIsErased) {
    const BeepRecorder beeps;
    const AcDbObjectId beamId = beam();
    const AcDbObjectId id = loadOn(beamId);
    change(beamId, [](TestElement& element) { connectionsOf(element).throwsOnRemoval = true; });
    erase(id);
    EXPECT_TRUE(id.isErased());
    EXPECT_TRUE(connected(beamId).empty());
    EXPECT_EQ(beeps.lines().size(), 1u);
    change(beamId, [](TestElement&) {}); // not open any more
}

// Erasing the element.

TEST_F(LoadsInDrawing, ErasingTheElementErasesItsLoadsIfTheFlagSaysSo) {
    for (const unsigned int behaviour : {0u, kErase}) {
        ReportRecorder recorder;
        const BeepRecorder beeps;
        const AcDbObjectId beamId = beam(behaviour);
        const AcDbObjectId first = loadOn(beamId);
        const AcDbObjectId second = loadOn<BeamLoad>(beamId);
        erase(beamId);
        EXPECT_TRUE(beamId.isErased());
        EXPECT_EQ(first.isErased(), behaviour == kErase);
        EXPECT_EQ(second.isErased(), behaviour == kErase);
        EXPECT_TRUE(connected(beamId).empty());
        EXPECT_EQ(elementOf(first), beamId);
        if (!first.isErased()) {
            erase(first); // whose element is not there any more
            EXPECT_TRUE(first.isErased());
        }
        EXPECT_EQ(recorder.size(), 0u);
        EXPECT_TRUE(beeps.lines().empty());
    }
}

TEST_F(LoadsInDrawing, ErasingTheElementInARunningTransactionTakesTheLoadsAlong) {
    const BeepRecorder beeps;
    const AcDbObjectId beamId = beam(kErase);
    const AcDbObjectId first = loadOn(beamId);
    const AcDbObjectId second = loadOn(beamId);
    db.transactionManager()->startTransaction();
    AcDbObject* object = nullptr;
    ASSERT_EQ(db.transactionManager()->getObject(object, beamId, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(object->erase(), Acad::eOk);
    db.transactionManager()->endTransaction();
    EXPECT_TRUE(first.isErased());
    EXPECT_TRUE(second.isErased());
    EXPECT_TRUE(connected(beamId).empty());
    EXPECT_TRUE(beeps.lines().empty());
}

TEST_F(LoadsInDrawing, UndoOfAnErasedElementBringsItsLoadsAndAllLinksBack) {
    const AcDbObjectId beamId = beam(kErase);
    const AcDbObjectId first = loadOn(beamId);
    const AcDbObjectId second = loadOn(beamId);
    for (int round = 0; round < 2; ++round) {
        embedded::beginCommand(db);
        erase(beamId);
        EXPECT_TRUE(first.isErased());
        ASSERT_TRUE(embedded::undo(db));
        for (const AcDbObjectId& id : {beamId, first, second})
            EXPECT_FALSE(id.isErased());
        EXPECT_EQ(connected(beamId), (Ids{first, second}));
        EXPECT_EQ(elementOf(first), beamId);
        ASSERT_TRUE(embedded::redo(db));
        for (const AcDbObjectId& id : {beamId, first, second})
            EXPECT_TRUE(id.isErased());
        ASSERT_TRUE(embedded::undo(db));
    }
}

// Copying inside of a drawing.

TEST_F(LoadsInDrawing, ACopyOfBothIsAttachedToTheCopy) {
    ReportRecorder recorder;
    const AcDbObjectId beamId = beam();
    const AcDbObjectId id = loadOn<BeamLoad>(beamId);
    change(id, [&](TestElement& element) { dynamic_cast<BeamLoad&>(loadOf(element)).setElement(beamId); });
    AcDbIdMapping map;
    copy({beamId, id}, map);
    const AcDbObjectId beamCopy = cloneOf(map, beamId);
    const AcDbObjectId loadCopy = cloneOf(map, id);
    ASSERT_FALSE(beamCopy.isNull());
    ASSERT_FALSE(loadCopy.isNull());
    EXPECT_EQ(elementOf(loadCopy), beamCopy);
    change(loadCopy, [&](TestElement& element) {
        EXPECT_EQ(dynamic_cast<BeamLoad&>(loadOf(element)).getElement(), beamCopy);
        EXPECT_EQ(loadOf(element).getLoadCases(), std::set<unsigned int>{3});
    });
    EXPECT_EQ(connected(beamCopy), Ids{loadCopy});
    EXPECT_EQ(elementOf(id), beamId);
    EXPECT_EQ(connected(beamId), Ids{id});
    EXPECT_EQ(recorder.size(), 0u);
    // The copies are a pair of their own.
    erase(loadCopy);
    EXPECT_TRUE(connected(beamCopy).empty());
    EXPECT_EQ(connected(beamId), Ids{id});
}

TEST_F(LoadsInDrawing, ALoadAloneStaysBehindInACopy) {
    const AcDbObjectId beamId = beam();
    const AcDbObjectId id = loadOn(beamId);
    const AcDbObjectId plain = point();
    AcDbIdMapping map;
    copy({id, plain}, map);
    EXPECT_TRUE(cloneOf(map, id).isNull());
    EXPECT_FALSE(cloneOf(map, plain).isNull()) << "the others are copied";
    EXPECT_EQ(connected(beamId), Ids{id});
}

TEST_F(LoadsInDrawing, ALoadAheadOfItsElementStaysBehindUnlessTheMappingKnowsOfIt) {
    const AcDbObjectId beamId = beam();
    const AcDbObjectId id = loadOn(beamId);
    AcDbIdMapping map;
    copy({id, beamId}, map);
    EXPECT_TRUE(cloneOf(map, id).isNull());
    EXPECT_FALSE(cloneOf(map, beamId).isNull());
    AcDbIdMapping told;
    told.assign(AcDbIdPair(beamId, AcDbObjectId(), false, true));
    copy({id, beamId}, told);
    ASSERT_FALSE(cloneOf(told, id).isNull());
    EXPECT_EQ(elementOf(cloneOf(told, id)), cloneOf(told, beamId));
}

TEST_F(LoadsInDrawing, AFreeLoadIsCopiedByItself) {
    const AcDbObjectId id = loadOn<FreeLoad>(AcDbObjectId());
    AcDbIdMapping map;
    copy({id}, map);
    ASSERT_FALSE(cloneOf(map, id).isNull());
    EXPECT_TRUE(elementOf(cloneOf(map, id)).isNull());
}

// Into another drawing.

TEST_F(LoadsInDrawing, BothComeIntoAnotherDrawingTogether) {
    const AcDbObjectId beamId = beam(0, kSoftPointer);
    const AcDbObjectId id = loadOn(beamId);
    const ReportRecorder ofTheOwnership;
    AcDbDatabase target(true);
    AcDbIdMapping map;
    copyTo(target, {beamId, id}, map);
    const AcDbObjectId beamCopy = cloneOf(map, beamId);
    const AcDbObjectId loadCopy = cloneOf(map, id);
    ASSERT_EQ(loadCopy.database(), &target);
    EXPECT_EQ(elementOf(loadCopy), beamCopy);
    EXPECT_EQ(connected(beamCopy), Ids{loadCopy});
}

TEST_F(LoadsInDrawing, ALoadAloneStaysBehindAndDragsNoElementIntoAnotherDrawing) {
    const AcDbObjectId beamId = beam();
    const AcDbObjectId id = loadOn(beamId);
    AcDbDatabase target(true);
    AcDbIdMapping map;
    copyTo(target, {id, point()}, map);
    EXPECT_TRUE(cloneOf(map, id).isNull());
    EXPECT_TRUE(cloneOf(map, beamId).isNull());
}

TEST_F(LoadsInDrawing, AnElementTakesItsLoadsAlongByHardPointersAlone) {
    const ReportRecorder ofTheOwnership;
    for (const orv::elem::Ownership ownership : {kHardPointer, kSoftPointer}) {
        const AcDbObjectId beamId = beam(0, ownership);
        const AcDbObjectId id = loadOn(beamId);
        AcDbDatabase target(true);
        AcDbIdMapping map;
        copyTo(target, {beamId}, map);
        const AcDbObjectId beamCopy = cloneOf(map, beamId);
        const AcDbObjectId loadCopy = cloneOf(map, id);
        EXPECT_EQ(loadCopy.isNull(), ownership == kSoftPointer);
        EXPECT_EQ(connected(beamCopy), Ids{loadCopy});
        if (!loadCopy.isNull()) {
            EXPECT_EQ(elementOf(loadCopy), beamCopy);
        }
    }
}

// In a file.

TEST_F(LoadsInDrawing, AllOfALoadComesBackFromAFile) {
    const AcDbObjectId beamId = beam(kErase | kRefresh);
    auto* const made = new TestElement;
    auto* const plain = new PlainLoad;
    auto* const free = new FreeLoad;
    auto* const onBeam = new BeamLoad;
    for (GenericLoad* const load : {static_cast<GenericLoad*>(plain), static_cast<GenericLoad*>(free),
                                    static_cast<GenericLoad*>(onBeam)}) {
        made->addPlugin(load);
        fillGeneric(*load, beamId);
    }
    free->setAffectedNos({orv::elem::FreeLoadBase::REFERENCE_ANY});
    onBeam->setElement(beamId);
    const AcDbObjectId id = put(made);
    const std::wstring file = platform::joinPath(platform::makeTemporaryFolder(), L"loads.dwg");
    ASSERT_EQ(db.saveAs(file.c_str()), Acad::eOk) << embedded::lastFileError();
    ReportRecorder recorder;
    AcDbDatabase back(false);
    ASSERT_EQ(back.readDwgFile(file.c_str()), Acad::eOk) << embedded::lastFileError();
    const auto inBack = [&back](AcDbObjectId of) {
        AcDbObjectId found;
        EXPECT_EQ(back.getAcDbObjectId(found, false, of.handle()), Acad::eOk);
        return found;
    };
    use(inBack(id), AcDb::kForRead, [&](TestElement& element) {
        const auto plugins = element.getConstPluginIterator();
        ASSERT_EQ(plugins.end() - plugins.begin(), 3);
        for (const auto& plugin : plugins)
            expectGeneric(dynamic_cast<GenericLoad&>(*plugin), inBack(beamId));
        EXPECT_EQ(dynamic_cast<FreeLoad&>(*plugins.begin()[1]).getAffectedNos(),
                  std::set<unsigned int>{0xffffffff});
        EXPECT_EQ(dynamic_cast<BeamLoad&>(*plugins.begin()[2]).getElement(), inBack(beamId));
    });
    EXPECT_EQ(recorder.size(), 0u);
    platform::removeFile(file);
}

TEST_F(LoadsInDrawing, AProxyInThePlaceOfTheElementIsLeftAlone) {
    LostBeam::rxInit();
    acrxBuildClassHierarchy();
    auto* const made = new LostBeam;
    made->addPlugin(new BeamGeneral);
    made->addPlugin(new BeamConnections);
    const AcDbObjectId beamId = put(made);
    const AcDbObjectId id = loadOn(beamId, 13);
    const std::wstring file = platform::joinPath(platform::makeTemporaryFolder(), L"lost.dwg");
    ASSERT_EQ(db.saveAs(file.c_str()), Acad::eOk) << embedded::lastFileError();
    for (const AcDbObjectId& each : {id, beamId})
        erase(each);
    embedded::forgetHistory(db);
    deleteAcRxClass(LostBeam::gpDesc);
    LostBeam::gpDesc = nullptr;
    ReportRecorder recorder;
    const BeepRecorder beeps;
    AcDbDatabase back(false);
    ASSERT_EQ(back.readDwgFile(file.c_str()), Acad::eOk) << embedded::lastFileError();
    AcDbObjectId found;
    ASSERT_EQ(back.getAcDbObjectId(found, false, id.handle()), Acad::eOk);
    AcDbObject* proxy = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(proxy, elementOf(found), AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(proxy->isAProxy());
    proxy->close();
    use(found, AcDb::kForRead, [](TestElement& element) { EXPECT_FALSE(loadOf(element).getElementXform()); });
    erase(found);
    EXPECT_TRUE(found.isErased());
    EXPECT_FALSE(elementOf(found).isErased());
    EXPECT_EQ(recorder.size(), 0u);
    EXPECT_TRUE(beeps.lines().empty());
    platform::removeFile(file);
}
