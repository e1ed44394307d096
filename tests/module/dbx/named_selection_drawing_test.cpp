// Selections in drawings on disk and in clones.

#include "dbx/NamedSelection.h"

#include "dbents.h"
#include "dbidmap.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "embedded/inventory.h"
#include "embedded/session.h"
#include "platform/files.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

using orv::ORV_NamedSelection;
using testing_support::entryOf;
using testing_support::eraseObject;
using testing_support::putObject;
using testing_support::ReportRecorder;

namespace {

using Ids = std::set<AcDbObjectId>;
using Names = std::set<AcString>;

constexpr const wchar_t* kEntry = L"SELECTION";

AcDbObjectId modelSpaceOf(AcDbDatabase& db) {
    AcDbBlockTable* table = nullptr;
    EXPECT_EQ(db.getBlockTable(table, AcDb::kForRead), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(table->getAt(ACDB_MODEL_SPACE, id), Acad::eOk);
    table->close();
    return id;
}

AcDbObjectId addPoint(AcDbDatabase& db) {
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(acdbOpenObject(space, modelSpaceOf(db), AcDb::kForWrite), Acad::eOk);
    auto* const point = new AcDbPoint;
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, point), Acad::eOk);
    point->close();
    space->close();
    return id;
}

AcDbObjectIdArray arrayOf(std::initializer_list<AcDbObjectId> ids) {
    AcDbObjectIdArray all;
    for (const AcDbObjectId& id : ids)
        all.append(id);
    return all;
}

// The ids of another drawing at the same handles.
Ids sameHandles(AcDbDatabase& db, const Ids& ids) {
    Ids found;
    for (const AcDbObjectId& id : ids) {
        AcDbObjectId same;
        EXPECT_EQ(db.getAcDbObjectId(same, true, id.handle()), Acad::eOk);
        found.insert(same);
    }
    return found;
}

AcDbObjectId cloneOf(const AcDbIdMapping& mapping, const AcDbObjectId& id) {
    AcDbIdPair pair;
    pair.setKey(id);
    EXPECT_TRUE(mapping.compute(pair));
    return pair.value();
}

// Files a version that does not exist yet.
class NewerSelection : public ORV_NamedSelection {
public:
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        AcDbObject::dwgOutFields(filer);
        filer->writeInt32(kVersion + 1);
        return filer->writeString(L"what comes then");
    }
};

class NamedSelectionDrawing : public testing::Test {
protected:
    NamedSelectionDrawing() {
        a = addPoint(m_db);
        b = addPoint(m_db);
        c = addPoint(m_db);
    }
    AcDbObjectId put(ORV_NamedSelection* selection) {
        return putObject(m_db.namedObjectsDictionaryId(), kEntry, selection);
    }
    AcDbObjectId put(const Ids& objects, const Ids& members, const Names& names) {
        auto* const selection = new ORV_NamedSelection;
        selection->m_objects = objects;
        selection->m_members = members;
        selection->m_names = names;
        return put(selection);
    }
    // The drawing after a way over the disk.
    AcDbDatabase& reopened() {
        const std::wstring file = platform::joinPath(platform::makeTemporaryFolder(), L"d.dwg");
        EXPECT_EQ(m_db.saveAs(file.c_str()), Acad::eOk) << embedded::lastFileError();
        m_back = std::make_unique<AcDbDatabase>(false);
        EXPECT_EQ(m_back->readDwgFile(file.c_str()), Acad::eOk) << embedded::lastFileError();
        return *m_back;
    }
    static AcDbObjectId selectionIn(AcDbDatabase& db) {
        return entryOf(db.namedObjectsDictionaryId(), kEntry);
    }
    static void expectSelection(AcDbObjectId id, const Ids& objects, const Ids& members, const Names& names) {
        ORV_NamedSelection* selection = nullptr;
        ASSERT_EQ(acdbOpenObject(selection, id), Acad::eOk);
        EXPECT_EQ(selection->m_objects, objects);
        EXPECT_EQ(selection->m_members, members);
        EXPECT_EQ(selection->m_names, names);
        selection->close();
    }

    AcDbDatabase m_db{true};
    AcDbObjectId a, b, c;
    std::unique_ptr<AcDbDatabase> m_back;
};

} // namespace

TEST_F(NamedSelectionDrawing, ComesBackFromTheDiskWithItsErasedIds) {
    put({a, b, c}, {b, c}, {L"beams", L"Tr\u00e4ger"});
    eraseObject(b);
    AcDbDatabase& back = reopened();
    expectSelection(selectionIn(back), sameHandles(back, {a, b, c}), sameHandles(back, {b, c}),
                    {L"beams", L"Tr\u00e4ger"});
    AcDbObject* erased = nullptr;
    EXPECT_NE(acdbOpenObject(erased, *sameHandles(back, {b}).begin()), Acad::eOk)
        << "an id whose object is not in the file";
}

TEST_F(NamedSelectionDrawing, AnEmptyOneComesBackEmpty) {
    put({}, {}, {});
    AcDbDatabase& back = reopened();
    expectSelection(selectionIn(back), {}, {}, {});
}

TEST_F(NamedSelectionDrawing, ASaveOfTheReopenedDrawingKeepsIt) {
    put({a, b}, {c}, {L"n"});
    eraseObject(a);
    AcDbDatabase& back = reopened();
    ORV_NamedSelection* selection = nullptr;
    ASSERT_EQ(acdbOpenObject(selection, selectionIn(back), AcDb::kForWrite), Acad::eOk);
    selection->assertWriteEnabled();
    selection->m_names.insert(L"m");
    selection->close();
    const std::wstring file = platform::joinPath(platform::makeTemporaryFolder(), L"e.dwg");
    ASSERT_EQ(back.saveAs(file.c_str()), Acad::eOk);
    AcDbDatabase third(false);
    ASSERT_EQ(third.readDwgFile(file.c_str()), Acad::eOk);
    expectSelection(selectionIn(third), sameHandles(third, {a, b}), sameHandles(third, {c}), {L"m", L"n"});
}

TEST_F(NamedSelectionDrawing, IsInTheClassTableUnderItsRow) {
    put({a}, {}, {});
    bool found = false;
    for (const embedded::ClassTableRow& row : embedded::classTable(reopened()))
        if (row.className == L"ORV_NamedSelection") {
            found = true;
            EXPECT_EQ(row.dxfName, L"ORV_NAMED_SELECTION");
            EXPECT_EQ(row.applicationName, L"ORV_OE_LOADER_191");
            EXPECT_EQ(row.proxyFlags, 0);
            EXPECT_FALSE(row.isEntity);
        }
    EXPECT_TRUE(found);
}

TEST_F(NamedSelectionDrawing, ANewerVersionStaysAProxy) {
    put(new NewerSelection);
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, selectionIn(reopened())), Acad::eOk);
    ASSERT_NE(AcDbProxyObject::cast(object), nullptr);
    EXPECT_STREQ(AcDbProxyObject::cast(object)->originalClassName(), L"ORV_NamedSelection");
    object->close();
}

TEST_F(NamedSelectionDrawing, AChangeIsTakenBackByUndo) {
    const AcDbObjectId id = put({a}, {b}, {L"n"});
    m_db.startUndoRecord();
    ORV_NamedSelection* selection = nullptr;
    ASSERT_EQ(acdbOpenObject(selection, id, AcDb::kForWrite), Acad::eOk);
    selection->assertWriteEnabled();
    selection->m_objects = {c};
    selection->m_members.clear();
    selection->m_names = {L"m", L"o"};
    selection->close();
    ASSERT_TRUE(embedded::undo(m_db));
    expectSelection(id, {a}, {b}, {L"n"});
}

TEST_F(NamedSelectionDrawing, ACloneInAnotherDrawingSelectsTheClones) {
    const AcDbObjectId id = put({a, b}, {b, c}, {L"n"});
    AcDbDatabase target(true);
    AcDbIdMapping mapping;
    ASSERT_EQ(
        m_db.wblockCloneObjects(arrayOf({a, b, c}), modelSpaceOf(target), mapping, AcDb::kDrcIgnore, true),
        Acad::eOk);
    ASSERT_EQ(
        m_db.wblockCloneObjects(arrayOf({id}), target.namedObjectsDictionaryId(), mapping, AcDb::kDrcIgnore),
        Acad::eOk);
    const AcDbObjectId a2 = cloneOf(mapping, a), b2 = cloneOf(mapping, b), c2 = cloneOf(mapping, c);
    EXPECT_EQ(a2.database(), &target);
    expectSelection(cloneOf(mapping, id), {a2, b2}, {b2, c2}, {L"n"});
    expectSelection(id, {a, b}, {b, c}, {L"n"});
}

TEST_F(NamedSelectionDrawing, ACloneInTheSameDrawingSelectsClonesAndWhatWasNotCloned) {
    const AcDbObjectId id = put({a, b}, {c}, {L"n"});
    AcDbIdMapping mapping;
    ASSERT_EQ(m_db.deepCloneObjects(arrayOf({a}), modelSpaceOf(m_db), mapping, true), Acad::eOk);
    ASSERT_EQ(m_db.deepCloneObjects(arrayOf({id}), m_db.namedObjectsDictionaryId(), mapping), Acad::eOk);
    expectSelection(cloneOf(mapping, id), {cloneOf(mapping, a), b}, {c}, {L"n"});
}

// What stays behind is null in the other drawing, and a null id ends the list of objects: the rest is no
// selection any more.
TEST_F(NamedSelectionDrawing, ACloneInAnotherDrawingWithoutItsObjectsIsRefused) {
    ReportRecorder reports;
    const AcDbObjectId id = put({a, b}, {}, {L"n"});
    AcDbDatabase target(true);
    AcDbIdMapping mapping;
    EXPECT_EQ(
        m_db.wblockCloneObjects(arrayOf({id}), target.namedObjectsDictionaryId(), mapping, AcDb::kDrcIgnore),
        Acad::eEndOfObject);
    EXPECT_TRUE(selectionIn(target).isNull());
    expectSelection(id, {a, b}, {}, {L"n"});
}

// An erased member is not cloned, and ends the list of the clone likewise.
TEST_F(NamedSelectionDrawing, AnErasedMemberKeepsACloneOutOfAnotherDrawing) {
    ReportRecorder reports;
    const AcDbObjectId id = put({a, b, c}, {}, {L"n"});
    eraseObject(b);
    AcDbDatabase target(true);
    AcDbIdMapping mapping;
    ASSERT_EQ(m_db.wblockCloneObjects(arrayOf({a, c}), modelSpaceOf(target), mapping, AcDb::kDrcIgnore, true),
              Acad::eOk);
    EXPECT_EQ(
        m_db.wblockCloneObjects(arrayOf({id}), target.namedObjectsDictionaryId(), mapping, AcDb::kDrcIgnore),
        Acad::eEndOfObject);
    EXPECT_TRUE(selectionIn(target).isNull());
}

TEST_F(NamedSelectionDrawing, ANewDrawingOfTheWholeOneHasNoSelections) {
    put({a, b}, {}, {L"n"});
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(m_db.wblock(made), Acad::eOk);
    const std::unique_ptr<AcDbDatabase> owned(made);
    EXPECT_TRUE(selectionIn(*made).isNull());
}
