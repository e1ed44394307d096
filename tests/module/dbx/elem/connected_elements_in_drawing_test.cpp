// What the plugin for connected elements does to the objects of a drawing.

#include "dbapserv.h"
#include "dbents.h"
#include "dbidmap.h"
#include "dbsymtb.h"
#include "dbtrans.h"
#include "dbx/elem/plugin_connected_elements.h"
#include "embedded/session.h"
#include "gemat3d.h"
#include "platform/files.h"
#include "rxclass.h"
#include "support/beep_recorder.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"
#include "support/test_element.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

using namespace testing_support;
using orv::elem::kHardPointer;
using orv::elem::kSoftPointer;
using orv::elem::Ownership;
using orv::elem::Plugin_ConnectedElements;
using Ids = std::vector<AcDbObjectId>;

namespace {

constexpr unsigned int kErase = Plugin_ConnectedElements::kEraseConnected;
constexpr unsigned int kRefresh = Plugin_ConnectedElements::kRefreshOnTransform;

// An element of a class of its own, so that it can be missing alone.
class OtherElement : public TestElement {
public:
    ACRX_DECLARE_MEMBERS(OtherElement);
};
ACRX_DXF_DEFINE_MEMBERS(OtherElement, TestElement, AcDb::kDHL_1015, 0, 0, OTHERELEMENT, ElementTests)

void unregisterOtherElement() {
    deleteAcRxClass(OtherElement::gpDesc);
    OtherElement::gpDesc = nullptr;
}

// May refuse to go.
class Watched : public AcDbPoint {
public:
    bool refuses = false;
    bool throws = false;

protected:
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override {
        if (throws)
            throw std::runtime_error("stuck");
        return refuses ? Acad::eNotApplicable : AcDbPoint::subErase(erasing);
    }
};

void changeElement(AcDbObjectId id, const std::function<void(TestElement&)>& change,
                   bool openErased = false) {
    TestElement* element = nullptr;
    ASSERT_EQ(acdbOpenObject(element, id, AcDb::kForWrite, openErased), Acad::eOk);
    change(*element);
    element->close();
}

Plugin_ConnectedElements& connectedOf(TestElement& element) {
    auto* const plugin = element.getFirstPlugin(Plugin_ConnectedElements::static_pluginId());
    return dynamic_cast<Plugin_ConnectedElements&>(*plugin);
}

Ids connected(AcDbObjectId id) {
    Ids ids;
    TestElement* element = nullptr;
    EXPECT_EQ(acdbOpenObject(element, id, AcDb::kForRead, true), Acad::eOk);
    if (element == nullptr)
        return ids;
    const Plugin_ConnectedElements& plugin = connectedOf(*element);
    ids.assign(plugin.begin(), plugin.end());
    element->close();
    return ids;
}

bool isMarked(AcDbObjectId id) {
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForRead, true), Acad::eOk);
    const bool marked = entity->isModifiedGraphics();
    entity->close();
    return marked;
}

class ConnectedInDrawing : public ::testing::Test {
protected:
    ConnectedInDrawing() : db(true) {
        registerTestElement();
        OtherElement::rxInit();
        acrxBuildClassHierarchy();
        one = putEntity(db, new Watched);
        two = putEntity(db, new Watched);
        three = putEntity(db, new Watched);
    }

    AcDbObjectId element(unsigned int behaviour, const Ids& ids, Ownership ownership = kHardPointer) {
        auto* const made = new TestElement;
        auto* const plugin = new Plugin_ConnectedElements(ownership);
        made->addPlugin(plugin);
        made->setNodDatabaseId(AcDbObjectId(), L"ASDWG");
        plugin->setBehaviour(behaviour);
        for (const AcDbObjectId& id : ids)
            plugin->add(id);
        return putEntity(db, made);
    }
    static void erase(AcDbObjectId id) {
        changeElement(id, [](TestElement& changed) { EXPECT_EQ(changed.erase(), Acad::eOk); });
    }
    static void move(AcDbObjectId id) {
        changeElement(id, [](TestElement& changed) {
            const AcGeMatrix3d matrix = AcGeMatrix3d::translation(AcGeVector3d(1, 0, 0));
            EXPECT_EQ(changed.transformBy(matrix), Acad::eOk);
        });
    }
    std::vector<bool> areErased() const { return {one.isErased(), two.isErased(), three.isErased()}; }
    std::vector<bool> areMarked() const { return {isMarked(one), isMarked(two), isMarked(three)}; }
    static void refuse(AcDbObjectId id, bool byThrowing = false) {
        AcDbEntity* entity = nullptr;
        ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), Acad::eOk);
        auto& watched = dynamic_cast<Watched&>(*entity);
        (byThrowing ? watched.throws : watched.refuses) = true;
        entity->close();
    }
    // Opening for write takes the mark away.
    static void clearMark(AcDbObjectId id) {
        AcDbEntity* entity = nullptr;
        ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), Acad::eOk);
        entity->close();
    }

    AcDbDatabase db;
    AcDbObjectId one;
    AcDbObjectId two;
    AcDbObjectId three;
};

using Flags = std::vector<bool>;

} // namespace

TEST_F(ConnectedInDrawing, ErasingTheOwnerErasesTheConnected) {
    ReportRecorder recorder;
    const AcDbObjectId id = element(kErase, {one, two});
    erase(id);
    EXPECT_EQ(areErased(), (Flags{true, true, false}));
    EXPECT_TRUE(id.isErased());
    EXPECT_TRUE(connected(id).empty());
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(ConnectedInDrawing, WithoutTheFlagErasingLeavesTheConnectedAloneAndTheSetEmpty) {
    for (const unsigned int behaviour : {0u, kRefresh}) {
        const AcDbObjectId id = element(behaviour, {one, two});
        erase(id);
        EXPECT_EQ(areErased(), (Flags{false, false, false}));
        EXPECT_TRUE(connected(id).empty());
    }
}

TEST_F(ConnectedInDrawing, UnerasingLeavesTheSetAsItIs) {
    const AcDbObjectId id = element(kErase, {one});
    erase(id);
    changeElement(
        id,
        [this](TestElement& changed) {
            connectedOf(changed).add(two);
            EXPECT_EQ(changed.erase(false), Acad::eOk);
        },
        true);
    EXPECT_EQ(connected(id), Ids{two});
    EXPECT_EQ(areErased(), (Flags{true, false, false})) << "unerasing brings no links back";
}

TEST_F(ConnectedInDrawing, UndoBringsAllBackAndRedoTakesAllAwayAgain) {
    const AcDbObjectId id = element(kErase, {one, two});
    for (int round = 0; round < 2; ++round) {
        embedded::beginCommand(db);
        erase(id);
        EXPECT_EQ(areErased(), (Flags{true, true, false}));
        ASSERT_TRUE(embedded::undo(db));
        EXPECT_EQ(areErased(), (Flags{false, false, false}));
        EXPECT_FALSE(id.isErased());
        EXPECT_EQ(connected(id), (Ids{one, two}));
        ASSERT_TRUE(embedded::redo(db));
        EXPECT_EQ(areErased(), (Flags{true, true, false}));
        EXPECT_TRUE(id.isErased());
        EXPECT_TRUE(connected(id).empty());
        ASSERT_TRUE(embedded::undo(db));
    }
}

TEST_F(ConnectedInDrawing, DuringAnUndoNoConnectedObjectIsErased) {
    const AcDbObjectId id = element(kErase, {});
    embedded::beginCommand(db);
    erase(id);
    embedded::beginCommand(db);
    std::vector<std::size_t> connectedAtErase;
    changeElement(
        id,
        [&](TestElement& changed) {
            // Ahead of the other one, to see what that still has when its turn comes.
            auto* const witness = new RecordingPlugin;
            witness->onHook = [&connectedAtErase, witness](const std::string& hook) {
                if (hook == "onErase")
                    connectedAtErase.push_back(
                        connectedOf(*static_cast<TestElement*>(witness->owner())).size());
            };
            const auto plugin = changed.detachPlugin(&connectedOf(changed));
            changed.addPlugin(witness);
            changed.addPlugin(plugin);
            connectedOf(changed).add(one);
            EXPECT_EQ(changed.erase(false), Acad::eOk);
        },
        true);
    ASSERT_FALSE(id.isErased());
    connectedAtErase.clear();
    ASSERT_TRUE(embedded::undo(db));
    EXPECT_TRUE(id.isErased());
    EXPECT_EQ(connectedAtErase, std::vector<std::size_t>{1});
    EXPECT_EQ(areErased(), (Flags{false, false, false}));
    EXPECT_TRUE(connected(id).empty());
}

TEST_F(ConnectedInDrawing, WhatIsErasedNullOrNoEntityIsPassedOver) {
    ReportRecorder recorder;
    eraseObject(one);
    const AcDbObjectId record = putObject(db.namedObjectsDictionaryId(), L"RECORD", new AcDbDictionary);
    const AcDbObjectId id = element(kErase, {AcDbObjectId(), one, record, three});
    erase(id);
    EXPECT_EQ(areErased(), (Flags{true, false, true}));
    EXPECT_FALSE(record.isErased());
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(ConnectedInDrawing, WhatIsGoneForGoodOrOfADrawingThatIsClosedIsPassedOver) {
    ReportRecorder recorder;
    AcDbObjectId elsewhere;
    {
        AcDbDatabase other(true);
        elsewhere = putEntity(other, new AcDbPoint);
    }
    eraseObject(one);
    embedded::forgetHistory(db);
    const AcDbObjectId id = element(kErase | kRefresh, {elsewhere, one, two});
    move(id);
    EXPECT_TRUE(isMarked(two));
    erase(id);
    EXPECT_TRUE(two.isErased());
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(ConnectedInDrawing, AnObjectThatIsOpenElsewhereIsPassedOver) {
    ReportRecorder recorder;
    const AcDbObjectId id = element(kErase, {one, two});
    AcDbEntity* reader = nullptr;
    ASSERT_EQ(acdbOpenObject(reader, one, AcDb::kForRead), Acad::eOk);
    erase(id);
    reader->close();
    EXPECT_EQ(areErased(), (Flags{false, true, false}));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(ConnectedInDrawing, AnObjectThatIsOpenForANoticeIsPassedOver) {
    ReportRecorder recorder;
    const AcDbObjectId id = element(kErase | kRefresh, {one, two});
    AcDbEntity* told = nullptr;
    ASSERT_EQ(acdbOpenObject(told, one, AcDb::kForNotify), Acad::eOk);
    move(id);
    EXPECT_FALSE(told->isModifiedGraphics());
    EXPECT_TRUE(isMarked(two));
    erase(id);
    told->close();
    EXPECT_EQ(areErased(), (Flags{false, true, false}));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(ConnectedInDrawing, ARefusedEraseIsReportedAndTheWalkGoesOn) {
    refuse(two);
    ReportRecorder recorder;
    const AcDbObjectId id = element(kErase, {one, two, three});
    erase(id);
    EXPECT_EQ(areErased(), (Flags{true, false, true}));
    EXPECT_TRUE(connected(id).empty());
    ASSERT_EQ(recorder.size(), 1u);
    ASSERT_FALSE(recorder.at(0).values.empty());
    EXPECT_EQ(recorder.at(0).values[0].value, "ent->erase()");
}

TEST_F(ConnectedInDrawing, WhatAConnectedObjectThrowsEndsTheWalkAndTheSetIsEmptyAllTheSame) {
    refuse(two, true);
    ReportRecorder recorder;
    const BeepRecorder beeps;
    const AcDbObjectId id = element(kErase, {one, two, three});
    erase(id);
    EXPECT_TRUE(id.isErased());
    EXPECT_EQ(areErased(), (Flags{true, false, false}));
    EXPECT_TRUE(connected(id).empty());
    EXPECT_EQ(beeps.lines().size(), 1u);
    EXPECT_EQ(recorder.size(), 0u);
    // None of them stays open.
    for (const AcDbObjectId& left : {two, three})
        clearMark(left);
}

namespace {

// The drawing that is worked on, for a while.
struct WorkedOn {
    explicit WorkedOn(AcDbDatabase* database) : before(services().workingDatabase()) {
        services().setWorkingDatabase(database);
    }
    ~WorkedOn() { services().setWorkingDatabase(before); }
    static AcDbHostApplicationServices& services() { return *acdbHostApplicationServices(); }

    AcDbDatabase* before;
};

} // namespace

// Its own drawing is none, so that the one that is worked on stands in.
TEST_F(ConnectedInDrawing, AnElementOutsideEveryDrawingReachesThoseOfTheOneWorkedOn) {
    for (AcDbDatabase* const database : {static_cast<AcDbDatabase*>(nullptr), &db}) {
        const WorkedOn workedOn(database);
        ReportRecorder recorder;
        const BeepRecorder beeps;
        TestElement alone;
        auto* const plugin = new Plugin_ConnectedElements(kHardPointer);
        alone.addPlugin(plugin);
        plugin->setBehaviour(kErase | kRefresh);
        plugin->add(one);
        plugin->add(AcDbObjectId());
        const bool reaches = database != nullptr;
        EXPECT_EQ(alone.transformBy(AcGeMatrix3d::translation(AcGeVector3d(1, 0, 0))), Acad::eOk);
        EXPECT_EQ(alone.place, AcGePoint3d(1, 0, 0));
        EXPECT_EQ(isMarked(one), reaches);
        EXPECT_EQ(plugin->size(), 2u);
        // The host erases nothing that is in no drawing, but a front end may tell of it.
        EXPECT_EQ(alone.erase(), Acad::eNoDatabase);
        EXPECT_EQ(plugin->size(), 2u);
        alone.triggerOnErase(true);
        EXPECT_EQ(one.isErased(), reaches);
        EXPECT_EQ(plugin->size(), 0u);
        EXPECT_EQ(recorder.size(), 0u);
        EXPECT_TRUE(beeps.lines().empty());
    }
}

TEST_F(ConnectedInDrawing, ElementsThatAreConnectedToEachOtherAllGo) {
    const AcDbObjectId first = element(kErase, {one});
    const AcDbObjectId second = element(kErase, {first, two});
    changeElement(first, [&](TestElement& changed) { connectedOf(changed).add(second); });
    changeElement(second, [&](TestElement& changed) { connectedOf(changed).add(second); });
    erase(first);
    EXPECT_TRUE(first.isErased());
    EXPECT_TRUE(second.isErased());
    EXPECT_EQ(areErased(), (Flags{true, true, false}));
}

TEST_F(ConnectedInDrawing, ElementsInARunningTransactionThatAreConnectedToEachOtherAllGo) {
    const AcDbObjectId first = element(kErase, {one});
    const AcDbObjectId second = element(kErase, {first, two});
    changeElement(first, [&](TestElement& changed) { connectedOf(changed).add(second); });
    db.transactionManager()->startTransaction();
    AcDbObject* object = nullptr;
    ASSERT_EQ(db.transactionManager()->getObject(object, first, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(object->erase(), Acad::eOk);
    db.transactionManager()->endTransaction();
    EXPECT_TRUE(second.isErased());
    EXPECT_EQ(areErased(), (Flags{true, true, false}));
}

TEST_F(ConnectedInDrawing, AnAbortedTransactionBringsTheConnectedBack) {
    const AcDbObjectId id = element(kErase, {one});
    db.transactionManager()->startTransaction();
    AcDbObject* object = nullptr;
    ASSERT_EQ(db.transactionManager()->getObject(object, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(object->erase(), Acad::eOk);
    ASSERT_TRUE(one.isErased());
    db.transactionManager()->abortTransaction();
    EXPECT_FALSE(id.isErased());
    EXPECT_FALSE(one.isErased());
    EXPECT_EQ(connected(id), Ids{one});
}

TEST_F(ConnectedInDrawing, TransformingTheOwnerMarksTheConnected) {
    ReportRecorder recorder;
    const AcDbObjectId id = element(kRefresh, {one, two});
    move(id);
    EXPECT_EQ(areMarked(), (Flags{true, true, false}));
    EXPECT_EQ(connected(id), (Ids{one, two}));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(ConnectedInDrawing, WithoutTheFlagTransformingMarksNothing) {
    for (const unsigned int behaviour : {0u, kErase}) {
        move(element(behaviour, {one, two}));
        EXPECT_EQ(areMarked(), (Flags{false, false, false}));
    }
}

TEST_F(ConnectedInDrawing, MarkingPassesOverWhatIsErasedNullOpenElsewhereOrNoEntity) {
    ReportRecorder recorder;
    eraseObject(one);
    const AcDbObjectId record = putObject(db.namedObjectsDictionaryId(), L"RECORD", new AcDbDictionary);
    const AcDbObjectId id = element(0, {AcDbObjectId(), one, two, record, three});
    AcDbEntity* reader = nullptr;
    ASSERT_EQ(acdbOpenObject(reader, two, AcDb::kForRead), Acad::eOk);
    changeElement(id, [](TestElement& changed) { connectedOf(changed).recordGraphicsModifiedForAll(); });
    reader->close();
    EXPECT_EQ(areMarked(), (Flags{false, false, true}));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(ConnectedInDrawing, MarkingTakesConnectedElementsToo) {
    const AcDbObjectId other = element(0, {});
    clearMark(other);
    move(element(kRefresh, {other, one}));
    EXPECT_TRUE(isMarked(other));
    EXPECT_TRUE(isMarked(one));
}

// A private operation that the class keeps for itself.
namespace {
template <void (Plugin_ConnectedElements::*operation)()>
struct Opened {
    friend void assertAll(Plugin_ConnectedElements& plugin) { (plugin.*operation)(); }
};
void assertAll(Plugin_ConnectedElements& plugin);
template struct Opened<&Plugin_ConnectedElements::assertWriteEnabledForAll>;
} // namespace

TEST_F(ConnectedInDrawing, AssertingForAllOpensEachOfThemForWrite) {
    const AcDbObjectId id = element(0, {one, two, AcDbObjectId()});
    eraseObject(two);
    clearMark(one);
    embedded::beginCommand(db);
    // A step of the history comes of it, since the state is taken down before a first change.
    changeElement(id, [](TestElement& changed) { assertAll(connectedOf(changed)); });
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, one, AcDb::kForRead), Acad::eOk);
    entity->close();
    ASSERT_TRUE(embedded::undo(db));
    // Without that step the making of the objects would have been undone.
    EXPECT_FALSE(one.isErased());
    EXPECT_TRUE(two.isErased());
}

// Filing and cloning.

TEST_F(ConnectedInDrawing, TheIdsComeBackFromAFileAndProxiesAmongThemAreLeftAlone) {
    const AcDbObjectId other = putEntity(db, [] {
        auto* const made = new OtherElement;
        made->setNodDatabaseId(AcDbObjectId(), L"ASDWG");
        return made;
    }());
    auto* const point = new AcDbPoint;
    const AcDbObjectId plain = putEntity(db, point);
    const AcDbObjectId id = element(kErase | kRefresh, {other, plain}, kSoftPointer);
    for (const AcDbObjectId& watched : {one, two, three})
        eraseObject(watched);
    const std::wstring file = platform::joinPath(platform::makeTemporaryFolder(), L"connected.dwg");
    ASSERT_EQ(db.saveAs(file.c_str()), Acad::eOk) << embedded::lastFileError();

    unregisterOtherElement();
    ReportRecorder recorder;
    AcDbDatabase back(false);
    ASSERT_EQ(back.readDwgFile(file.c_str()), Acad::eOk) << embedded::lastFileError();
    const auto inBack = [&back](AcDbObjectId of) {
        AcDbObjectId found;
        EXPECT_EQ(back.getAcDbObjectId(found, false, of.handle()), Acad::eOk);
        return found;
    };
    const AcDbObjectId owner = inBack(id);
    EXPECT_EQ(connected(owner), (Ids{inBack(other), inBack(plain)}));
    AcDbEntity* proxy = nullptr;
    ASSERT_EQ(acdbOpenObject(proxy, inBack(other), AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(proxy->isAProxy());
    proxy->close();

    EXPECT_EQ(recorder.conditions(), Texts{"m_ownership == tmpOwnership"}) << "made with hard pointers";
    recorder.clear();
    move(owner);
    EXPECT_FALSE(isMarked(inBack(other)));
    EXPECT_TRUE(isMarked(inBack(plain)));
    erase(owner);
    EXPECT_FALSE(inBack(other).isErased());
    EXPECT_TRUE(inBack(plain).isErased());
    EXPECT_EQ(recorder.size(), 0u);
    platform::removeFile(file);
}

TEST_F(ConnectedInDrawing, ADeepCloneIsConnectedToTheClones) {
    const ReportRecorder ofTheOwnership;
    const AcDbObjectId plain = putEntity(db, new AcDbPoint);
    const AcDbObjectId left = putEntity(db, new AcDbPoint);
    const AcDbObjectId id = element(0, {plain, left}, kSoftPointer);
    AcDbObjectIdArray ids;
    ids.append(id);
    ids.append(plain);
    AcDbIdMapping map;
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
    const AcDbObjectId space = entity->blockId();
    entity->close();
    ASSERT_EQ(db.deepCloneObjects(ids, space, map), Acad::eOk);
    const auto cloneOf = [&map](AcDbObjectId of) {
        AcDbIdPair pair(of, AcDbObjectId(), false);
        EXPECT_TRUE(map.compute(pair));
        return pair.value();
    };
    const AcDbObjectId clone = cloneOf(id);
    ASSERT_FALSE(clone.isNull());
    EXPECT_EQ(connected(clone), (Ids{left, cloneOf(plain)}));
    EXPECT_EQ(connected(id), (Ids{plain, left}));
}

TEST_F(ConnectedInDrawing, HardPointersBringTheConnectedIntoAnotherDrawing) {
    const ReportRecorder ofTheOwnership;
    const AcDbObjectId plain = putEntity(db, new AcDbPoint);
    for (const Ownership ownership : {kHardPointer, kSoftPointer}) {
        const AcDbObjectId id = element(0, {plain}, ownership);
        AcDbDatabase target(true);
        AcDbObjectIdArray ids;
        ids.append(id);
        AcDbBlockTable* blocks = nullptr;
        ASSERT_EQ(target.getBlockTable(blocks, AcDb::kForRead), Acad::eOk);
        AcDbObjectId space;
        ASSERT_EQ(blocks->getAt(ACDB_MODEL_SPACE, space), Acad::eOk);
        blocks->close();
        AcDbIdMapping map;
        ASSERT_EQ(db.wblockCloneObjects(ids, space, map, AcDb::kDrcIgnore), Acad::eOk);
        AcDbIdPair pair(id, AcDbObjectId(), false);
        ASSERT_TRUE(map.compute(pair));
        const Ids found = connected(pair.value());
        ASSERT_EQ(found.size(), 1u);
        if (ownership == kHardPointer) {
            EXPECT_EQ(found[0].database(), &target);
            EXPECT_EQ(found[0].objectClass(), AcDbPoint::desc());
        } else {
            EXPECT_TRUE(found[0].isNull());
        }
    }
}
