#include "db_fixture.h"
#include "dbtrans.h"

namespace {

using Transactions = DbFixture;

TEST_F(Transactions, AnObjectStaysOpenUntilTheOutermostEnds) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbTransactionManager* manager = m_database->transactionManager();
    manager->startTransaction();
    manager->startTransaction();
    AcDbObject* object = nullptr;
    ASSERT_EQ(manager->getObject(object, id), Acad::eOk);
    EXPECT_EQ(manager->numActiveTransactions(), 2);
    EXPECT_EQ(manager->endTransaction(), Acad::eOk);
    EXPECT_TRUE(object->isReadEnabled());
    EXPECT_EQ(object->close(), Acad::eOk);
    EXPECT_TRUE(object->isReadEnabled()) << "a transaction's object is not closed by hand";
    EXPECT_EQ(manager->endTransaction(), Acad::eOk);
    EXPECT_FALSE(object->isReadEnabled());
    EXPECT_EQ(manager->endTransaction(), Acad::eNoActiveTransactions);
    EXPECT_EQ(manager->getObject(object, id), Acad::eNoActiveTransactions);
}

TEST_F(Transactions, AReadBecomesAWriteInPlace) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbTransactionManager* manager = m_database->transactionManager();
    manager->startTransaction();
    AcDbObject* read = nullptr;
    AcDbObject* write = nullptr;
    ASSERT_EQ(manager->getObject(read, id), Acad::eOk);
    ASSERT_EQ(manager->getObject(write, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(read, write);
    EXPECT_TRUE(read->isWriteEnabled());
    ASSERT_EQ(manager->getObject(read, id), Acad::eOk) << "reading what is written here is no conflict";
    manager->endTransaction();
    EXPECT_FALSE(write->isWriteEnabled());
}

TEST_F(Transactions, AnotherReaderStandsInTheWayOfAWrite) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbObject* reader = nullptr;
    ASSERT_EQ(acdbOpenObject(reader, id), Acad::eOk);
    AcDbTransactionManager* manager = m_database->transactionManager();
    manager->startTransaction();
    AcDbObject* object = nullptr;
    EXPECT_EQ(manager->getObject(object, id, AcDb::kForWrite), Acad::eWasOpenForRead);
    ASSERT_EQ(manager->getObject(object, id), Acad::eOk);
    EXPECT_EQ(manager->getObject(object, id, AcDb::kForWrite), Acad::eWasOpenForRead);
    reader->close();
    EXPECT_EQ(manager->getObject(object, id, AcDb::kForWrite), Acad::eOk);
    manager->endTransaction();
}

TEST_F(Transactions, AnInnerAbortTakesBackWhatWasDoneSinceTheInnerStart) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbTransactionManager* manager = m_database->transactionManager();
    manager->startTransaction();
    AcDbObject* object = nullptr;
    ASSERT_EQ(manager->getObject(object, id, AcDb::kForWrite), Acad::eOk);
    static_cast<TestRecord*>(object)->setText(L"outer");
    manager->startTransaction();
    static_cast<TestRecord*>(object)->setText(L"inner");
    EXPECT_EQ(manager->abortTransaction(), Acad::eOk);
    EXPECT_EQ(static_cast<TestRecord*>(object)->text(), L"outer");
    EXPECT_EQ(manager->abortTransaction(), Acad::eOk);
    EXPECT_EQ(content(), (std::vector<std::pair<std::wstring, std::wstring>>{{L"A", L"a"}}));
}

TEST_F(Transactions, AnAbortErasesWhatWasMadeAndBringsBackWhatWasErased) {
    const AcDbObjectId old = put(L"A", L"a");
    AcDbTransactionManager* manager = m_database->transactionManager();
    manager->startTransaction();
    AcDbObject* object = nullptr;
    ASSERT_EQ(manager->getObject(object, old, AcDb::kForWrite), Acad::eOk);
    object->erase();
    const AcDbObjectId fresh = put(L"B", L"b");
    EXPECT_EQ(manager->abortTransaction(), Acad::eOk);
    EXPECT_TRUE(fresh.isErased());
    EXPECT_FALSE(old.isErased());
    EXPECT_EQ(content(), (std::vector<std::pair<std::wstring, std::wstring>>{{L"A", L"a"}}));
}

TEST_F(Transactions, AnErasedObjectIsRefusedWhileTheTransactionHoldsIt) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbTransactionManager* manager = m_database->transactionManager();
    manager->startTransaction();
    AcDbObject* object = nullptr;
    ASSERT_EQ(manager->getObject(object, id, AcDb::kForWrite), Acad::eOk);
    object->erase();
    AcDbObject* again = nullptr;
    EXPECT_EQ(manager->getObject(again, id), Acad::eWasErased);
    EXPECT_EQ(manager->getObject(again, id, AcDb::kForRead, true), Acad::eOk);
    manager->endTransaction();
}

} // namespace
