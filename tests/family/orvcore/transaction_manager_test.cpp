#include "orvcore/transaction_manager.h"

#include "dbapserv.h"
#include "dbdict.h"
#include "dbproxy.h"
#include "dbtrans.h"
#include "embedded/session.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

AcDbObjectId addDictionary(AcDbDatabase& db, const wchar_t* name) {
    AcDbDictionary* named = nullptr;
    EXPECT_EQ(db.getNamedObjectsDictionary(named, AcDb::kForWrite), Acad::eOk);
    auto* const added = new AcDbDictionary;
    AcDbObjectId id;
    EXPECT_EQ(named->setAt(name, added, id), Acad::eOk);
    added->close();
    named->close();
    return id;
}

int depth(AcDbDatabase& db) { return db.transactionManager()->numActiveTransactions(); }

} // namespace

TEST(TransactionManager, StartsOneHostTransactionHoweverDeepItNests) {
    AcDbDatabase db(true);
    {
        ORV_CDBTransactionManager outer(&db, false);
        EXPECT_EQ(depth(db), 1);
        {
            ORV_CDBTransactionManager inner(&db, false);
            ORV_CDBTransactionManager innermost(&db, false);
            EXPECT_EQ(depth(db), 1);
        }
        EXPECT_EQ(depth(db), 1);
    }
    EXPECT_EQ(depth(db), 0);
}

TEST(TransactionManager, StartsOneOfItsOwnWhenAskedTo) {
    AcDbDatabase db(true);
    ORV_CDBTransactionManager outer(&db, false);
    {
        ORV_CDBTransactionManager inner(&db, true);
        EXPECT_EQ(depth(db), 2);
    }
    EXPECT_EQ(depth(db), 1);
}

TEST(TransactionManager, AnObjectStaysUsableUntilTheOutermostEnds) {
    AcDbDatabase db(true);
    const AcDbObjectId id = addDictionary(db, L"D");
    AcDbObject* object = nullptr;
    {
        ORV_CDBTransactionManager outer(&db, false);
        {
            ORV_CDBTransactionManager inner(&db, false);
            ASSERT_EQ(inner.getObject(object, id, AcDb::kForRead, false, true), Acad::eOk);
        }
        EXPECT_TRUE(object->isReadEnabled());
        AcDbObject* again = nullptr;
        ASSERT_EQ(outer.getObject(again, id, AcDb::kForWrite, false, true), Acad::eOk);
        EXPECT_EQ(again, object);
        EXPECT_TRUE(object->isWriteEnabled());
    }
    EXPECT_FALSE(object->isReadEnabled());
}

TEST(TransactionManager, DatabasesHaveTheirOwnNesting) {
    AcDbDatabase one(true);
    AcDbDatabase two(true);
    ORV_CDBTransactionManager first(&one, false);
    {
        ORV_CDBTransactionManager second(&two, false);
        ORV_CDBTransactionManager third(&one, false);
        EXPECT_EQ(depth(one), 1);
        EXPECT_EQ(depth(two), 1);
    }
    EXPECT_EQ(depth(one), 1);
    EXPECT_EQ(depth(two), 0);
}

TEST(TransactionManager, ManagersMayEndInAnotherOrderThanTheyBegan) {
    AcDbDatabase one(true);
    AcDbDatabase two(true);
    auto first = std::make_unique<ORV_CDBTransactionManager>(&one, false);
    auto second = std::make_unique<ORV_CDBTransactionManager>(&two, false);
    first.reset();
    EXPECT_EQ(depth(one), 0);
    EXPECT_EQ(depth(two), 1);
    second.reset();
    EXPECT_EQ(depth(two), 0);
    ORV_CDBTransactionManager again(&one, false);
    EXPECT_EQ(depth(one), 1);
}

TEST(TransactionManager, NullMeansTheWorkingDatabase) {
    AcDbDatabase db(true);
    acdbHostApplicationServices()->setWorkingDatabase(&db);
    {
        ORV_CDBTransactionManager manager(nullptr, false);
        EXPECT_EQ(depth(db), 1);
    }
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    ORV_CDBTransactionManager manager(nullptr, false);
    AcDbObject* object = nullptr;
    EXPECT_EQ(manager.getObject(object, db.namedObjectsDictionaryId(), AcDb::kForRead, false, true),
              Acad::eNoDatabase);
    EXPECT_EQ(object, nullptr);
}

TEST(TransactionManager, RefusesErasedObjectsUnlessAskedForThem) {
    AcDbDatabase db(true);
    const AcDbObjectId id = addDictionary(db, L"D");
    embedded::beginCommand(db);
    ORV_CDBTransactionManager manager(&db, false);
    AcDbObject* object = nullptr;
    ASSERT_EQ(manager.getObject(object, id, AcDb::kForWrite, false, true), Acad::eOk);
    object->erase();
    EXPECT_EQ(manager.getObject(object, id, AcDb::kForRead, false, true), Acad::eWasErased);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(manager.getObject(object, id, AcDb::kForRead, true, true), Acad::eOk);
    EXPECT_NE(object, nullptr);
}

TEST(TransactionManager, AnObjectThatIsGoneForGoodHasStatus81) {
    AcDbDatabase db(true);
    const AcDbObjectId id = addDictionary(db, L"D");
    {
        ORV_CDBTransactionManager manager(&db, false);
        AcDbObject* object = nullptr;
        ASSERT_EQ(manager.getObject(object, id, AcDb::kForWrite, false, true), Acad::eOk);
        object->erase();
    }
    embedded::forgetHistory(db);
    ORV_CDBTransactionManager manager(&db, false);
    AcDbObject* object = nullptr;
    EXPECT_EQ(static_cast<int>(manager.getObject(object, id, AcDb::kForRead, false, true)), 81);
    EXPECT_EQ(object, nullptr);
}

TEST(TransactionManager, RefusesAProxyUnlessItIsAccepted) {
    AcDbDatabase db(true);
    AcDbObjectId id;
    {
        AcDbDictionary* named = nullptr;
        ASSERT_EQ(db.getNamedObjectsDictionary(named, AcDb::kForWrite), Acad::eOk);
        auto* const proxy = new AcDbProxyObject;
        ASSERT_EQ(named->setAt(L"P", proxy, id), Acad::eOk);
        proxy->close();
        named->close();
    }
    ORV_CDBTransactionManager manager(&db, false);
    AcDbObject* object = nullptr;
    EXPECT_EQ(manager.getObject(object, id, AcDb::kForRead, false, false), Acad::eWrongObjectType);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(manager.getObject(object, id, AcDb::kForRead, false, true), Acad::eOk);
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(object->isAProxy());
}
