#include "symbol_fixture.h"

#include "embedded/host_start.h"
#include "rxclass.h"

#include <filesystem>
#include <random>

ACRX_DXF_DEFINE_MEMBERS(TestMark, AcDbEntity, AcDb::kDHL_1015, 0, 0, TESTMARK, DbTests)

void registerTestMark() {
    embedded::startHost();
    TestMark::rxInit();
    acrxBuildClassHierarchy();
}

Acad::ErrorStatus TestMark::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
    return es == Acad::eOk ? filer->writeInt32(m_number) : es;
}

Acad::ErrorStatus TestMark::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
    return es == Acad::eOk ? filer->readInt32(&m_number) : es;
}

std::vector<std::wstring> SymbolFixture::names(AcDbObjectId tableId, bool erasedToo) {
    std::vector<std::wstring> all;
    auto* table = open<AcDbSymbolTable>(tableId);
    AcDbSymbolTableIterator* made = nullptr;
    EXPECT_EQ(table->newIterator(made, true, !erasedToo), Acad::eOk);
    const std::unique_ptr<AcDbSymbolTableIterator> it(made);
    for (; !it->done(); it->step(true, !erasedToo)) {
        AcDbSymbolTableRecord* record = nullptr;
        EXPECT_EQ(it->getRecord(record, AcDb::kForRead, erasedToo), Acad::eOk);
        const ACHAR* name = nullptr;
        EXPECT_EQ(record->getName(name), Acad::eOk);
        all.emplace_back(name);
        record->close();
    }
    table->close();
    return all;
}

std::vector<int> SymbolFixture::numbers(AcDbObjectId blockId) {
    std::vector<int> all;
    auto* block = open<AcDbBlockTableRecord>(blockId);
    AcDbBlockTableRecordIterator* made = nullptr;
    EXPECT_EQ(block->newIterator(made), Acad::eOk);
    const std::unique_ptr<AcDbBlockTableRecordIterator> it(made);
    for (; !it->done(); it->step()) {
        AcDbEntity* entity = nullptr;
        EXPECT_EQ(it->getEntity(entity), Acad::eOk);
        all.push_back(TestMark::cast(entity) != nullptr ? TestMark::cast(entity)->number() : -1);
        entity->close();
    }
    block->close();
    return all;
}

AcDbObjectId SymbolFixture::append(AcDbObjectId blockId, int number) {
    auto* block = open<AcDbBlockTableRecord>(blockId, AcDb::kForWrite);
    auto* mark = new TestMark(number);
    AcDbObjectId id;
    EXPECT_EQ(block->appendAcDbEntity(id, mark), Acad::eOk);
    mark->close();
    block->close();
    return id;
}

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    const std::filesystem::path path = std::filesystem::temp_directory_path() /
                                       ("symbols" + std::to_string(random()) + std::to_string(random()));
    std::filesystem::create_directories(path);
    m_path = path.wstring();
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::wstring TemporaryFolder::file(const wchar_t* name) const {
    return (std::filesystem::path(m_path) / name).wstring();
}
