#include "db/database_core.h"
#include "dbdict.h"
#include "dblayout.h"
#include "dbmstyle.h"
#include "dbplhldr.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "dwg/dwg_in_filer.h"
#include "dwg/dwg_out_filer.h"
#include "dwg/file_frame.h"
#include "dwg/object_envelope.h"
#include "rxclass.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>

using namespace embedded;

namespace {

std::string hex(const std::vector<std::uint8_t>& bytes) {
    std::string text;
    for (std::uint8_t byte : bytes) {
        text += "0123456789ABCDEF"[byte >> 4];
        text += "0123456789ABCDEF"[byte & 15];
    }
    return text;
}

struct Sample {
    const char* file;
    // Texts end with a zero in the file, as most products write them, and we.
    bool endedTexts;
};

std::ostream& operator<<(std::ostream& out, const Sample& sample) { return out << sample.file; }

std::string bits(dwg::ByteSpan body, std::size_t begin, std::size_t end) {
    dwg::BitWriter cut;
    cut.copyBits(body, begin, end);
    const std::size_t length = cut.length();
    return std::to_string(length) + " bits " + hex(cut.takeBytes());
}

// Every kind that this room files itself.
bool isFiledHere(const AcRxClass* kind) {
    for (const AcRxClass* own :
         {AcDbSymbolTable::desc(), AcDbSymbolTableRecord::desc(), AcDbBlockBegin::desc(),
          AcDbBlockEnd::desc(), AcDbPlaceHolder::desc(), AcDbXrecord::desc(), AcDbPlotSettings::desc(),
          AcDbMlineStyle::desc(), AcDbDictionary::desc()})
        if (kind->isDerivedFrom(own))
            return true;
    return false;
}

class SymbolFiling : public ::testing::TestWithParam<Sample> {
protected:
    void SetUp() override {
        const std::filesystem::path path = std::filesystem::path(TALDORK_DRAWINGS) / GetParam().file;
        if (!std::filesystem::exists(path))
            GTEST_SKIP() << path << " is not here";
        m_database = std::make_unique<AcDbDatabase>(false);
        ASSERT_EQ(m_database->readDwgFile(path.wstring().c_str()), Acad::eOk);
    }

    std::unique_ptr<AcDbDatabase> m_database;
};

TEST_P(SymbolFiling, WhatWasReadIsWrittenWithTheSameBits) {
    DatabaseCore& core = m_database->core();
    auto* frame = dynamic_cast<dwg::FileFrame*>(core.frame.get());
    ASSERT_NE(frame, nullptr);
    std::map<std::wstring, int> counts;
    core.stubs().forEach([&](AcDbStub& stub) {
        if (stub.fileIndex == kNoFileIndex)
            return;
        AcRxClass* kind = core.source->classOf(stub);
        if (!isFiledHere(kind))
            return;
        AcDbObject* object = nullptr;
        ASSERT_EQ(acdbOpenObject(object, AcDbObjectId(&stub)), Acad::eOk) << std::hex << stub.handle;
        dwg::DwgOutFiler filer(core.tag(), frame->text);
        EXPECT_EQ(object->dwgOutFields(&filer), Acad::eOk);
        object->close();

        const dwg::ByteSpan body = frame->parts.objects[stub.fileIndex].body;
        dwg::ObjectParts parts;
        std::string why;
        ASSERT_TRUE(dwg::readEnvelope(body, kind->isDerivedFrom(AcDbEntity::desc()), parts, why)) << why;
        const std::string name(kind->name(), kind->name() + std::wcslen(kind->name()));
        if (GetParam().endedTexts)
            EXPECT_EQ(bits(filer.data().bytes(), 0, filer.data().length()),
                      bits(body, parts.dataBegin, parts.dataEnd))
                << name << " " << std::hex << stub.handle;
        else
            EXPECT_EQ((filer.data().length() - (parts.dataEnd - parts.dataBegin)) % 8, 0u)
                << name << " " << std::hex << stub.handle;
        EXPECT_EQ(bits(filer.handles().bytes(), 0, filer.handles().length()),
                  bits(body, parts.handlesBegin, embedded::dwg::endOfHandles(body, parts)))
            << name << " " << std::hex << stub.handle;
        ++counts[kind->name()];
    });
    EXPECT_GE(counts.size(), 20u);
    EXPECT_GE(counts[L"AcDbBlockTableRecord"], 3);
}

// What the entities of a block say about themselves agrees with the block's list of them.
TEST_P(SymbolFiling, BlocksListTheEntitiesThatNameThemAsOwner) {
    DatabaseCore& core = m_database->core();
    std::map<AcDbStub*, std::vector<AcDbStub*>> listed, owned;
    core.stubs().forEach([&](AcDbStub& stub) {
        if (stub.fileIndex == kNoFileIndex)
            return;
        AcDbObject* object = nullptr;
        if (acdbOpenObject(object, AcDbObjectId(&stub)) != Acad::eOk)
            return;
        if (auto* block = AcDbBlockTableRecord::cast(object)) {
            AcDbBlockTableRecordIterator* made = nullptr;
            ASSERT_EQ(block->newIterator(made), Acad::eOk);
            const std::unique_ptr<AcDbBlockTableRecordIterator> it(made);
            for (AcDbObjectId id; !it->done(); it->step()) {
                ASSERT_EQ(it->getEntityId(id), Acad::eOk);
                listed[&stub].push_back(id);
            }
        } else if (object->isKindOf(AcDbEntity::desc()) && !object->isKindOf(AcDbBlockBegin::desc()) &&
                   !object->isKindOf(AcDbBlockEnd::desc())) {
            AcDbStub* owner = object->ownerId();
            if (AcDbObjectId(owner).objectClass()->isDerivedFrom(AcDbBlockTableRecord::desc()))
                owned[owner].push_back(&stub);
        }
        object->close();
    });
    EXPECT_FALSE(listed.empty());
    for (auto& [block, entities] : listed)
        std::sort(entities.begin(), entities.end(),
                  [](const AcDbStub* a, const AcDbStub* b) { return a->handle < b->handle; });
    EXPECT_EQ(listed, owned);
}

// Every name of every table finds a record of that name.
TEST_P(SymbolFiling, TablesFindTheirRecordsByName) {
    int found = 0;
    for (AcDbObjectId tableId :
         {m_database->blockTableId(), m_database->layerTableId(), m_database->linetypeTableId(),
          m_database->textStyleTableId(), m_database->regAppTableId(), m_database->dimStyleTableId(),
          m_database->viewTableId(), m_database->UCSTableId(), m_database->viewportTableId()}) {
        AcDbSymbolTable* table = nullptr;
        ASSERT_EQ(acdbOpenObject(table, tableId), Acad::eOk);
        AcDbSymbolTableIterator* made = nullptr;
        ASSERT_EQ(table->newIterator(made), Acad::eOk);
        const std::unique_ptr<AcDbSymbolTableIterator> it(made);
        for (; !it->done(); it->step()) {
            AcDbSymbolTableRecord* record = nullptr;
            ASSERT_EQ(it->getRecord(record), Acad::eOk);
            AcString name, again;
            record->getName(name);
            EXPECT_EQ(record->ownerId(), tableId);
            record->close();
            ASSERT_EQ(table->getAt(name.makeUpper().kACharPtr(), record, AcDb::kForRead), Acad::eOk);
            record->getName(again);
            EXPECT_TRUE(again.equalsNoCase(name.kACharPtr()));
            record->close();
            ++found;
        }
        table->close();
    }
    EXPECT_GE(found, 12);
}

// A damaged file may hold any bits where an object is expected. Each reader takes them or refuses them, and
// keeps no more than they can hold.
RC_GTEST_PROP(SymbolReaders, AnyBitsAreReadOrRefused, ()) {
    AcDbDatabase database(true);
    DatabaseCore& core = database.core();
    const dwg::TextCodec text(30);
    const auto data = *rc::gen::container<std::vector<std::uint8_t>>(rc::gen::arbitrary<std::uint8_t>());
    // Short handles only: the table of handles is not what is tried here.
    auto handles = *rc::gen::container<std::vector<std::uint8_t>>(rc::gen::arbitrary<std::uint8_t>());
    for (std::uint8_t& byte : handles)
        byte &= 0x51;
    for (AcRxClass* kind :
         {AcDbBlockTable::desc(), AcDbLayerTable::desc(), AcDbLinetypeTable::desc(),
          AcDbDimStyleTable::desc(), AcDbBlockTableRecord::desc(), AcDbLayerTableRecord::desc(),
          AcDbTextStyleTableRecord::desc(), AcDbLinetypeTableRecord::desc(), AcDbViewTableRecord::desc(),
          AcDbUCSTableRecord::desc(), AcDbViewportTableRecord::desc(), AcDbRegAppTableRecord::desc(),
          AcDbDimStyleTableRecord::desc(), AcDbVXTableRecord::desc(), AcDbBlockBegin::desc(),
          AcDbXrecord::desc(), AcDbLayout::desc(), AcDbMlineStyle::desc()}) {
        const std::unique_ptr<AcRxObject> made(kind->create());
        AcDbObject* object = AcDbObject::cast(made.get());
        RC_ASSERT(object != nullptr);
        dwg::DwgInFiler in(core, text, dwg::BitReader(dwg::ByteSpan(data)),
                           dwg::BitReader(dwg::ByteSpan(handles)), 1);
        const Acad::ErrorStatus es = object->dwgInFields(&in);
        RC_ASSERT(es == in.filerStatus());
        if (es != Acad::eOk)
            continue;
        // What was taken can be filed and taken again.
        dwg::DwgOutFiler out(core.tag(), text);
        RC_ASSERT(object->dwgOutFields(&out) == Acad::eOk);
        const std::unique_ptr<AcRxObject> twin(kind->create());
        dwg::DwgInFiler again(core, text, dwg::BitReader(dwg::ByteSpan(out.data().bytes())),
                              dwg::BitReader(dwg::ByteSpan(out.handles().bytes())), 1);
        RC_ASSERT(AcDbObject::cast(twin.get())->dwgInFields(&again) == Acad::eOk);
    }
}

INSTANTIATE_TEST_SUITE_P(Drawings, SymbolFiling,
                         ::testing::Values(Sample{"small_AC1015.dwg", false},
                                           Sample{"leader_AC1015.dwg", true},
                                           Sample{"sample_AC1015.dwg", true}),
                         [](const auto& info) {
                             const std::string name = info.param.file;
                             return name.substr(0, name.find('_'));
                         });

} // namespace
