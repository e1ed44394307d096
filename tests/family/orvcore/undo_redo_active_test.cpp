#include "aced.h"
#include "dbdict.h"
#include "dbsymtb.h"
#include "dbtrans.h"
#include "embedded/host_start.h"
#include "embedded/session.h"
#include "orvcore/transaction_manager.h"
#include "rxclass.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

bool active() { return ORV_CDBTransactionManager::getUndoRedoActive(); }

// What was called, with a star if an undo or redo ran then.
std::vector<std::string> s_calls;
void note(const char* what) { s_calls.push_back(std::string(what) + (active() ? "*" : "")); }

// An entity with a number that it undoes itself.
class Watcher : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(Watcher);

    void setNumber(Adesk::Int32 number) {
        assertWriteEnabled(false);
        if (AcDbDwgFiler* filer = undoFiler()) {
            filer->writeAddress(desc());
            filer->writeInt32(m_number);
        }
        m_number = number;
    }
    Adesk::Int32 number() const { return m_number; }

    Acad::ErrorStatus applyPartialUndo(AcDbDwgFiler* filer, AcRxClass* classOfRecord) override {
        note("applyPartialUndo");
        EXPECT_EQ(classOfRecord, desc());
        Adesk::Int32 number = 0;
        filer->readInt32(&number);
        setNumber(number);
        return Acad::eOk;
    }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        note("dwgInFields");
        return AcDbEntity::dwgInFields(filer);
    }

protected:
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override {
        note(erasing ? "erase" : "unerase");
        if (!active())
            assertWriteEnabled();
        return AcDbEntity::subErase(erasing);
    }

private:
    Adesk::Int32 m_number = 0;
};

ACRX_DXF_DEFINE_MEMBERS(Watcher, AcDbEntity, AcDb::kDHL_1015, 0, 0, UNDOWATCHER, FamilyTests)

class Listener : public AcDbDatabaseReactor {
public:
    void objectErased(const AcDbDatabase*, const AcDbObject* object, Adesk::Boolean erasing) override {
        if (object->isA() == Watcher::desc())
            note(erasing ? "told erased" : "told unerased");
    }
    void objectUnAppended(const AcDbDatabase*, const AcDbObject*) override { note("told unappended"); }
    void objectReAppended(const AcDbDatabase*, const AcDbObject*) override { note("told reappended"); }
};

class UndoRedoActive : public testing::Test {
protected:
    void SetUp() override {
        embedded::startHost();
        Watcher::rxInit();
        acrxBuildClassHierarchy();
        m_database = std::make_unique<AcDbDatabase>();
        AcDbBlockTable* table = nullptr;
        AcDbBlockTableRecord* space = nullptr;
        ASSERT_EQ(m_database->getBlockTable(table, AcDb::kForRead), Acad::eOk);
        ASSERT_EQ(table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite), Acad::eOk);
        table->close();
        auto* watcher = new Watcher;
        ASSERT_EQ(space->appendAcDbEntity(m_id, watcher), Acad::eOk);
        watcher->close();
        space->close();
        m_database->addReactor(&m_listener);
        s_calls.clear();
    }

    void TearDown() override { m_database.reset(); }

    void erase(bool erasing) {
        Watcher* watcher = nullptr;
        ASSERT_EQ(acdbOpenObject(watcher, m_id, AcDb::kForWrite, true), Acad::eOk);
        ASSERT_EQ(watcher->erase(erasing), Acad::eOk);
        watcher->close();
    }

    std::unique_ptr<AcDbDatabase> m_database;
    AcDbObjectId m_id;
    Listener m_listener;
};

using Calls = std::vector<std::string>;

} // namespace

TEST_F(UndoRedoActive, IsNotSoOutside) {
    EXPECT_FALSE(active());
    erase(true);
    EXPECT_EQ(s_calls, (Calls{"erase", "told erased"}));
    EXPECT_FALSE(active());
}

TEST_F(UndoRedoActive, IsSoWhenAnUndoOrRedoErasesOrBringsBack) {
    embedded::beginCommand(*m_database);
    erase(true);
    s_calls.clear();
    ASSERT_TRUE(embedded::undo(*m_database));
    EXPECT_FALSE(active());
    EXPECT_EQ(s_calls, (Calls{"unerase*", "told unerased*", "dwgInFields*"}));
    s_calls.clear();
    ASSERT_TRUE(embedded::redo(*m_database));
    EXPECT_FALSE(active());
    EXPECT_EQ(s_calls, (Calls{"dwgInFields*", "erase*", "told erased*"}));
}

TEST_F(UndoRedoActive, IsSoInAPartialUndo) {
    embedded::beginCommand(*m_database);
    Watcher* watcher = nullptr;
    ASSERT_EQ(acdbOpenObject(watcher, m_id, AcDb::kForWrite), Acad::eOk);
    watcher->setNumber(7);
    watcher->close();
    ASSERT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(s_calls, (Calls{"applyPartialUndo*"}));
    ASSERT_EQ(acdbOpenObject(watcher, m_id), Acad::eOk);
    EXPECT_EQ(watcher->number(), 0);
    watcher->close();
    ASSERT_TRUE(embedded::redo(*m_database));
    ASSERT_EQ(acdbOpenObject(watcher, m_id), Acad::eOk);
    EXPECT_EQ(watcher->number(), 7);
    watcher->close();
}

TEST_F(UndoRedoActive, IsSoWhenAnAdditionIsTakenBack) {
    embedded::undo(*m_database);
    EXPECT_NE(std::find(s_calls.begin(), s_calls.end(), "told unappended*"), s_calls.end());
    s_calls.clear();
    embedded::redo(*m_database);
    EXPECT_NE(std::find(s_calls.begin(), s_calls.end(), "told reappended*"), s_calls.end());
}

TEST_F(UndoRedoActive, IsNotSoWhenATransactionIsGivenUp) {
    AcDbTransactionManager* manager = m_database->transactionManager();
    manager->startTransaction();
    erase(true);
    s_calls.clear();
    ASSERT_EQ(manager->abortTransaction(), Acad::eOk);
    EXPECT_EQ(s_calls, (Calls{"told unerased", "dwgInFields"}));
    EXPECT_FALSE(m_id.isErased());
}

TEST_F(UndoRedoActive, EndsWithAnUndoThatHadNothingToDo) {
    embedded::forgetHistory(*m_database);
    EXPECT_FALSE(embedded::undo(*m_database));
    EXPECT_FALSE(active());
    EXPECT_FALSE(embedded::redo(*m_database));
    EXPECT_FALSE(active());
}

TEST_F(UndoRedoActive, IsToldAsACommandOfTheEditor) {
    class Editor : public AcEditorReactor {
    public:
        Editor() { acedEditor->addReactor(this); }
        ~Editor() override { acedEditor->removeReactor(this); }
        void commandWillStart(const ACHAR* name) override { heard += std::wstring(L"+") + name; }
        void commandEnded(const ACHAR* name) override { heard += std::wstring(L"-") + name; }
        void commandFailed(const ACHAR* name) override { heard += std::wstring(L"!") + name; }
        std::wstring heard;
    } editor;
    embedded::beginCommand(*m_database);
    erase(true);
    embedded::undo(*m_database);
    embedded::redo(*m_database);
    embedded::redo(*m_database);
    EXPECT_EQ(editor.heard, L"+U-U+REDO-REDO+REDO!REDO");
}

TEST_F(UndoRedoActive, AnUndoWithinAnUndoIsRefused) {
    class Meddler : public AcDbDatabaseReactor {
    public:
        explicit Meddler(AcDbDatabase& database) : m_database(database) {}
        void objectErased(const AcDbDatabase*, const AcDbObject*, Adesk::Boolean) override {
            if (active()) {
                refused = !embedded::undo(m_database) && !embedded::redo(m_database);
                stillActive = active();
            }
        }
        bool refused = false, stillActive = false;

    private:
        AcDbDatabase& m_database;
    } meddler(*m_database);
    m_database->addReactor(&meddler);
    embedded::beginCommand(*m_database);
    erase(true);
    ASSERT_TRUE(embedded::undo(*m_database));
    EXPECT_TRUE(meddler.refused);
    EXPECT_TRUE(meddler.stillActive);
    EXPECT_FALSE(active());
    EXPECT_FALSE(m_id.isErased());
    m_database->removeReactor(&meddler);
}
