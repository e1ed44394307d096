#include "dbx/nod.h"

#include "dbproxy.h"
#include "dbx/cdb/cdbrec.h"
#include "dbx/cdb/cdbrec_old.h"
#include "embedded/session.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using namespace orv::acad;
using namespace testing_support;

namespace {

class GeneralData : public testing::Test {
protected:
    GeneralData() { acdbHostApplicationServices()->setWorkingDatabase(&db); }
    ~GeneralData() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    AcDbObjectId general() { return entryAt(db.namedObjectsDictionaryId(), {L"KELMORAN", L"S", L"GENERAL"}); }
    std::string stored(const wchar_t* name) {
        ORV_CObjCdbRecord* record = nullptr;
        if (acdbOpenObject(record, entryOf(general(), name), AcDb::kForRead) != Acad::eOk)
            return "nothing";
        const std::string bytes(static_cast<const char*>(record->getData()),
                                static_cast<std::size_t>(record->getLen()));
        record->close();
        return bytes;
    }
    static std::string bytesOf(int number) {
        return std::string(reinterpret_cast<const char*>(&number), sizeof number);
    }

    AcDbDatabase db{true};
    const std::wstring store = L"S";
};

} // namespace

TEST_F(GeneralData, RawBytesComeBackAndTheWayIsMade) {
    const int number = 0x01020304;
    EXPECT_TRUE(nod_writeGeneralData(store, L"n", &number, sizeof number));
    EXPECT_EQ(stored(L"n"), bytesOf(number));
    int back = 0;
    EXPECT_TRUE(nod_readGeneralData(store, L"n", &back, sizeof back));
    EXPECT_EQ(back, number);
}

TEST_F(GeneralData, AValueThatWasNeverWrittenGivesFalseAndLeavesTheBufferAlone) {
    int back = 77;
    EXPECT_FALSE(nod_readGeneralData(store, L"n", &back, sizeof back));
    EXPECT_EQ(back, 77);
    EXPECT_TRUE(entryOf(db.namedObjectsDictionaryId(), L"KELMORAN").isNull());
    nod_writeGeneralData(store, L"other", &back, sizeof back);
    EXPECT_FALSE(nod_readGeneralData(store, L"n", &back, sizeof back));
}

TEST_F(GeneralData, MoreBytesThanThereAreGiveFalseFewerTheBeginning) {
    nod_writeGeneralData(store, L"n", "abcd", 4);
    char buffer[8] = "-------";
    EXPECT_FALSE(nod_readGeneralData(store, L"n", buffer, 8));
    EXPECT_STREQ(buffer, "-------");
    EXPECT_TRUE(nod_readGeneralData(store, L"n", buffer, 2));
    EXPECT_STREQ(buffer, "ab-----");
}

TEST_F(GeneralData, AnEmptyNameGivesFalseAndMakesNoDictionary) {
    bool flag = true;
    std::wstring text = L"kept";
    EXPECT_FALSE(nod_writeGeneralData(store, L"", "a", 1));
    EXPECT_FALSE(nod_writeGeneralData(store, L"", true));
    EXPECT_FALSE(nod_writeGeneralData(store, L"", std::wstring(L"x")));
    EXPECT_FALSE(nod_readGeneralData(store, L"", flag));
    EXPECT_FALSE(nod_readGeneralData(store, L"", text));
    EXPECT_TRUE(entryOf(db.namedObjectsDictionaryId(), L"KELMORAN").isNull());
}

TEST_F(GeneralData, AnEmptyStoreNameIsReportedAndGivesFalse) {
    ReportRecorder recorder;
    EXPECT_FALSE(nod_writeGeneralData(L"", L"n", "a", 1));
    EXPECT_EQ(recorder.conditions(), Texts{"!dbName.empty()"});
    char c = '-';
    EXPECT_FALSE(nod_readGeneralData(L"", L"n", &c, 1));
    EXPECT_EQ(c, '-');
    EXPECT_EQ(recorder.conditions(), Texts(2, "!dbName.empty()"));
    recorder.clear();
    EXPECT_FALSE(nod_writeGeneralData(L"", L"", "a", 1));
    EXPECT_FALSE(nod_readGeneralData(L"", L"", &c, 1));
    EXPECT_EQ(recorder.conditions(), Texts(2, "!dbName.empty()")) << "also when the value has no name";
    EXPECT_TRUE(entryOf(db.namedObjectsDictionaryId(), L"KELMORAN").isNull());
}

TEST_F(GeneralData, AFlagWithAnEmptyStoreNameIsReportedByItsOwnCallAndByTheRawOne) {
    ReportRecorder recorder;
    EXPECT_FALSE(nod_writeGeneralData(L"", L"n", true));
    EXPECT_EQ(recorder.conditions(), Texts(2, "!dbName.empty()"));
    recorder.clear();
    bool flag = true;
    EXPECT_FALSE(nod_readGeneralData(L"", L"n", flag));
    EXPECT_TRUE(flag);
    EXPECT_EQ(recorder.conditions(), Texts(2, "!dbName.empty()"));
    recorder.clear();
    EXPECT_FALSE(nod_writeGeneralData(L"", L"", true));
    EXPECT_FALSE(nod_readGeneralData(L"", L"", flag));
    EXPECT_EQ(recorder.conditions(), Texts(2, "!dbName.empty()")) << "without a name each call ends there";
    EXPECT_TRUE(entryOf(db.namedObjectsDictionaryId(), L"KELMORAN").isNull());
}

TEST_F(GeneralData, ATextWithAnEmptyStoreNameIsWrittenTrueAndReadFalse) {
    ReportRecorder recorder;
    EXPECT_TRUE(nod_writeGeneralData(L"", L"t", std::wstring(L"x"))) << "whatever the three writes said";
    EXPECT_EQ(recorder.conditions(), Texts(4, "!dbName.empty()")) << "its own and one per write";
    EXPECT_TRUE(entryOf(db.namedObjectsDictionaryId(), L"KELMORAN").isNull());
    recorder.clear();
    std::wstring back = L"kept";
    EXPECT_FALSE(nod_readGeneralData(L"", L"t", back));
    EXPECT_EQ(back, L"kept");
    EXPECT_EQ(recorder.conditions(), Texts(3, "!dbName.empty()")) << "its own, version and size";
    recorder.clear();
    EXPECT_FALSE(nod_writeGeneralData(L"", L"", std::wstring(L"x")));
    EXPECT_FALSE(nod_readGeneralData(L"", L"", back));
    EXPECT_EQ(recorder.conditions(), Texts(2, "!dbName.empty()"));
}

TEST_F(GeneralData, AProxyInPlaceOfAValueCountsAsTheWrongClass) {
    nod_writeGeneralData(store, L"first", "a", 1);
    putObject(general(), L"n", new AcDbProxyObject);
    ReportRecorder recorder;
    char c = '-';
    EXPECT_FALSE(nod_readGeneralData(store, L"n", &c, 1));
    EXPECT_EQ(c, '-');
    EXPECT_EQ(recorder.size(), 0u);
    EXPECT_FALSE(nod_writeGeneralData(store, L"n", "x", 1));
    EXPECT_EQ(recorder.conditions(), Texts{"pRec"});
}

TEST_F(GeneralData, AValueThatIsGoneForGoodIsNotReadAndNotWrittenOver) {
    nod_writeGeneralData(store, L"n", "abcd", 4);
    eraseObject(entryOf(general(), L"n"));
    embedded::forgetHistory(db);
    ASSERT_FALSE(entryOf(general(), L"n").isNull()) << "the entry stands";
    ReportRecorder recorder;
    char c = '-';
    EXPECT_FALSE(nod_readGeneralData(store, L"n", &c, 1));
    EXPECT_EQ(c, '-');
    EXPECT_EQ(recorder.size(), 0u);
    EXPECT_FALSE(nod_writeGeneralData(store, L"n", "x", 1));
    EXPECT_EQ(recorder.conditions(), Texts{"pRec"});
}

TEST_F(GeneralData, FlagsTakeOneByte) {
    EXPECT_TRUE(nod_writeGeneralData(store, L"f", true));
    EXPECT_EQ(stored(L"f"), "\x01");
    bool flag = false;
    EXPECT_TRUE(nod_readGeneralData(store, L"f", flag));
    EXPECT_TRUE(flag);
    nod_writeGeneralData(store, L"f", false);
    EXPECT_TRUE(nod_readGeneralData(store, L"f", flag));
    EXPECT_FALSE(flag);
    flag = true;
    EXPECT_FALSE(nod_readGeneralData(store, L"absent", flag));
    EXPECT_TRUE(flag);
}

TEST_F(GeneralData, TextsTakeThreeRecordsOf16BitUnits) {
    EXPECT_TRUE(nod_writeGeneralData(store, L"t", std::wstring(L"a\u00e4")));
    EXPECT_EQ(stored(L"t.version"), bytesOf(2));
    EXPECT_EQ(stored(L"t.size"), bytesOf(2));
    EXPECT_EQ(stored(L"t.data"), std::string("a\0\xe4\0", 4));
    std::wstring back = L"longer than that";
    EXPECT_TRUE(nod_readGeneralData(store, L"t", back));
    EXPECT_EQ(back, L"a\u00e4");
}

TEST_F(GeneralData, ACharacterOutsideTheFirstPlaneTakesTwoUnits) {
    const std::wstring text = L"\U0001F600x";
    EXPECT_TRUE(nod_writeGeneralData(store, L"t", text));
    EXPECT_EQ(stored(L"t.size"), bytesOf(3));
    EXPECT_EQ(stored(L"t.data"), std::string("\x3d\xd8\x00\xde\x78\x00", 6));
    std::wstring back;
    EXPECT_TRUE(nod_readGeneralData(store, L"t", back));
    EXPECT_EQ(back, text);
}

TEST_F(GeneralData, AnEmptyTextHasASizeAndADataRecordOfNoBytes) {
    EXPECT_TRUE(nod_writeGeneralData(store, L"t", std::wstring()));
    EXPECT_EQ(stored(L"t.size"), bytesOf(0));
    EXPECT_EQ(stored(L"t.data"), "");
    std::wstring back = L"x";
    EXPECT_TRUE(nod_readGeneralData(store, L"t", back));
    EXPECT_EQ(back, L"");
}

TEST_F(GeneralData, ATextWithASizeButNoDataIsReportedAndResized) {
    nod_writeGeneralData(store, L"t.size", bytesOf(3).data(), 4);
    nod_writeGeneralData(store, L"t.version", bytesOf(2).data(), 4);
    ReportRecorder recorder;
    std::wstring back;
    EXPECT_FALSE(nod_readGeneralData(store, L"t", back));
    EXPECT_EQ(back, std::wstring(3, L'\0'));
    ASSERT_EQ(recorder.conditions(), (Texts{"succ"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"dbName", "S"},
                                             {"name", "t"},
                                             {"\"data\"", "data"},
                                             {"size*sizeof(value[0])", "6"},
                                             {"size", "3"},
                                             {"sizeof(value[0])", "2"}}));
}

TEST_F(GeneralData, ATextWithoutSizeGivesFalseAndLeavesTheValue) {
    std::wstring back = L"kept";
    EXPECT_FALSE(nod_readGeneralData(store, L"t", back));
    EXPECT_EQ(back, L"kept");
}

TEST_F(GeneralData, AnOldTextFillsHalfOfTheValue) {
    for (const bool withVersion : {false, true}) {
        if (withVersion)
            nod_writeGeneralData(store, L"t.version", bytesOf(1).data(), 4);
        nod_writeGeneralData(store, L"t.size", bytesOf(4).data(), 4);
        nod_writeGeneralData(store, L"t.data", "ABCD", 4);
        std::wstring back;
        EXPECT_TRUE(nod_readGeneralData(store, L"t", back));
        const wchar_t expected[] = {0x4241, 0x4443, 0, 0};
        EXPECT_EQ(back, std::wstring(expected, 4));
    }
}

TEST_F(GeneralData, ADamagedSizeTakesNoMemory) {
    nod_writeGeneralData(store, L"t.size", bytesOf(0x7FFFFFFF).data(), 4);
    nod_writeGeneralData(store, L"t.data", "ab", 2);
    ReportRecorder recorder;
    std::wstring back = L"kept";
    EXPECT_FALSE(nod_readGeneralData(store, L"t", back));
    EXPECT_EQ(back, L"kept");
    EXPECT_EQ(recorder.conditions(), (Texts{"succ"}));
    nod_writeGeneralData(store, L"t.size", bytesOf(-5).data(), 4);
    EXPECT_TRUE(nod_readGeneralData(store, L"t", back));
    EXPECT_EQ(back, L"");
}

TEST_F(GeneralData, ALargeSizeIsBelievedWhenTheTextOfItsVersionIsThere) {
    constexpr int kLarge = (1 << 20) + 1;
    const std::string half(kLarge, 'a');
    nod_writeGeneralData(store, L"t.size", bytesOf(kLarge).data(), 4);
    nod_writeGeneralData(store, L"t.data", half.data(), half.size());
    ReportRecorder recorder;
    std::wstring back;
    EXPECT_TRUE(nod_readGeneralData(store, L"t", back)) << "one byte for each is what an old text has";
    EXPECT_EQ(back.size(), half.size());
    EXPECT_EQ(recorder.size(), 0u);

    nod_writeGeneralData(store, L"t.version", bytesOf(2).data(), 4);
    back = L"kept";
    EXPECT_FALSE(nod_readGeneralData(store, L"t", back)) << "and half of what a new one has";
    EXPECT_EQ(back, L"kept");
    EXPECT_EQ(recorder.conditions(), Texts{"succ"});

    const std::string whole = half + half;
    nod_writeGeneralData(store, L"t.data", whole.data(), whole.size());
    EXPECT_TRUE(nod_readGeneralData(store, L"t", back));
    EXPECT_EQ(back, std::wstring(kLarge, static_cast<wchar_t>(0x6161)));
}

TEST_F(GeneralData, AShorterSecondWriteReplacesTheBlock) {
    nod_writeGeneralData(store, L"n", "abcdef", 6);
    const AcDbObjectId record = entryOf(general(), L"n");
    nod_writeGeneralData(store, L"n", "xy", 2);
    EXPECT_EQ(entryOf(general(), L"n"), record);
    EXPECT_EQ(stored(L"n"), "xy");
    char buffer[6];
    EXPECT_FALSE(nod_readGeneralData(store, L"n", buffer, 6));
}

TEST_F(GeneralData, SomethingElseUnderTheNameIsReportedOnWritingAndRefusedOnReading) {
    nod_writeGeneralData(store, L"first", "a", 1);
    putObject(general(), L"n", new orv::ORV_CdbRecord("abcd", 4));
    ReportRecorder recorder;
    EXPECT_FALSE(nod_writeGeneralData(store, L"n", "x", 1));
    EXPECT_EQ(recorder.conditions(), (Texts{"pRec"}));
    char c = '-';
    EXPECT_FALSE(nod_readGeneralData(store, L"n", &c, 1));
    EXPECT_EQ(c, '-');
}
