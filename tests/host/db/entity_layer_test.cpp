#include "symbol_fixture.h"

#include "acutmem.h"
#include "dbapserv.h"

namespace {

class EntityLayer : public SymbolFixture {
protected:
    AcDbObjectId modelSpace() {
        AcDbBlockTable* table = nullptr;
        EXPECT_EQ(m_database->getBlockTable(table, AcDb::kForRead), Acad::eOk);
        AcDbObjectId id;
        EXPECT_EQ(table->getAt(ACDB_MODEL_SPACE, id), Acad::eOk);
        table->close();
        return id;
    }

    static std::wstring layerOf(const AcDbEntity& entity) {
        ACHAR* name = entity.layer();
        const std::wstring text = name != nullptr ? name : L"<null>";
        acutDelBuffer(name);
        EXPECT_EQ(name, nullptr);
        return text;
    }
    std::wstring layerOf(AcDbObjectId id) {
        auto* entity = open<AcDbEntity>(id);
        const std::wstring text = layerOf(*entity);
        entity->close();
        return text;
    }
    Acad::ErrorStatus setLayer(AcDbObjectId id, const ACHAR* layer) {
        auto* entity = open<AcDbEntity>(id, AcDb::kForWrite);
        const Acad::ErrorStatus es = entity->setLayer(layer);
        entity->close();
        return es;
    }
    Acad::ErrorStatus setLayer(AcDbObjectId id, AcDbObjectId layer) {
        auto* entity = open<AcDbEntity>(id, AcDb::kForWrite);
        const Acad::ErrorStatus es = entity->setLayer(layer);
        entity->close();
        return es;
    }
};

} // namespace

TEST_F(EntityLayer, EachCallGivesABufferOfItsOwn) {
    const AcDbObjectId id = append(modelSpace(), 1);
    auto* entity = open<AcDbEntity>(id);
    ACHAR* first = entity->layer();
    ACHAR* second = entity->layer();
    EXPECT_NE(first, second);
    first[0] = L'x';
    EXPECT_STREQ(second, L"0");
    acutDelBuffer(first);
    acutDelBuffer(second);
    entity->close();
}

TEST_F(EntityLayer, EntityOfNoDrawingIsOnLayerZero) {
    const TestMark mark(1);
    EXPECT_TRUE(mark.layerId().isNull());
    EXPECT_EQ(layerOf(mark), L"0");
}

TEST_F(EntityLayer, SetByNameWhateverItsCase) {
    const AcDbObjectId walls = addLayer(L"Walls \u00DF");
    const AcDbObjectId id = append(modelSpace(), 1);
    EXPECT_EQ(setLayer(id, L"wALLS \u00DF"), Acad::eOk);
    EXPECT_EQ(layerOf(id), L"Walls \u00DF");
    auto* entity = open<AcDbEntity>(id);
    EXPECT_EQ(entity->layerId(), walls);
    entity->close();
}

TEST_F(EntityLayer, SetById) {
    const AcDbObjectId walls = addLayer(L"Walls");
    const AcDbObjectId id = append(modelSpace(), 1);
    EXPECT_EQ(setLayer(id, walls), Acad::eOk);
    EXPECT_EQ(layerOf(id), L"Walls");
}

TEST_F(EntityLayer, NameFollowsTheLayers) {
    const AcDbObjectId walls = addLayer(L"Walls");
    const AcDbObjectId id = append(modelSpace(), 1);
    EXPECT_EQ(setLayer(id, walls), Acad::eOk);
    rename(walls, L"Floors");
    EXPECT_EQ(layerOf(id), L"Floors");
}

TEST_F(EntityLayer, UnknownNameIsRefusedAndChangesNothing) {
    addLayer(L"Walls");
    const AcDbObjectId id = append(modelSpace(), 1);
    EXPECT_EQ(setLayer(id, L"Walls"), Acad::eOk);
    EXPECT_EQ(setLayer(id, L"Roofs"), Acad::eKeyNotFound);
    EXPECT_EQ(setLayer(id, static_cast<const ACHAR*>(nullptr)), Acad::eInvalidInput);
    EXPECT_EQ(layerOf(id), L"Walls");
}

TEST_F(EntityLayer, ErasedLayerCannotBeSetByName) {
    const AcDbObjectId walls = addLayer(L"Walls");
    const AcDbObjectId id = append(modelSpace(), 1);
    erase(walls);
    EXPECT_EQ(setLayer(id, L"Walls"), Acad::eKeyNotFound);
    EXPECT_EQ(layerOf(id), L"0");
}

TEST_F(EntityLayer, IdOfSomethingElseIsRefused) {
    AcDbDatabase other(true);
    const AcDbObjectId id = append(modelSpace(), 1);
    EXPECT_EQ(setLayer(id, m_database->layerTableId()), Acad::eInvalidInput);
    EXPECT_EQ(setLayer(id, AcDbObjectId::kNull), Acad::eInvalidInput);
    EXPECT_EQ(setLayer(id, other.layerZero()), Acad::eInvalidInput);
    EXPECT_EQ(layerOf(id), L"0");
}

TEST_F(EntityLayer, IsReadWhileTheLayerIsBeingWritten) {
    const AcDbObjectId walls = addLayer(L"Walls");
    const AcDbObjectId id = append(modelSpace(), 1);
    EXPECT_EQ(setLayer(id, walls), Acad::eOk);
    auto* record = open<AcDbLayerTableRecord>(walls, AcDb::kForWrite);
    EXPECT_EQ(layerOf(id), L"Walls");
    record->close();
    erase(walls);
    EXPECT_EQ(layerOf(id), L"Walls");
}

TEST_F(EntityLayer, EntityOfNoDrawingLooksInTheWorkingOne) {
    const AcDbObjectId walls = addLayer(L"Walls");
    TestMark mark(1);
    AcDbHostApplicationServices* services = acdbHostApplicationServices();
    AcDbDatabase* const before = services->workingDatabase();
    services->setWorkingDatabase(nullptr);
    EXPECT_EQ(mark.setLayer(L"Walls"), Acad::eNoDatabase);
    services->setWorkingDatabase(m_database.get());
    EXPECT_EQ(mark.setLayer(L"Walls"), Acad::eOk);
    services->setWorkingDatabase(before);
    EXPECT_EQ(mark.layerId(), walls);
    EXPECT_EQ(layerOf(mark), L"Walls");
}

TEST_F(EntityLayer, ChangeIsUndone) {
    addLayer(L"Walls");
    const AcDbObjectId id = append(modelSpace(), 1);
    embedded::beginCommand(*m_database);
    EXPECT_EQ(setLayer(id, L"Walls"), Acad::eOk);
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(layerOf(id), L"0");
    EXPECT_TRUE(embedded::redo(*m_database));
    EXPECT_EQ(layerOf(id), L"Walls");
}

TEST_F(EntityLayer, IsInTheFile) {
    addLayer(L"Walls");
    const AcDbObjectId id = append(modelSpace(), 1);
    EXPECT_EQ(setLayer(id, L"Walls"), Acad::eOk);
    const TemporaryFolder folder;
    ASSERT_EQ(m_database->saveAs(folder.file(L"layers.dwg").c_str()), Acad::eOk) << embedded::lastFileError();
    AcDbDatabase again(false);
    ASSERT_EQ(again.readDwgFile(folder.file(L"layers.dwg").c_str()), Acad::eOk) << embedded::lastFileError();
    AcDbObjectId same;
    ASSERT_EQ(again.getAcDbObjectId(same, false, id.handle()), Acad::eOk);
    EXPECT_EQ(layerOf(same), L"Walls");
}
