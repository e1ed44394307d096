#include "db/database_core.h"
#include "db/object_access.h"
#include "db_fixture.h"
#include "dbproxy.h"
#include "dbtrans.h"

namespace {

class Owners : public DbFixture {
protected:
    // A proxy of a class that allows nothing, as an entry of the dictionary.
    AcDbObjectId putProxy(const wchar_t* name) {
        AcDbDictionary* dictionary = open(AcDb::kForWrite);
        auto* proxy = new AcDbProxyObject;
        embedded::ObjectAccess::setBody(*proxy, std::make_unique<embedded::ObjectBody>());
        AcDbObjectId id;
        EXPECT_EQ(dictionary->setAt(name, proxy, id), Acad::eOk);
        proxy->close();
        dictionary->close();
        return id;
    }
};

TEST_F(Owners, AProxyThatAllowsNothingRefusesToBeErasedAndBearsNoTrace) {
    const AcDbObjectId id = putProxy(L"P");
    embedded::forgetHistory(*m_database);
    static_cast<AcDbStub*>(id)->clear(embedded::kDirty);
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_TRUE(object->isAProxy());
    EXPECT_EQ(object->erase(), Acad::eNotAllowedForThisProxy);
    EXPECT_FALSE(object->isModified());
    object->close();
    EXPECT_FALSE(id.isErased());
    EXPECT_FALSE(static_cast<AcDbStub*>(id)->has(embedded::kDirty));
    EXPECT_FALSE(embedded::undo(*m_database)) << "a refused erase is no step";
}

TEST_F(Owners, AProxyGoesWithItsOwnerAndComesBackWithIt) {
    const AcDbObjectId id = putProxy(L"P");
    AcDbDictionary* dictionary = open(AcDb::kForWrite);
    EXPECT_EQ(dictionary->erase(), Acad::eOk);
    dictionary->close();
    EXPECT_TRUE(id.isErased());
    EXPECT_TRUE(id.isEffectivelyErased());
    ASSERT_EQ(acdbOpenObject(dictionary, m_dictionary, AcDb::kForWrite, true), Acad::eOk);
    EXPECT_EQ(dictionary->erase(false), Acad::eOk);
    dictionary->close();
    EXPECT_FALSE(id.isErased());
}

TEST_F(Owners, WhatHangsBelowAnErasedObjectIsEffectivelyErased) {
    const AcDbObjectId id = put(L"A", L"a");
    EXPECT_FALSE(id.isEffectivelyErased());
    AcDbDictionary* dictionary = open(AcDb::kForWrite);
    AcDbObjectId removed;
    dictionary->remove(L"A", removed);
    dictionary->erase();
    dictionary->close();
    EXPECT_FALSE(id.isErased());
    EXPECT_TRUE(id.isEffectivelyErased());
}

TEST_F(Owners, AnExtensionDictionaryIsMadeOnceGoesWithItsObjectAndIsGivenUpEmpty) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_TRUE(object->extensionDictionary().isNull());
    EXPECT_EQ(object->releaseExtensionDictionary(), Acad::eKeyNotFound);
    EXPECT_EQ(object->createExtensionDictionary(), Acad::eOk);
    EXPECT_EQ(object->createExtensionDictionary(), Acad::eAlreadyInDb);
    const AcDbObjectId extension = object->extensionDictionary();
    AcDbDictionary* dictionary = nullptr;
    ASSERT_EQ(acdbOpenObject(dictionary, extension, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(dictionary->ownerId(), id);
    auto* record = new TestRecord(L"x");
    AcDbObjectId recordId;
    dictionary->setAt(L"X", record, recordId);
    record->close();
    dictionary->close();
    EXPECT_EQ(object->releaseExtensionDictionary(), Acad::eContainerNotEmpty);
    EXPECT_EQ(object->erase(), Acad::eOk);
    EXPECT_TRUE(extension.isErased());
    EXPECT_TRUE(recordId.isErased());
    EXPECT_EQ(object->erase(false), Acad::eOk);
    EXPECT_FALSE(recordId.isErased());
    ASSERT_EQ(acdbOpenObject(dictionary, extension, AcDb::kForWrite), Acad::eOk);
    dictionary->remove(L"X");
    dictionary->close();
    EXPECT_EQ(object->releaseExtensionDictionary(), Acad::eOk);
    EXPECT_TRUE(object->extensionDictionary().isNull());
    object->close();
}

TEST_F(Owners, AFreshObjectIsHandedToTheTransactionThatClosesIt) {
    auto* manager = m_database->transactionManager();
    auto* record = new TestRecord(L"x");
    EXPECT_EQ(manager->addNewlyCreatedDBRObject(record), Acad::eNoActiveTransactions);
    manager->startTransaction();
    EXPECT_EQ(manager->addNewlyCreatedDBRObject(record), Acad::eNoDatabase);
    ASSERT_EQ(m_database->addAcDbObject(record), Acad::eOk);
    EXPECT_EQ(m_database->addAcDbObject(record), Acad::eAlreadyInDb);
    EXPECT_EQ(manager->addNewlyCreatedDBRObject(record), Acad::eOk);
    EXPECT_TRUE(record->isTransactionResident());
    manager->endTransaction();
    EXPECT_FALSE(record->isWriteEnabled());
}

} // namespace
