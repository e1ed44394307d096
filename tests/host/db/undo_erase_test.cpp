#include "dbdict.h"
#include "dbsymtb.h"
#include "dbtrans.h"
#include "embedded/console.h"
#include "embedded/host_start.h"
#include "embedded/session.h"
#include "rxclass.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::vector<std::string> s_calls;

// Counts how often it was erased or brought back, and says nothing to the history about it.
class Counted : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(Counted);
    Adesk::Int32 count = 0;
    static bool s_throws;

    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        assertReadEnabled();
        AcDbEntity::dwgOutFields(filer);
        return filer->writeInt32(count);
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        assertWriteEnabled();
        AcDbEntity::dwgInFields(filer);
        return filer->readInt32(&count);
    }

protected:
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override {
        s_calls.push_back(std::string(erasing ? "erase" : "unerase") + (isUndoing() ? "*" : ""));
        EXPECT_EQ(isErased(), erasing != 0);
        if (s_throws)
            throw std::runtime_error("it would not");
        if (!isUndoing())
            assertWriteEnabled();
        ++count;
        return AcDbEntity::subErase(erasing);
    }
};

bool Counted::s_throws = false;

ACRX_DXF_DEFINE_MEMBERS(Counted, AcDbEntity, AcDb::kDHL_1015, 0, 0, UNDOCOUNTED, DbTests)

using Calls = std::vector<std::string>;

class UndoErase : public testing::Test {
protected:
    void SetUp() override {
        embedded::startHost();
        Counted::rxInit();
        acrxBuildClassHierarchy();
        m_database = std::make_unique<AcDbDatabase>();
        AcDbBlockTable* table = nullptr;
        ASSERT_EQ(m_database->getBlockTable(table, AcDb::kForWrite), Acad::eOk);
        auto* block = new AcDbBlockTableRecord;
        block->setName(L"B");
        ASSERT_EQ(table->add(m_block, block), Acad::eOk);
        table->close();
        for (AcDbObjectId* id : {&m_first, &m_second}) {
            auto* entity = new Counted;
            ASSERT_EQ(block->appendAcDbEntity(*id, entity), Acad::eOk);
            entity->close();
        }
        block->close();
        embedded::forgetHistory(*m_database);
        s_calls.clear();
    }
    void TearDown() override { Counted::s_throws = false; }

    void erase(AcDbObjectId id, bool erasing = true) {
        AcDbObject* object = nullptr;
        ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite, true), Acad::eOk);
        ASSERT_EQ(object->erase(erasing), Acad::eOk);
        object->close();
    }
    static Adesk::Int32 countOf(AcDbObjectId id) {
        Counted* counted = nullptr;
        EXPECT_EQ(acdbOpenObject(counted, id, AcDb::kForRead, true), Acad::eOk);
        const Adesk::Int32 count = counted->count;
        counted->close();
        return count;
    }

    std::unique_ptr<AcDbDatabase> m_database;
    AcDbObjectId m_block, m_first, m_second;
};

TEST_F(UndoErase, AsksTheObjectEachTime) {
    embedded::beginCommand(*m_database);
    erase(m_first);
    embedded::undo(*m_database);
    EXPECT_FALSE(m_first.isErased());
    embedded::redo(*m_database);
    EXPECT_TRUE(m_first.isErased());
    EXPECT_EQ(s_calls, (Calls{"erase", "unerase*", "erase*"}));
}

TEST_F(UndoErase, WhatTheObjectDoesThenIsTakenBackWithTheStep) {
    embedded::beginCommand(*m_database);
    erase(m_first);
    EXPECT_EQ(countOf(m_first), 1);
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(embedded::undo(*m_database));
        EXPECT_EQ(countOf(m_first), 0);
        ASSERT_TRUE(embedded::redo(*m_database));
        EXPECT_EQ(countOf(m_first), 1);
    }
}

TEST_F(UndoErase, OfAnObjectThatWasMadeInTheSameStepComesBackAsItWas) {
    embedded::beginCommand(*m_database);
    AcDbBlockTableRecord* block = nullptr;
    ASSERT_EQ(acdbOpenObject(block, m_block, AcDb::kForWrite), Acad::eOk);
    auto* entity = new Counted;
    AcDbObjectId id;
    ASSERT_EQ(block->appendAcDbEntity(id, entity), Acad::eOk);
    entity->count = 5;
    entity->close();
    block->close();
    erase(id);
    erase(id, false);
    EXPECT_EQ(countOf(id), 7);
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(embedded::undo(*m_database));
        EXPECT_TRUE(id.isErased());
        ASSERT_TRUE(embedded::redo(*m_database));
        EXPECT_FALSE(id.isErased());
        EXPECT_EQ(countOf(id), 7);
    }
}

TEST_F(UndoErase, WhatGoesWithItsBlockIsAskedOnce) {
    embedded::beginCommand(*m_database);
    erase(m_block);
    EXPECT_EQ(s_calls, (Calls{"erase", "erase"}));
    s_calls.clear();
    embedded::undo(*m_database);
    EXPECT_EQ(s_calls, (Calls{"unerase*", "unerase*"}));
    EXPECT_FALSE(m_block.isErased());
    EXPECT_FALSE(m_second.isErased());
    s_calls.clear();
    embedded::redo(*m_database);
    EXPECT_EQ(s_calls, (Calls{"erase*", "erase*"}));
    EXPECT_TRUE(m_second.isErased());
}

TEST_F(UndoErase, WhatWasErasedBeforeItsBlockStaysSo) {
    erase(m_first);
    embedded::beginCommand(*m_database);
    erase(m_block);
    embedded::undo(*m_database);
    EXPECT_TRUE(m_first.isErased());
    EXPECT_FALSE(m_second.isErased());
    embedded::redo(*m_database);
    embedded::undo(*m_database);
    EXPECT_TRUE(m_first.isErased());
    EXPECT_FALSE(m_second.isErased());
}

TEST_F(UndoErase, AnObjectThatThrowsIsNamedAndTheOthersComeBack) {
    std::wstring console;
    embedded::setConsoleSink([&](const std::wstring& text) { console += text; });
    embedded::beginCommand(*m_database);
    erase(m_first);
    erase(m_second);
    Counted::s_throws = true;
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_FALSE(embedded::undoRedoActive(*m_database));
    embedded::setConsoleSink({});
    EXPECT_FALSE(m_first.isErased());
    EXPECT_FALSE(m_second.isErased());
    EXPECT_EQ(console, L"Counted failed in undo: it would not\nCounted failed in undo: it would not\n");
    Counted::s_throws = false;
    EXPECT_TRUE(embedded::redo(*m_database));
    EXPECT_TRUE(m_first.isErased());
}

TEST_F(UndoErase, ATransactionThatIsGivenUpAsksNobody) {
    m_database->transactionManager()->startTransaction();
    erase(m_first);
    ASSERT_EQ(m_database->transactionManager()->abortTransaction(), Acad::eOk);
    EXPECT_EQ(s_calls, Calls{"erase"});
    EXPECT_FALSE(m_first.isErased());
    EXPECT_EQ(countOf(m_first), 0);
}

} // namespace
