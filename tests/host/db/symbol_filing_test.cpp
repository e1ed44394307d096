#include "db/database_core.h"
#include "dbdict.h"
#include "dblayout.h"
#include "dbmstyle.h"
#include "dbplhldr.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "dwg/dwg_out_filer.h"
#include "dwg/file_frame.h"
#include "dwg/object_envelope.h"
#include "rxclass.h"

#include <gtest/gtest.h>

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

std::string bits(dwg::ByteSpan body, std::size_t begin, std::size_t end) {
    dwg::BitWriter cut;
    cut.copyBits(body, begin, end);
    const std::size_t length = cut.length();
    return std::to_string(length) + " bits " + hex(cut.takeBytes());
}

// Every kind that this room files itself.
bool isFiledHere(const AcRxClass* kind) {
    for (const AcRxClass* own : {AcDbSymbolTable::desc(), AcDbSymbolTableRecord::desc(), AcDbBlockBegin::desc(),
                                 AcDbBlockEnd::desc(), AcDbPlaceHolder::desc(), AcDbXrecord::desc(),
                                 AcDbPlotSettings::desc(), AcDbMlineStyle::desc(), AcDbDictionary::desc()})
        if (kind->isDerivedFrom(own))
            return true;
    return false;
}

class SymbolFiling : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        const std::filesystem::path path = std::filesystem::path(TALDORK_DRAWINGS) / GetParam();
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
        EXPECT_EQ(bits(filer.data().bytes(), 0, filer.data().length()), bits(body, parts.dataBegin, parts.dataEnd))
            << name << " " << std::hex << stub.handle;
        EXPECT_EQ(bits(filer.handles().bytes(), 0, filer.handles().length()),
                  bits(body, parts.handlesBegin, parts.handlesEnd))
            << name << " " << std::hex << stub.handle;
        ++counts[kind->name()];
    });
    EXPECT_GE(counts.size(), 20u);
    EXPECT_GE(counts[L"AcDbBlockTableRecord"], 3);
}

INSTANTIATE_TEST_SUITE_P(Drawings, SymbolFiling,
                         ::testing::Values("small_AC1015.dwg", "leader_AC1015.dwg", "sample_AC1015.dwg"),
                         [](const auto& info) {
                             const std::string name = info.param;
                             return name.substr(0, name.find('_'));
                         });

} // namespace
