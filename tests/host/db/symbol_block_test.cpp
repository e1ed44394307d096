#include "symbol_fixture.h"

#include "acutmem.h"

#include <chrono>
#include <filesystem>

namespace {

using Numbers = std::vector<int>;

class SymbolBlock : public SymbolFixture {
protected:
    AcDbObjectId modelSpace(AcDbDatabase& database) {
        AcDbBlockTable* table = nullptr;
        EXPECT_EQ(database.getBlockTable(table, AcDb::kForRead), Acad::eOk);
        AcDbObjectId id;
        EXPECT_EQ(table->getAt(ACDB_MODEL_SPACE, id), Acad::eOk);
        table->close();
        return id;
    }
    AcDbObjectId modelSpace() { return modelSpace(*m_database); }

    // Saves, and reads what was saved in place of the present drawing.
    void saveAndRead() {
        ASSERT_EQ(m_database->saveAs(m_folder.file(L"blocks.dwg").c_str()), Acad::eOk)
            << embedded::lastFileError();
        auto again = std::make_unique<AcDbDatabase>(false);
        ASSERT_EQ(again->readDwgFile(m_folder.file(L"blocks.dwg").c_str()), Acad::eOk)
            << embedded::lastFileError();
        m_database = std::move(again);
    }

    template <class Table, class Record>
    Record* record(AcDbObjectId tableId, const wchar_t* name) {
        Table* table = open<Table>(tableId);
        Record* found = nullptr;
        EXPECT_EQ(table->getAt(name, found, AcDb::kForRead), Acad::eOk);
        table->close();
        return found;
    }
    void checkLinetype();
    void checkView();
    void checkDimStyle();

    TemporaryFolder m_folder;
};

void SymbolBlock::checkLinetype() {
    auto* linetype =
        record<AcDbLinetypeTable, AcDbLinetypeTableRecord>(m_database->linetypeTableId(), L"dashed");
    ASSERT_NE(linetype, nullptr);
    const ACHAR* text = nullptr;
    linetype->comments(text);
    EXPECT_STREQ(text, L"- - -");
    EXPECT_EQ(linetype->patternLength(), 0.75);
    ASSERT_EQ(linetype->numDashes(), 2);
    EXPECT_EQ(linetype->dashLengthAt(1), -0.25);
    linetype->close();
}

void SymbolBlock::checkView() {
    auto* view = record<AcDbViewTable, AcDbViewTableRecord>(m_database->viewTableId(), L"corner");
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->height(), 3.5);
    EXPECT_TRUE(view->perspectiveEnabled());
    EXPECT_FALSE(view->frontClipEnabled() || view->frontClipAtEye());
    EXPECT_EQ(view->elevation(), 2.0);
    view->close();
    auto* ucs = record<AcDbUCSTable, AcDbUCSTableRecord>(m_database->UCSTableId(), L"roof");
    ASSERT_NE(ucs, nullptr);
    EXPECT_EQ(ucs->origin().z, 3.0);
    EXPECT_EQ(ucs->yAxis().y, 1.0);
    ucs->close();
}

void SymbolBlock::checkDimStyle() {
    auto* style = record<AcDbDimStyleTable, AcDbDimStyleTableRecord>(m_database->dimStyleTableId(), L"site");
    ASSERT_NE(style, nullptr);
    EXPECT_STREQ(style->dimpost(), L"<> m");
    EXPECT_EQ(style->dimtxt(), 0.35);
    EXPECT_EQ(style->dimlwd(), -1);
    EXPECT_EQ(style->dimlwe(), -2);
    EXPECT_EQ(style->dimaltf(), 25.4);
    style->close();
}

TEST_F(SymbolBlock, EntitiesAreListedInTheOrderOfTheirAddition) {
    const AcDbObjectId a = append(modelSpace(), 1);
    append(modelSpace(), 2);
    append(modelSpace(), 3);
    EXPECT_EQ(numbers(modelSpace()), (Numbers{1, 2, 3}));
    auto* entity = open<AcDbEntity>(a);
    EXPECT_EQ(entity->blockId(), modelSpace());
    EXPECT_EQ(entity->layerId(), m_database->layerZero());
    entity->close();
}

TEST_F(SymbolBlock, WhatCannotBeAppendedIsRefused) {
    auto* block = open<AcDbBlockTableRecord>(modelSpace(), AcDb::kForWrite);
    EXPECT_EQ(block->appendAcDbEntity(nullptr), Acad::eNullEntityPointer);
    auto* mark = new TestMark(1);
    EXPECT_EQ(block->appendAcDbEntity(mark), Acad::eOk);
    EXPECT_EQ(block->appendAcDbEntity(mark), Acad::eAlreadyInDb);
    mark->close();
    block->close();
    AcDbBlockTableRecord homeless;
    auto* other = new TestMark(2);
    EXPECT_EQ(homeless.appendAcDbEntity(other), Acad::eMustFirstAddBlockToDb);
    delete other;
}

TEST_F(SymbolBlock, UndoTakesAdditionsAndErasuresBack) {
    append(modelSpace(), 1);
    embedded::beginCommand(*m_database);
    const AcDbObjectId two = append(modelSpace(), 2);
    append(modelSpace(), 3);
    embedded::beginCommand(*m_database);
    erase(two);
    EXPECT_EQ(numbers(modelSpace()), (Numbers{1, 3}));
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(numbers(modelSpace()), (Numbers{1, 2, 3}));
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(numbers(modelSpace()), Numbers{1});
    EXPECT_TRUE(embedded::redo(*m_database));
    EXPECT_EQ(numbers(modelSpace()), (Numbers{1, 2, 3}));
}

TEST_F(SymbolBlock, UndoOfASettingKeepsTheEntitiesThatWereThere) {
    append(modelSpace(), 1);
    embedded::beginCommand(*m_database);
    auto* block = open<AcDbBlockTableRecord>(modelSpace(), AcDb::kForWrite);
    block->setComments(L"changed");
    block->close();
    append(modelSpace(), 2);
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(numbers(modelSpace()), Numbers{1});
    block = open<AcDbBlockTableRecord>(modelSpace());
    const ACHAR* text = nullptr;
    block->comments(text);
    EXPECT_STREQ(text, L"");
    block->close();
    EXPECT_TRUE(embedded::redo(*m_database));
    EXPECT_EQ(numbers(modelSpace()), (Numbers{1, 2}));
}

TEST_F(SymbolBlock, TheIteratorSkipsErasedEntitiesUnlessAskedForThem) {
    const AcDbObjectId one = append(modelSpace(), 1);
    const AcDbObjectId two = append(modelSpace(), 2);
    erase(one);
    auto* block = open<AcDbBlockTableRecord>(modelSpace());
    AcDbBlockTableRecordIterator* it = nullptr;
    ASSERT_EQ(block->newIterator(it), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(it->getEntityId(id), Acad::eOk);
    EXPECT_EQ(id, two);
    EXPECT_EQ(it->blockTableRecord(), modelSpace());
    it->start(true, false);
    it->getEntityId(id);
    EXPECT_EQ(id, one);
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(it->getEntity(entity), Acad::eWasErased);
    it->step(true, false);
    it->step(true, false);
    EXPECT_TRUE(it->done());
    EXPECT_EQ(it->getEntityId(id), Acad::eIteratorDone);
    EXPECT_EQ(it->getEntity(entity), Acad::eIteratorDone);
    EXPECT_EQ(it->seek(two), Acad::eOk);
    EXPECT_EQ(it->getEntity(entity), Acad::eOk);
    EXPECT_EQ(it->seek(entity), Acad::eOk);
    entity->close();
    EXPECT_EQ(it->seek(m_database->layerZero()), Acad::eNotInBlock);
    delete it;
    block->close();
}

TEST_F(SymbolBlock, ErasingABlockTakesItsEntitiesAndItsReturnBringsBackWhatWentWithIt) {
    const AcDbObjectId block = addBlock(L"B");
    const AcDbObjectId gone = append(block, 1);
    const AcDbObjectId kept = append(block, 2);
    erase(gone);
    erase(block);
    EXPECT_TRUE(kept.isErased());
    erase(block, false);
    EXPECT_FALSE(kept.isErased());
    EXPECT_TRUE(gone.isErased());
    EXPECT_EQ(numbers(block), Numbers{2});
}

TEST_F(SymbolBlock, ModelAndPaperSpaceCannotBeErased) {
    auto* block = open<AcDbBlockTableRecord>(modelSpace(), AcDb::kForWrite);
    EXPECT_EQ(block->erase(), Acad::eCannotBeErasedByCaller);
    EXPECT_TRUE(block->isLayout());
    block->close();
    append(modelSpace(), 1);
    EXPECT_EQ(numbers(modelSpace()), Numbers{1});
}

TEST_F(SymbolBlock, ANewBlockHasItsTwoFramingEntities) {
    const AcDbObjectId id = addBlock(L"B");
    auto* block = open<AcDbBlockTableRecord>(id);
    AcDbBlockBegin* begin = nullptr;
    AcDbBlockEnd* end = nullptr;
    ASSERT_EQ(block->openBlockBegin(begin), Acad::eOk);
    ASSERT_EQ(block->openBlockEnd(end), Acad::eOk);
    EXPECT_STREQ(begin->name(), L"B");
    EXPECT_EQ(begin->ownerId(), id);
    EXPECT_EQ(end->ownerId(), id);
    begin->close();
    end->close();
    EXPECT_FALSE(block->isAnonymous() || block->isLayout() || block->isFromExternalReference());
    block->close();
    EXPECT_EQ(numbers(id), Numbers{});
}

TEST_F(SymbolBlock, EntitiesComeBackFromAFileInTheirOrder) {
    const AcDbObjectId block = addBlock(L"B");
    append(modelSpace(), 1);
    append(block, 10);
    append(modelSpace(), 2);
    erase(append(modelSpace(), 3));
    append(modelSpace(), 4);
    append(block, 11);
    saveAndRead();
    EXPECT_EQ(numbers(modelSpace()), (Numbers{1, 2, 4}));
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(m_database->getBlockTable(table, AcDb::kForRead), Acad::eOk);
    AcDbObjectId again;
    ASSERT_EQ(table->getAt(L"b", again), Acad::eOk);
    table->close();
    EXPECT_EQ(numbers(again), (Numbers{10, 11}));
}

TEST_F(SymbolBlock, ABlockOfAFileIsChangedAndFiledAgain) {
    for (int i = 1; i <= 4; ++i)
        append(modelSpace(), i);
    saveAndRead();
    auto* block = open<AcDbBlockTableRecord>(modelSpace());
    AcDbBlockTableRecordIterator* it = nullptr;
    block->newIterator(it);
    std::vector<AcDbObjectId> ids;
    for (; !it->done(); it->step()) {
        ids.emplace_back();
        it->getEntityId(ids.back());
    }
    delete it;
    block->close();
    ASSERT_EQ(ids.size(), 4u);
    erase(ids[0]);
    erase(ids[2]);
    append(modelSpace(), 5);
    EXPECT_EQ(numbers(modelSpace()), (Numbers{2, 4, 5}));
    saveAndRead();
    EXPECT_EQ(numbers(modelSpace()), (Numbers{2, 4, 5}));
    saveAndRead();
    EXPECT_EQ(numbers(modelSpace()), (Numbers{2, 4, 5}));
}

TEST_F(SymbolBlock, AnEntityErasedWithoutLookingAtTheBlockLeavesTheChainWhole) {
    std::vector<AcDbObjectId> ids;
    for (int i = 1; i <= 3; ++i)
        ids.push_back(append(modelSpace(), i));
    AcDbHandle last;
    auto* mark = open<AcDbObject>(ids[2]);
    mark->getAcDbHandle(last);
    mark->close();
    saveAndRead();
    AcDbObjectId id;
    ASSERT_EQ(m_database->getAcDbObjectId(id, false, last), Acad::eOk);
    erase(id);
    saveAndRead();
    EXPECT_EQ(numbers(modelSpace()), (Numbers{1, 2}));
}

TEST_F(SymbolBlock, RecordsOfAllTablesComeBackFromAFile) {
    addLayer(L"Ebene \u00e4");
    const AcDbObjectId linetype = add<AcDbLinetypeTable>(
        m_database->linetypeTableId(),
        [] {
            auto* record = new AcDbLinetypeTableRecord;
            record->setComments(L"- - -");
            record->setPatternLength(0.75);
            record->setNumDashes(2);
            record->setDashLengthAt(0, 0.5);
            record->setDashLengthAt(1, -0.25);
            return record;
        }(),
        L"DASHED");
    EXPECT_FALSE(linetype.isNull());
    add<AcDbTextStyleTable>(m_database->textStyleTableId(), new AcDbTextStyleTableRecord, L"Notes");
    add<AcDbViewTable>(
        m_database->viewTableId(),
        [] {
            auto* record = new AcDbViewTableRecord;
            record->setHeight(3.5);
            record->setPerspectiveEnabled(true);
            record->associateUcs(true);
            record->setElevation(2.0);
            return record;
        }(),
        L"Corner");
    add<AcDbUCSTable>(
        m_database->UCSTableId(),
        [] {
            auto* record = new AcDbUCSTableRecord;
            record->setOrigin(AcGePoint3d(1.0, 2.0, 3.0));
            return record;
        }(),
        L"Roof");
    add<AcDbRegAppTable>(m_database->regAppTableId(), new AcDbRegAppTableRecord, L"APP");
    add<AcDbDimStyleTable>(
        m_database->dimStyleTableId(),
        [] {
            auto* record = new AcDbDimStyleTableRecord;
            record->setDimpost(L"<> m");
            record->setDimtxt(0.35);
            record->setDimlwd(-1);
            return record;
        }(),
        L"Site");
    saveAndRead();
    EXPECT_EQ(names(m_database->layerTableId()), (std::vector<std::wstring>{L"0", L"Ebene \u00e4"}));
    EXPECT_EQ(names(m_database->linetypeTableId()),
              (std::vector<std::wstring>{L"ByBlock", L"ByLayer", L"Continuous", L"DASHED"}));
    EXPECT_EQ(names(m_database->regAppTableId()), (std::vector<std::wstring>{L"ACAD", L"APP"}));
    checkLinetype();
    checkView();
    checkDimStyle();
}

TEST_F(SymbolBlock, AHundredThousandEntitiesAreAddedAndListedInAMoment) {
    const int count = 100000;
    const auto start = std::chrono::steady_clock::now();
    embedded::beginCommand(*m_database);
    auto* block = open<AcDbBlockTableRecord>(modelSpace(), AcDb::kForWrite);
    for (int i = 0; i < count; ++i) {
        auto* mark = new TestMark(i);
        ASSERT_EQ(block->appendAcDbEntity(mark), Acad::eOk);
        mark->close();
    }
    block->close();
    const Numbers all = numbers(modelSpace());
    EXPECT_EQ(all.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(all.back(), count - 1);
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(numbers(modelSpace()), Numbers{});
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    // Far above what it takes even under the sanitizers; a quadratic way takes minutes.
    EXPECT_LT(took.count(), 10.0);
}

} // namespace
