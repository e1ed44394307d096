#include "db_fixture.h"

#include "AcString.h"
#include "dbtrans.h"
#include "embedded/memory_filer.h"
#include "rxclass.h"
#include "support/allocation_watch.h"
#include "support/console_recorder.h"

#include <functional>
#include <stdexcept>

namespace {

using Call = std::function<void()>;

// What the next objects do when the host calls them; empty for nothing unusual.
struct Faults {
    Call onUndoIn, onClose, onModified;
    Acad::ErrorStatus undoOut = Acad::eOk;
    Acad::ErrorStatus undoIn = Acad::eOk;
};

Faults& faults() {
    static Faults one;
    return one;
}

void callIfAny(const Call& call) {
    if (call)
        call();
}

class Faulty : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(Faulty);
    Adesk::Int32 value = 0;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        assertWriteEnabled();
        AcDbObject::dwgInFields(filer);
        if (filer->filerType() == AcDb::kUndoFiler) {
            callIfAny(faults().onUndoIn);
            if (faults().undoIn != Acad::eOk)
                return faults().undoIn;
        }
        return filer->readInt32(&value);
    }
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        assertReadEnabled();
        AcDbObject::dwgOutFields(filer);
        if (filer->filerType() == AcDb::kUndoFiler && faults().undoOut != Acad::eOk)
            return faults().undoOut;
        return filer->writeInt32(value);
    }
    void modified(const AcDbObject*) override { callIfAny(faults().onModified); }

protected:
    Acad::ErrorStatus subClose() override {
        callIfAny(faults().onClose);
        return AcDbObject::subClose();
    }
};

ACRX_DXF_DEFINE_MEMBERS(Faulty, AcDbObject, AcDb::kDHL_1015, 0, 0, FAULTY, DbTests)

class DatabaseListener : public AcDbDatabaseReactor {
public:
    Call whenModified;
    void objectModified(const AcDbDatabase*, const AcDbObject*) override { callIfAny(whenModified); }
};

class FailingObject : public DbFixture {
protected:
    void SetUp() override {
        DbFixture::SetUp();
        faults() = Faults();
        Faulty::rxInit();
        acrxBuildClassHierarchy();
        m_first = make(L"FIRST");
        m_second = make(L"SECOND");
        embedded::forgetHistory(*m_database);
    }
    void TearDown() override { faults() = Faults(); }

    AcDbObjectId make(const wchar_t* name) {
        AcDbDictionary* dictionary = open(AcDb::kForWrite);
        auto* object = new Faulty;
        AcDbObjectId id;
        EXPECT_EQ(dictionary->setAt(name, object, id), Acad::eOk);
        object->close();
        dictionary->close();
        return id;
    }
    static Acad::ErrorStatus set(AcDbObjectId id, Adesk::Int32 value) {
        Faulty* object = nullptr;
        const Acad::ErrorStatus es = acdbOpenObject(object, id, AcDb::kForWrite);
        if (es != Acad::eOk)
            return es;
        object->assertWriteEnabled();
        object->value = value;
        return object->close();
    }
    static Adesk::Int32 valueOf(AcDbObjectId id) {
        Faulty* object = nullptr;
        EXPECT_EQ(acdbOpenObject(object, id, AcDb::kForRead), Acad::eOk);
        const Adesk::Int32 value = object != nullptr ? object->value : -1;
        if (object != nullptr)
            object->close();
        return value;
    }
    // One command that changes both objects.
    void change(Adesk::Int32 value) {
        embedded::beginCommand(*m_database);
        EXPECT_EQ(set(m_first, value), Acad::eOk);
        EXPECT_EQ(set(m_second, value), Acad::eOk);
    }

    AcDbObjectId m_first, m_second;
    const testing_support::ConsoleRecorder m_console;
};

TEST_F(FailingObject, WhateverIsLetOutInAnUndoTheHistoryGoesOn) {
    const Call lettingOut[] = {
        [] { throw std::runtime_error("no"); },
        [] { throw Acad::eInvalidInput; },
        [] { throw L"no"; },
        [] { throw 5; },
    };
    for (const Call& call : lettingOut) {
        change(2);
        faults().onUndoIn = call;
        EXPECT_NO_THROW(EXPECT_TRUE(embedded::undo(*m_database)));
        faults() = Faults();
        EXPECT_FALSE(embedded::undoRedoActive(*m_database));
        EXPECT_EQ(valueOf(m_first), 2) << "it did not take its old state";
        change(3);
        EXPECT_TRUE(embedded::undo(*m_database));
        EXPECT_EQ(valueOf(m_first), 2);
        EXPECT_EQ(valueOf(m_second), 2);
        EXPECT_EQ(set(m_first, 0), Acad::eOk);
        EXPECT_EQ(set(m_second, 0), Acad::eOk);
        embedded::forgetHistory(*m_database);
    }
    EXPECT_EQ(m_console.text(),
              L"Faulty failed in undo: no\nFaulty failed in undo: no\n"
              L"Faulty failed in undo: eInvalidInput\nFaulty failed in undo: eInvalidInput\n"
              L"Faulty failed in undo: no\nFaulty failed in undo: no\n"
              L"Faulty failed in undo: something that is no std::exception was thrown\n"
              L"Faulty failed in undo: something that is no std::exception was thrown\n");
}

TEST_F(FailingObject, AfterThrowingInAnAbortedTransactionChangesAreRecordedAgain) {
    AcDbTransactionManager* manager = m_database->transactionManager();
    manager->startTransaction();
    EXPECT_EQ(set(m_first, 2), Acad::eOk);
    faults().onUndoIn = [] { throw Acad::eInvalidInput; };
    EXPECT_EQ(manager->abortTransaction(), Acad::eOk);
    faults() = Faults();
    change(3);
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(valueOf(m_second), 0);
}

TEST_F(FailingObject, OneThatDoesNotTakeItsOldStateIsNamed) {
    change(2);
    faults().undoIn = Acad::eDwgObjectImproperlyRead;
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(m_console.text(), L"Faulty failed in undo: eDwgObjectImproperlyRead\n"
                                L"Faulty failed in undo: eDwgObjectImproperlyRead\n");
}

TEST_F(FailingObject, OneThatCannotBeFiledIsNamedOnceAndHasNoRecord) {
    embedded::beginCommand(*m_database);
    faults().undoOut = Acad::eFilerError;
    Faulty* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, m_first, AcDb::kForWrite), Acad::eOk);
    object->assertWriteEnabled();
    object->value = 2;
    object->assertWriteEnabled();
    object->value = 3;
    object->close();
    faults() = Faults();
    EXPECT_EQ(m_console.text(), L"Faulty cannot be recorded for undo: eFilerError\n");
    EXPECT_EQ(set(m_second, 2), Acad::eOk);
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(valueOf(m_first), 3) << "no half state was put in";
    EXPECT_EQ(valueOf(m_second), 0);
}

TEST_F(FailingObject, OneThatCannotBeFiledIsNotCancelledToAnOlderState) {
    change(1);
    embedded::beginCommand(*m_database);
    faults().undoOut = Acad::eFilerError;
    Faulty* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, m_first, AcDb::kForWrite), Acad::eOk);
    object->assertWriteEnabled();
    object->value = 2;
    EXPECT_EQ(object->cancel(), Acad::eNotApplicable);
    EXPECT_EQ(object->value, 2);
    object->close();
}

TEST_F(FailingObject, ReactorsCannotSwitchTheHistoryOffInAnUndo) {
    DatabaseListener listener;
    m_database->addReactor(&listener);
    change(2);
    listener.whenModified = [&] {
        m_database->disableUndoRecording(true);
        embedded::forgetHistory(*m_database);
    };
    EXPECT_TRUE(embedded::undo(*m_database));
    listener.whenModified = nullptr;
    m_database->removeReactor(&listener);
    EXPECT_TRUE(m_database->undoRecording());
    EXPECT_EQ(valueOf(m_first), 0);
    EXPECT_EQ(valueOf(m_second), 0);
    EXPECT_TRUE(embedded::redo(*m_database));
    EXPECT_EQ(valueOf(m_first), 2);
    EXPECT_EQ(valueOf(m_second), 2);
}

TEST_F(FailingObject, AReactorThatThrowsAStatusLetsTheObjectClose) {
    DatabaseListener listener;
    m_database->addReactor(&listener);
    listener.whenModified = [] { throw Acad::eInvalidInput; };
    EXPECT_NO_THROW(EXPECT_EQ(set(m_first, 2), Acad::eOk));
    AcDbTransactionManager* manager = m_database->transactionManager();
    manager->startTransaction();
    for (const AcDbObjectId& id : {m_first, m_second}) {
        AcDbObject* object = nullptr;
        ASSERT_EQ(manager->getObject(object, id, AcDb::kForWrite), Acad::eOk);
        object->assertWriteEnabled();
    }
    EXPECT_NO_THROW(EXPECT_EQ(manager->endTransaction(), Acad::eOk));
    m_database->removeReactor(&listener);
    EXPECT_EQ(set(m_first, 3), Acad::eOk);
    EXPECT_EQ(set(m_second, 3), Acad::eOk);
    EXPECT_EQ(m_console.text(), L"A reactor failed: eInvalidInput\nA reactor failed: eInvalidInput\n"
                                L"A reactor failed: eInvalidInput\n");
}

TEST_F(FailingObject, APersistentReactorThatThrowsIsOpenForNothingAfterwards) {
    Faulty* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, m_first, AcDb::kForWrite), Acad::eOk);
    object->addPersistentReactor(m_second);
    object->close();
    faults().onModified = [] { throw 5; };
    EXPECT_NO_THROW(EXPECT_EQ(set(m_first, 2), Acad::eOk));
    faults() = Faults();
    EXPECT_EQ(set(m_first, 3), Acad::eOk);
    EXPECT_EQ(set(m_second, 3), Acad::eOk);
}

TEST_F(FailingObject, OneThatThrowsWhenItIsClosedIsClosedAndNamed) {
    faults().onClose = [] { throw L"not now"; };
    EXPECT_NO_THROW(EXPECT_EQ(set(m_first, 2), Acad::eOk));
    AcDbTransactionManager* manager = m_database->transactionManager();
    manager->startTransaction();
    AcDbObject* object = nullptr;
    for (const AcDbObjectId& id : {m_first, m_second})
        ASSERT_EQ(manager->getObject(object, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_NO_THROW(EXPECT_EQ(manager->endTransaction(), Acad::eOk));
    faults() = Faults();
    EXPECT_EQ(set(m_first, 3), Acad::eOk);
    EXPECT_EQ(set(m_second, 3), Acad::eOk);
    EXPECT_EQ(m_console.text(), L"Faulty failed when it was closed: not now\n"
                                L"Faulty failed when it was closed: not now\n"
                                L"Faulty failed when it was closed: not now\n");
}

// The common part of an object with one block of extended data.
std::vector<std::uint8_t> withExtendedData(Adesk::UInt32 length, const std::vector<std::uint8_t>& data) {
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes);
    filer.writeSoftPointerId(AcDbSoftPointerId());
    filer.writeUInt32(0);
    filer.writeHardOwnershipId(AcDbHardOwnershipId());
    filer.writeUInt32(1);
    filer.writeHardPointerId(AcDbHardPointerId());
    filer.writeUInt32(length);
    filer.writeBytes(data.data(), data.size());
    return bytes;
}

TEST_F(FailingObject, ALengthThatTheBytesDoNotHaveGetsNoRoom) {
    const std::vector<std::uint8_t> bytes = withExtendedData(0xFFFFFFF0u, {1, 2, 3});
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
    Faulty object;
    testing_support::takeLargestAllocation();
    EXPECT_NE(object.AcDbObject::dwgInFields(&filer), Acad::eOk);
    EXPECT_LE(testing_support::takeLargestAllocation(), std::size_t(256) * 1024);
}

TEST_F(FailingObject, ExtendedDataOfManyStepsComesBackWhole) {
    std::vector<std::uint8_t> data(200001);
    for (std::size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<std::uint8_t>(i * 7);
    std::vector<std::uint8_t> bytes = withExtendedData(static_cast<Adesk::UInt32>(data.size()), data);
    embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
    Faulty object;
    ASSERT_EQ(object.AcDbObject::dwgInFields(&in), Acad::eOk);
    std::vector<std::uint8_t> again;
    embedded::MemoryFiler out(AcDb::kCopyFiler, again);
    ASSERT_EQ(object.AcDbObject::dwgOutFields(&out), Acad::eOk);
    EXPECT_TRUE(again == bytes);
}

} // namespace
