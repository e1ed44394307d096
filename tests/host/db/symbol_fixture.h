#pragma once

#include "dbsymtb.h"
#include "embedded/session.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// An entity with one number.
class TestMark : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(TestMark);
    TestMark() = default;
    explicit TestMark(Adesk::Int32 number) : m_number(number) {}

    Adesk::Int32 number() const {
        assertReadEnabled();
        return m_number;
    }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    Adesk::Int32 m_number = 0;
};

// Registers the class once.
void registerTestMark();

// A fresh drawing without history.
class SymbolFixture : public ::testing::Test {
protected:
    void SetUp() override {
        registerTestMark();
        m_database = std::make_unique<AcDbDatabase>(true);
        embedded::forgetHistory(*m_database);
    }

    template <class T>
    T* open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) {
        T* object = nullptr;
        EXPECT_EQ(acdbOpenObject(object, id, mode, openErased), Acad::eOk);
        return object;
    }

    // A record of that name in a table; both closed.
    template <class Table, class Record>
    AcDbObjectId add(AcDbObjectId tableId, Record* record, const wchar_t* name) {
        EXPECT_EQ(record->setName(name), Acad::eOk);
        Table* table = open<Table>(tableId, AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        record->close();
        table->close();
        return id;
    }
    AcDbObjectId addLayer(const wchar_t* name) {
        return add<AcDbLayerTable>(m_database->layerTableId(), new AcDbLayerTableRecord, name);
    }
    AcDbObjectId addBlock(const wchar_t* name) {
        return add<AcDbBlockTable>(m_database->blockTableId(), new AcDbBlockTableRecord, name);
    }

    void rename(AcDbObjectId id, const wchar_t* name) {
        auto* record = open<AcDbSymbolTableRecord>(id, AcDb::kForWrite);
        EXPECT_EQ(record->setName(name), Acad::eOk);
        record->close();
    }
    void erase(AcDbObjectId id, bool erasing = true) {
        auto* object = open<AcDbObject>(id, AcDb::kForWrite, true);
        EXPECT_EQ(object->erase(erasing), Acad::eOk);
        object->close();
    }

    // The names of a table's records in its order.
    std::vector<std::wstring> names(AcDbObjectId tableId, bool erasedToo = false);
    // The numbers of a block's marks in their order.
    std::vector<int> numbers(AcDbObjectId blockId);
    AcDbObjectId append(AcDbObjectId blockId, int number);

    std::unique_ptr<AcDbDatabase> m_database;
};

// A folder of this process's own that goes with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    std::wstring file(const wchar_t* name) const;

private:
    std::wstring m_path;
};
