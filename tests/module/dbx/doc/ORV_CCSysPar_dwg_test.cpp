#include "dbx/doc/ORV_CCSysPar.h"

#include "embedded/memory_filer.h"
#include "orvcore/warn_on_new_version.h"
#include "platform/text.h"
#include "support/beep_recorder.h"
#include "support/own_calls.h"
#include "support/report_recorder.h"
#include "support/syspar_support.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <string>
#include <vector>

using testing_support::dataOf;
using testing_support::expectSame;
using testing_support::feedSample;
using testing_support::fieldText;
using testing_support::ReportRecorder;
using testing_support::sampleData;
using testing_support::setCode;
using testing_support::SysParFiler;
using testing_support::Texts;

namespace {

using Bytes = std::vector<std::uint8_t>;

const Texts kFixedReads = {"readString",  "readString", "readInt32",   "readInt32",
                           "readInt32",   "readInt32",  "readInt32",   "readInt32",
                           "readInt32",   "readInt32",  "readDouble",  "readBoolean",
                           "readBoolean", "readDouble", "readBoolean", "readInt32"};

// Behind the fixed items: all reads of a version, in order.
Texts versionedReads(int version) {
    Texts reads = {"readInt32"};
    if (version == 0)
        return reads;
    reads.push_back("readInt32");
    if (version > 7)
        return reads;
    reads.push_back("readInt32");
    const std::vector<std::pair<int, std::string>> items = {
        {2, "readString"}, {3, "readInt32"},  {4, "readBytes 132"}, {4, "readBChunk"},
        {5, "readInt32"},  {6, "readString"}, {7, "readBoolean"}};
    for (const auto& [since, read] : items)
        if (version >= since)
            reads.push_back(read);
    return reads;
}

Texts readsOf(int version) {
    Texts reads = kFixedReads;
    const Texts more = versionedReads(version);
    reads.insert(reads.end(), more.begin(), more.end());
    return reads;
}

// What an object has after reading the sample in a version; the others are as `before` had them.
ccsys expectedOf(int version, const ccsys& before) {
    ccsys data = sampleData();
    if (version == 0)
        data.int2 = 1;
    if (version < 2) {
        std::memset(data.codeName, 0, sizeof data.codeName);
        setCode(data.codeName, "OEN_4700");
    }
    if (version < 3)
        data.int4 = version == 0 ? before.int4 : 0;
    if (version < 5)
        data.int5 = before.int5;
    if (version < 6)
        std::memset(data.codeCategory, 0, sizeof data.codeCategory);
    if (version < 7)
        data.nation = 0;
    data.versionText = version >= 4 ? L"11.50" : before.versionText;
    return data;
}

// Something else in every field.
ccsys otherData() {
    ccsys data;
    std::wcscpy(data.text1, L"old text that is longer");
    std::wcscpy(data.projectName, L"old project that is longer");
    data.int4 = -4;
    data.int5 = -5;
    data.nation = 1;
    data.int2 = 99;
    std::memcpy(data.codeName, "0123456789abcdef", 16);
    std::memcpy(data.codeCategory, "0123456789abcdef", 16);
    data.versionText = L"old";
    return data;
}

Bytes filed(const ORV_CCSysPar& object) {
    Bytes bytes;
    embedded::MemoryFiler filer(AcDb::kFileFiler, bytes);
    EXPECT_EQ(object.dwgOutFields(&filer), Acad::eOk);
    return bytes;
}

Acad::ErrorStatus readFrom(ORV_CCSysPar& object, const Bytes& bytes) {
    embedded::MemoryFiler filer(AcDb::kFileFiler, bytes.data(), bytes.size());
    return object.dwgInFields(&filer);
}

class CCSysParVersion : public testing::TestWithParam<int> {};

} // namespace

TEST(CCSysParDwg, WritesAllItemsInOrderAtVersion7) {
    const ORV_CCSysPar object(sampleData());
    SysParFiler filer;
    EXPECT_EQ(object.dwgOutFields(&filer), Acad::eOk);
    EXPECT_EQ(ownCalls(filer),
              (Texts{"writeString First \u00e4",
                     "writeString Br\u00fccke",
                     "writeInt32 1",
                     "writeInt32 9",
                     "writeInt32 120",
                     "writeInt32 345",
                     "writeInt32 -2",
                     "writeInt32 5000",
                     "writeInt32 -77",
                     "writeInt32 3",
                     "writeDouble 1.500000",
                     "writeBoolean 1",
                     "writeBoolean 0",
                     "writeDouble -0.100000",
                     "writeBoolean 1",
                     "writeInt32 33",
                     "writeInt32 123456789",
                     "writeInt32 7",
                     "writeInt32 6",
                     "writeString EC_2-2004",
                     "writeInt32 44",
                     "writeBytes 132: 31 31 2e 35 30 a0 62 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
                     "00 00 00 00 00 00 00 00 00 00 00",
                     "writeBChunk 4: 00 00 00 00",
                     "writeInt32 55",
                     "writeString B",
                     "writeBoolean 1"}));
}

TEST(CCSysParDwg, TheBasesFilingComesFirst) {
    SysParFiler filer;
    filer.type = AcDb::kCopyFiler;
    const ORV_CCSysPar object(sampleData());
    EXPECT_EQ(object.dwgOutFields(&filer), Acad::eOk);
    const auto base = static_cast<std::size_t>(testing_support::baseWrites(AcDb::kCopyFiler));
    ASSERT_GT(base, 0u);
    EXPECT_EQ(filer.calls[base], "writeString First \u00e4");
}

TEST(CCSysParDwg, Version7InBytes) {
    ccsys data;
    std::wcscpy(data.text1, L"A");
    data.system = 3;
    data.double1 = 1.0;
    data.int2 = 2;
    data.versionText2 = L"v";
    setCode(data.codeName, "EC_2");
    Bytes expected = {1, 0, 0, 0, 'A', 0, 0, 0, 0, 0};
    const auto number = [&](Adesk::Int32 value) {
        for (int shift = 0; shift < 32; shift += 8)
            expected.push_back(static_cast<std::uint8_t>(static_cast<Adesk::UInt32>(value) >> shift));
    };
    for (const Adesk::Int32 value : {3, 0, 0, 0, 0, 10000, 0, 0})
        number(value);
    expected.insert(expected.end(), {0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1});
    for (const Adesk::Int32 value : {0, 0x075BCD15, 7, 2, 4})
        number(value);
    expected.insert(expected.end(), {'E', 0, 'C', 0, '_', 0, '2', 0, 0, 0, 0, 0, 'v'});
    expected.insert(expected.end(), 131, 0);
    for (const Adesk::Int32 value : {4, 0, 2, 0})
        number(value);
    expected.push_back(0);
    EXPECT_EQ(filed(ORV_CCSysPar(data)), expected);

    ORV_CCSysPar back(otherData());
    ASSERT_EQ(readFrom(back, expected), Acad::eOk);
    data.int4 = 0;
    expectSame(dataOf(back), data);
}

TEST_P(CCSysParVersion, IsReadAsItsItemsSay) {
    const int version = GetParam();
    ReportRecorder reports;
    ORV_CCSysPar object(otherData());
    SysParFiler filer;
    feedSample(filer, version);
    ASSERT_EQ(object.dwgInFields(&filer), Acad::eOk);
    EXPECT_EQ(ownReads(filer), readsOf(version));
    EXPECT_TRUE(filer.allTaken());
    const ccsys data = dataOf(object);
    expectSame(data, expectedOf(version, otherData()));
    EXPECT_EQ(data.versionText, expectedOf(version, otherData()).versionText);
    EXPECT_EQ(data.chunkValue, version >= 4 ? 0x01020304 : 0);
    EXPECT_EQ(reports.size(), 0u);
}

TEST_P(CCSysParVersion, EveryPrefixEndsInAFailure) {
    const int version = GetParam();
    Bytes bytes = filed(ORV_CCSysPar(sampleData()));
    // Cut to the items of the version, with its number in place.
    const std::size_t magic = bytes.size() - (1 + 4 + 2 + 4 + 4 + 4 + 132 + 4 + (4 + 18) + 4 + 4 + 4);
    const std::size_t ends[] = {
        0, 12, 12 + 22, 12 + 26, 12 + 26 + 140, 12 + 26 + 144, 12 + 26 + 150, 12 + 26 + 151};
    if (version == 0) {
        bytes.resize(magic + 4);
        bytes[magic] = 0;
    } else {
        bytes.resize(magic + ends[version]);
        bytes[magic + 4] = static_cast<std::uint8_t>(version);
    }
    ORV_CCSysPar whole(otherData());
    ASSERT_EQ(readFrom(whole, bytes), Acad::eOk);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        ORV_CCSysPar object(otherData());
        // A copy, so that a read behind it is one outside its memory.
        // Without the magic it is one of the oldest, which end there.
        const bool old = length == magic;
        EXPECT_EQ(readFrom(object, Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length))),
                  old ? Acad::eOk : Acad::eEndOfObject)
            << length;
    }
}

INSTANTIATE_TEST_SUITE_P(All, CCSysParVersion, testing::Range(0, 8));

TEST(CCSysParDwg, WithoutTheMagicItIsAnOldOneNamedByItsNorm) {
    for (const Adesk::Int32 instead : {0, 1, 123456788, -123456789}) {
        SysParFiler filer;
        filer.feedText(L"").feedText(L"");
        for (const Adesk::Int32 value : {0, 0, 0, 0, 0, 0, 0, 4})
            filer.feed<Adesk::Int32>(value);
        filer.feed(0.0).feed<Adesk::Boolean>(false).feed<Adesk::Boolean>(false).feed(0.0);
        filer.feed<Adesk::Boolean>(false).feed<Adesk::Int32>(0).feed<Adesk::Int32>(instead);
        ORV_CCSysPar object(otherData());
        ASSERT_EQ(object.dwgInFields(&filer), Acad::eOk);
        EXPECT_EQ(dataOf(object).int2, 1);
        EXPECT_STREQ(dataOf(object).codeName, "SIA_162");
        EXPECT_EQ(fieldText(dataOf(object).codeCategory), "");
    }
}

TEST(CCSysParDwg, Version8Is301AfterTheMagicAndTheVersion) {
    orv_forgetNewVersionWarnings();
    int warnings = 0;
    const auto before = orv_setNewVersionSink([&](const ORV_NewVersionWarning&) { ++warnings; });
    for (const int version : {8, 9, 2147483647}) {
        ORV_CCSysPar object(otherData());
        SysParFiler filer;
        feedSample(filer, version);
        EXPECT_EQ(static_cast<int>(object.dwgInFields(&filer)), 301);
        EXPECT_EQ(ownReads(filer), readsOf(8));
        EXPECT_EQ(filer.filerStatus(), Acad::eOk);
    }
    orv_setNewVersionSink(before);
    EXPECT_EQ(warnings, 0) << "the host tells of proxies";
}

TEST(CCSysParDwg, VersionsBelow1AreReadAsVersion1) {
    for (const int version : {0, -1, -2147483647 - 1}) {
        ORV_CCSysPar object(otherData());
        Bytes bytes = filed(ORV_CCSysPar(sampleData()));
        const std::size_t magic = bytes.size() - (1 + 4 + 2 + 4 + 4 + 4 + 132 + 4 + (4 + 18) + 4 + 4 + 4);
        bytes.resize(magic + 12);
        for (std::size_t i = 0; i < 4; ++i)
            bytes[magic + 4 + i] = static_cast<std::uint8_t>(static_cast<Adesk::UInt32>(version) >> (8 * i));
        ASSERT_EQ(readFrom(object, bytes), Acad::eOk);
        expectSame(dataOf(object), expectedOf(1, otherData()));
    }
}

TEST(CCSysParDwg, AOneByteChunkLeavesTheValueUnchanged) {
    ORV_CCSysPar object;
    testing_support::readBinaryField(object, 0x11223344);
    for (const std::size_t length : {0u, 1u}) {
        SysParFiler filer;
        feedSample(filer, 7, std::string(length, '\x77'));
        ASSERT_EQ(object.dwgInFields(&filer), Acad::eOk);
        EXPECT_EQ(dataOf(object).chunkValue, 0x11223344) << length;
        EXPECT_EQ(testing_support::binaryFieldOf(object), 0x11223344) << "and is filed with four bytes";
    }
}

TEST(CCSysParDwg, ALongerChunkGivesUpToFourBytesToTheValue) {
    const Adesk::Int32 expected[] = {0, 0, 0x11220201, 0x11030201, 0x04030201, 0x04030201};
    for (const std::size_t length : {2u, 3u, 4u, 5u}) {
        ORV_CCSysPar object;
        testing_support::readBinaryField(object, 0x11223344);
        SysParFiler filer;
        feedSample(filer, 7, std::string("\1\2\3\4\5", length));
        ASSERT_EQ(object.dwgInFields(&filer), Acad::eOk);
        EXPECT_EQ(dataOf(object).chunkValue, expected[length]) << length;
        EXPECT_EQ(testing_support::binaryFieldOf(object), expected[length]);
    }
}

TEST(CCSysParDwg, BeforeVersion4TheBinaryFieldIsTheOneThatWasThere) {
    ORV_CCSysPar object;
    testing_support::readBinaryField(object, 5);
    ccsys data = dataOf(object);
    data.chunkValue = 77;
    object.setData(data);
    SysParFiler filer;
    feedSample(filer, 3);
    ASSERT_EQ(object.dwgInFields(&filer), Acad::eOk);
    EXPECT_EQ(dataOf(object).chunkValue, 5);
}

TEST(CCSysParDwg, AVersionTextThatWasReadIsNotWrittenBack) {
    ORV_CCSysPar object;
    ORV_CCSysPar second;
    ASSERT_EQ(readFrom(object, filed(ORV_CCSysPar(sampleData()))), Acad::eOk);
    EXPECT_EQ(dataOf(object).versionText, L"11.50\u00a0b");
    EXPECT_EQ(dataOf(object).versionText2, L"");
    ASSERT_EQ(readFrom(second, filed(object)), Acad::eOk);
    EXPECT_EQ(dataOf(second).versionText, L"");
    ccsys data = dataOf(object);
    data.versionText2 = L"12";
    object.setData(data);
    ASSERT_EQ(readFrom(second, filed(object)), Acad::eOk);
    EXPECT_EQ(dataOf(second).versionText, L"12");
}

TEST(CCSysParDwg, TheVersionTextIsCutAt132Bytes) {
    ccsys data;
    data.versionText2 = std::wstring(132, L'x') + L"behind";
    ORV_CCSysPar back;
    ASSERT_EQ(readFrom(back, filed(ORV_CCSysPar(data))), Acad::eOk);
    EXPECT_EQ(dataOf(back).versionText, std::wstring(132, L'x'));
}

TEST(CCSysParDwg, WhatHasNoByteIsAQuestionMark) {
    ccsys data;
    data.versionText2 = L"\u20ac\u00ff" + platform::fromUtf8("\xF0\x9F\x98\x80");
    ORV_CCSysPar back;
    ASSERT_EQ(readFrom(back, filed(ORV_CCSysPar(data))), Acad::eOk);
    EXPECT_EQ(dataOf(back).versionText, L"?\u00ff??");
}

TEST(CCSysParDwg, TextsThatAreTooLongAreCut) {
    ORV_CCSysPar object(otherData());
    SysParFiler filer;
    filer.feedText(std::wstring(300, L'a')).feedText(std::wstring(100, L'b'));
    for (int i = 0; i < 8; ++i)
        filer.feed<Adesk::Int32>(0);
    filer.feed(0.0).feed<Adesk::Boolean>(false).feed<Adesk::Boolean>(false).feed(0.0);
    filer.feed<Adesk::Boolean>(false).feed<Adesk::Int32>(0).feed<Adesk::Int32>(123456789);
    filer.feed<Adesk::Int32>(7).feed<Adesk::Int32>(0).feedText(L"0123456789abcdefXYZ").feed<Adesk::Int32>(0);
    filer.feedBytes(std::string(132, '\0')).feedChunk("").feed<Adesk::Int32>(0);
    filer.feedText(L"ABCDEFGHIJKLMNOPQRS").feed<Adesk::Boolean>(false);
    ASSERT_EQ(object.dwgInFields(&filer), Acad::eOk);
    const ccsys data = dataOf(object);
    EXPECT_EQ(fieldText(data.text1), std::wstring(261, L'a'));
    EXPECT_EQ(fieldText(data.projectName), std::wstring(73, L'b'));
    EXPECT_EQ(fieldText(data.codeName), "0123456789abcdef");
    EXPECT_EQ(fieldText(data.codeCategory), "ABCDEFGHIJKLMNOP");

    // Fields that are full to the last character are filed whole.
    SysParFiler out;
    ASSERT_EQ(object.dwgOutFields(&out), Acad::eOk);
    EXPECT_EQ(ownCalls(out)[0], "writeString " + std::string(261, 'a'));
    EXPECT_EQ(ownCalls(out)[1], "writeString " + std::string(73, 'b'));
    EXPECT_EQ(ownCalls(out)[19], "writeString 0123456789abcdef");
    EXPECT_EQ(ownCalls(out)[24], "writeString ABCDEFGHIJKLMNOP");
}

TEST(CCSysParDwg, LengthsCountIn16BitUnits) {
    const std::wstring smile = platform::fromUtf8("\xF0\x9F\x98\x80");
    std::wstring project;
    for (int i = 0; i < 40; ++i)
        project += smile;
    ORV_CCSysPar object;
    SysParFiler filer;
    filer.feedText(smile).feedText(project);
    for (int i = 0; i < 8; ++i)
        filer.feed<Adesk::Int32>(0);
    filer.feed(0.0).feed<Adesk::Boolean>(false).feed<Adesk::Boolean>(false).feed(0.0);
    filer.feed<Adesk::Boolean>(false).feed<Adesk::Int32>(0).feed<Adesk::Int32>(0);
    ASSERT_EQ(object.dwgInFields(&filer), Acad::eOk);
    const std::u16string units = platform::toUtf16(fieldText(dataOf(object).projectName));
    EXPECT_EQ(units.size(), 73u);
    EXPECT_EQ(units, platform::toUtf16(project).substr(0, 73));
    const Bytes bytes = filed(object);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 8), (Bytes{2, 0, 0, 0, 0x3D, 0xD8, 0x00, 0xDE}));
    EXPECT_EQ(Bytes(bytes.begin() + 8, bytes.begin() + 12), (Bytes{73, 0, 0, 0}));
}

TEST(CCSysParDwg, AnEmptyCodeNameIsTakenFromTheNormInEveryVersion) {
    ccsys data = sampleData();
    std::memset(data.codeName, 0, sizeof data.codeName);
    data.norm = 5;
    setCode(data.codeCategory, "0123456789");
    ORV_CCSysPar back;
    ASSERT_EQ(readFrom(back, filed(ORV_CCSysPar(data))), Acad::eOk);
    EXPECT_STREQ(dataOf(back).codeName, "US_AISC");
    EXPECT_EQ(std::string(dataOf(back).codeCategory, 10), std::string(8, '\0') + "89");
}

TEST(CCSysParDwg, AFailingCallEndsInTheFilersStatus) {
    const std::size_t reads = readsOf(7).size();
    for (std::size_t i = 0; i < reads; ++i) {
        ReportRecorder reports;
        ORV_CCSysPar object;
        SysParFiler filer;
        feedSample(filer, 7);
        filer.failAt = static_cast<int>(i);
        EXPECT_EQ(object.dwgInFields(&filer), Acad::eFilerError) << i;
        EXPECT_EQ(reports.size(), 0u) << "the host has a text for it";
    }
    for (std::size_t i = 0; i < 26; ++i) {
        const ORV_CCSysPar object(sampleData());
        SysParFiler filer;
        filer.failAt = static_cast<int>(i);
        EXPECT_EQ(object.dwgOutFields(&filer), Acad::eFilerError) << i;
        EXPECT_EQ(filer.calls.size(), 26u) << "all items are filed";
    }
}

TEST(CCSysParDwg, EachCallWithAStatusThatHasNoTextIsReported) {
    ReportRecorder reports;
    ORV_CCSysPar object(sampleData());
    SysParFiler out;
    out.failAt = 0;
    out.failure = static_cast<Acad::ErrorStatus>(9999);
    EXPECT_EQ(static_cast<int>(object.dwgOutFields(&out)), 9999);
    EXPECT_EQ(reports.conditions(), Texts(26, "acadErrorStatusText(stat)"));
    reports.clear();
    SysParFiler in;
    in.failAt = 0;
    in.failure = static_cast<Acad::ErrorStatus>(9999);
    EXPECT_EQ(static_cast<int>(object.dwgInFields(&in)), 9999);
    EXPECT_EQ(reports.conditions(), Texts(17, "acadErrorStatusText(stat)"))
        << "without the magic it ends there";
}

TEST(CCSysParDwg, AnExceptionInAFilerTellsOnceForEachMethodAndGivesTheFixedStatus) {
    testing_support::BeepRecorder beep;
    ORV_CCSysPar object(sampleData());
    for (int round = 0; round < 2; ++round) {
        SysParFiler in;
        in.throwAt = 3;
        EXPECT_EQ(static_cast<int>(object.dwgInFields(&in)), 301);
        EXPECT_EQ(beep.lines().size(), 1u);
    }
    for (int round = 0; round < 2; ++round) {
        SysParFiler out;
        out.throwAt = 3;
        EXPECT_EQ(static_cast<int>(object.dwgOutFields(&out)), 2);
        EXPECT_EQ(beep.lines().size(), 2u);
    }
    EXPECT_EQ(beep.lines()[0], L"Kritischer Fehler in Vandril, speichern Sie die Zeichnung unter anderem "
                               L"Namen, starten Sie Vandril neu "
                               L"und \u00c3\u00b6ffnen Sie die Datei mit 'Wiederherstellen'.");
    EXPECT_EQ(beep.lines()[0], beep.lines()[1]);
}

TEST(CCSysParDwg, AnySingleBitEndsInAStatus) {
    const Bytes bytes = filed(ORV_CCSysPar(sampleData()));
    for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
        Bytes damaged = bytes;
        damaged[bit / 8] = static_cast<std::uint8_t>(damaged[bit / 8] ^ (1 << (bit % 8)));
        ORV_CCSysPar object;
        const Acad::ErrorStatus es = readFrom(object, damaged);
        // What was read can be filed again.
        if (es == Acad::eOk)
            filed(object);
        else
            EXPECT_TRUE(es == Acad::eEndOfObject || es == Acad::eMakeMeProxy) << bit;
    }
}

RC_GTEST_PROP(CCSysParDwg, AnyBytesEndInAStatus, (const std::vector<std::uint8_t>& tail)) {
    Bytes bytes = {0, 0, 0, 0, 0, 0, 0, 0};
    bytes.insert(bytes.end(), tail.begin(), tail.end());
    ORV_CCSysPar object;
    const Acad::ErrorStatus es = readFrom(object, bytes);
    RC_ASSERT(es == Acad::eOk || es == Acad::eEndOfObject || es == Acad::eMakeMeProxy);
    // Whatever came of it can be filed and read again.
    ORV_CCSysPar back;
    RC_ASSERT(readFrom(back, filed(object)) == Acad::eOk);
    RC_ASSERT(!testing::Test::HasFailure());
}

RC_GTEST_PROP(CCSysParDwg, AnyDataComeBack,
              (const std::vector<std::uint16_t>& text, const std::vector<std::uint8_t>& code,
               const std::array<Adesk::Int32, 12>& numbers, double real, bool flag)) {
    ccsys data;
    std::u16string units;
    for (const std::uint16_t unit : text)
        units += static_cast<char16_t>(unit == 0 ? 1 : unit);
    platform::fromUtf16(units.substr(0, 73)).copy(data.projectName, 73);
    for (std::size_t i = 0; i < code.size() && i < 16; ++i)
        data.codeName[i] = static_cast<char>(code[i] == 0 ? 1 : code[i]);
    if (code.empty())
        data.codeName[0] = 'x';
    std::size_t next = 0;
    for (Adesk::Int32* const field :
         {&data.system, &data.zustand, &data.numkn, &data.maxkn, &data.iachs, &data.igdiv, &data.int1,
          &data.norm, &data.int2, &data.int3, &data.int4, &data.int5})
        *field = numbers[next++];
    data.double1 = real;
    data.double2 = -real;
    data.flag1 = flag;
    data.flag2 = !flag;
    data.nation = flag;
    ORV_CCSysPar back;
    RC_ASSERT(readFrom(back, filed(ORV_CCSysPar(data))) == Acad::eOk);
    const ccsys read = dataOf(back);
    RC_ASSERT(fieldText(read.projectName) == fieldText(data.projectName));
    RC_ASSERT(fieldText(read.codeName) == fieldText(data.codeName));
    expectSame(read, data);
    RC_ASSERT(!testing::Test::HasFailure());
}
