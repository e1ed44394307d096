// The object in drawings on disk.

#include "dbx/doc/ORV_CCSysPar.h"

#include "dbproxy.h"
#include "embedded/inventory.h"
#include "embedded/memory_filer.h"
#include "embedded/object_text.h"
#include "embedded/session.h"
#include "platform/files.h"
#include "support/store_drawing.h"
#include "support/syspar_support.h"

#include <gtest/gtest.h>

#include <string>

using testing_support::dataOf;
using testing_support::entryAt;
using testing_support::expectSame;
using testing_support::putObject;
using testing_support::sampleData;
using testing_support::StoreDrawing;
using testing_support::subDictionary;

namespace {

// Files a version that does not exist yet behind all of its items.
class NewerSysPar : public ORV_CCSysPar {
public:
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        AcDbObject::dwgOutFields(filer);
        filer->writeString(L"t");
        filer->writeString(L"p");
        for (int i = 0; i < 8; ++i)
            filer->writeInt32(i);
        filer->writeDouble(0.0);
        filer->writeBoolean(false);
        filer->writeBoolean(false);
        filer->writeDouble(0.0);
        filer->writeBoolean(false);
        filer->writeInt32(0);
        filer->writeInt32(kMagic);
        filer->writeInt32(kVersion + 1);
        return filer->writeString(L"what comes then");
    }
};

class CCSysParDrawing : public testing::Test {
protected:
    AcDbObjectId put(AcDbObject* object) {
        return putObject(subDictionary(m_drawing.named, L"SYSTEM"), L"SYST", object);
    }
    // The object in the drawing after a way over the disk; open for read.
    AcDbObject* reopen() {
        const std::wstring file = platform::joinPath(m_folder, L"d.dwg");
        EXPECT_EQ(m_drawing.db.saveAs(file.c_str()), Acad::eOk) << embedded::lastFileError();
        m_back = std::make_unique<AcDbDatabase>(false);
        EXPECT_EQ(m_back->readDwgFile(file.c_str()), Acad::eOk) << embedded::lastFileError();
        return open(*m_back);
    }
    AcDbObject* open(AcDbDatabase& db) {
        const AcDbObjectId id =
            entryAt(db.namedObjectsDictionaryId(), {L"KELMORAN", L"ASDWG", L"SYSTEM", L"SYST"});
        AcDbObject* object = nullptr;
        EXPECT_EQ(acdbOpenObject(object, id, AcDb::kForRead), Acad::eOk);
        return object;
    }

    StoreDrawing m_drawing;
    std::wstring m_folder = platform::makeTemporaryFolder();
    std::unique_ptr<AcDbDatabase> m_back;
};

} // namespace

TEST_F(CCSysParDrawing, ComesBackFromTheDiskWithItsVersionTextOnTheReadSide) {
    put(new ORV_CCSysPar(sampleData()));
    AcDbObject* const object = reopen();
    ORV_CCSysPar* const back = ORV_CCSysPar::cast(object);
    ASSERT_NE(back, nullptr);
    expectSame(dataOf(*back), sampleData());
    EXPECT_EQ(dataOf(*back).versionText, sampleData().versionText2);
    EXPECT_EQ(dataOf(*back).versionText2, L"");
    object->close();
}

TEST_F(CCSysParDrawing, FieldsThatAreFullComeBackWhole) {
    ccsys data = sampleData();
    std::fill(std::begin(data.text1), std::end(data.text1), L'a');
    std::fill(std::begin(data.projectName), std::end(data.projectName), L'b');
    std::memcpy(data.codeName, "0123456789abcdef", 16);
    std::memcpy(data.codeCategory, "ABCDEFGHIJKLMNOP", 16);
    data.versionText2 = std::wstring(132, L'v');
    put(new ORV_CCSysPar(data));
    AcDbObject* const object = reopen();
    ORV_CCSysPar* const back = ORV_CCSysPar::cast(object);
    ASSERT_NE(back, nullptr);
    expectSame(dataOf(*back), data);
    EXPECT_EQ(dataOf(*back).versionText, data.versionText2);
    object->close();
}

TEST_F(CCSysParDrawing, IsInTheClassTableUnderItsRow) {
    put(new ORV_CCSysPar(sampleData()));
    reopen()->close();
    bool found = false;
    for (const embedded::ClassTableRow& row : embedded::classTable(*m_back))
        if (row.className == L"ORV_CCSysPar") {
            found = true;
            EXPECT_EQ(row.dxfName, L"ORV_CCSysPar");
            EXPECT_EQ(row.applicationName, L"ORV_OE_LOADER_191");
            EXPECT_EQ(row.proxyFlags, 0);
            EXPECT_FALSE(row.isEntity);
        }
    EXPECT_TRUE(found);
}

TEST_F(CCSysParDrawing, ANewerVersionStaysAProxyAndIsNotLostInASave) {
    put(new NewerSysPar);
    AcDbObject* object = reopen();
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(object->isAProxy());
    ASSERT_NE(AcDbProxyObject::cast(object), nullptr);
    EXPECT_STREQ(AcDbProxyObject::cast(object)->originalClassName(), L"ORV_CCSysPar");
    object->close();
    const std::wstring file = platform::joinPath(m_folder, L"again.dwg");
    ASSERT_EQ(m_back->saveAs(file.c_str()), Acad::eOk);
    AcDbDatabase third(false);
    ASSERT_EQ(third.readDwgFile(file.c_str()), Acad::eOk);
    object = open(third);
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(object->isAProxy());
    object->close();
}

TEST_F(CCSysParDrawing, AChangeIsTakenBackByUndo) {
    const AcDbObjectId id = put(new ORV_CCSysPar(sampleData()));
    m_drawing.db.startUndoRecord();
    ORV_CCSysPar* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
    object->setData(ccsys());
    object->close();
    ASSERT_TRUE(embedded::undo(m_drawing.db));
    ASSERT_EQ(acdbOpenObject(object, id), Acad::eOk);
    expectSame(dataOf(*object), sampleData());
    object->close();
}

TEST_F(CCSysParDrawing, ACopyThroughTheFilersHasTheSameData) {
    const AcDbObjectId id = put(new ORV_CCSysPar(sampleData()));
    ORV_CCSysPar* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id), Acad::eOk);
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
    ASSERT_EQ(object->dwgOut(&out), Acad::eOk);
    object->close();
    ORV_CCSysPar copy;
    embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
    ASSERT_EQ(copy.dwgIn(&in), Acad::eOk);
    EXPECT_EQ(in.left(), 0u);
    expectSame(dataOf(copy), sampleData());
}

TEST_F(CCSysParDrawing, ATextOfItNamesItsHandleAndItsOwner) {
    const AcDbObjectId id = put(new ORV_CCSysPar(sampleData()));
    ORV_CCSysPar* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id), Acad::eOk);
    std::string text;
    ASSERT_EQ(embedded::writeObjectText(*object, embedded::TextForm::kAscii, text), Acad::eOk);
    object->close();
    wchar_t handle[17], owner[17];
    id.handle().getIntoAsciiBuffer(handle);
    entryAt(m_drawing.named, {L"SYSTEM"}).handle().getIntoAsciiBuffer(owner);
    const auto narrow = [](const wchar_t* wide) { return std::string(wide, wide + std::wcslen(wide)); };
    EXPECT_EQ(text.find("  0\r\nSECTION\r\n  2\r\nOBJECTS\r\n  0\r\nORV_CCSysPar\r\n  5\r\n" +
                        narrow(handle) + "\r\n"),
              0u);
    EXPECT_NE(text.find("330\r\n" + narrow(owner) + "\r\n100\r\n1\r\n"), std::string::npos);
}
