#include "arx/dictionary_utils.h"

#include "dbtrans.h"
#include "dbx/cdb/cdbrec.h"
#include "embedded/session.h"
#include "orvcore/transaction_manager.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

using orv::acad::get_subDict_id;
using namespace testing_support;

namespace {

class SubDict : public testing::Test {
protected:
    SubDict() : father(subDictionary(db.namedObjectsDictionaryId(), L"FATHER")) {}

    // An entry whose object was erased and whose history is gone.
    AcDbObjectId staleEntry(const wchar_t* name) {
        const AcDbObjectId id = subDictionary(father, name);
        eraseObject(id);
        embedded::forgetHistory(db);
        return id;
    }
    bool fatherIsWritable(ORV_CDBTransactionManager& manager) {
        AcDbObject* object = nullptr;
        manager.getObject(object, father, AcDb::kForRead, false, true);
        return object->isWriteEnabled();
    }

    AcDbDatabase db{true};
    AcDbObjectId father;
};

} // namespace

TEST_F(SubDict, AnExistingOneIsFoundAndTheFatherStaysReadOnly) {
    const AcDbObjectId id = subDictionary(father, L"A");
    ORV_CDBTransactionManager manager(&db, false);
    EXPECT_EQ(get_subDict_id(father, L"A", true, &db), id);
    EXPECT_FALSE(fatherIsWritable(manager));
}

TEST_F(SubDict, AMissingOneIsNullUnlessItIsToBeMade) {
    EXPECT_TRUE(get_subDict_id(father, L"A", false, &db).isNull());
    EXPECT_TRUE(namesOf(father).empty());
    ORV_CDBTransactionManager manager(&db, false);
    const AcDbObjectId id = get_subDict_id(father, L"A", true, &db);
    EXPECT_FALSE(id.isNull());
    EXPECT_TRUE(fatherIsWritable(manager));
    EXPECT_EQ(get_subDict_id(father, L"A", false, &db), id);
    AcDbObject* made = nullptr;
    EXPECT_EQ(manager.getObject(made, id, AcDb::kForWrite, false, true), Acad::eOk);
    EXPECT_NE(AcDbDictionary::cast(made), nullptr);
    EXPECT_EQ(made->ownerId(), father);
}

TEST_F(SubDict, AStaleEntryIsReplacedByANewDictionary) {
    ReportRecorder recorder;
    const AcDbObjectId stale = staleEntry(L"A");
    ASSERT_EQ(entryOf(father, L"A"), stale);
    const AcDbObjectId id = get_subDict_id(father, L"A", true, &db);
    EXPECT_FALSE(id.isNull());
    EXPECT_NE(id, stale);
    EXPECT_EQ(entryOf(father, L"A"), id);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(SubDict, AStaleEntryThatIsNotToBeReplacedIsRemovedAndItsOldIdComesBack) {
    const AcDbObjectId stale = staleEntry(L"A");
    EXPECT_EQ(get_subDict_id(father, L"A", false, &db), stale);
    EXPECT_TRUE(namesOf(father).empty());
    ORV_CDBTransactionManager manager(&db, false);
    AcDbObject* object = nullptr;
    EXPECT_EQ(static_cast<int>(manager.getObject(object, stale, AcDb::kForRead, false, true)), 81);
    EXPECT_TRUE(get_subDict_id(father, L"A", false, &db).isNull());
}

TEST_F(SubDict, AFatherThatIsNoDictionaryIsReported) {
    ReportRecorder recorder;
    AcDbObjectId none;
    EXPECT_TRUE(get_subDict_id(none, L"A", true, &db).isNull());
    AcDbObjectId record = putObject(father, L"R", new orv::ORV_CdbRecord("x", 1));
    EXPECT_TRUE(get_subDict_id(record, L"A", true, &db).isNull());
    EXPECT_EQ(recorder.conditions(), (Texts{"pDictFather", "pDictFather"}));
}

TEST_F(SubDict, ClosesWhatItOpened) {
    get_subDict_id(father, L"A", true, &db);
    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenObject(object, father, AcDb::kForWrite), Acad::eOk);
    object->close();
    EXPECT_EQ(acdbOpenObject(object, entryOf(father, L"A"), AcDb::kForWrite), Acad::eOk);
    object->close();
    EXPECT_EQ(db.transactionManager()->numActiveTransactions(), 0);
}

TEST_F(SubDict, AFatherThatSomebodyElseReadsGetsNoNewEntry) {
    AcDbObject* reader = nullptr;
    ASSERT_EQ(acdbOpenObject(reader, father, AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(get_subDict_id(father, L"A", true, &db).isNull());
    reader->close();
    EXPECT_TRUE(namesOf(father).empty());
    EXPECT_FALSE(get_subDict_id(father, L"A", true, &db).isNull());
}
