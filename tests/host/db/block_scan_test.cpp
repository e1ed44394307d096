#include "dbsymtb.h"
#include "dbtrans.h"
#include "dbxrecrd.h"
#include "embedded/session.h"
#include "entities/line.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <vector>

namespace {

// Walks model space as programs do that look for entities of a kind.
class BlockScan : public testing::Test {
protected:
    void make(int lines) {
        m_database = std::make_unique<AcDbDatabase>(true);
        AcDbBlockTableRecord* space = modelSpace(AcDb::kForWrite);
        for (int i = 0; i < lines; ++i) {
            auto* line = new AcDbLine({0, 0, 0}, {1.0 * i, 1, 1});
            AcDbObjectId id;
            ASSERT_EQ(space->appendAcDbEntity(id, line), Acad::eOk);
            line->close();
            m_lines.push_back(id);
        }
        space->close();
    }

    // The same drawing from its file: all of it is bytes.
    void saveAndRead() {
        const auto file = std::filesystem::temp_directory_path() / L"block_scan_test.dwg";
        ASSERT_EQ(m_database->saveAs(file.wstring().c_str()), Acad::eOk);
        std::vector<AcDbHandle> handles;
        for (const AcDbObjectId& id : m_lines)
            handles.push_back(id.handle());
        m_database = std::make_unique<AcDbDatabase>(false);
        ASSERT_EQ(m_database->readDwgFile(file.wstring().c_str()), Acad::eOk);
        std::filesystem::remove(file);
        m_lines.clear();
        for (const AcDbHandle& handle : handles) {
            m_lines.emplace_back();
            ASSERT_EQ(m_database->getAcDbObjectId(m_lines.back(), false, handle), Acad::eOk);
        }
    }

    AcDbBlockTableRecord* modelSpace(AcDb::OpenMode mode = AcDb::kForRead) {
        AcDbBlockTable* table = nullptr;
        AcDbBlockTableRecord* space = nullptr;
        EXPECT_EQ(m_database->getBlockTable(table, AcDb::kForRead), Acad::eOk);
        EXPECT_EQ(table->getAt(ACRX_T("*Model_Space"), space, mode), Acad::eOk);
        EXPECT_EQ(table->close(), Acad::eOk);
        return space;
    }

    std::vector<AcDbObjectId> walk(bool atBeginning, bool forward, bool skipDeleted) {
        std::vector<AcDbObjectId> found;
        AcDbBlockTableRecord* space = modelSpace();
        AcDbBlockTableRecordIterator* made = nullptr;
        EXPECT_EQ(space->newIterator(made, atBeginning, skipDeleted), Acad::eOk);
        const std::unique_ptr<AcDbBlockTableRecordIterator> it(made);
        for (; !it->done(); it->step(forward, skipDeleted)) {
            AcDbObjectId id;
            EXPECT_EQ(it->getEntityId(id), Acad::eOk);
            found.push_back(id);
        }
        AcDbObjectId behind = found.empty() ? AcDbObjectId() : found.back();
        EXPECT_EQ(it->getEntityId(behind), Acad::eIteratorDone);
        EXPECT_TRUE(behind.isNull());
        EXPECT_EQ(space->close(), Acad::eOk);
        return found;
    }

    static void erase(AcDbObjectId id) {
        AcDbObject* object = nullptr;
        ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
        ASSERT_EQ(object->erase(), Acad::eOk);
        object->close();
    }

    int residents() const {
        return static_cast<int>(std::count_if(m_lines.begin(), m_lines.end(),
                                              [](const AcDbObjectId& id) { return id.isResident(); }));
    }

    std::unique_ptr<AcDbDatabase> m_database;
    std::vector<AcDbObjectId> m_lines;
};

TEST_F(BlockScan, GoesThroughTheEntitiesBothWays) {
    make(3);
    EXPECT_EQ(walk(true, true, true), m_lines);
    EXPECT_EQ(walk(false, false, true), (std::vector<AcDbObjectId>{m_lines[2], m_lines[1], m_lines[0]}));
}

TEST_F(BlockScan, PassesErasedOnesOverOrShowsThem) {
    make(3);
    erase(m_lines[0]);
    erase(m_lines[2]);
    EXPECT_EQ(walk(true, true, true), (std::vector<AcDbObjectId>{m_lines[1]}));
    EXPECT_EQ(walk(true, true, false), m_lines);
    EXPECT_EQ(walk(false, false, false), (std::vector<AcDbObjectId>{m_lines[2], m_lines[1], m_lines[0]}));
}

TEST_F(BlockScan, OfAnEmptySpaceIsDoneAtOnce) {
    make(0);
    EXPECT_TRUE(walk(true, true, true).empty());
    EXPECT_TRUE(walk(false, false, false).empty());
}

TEST_F(BlockScan, MakesNoObjectOfWhatIsBytes) {
    make(20);
    saveAndRead();
    EXPECT_EQ(walk(true, true, true), m_lines);
    for (const AcDbObjectId& id : m_lines) {
        EXPECT_TRUE(id.isValid());
        EXPECT_FALSE(id.isErased());
        EXPECT_FALSE(id.isEffectivelyErased());
        EXPECT_EQ(id.objectClass(), AcDbLine::desc());
    }
    EXPECT_EQ(residents(), 0);
}

TEST_F(BlockScan, OpensOnlyWhatItIsAskedToOpen) {
    make(5);
    saveAndRead();
    AcDbTransactionManager* manager = m_database->transactionManager();
    manager->startTransaction();
    AcDbObject* object = nullptr;
    ASSERT_EQ(manager->getObject(object, m_lines[2]), Acad::eOk);
    EXPECT_TRUE(object->isKindOf(AcDbEntity::desc()));
    EXPECT_EQ(object->isA(), AcDbLine::desc());
    EXPECT_EQ(residents(), 1);
    manager->endTransaction();
}

TEST_F(BlockScan, KnowsTheClassOfWhatWasAddedSince) {
    make(1);
    saveAndRead();
    AcDbBlockTableRecord* space = modelSpace(AcDb::kForWrite);
    auto* line = new AcDbLine;
    AcDbObjectId id;
    ASSERT_EQ(space->appendAcDbEntity(id, line), Acad::eOk);
    line->close();
    space->close();
    EXPECT_EQ(walk(true, true, true), (std::vector<AcDbObjectId>{m_lines[0], id}));
    EXPECT_EQ(id.objectClass(), AcDbLine::desc());
    EXPECT_EQ(AcDbObjectId().objectClass(), nullptr);
}

TEST_F(BlockScan, TakesAnEntityWhoseOwnerIsErasedForErased) {
    make(1);
    // A record that is owned without its owner erasing it.
    auto* owner = new AcDbXrecord;
    auto* owned = new AcDbXrecord;
    AcDbObjectId ownerId, ownedId;
    ASSERT_EQ(m_database->addAcDbObject(ownerId, owner), Acad::eOk);
    ASSERT_EQ(m_database->addAcDbObject(ownedId, owned), Acad::eOk);
    owner->setOwnerId(m_lines[0]);
    owned->setOwnerId(ownerId);
    owner->close();
    owned->close();
    EXPECT_FALSE(ownedId.isEffectivelyErased());
    erase(m_lines[0]);
    EXPECT_FALSE(ownedId.isErased());
    EXPECT_TRUE(ownedId.isEffectivelyErased());
    EXPECT_TRUE(ownerId.isEffectivelyErased());
    EXPECT_TRUE(m_lines[0].isEffectivelyErased());
    EXPECT_FALSE(m_database->blockTableId().isEffectivelyErased());
    EXPECT_FALSE(AcDbObjectId().isEffectivelyErased());
    embedded::undo(*m_database);
}

TEST_F(BlockScan, TakesBytesWhoseOwnerIsErasedForErased) {
    make(2);
    auto* owned = new AcDbXrecord;
    AcDbObjectId ownedId;
    ASSERT_EQ(m_database->addAcDbObject(ownedId, owned), Acad::eOk);
    owned->setOwnerId(m_lines[0]);
    owned->close();
    const AcDbHandle handle = ownedId.handle();
    saveAndRead();
    ASSERT_EQ(m_database->getAcDbObjectId(ownedId, false, handle), Acad::eOk);
    EXPECT_FALSE(ownedId.isEffectivelyErased());
    erase(m_lines[0]);
    EXPECT_TRUE(ownedId.isEffectivelyErased());
    EXPECT_FALSE(ownedId.isErased());
    EXPECT_FALSE(ownedId.isResident());
    EXPECT_FALSE(m_lines[1].isEffectivelyErased());
}

TEST_F(BlockScan, AnIdOutlivesItsDrawingAndIsValidNoMore) {
    make(1);
    m_database.reset();
    EXPECT_FALSE(m_lines[0].isValid());
    EXPECT_FALSE(m_lines[0].isNull());
    EXPECT_EQ(m_lines[0].objectClass(), nullptr);
    EXPECT_FALSE(m_lines[0].isEffectivelyErased());
}

} // namespace
