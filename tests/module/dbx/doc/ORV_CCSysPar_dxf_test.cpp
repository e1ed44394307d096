#include "dbx/doc/ORV_CCSysPar.h"

#include "embedded/object_text.h"
#include "platform/text.h"
#include "support/beep_recorder.h"
#include "support/report_recorder.h"
#include "support/syspar_support.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <string>
#include <vector>

using embedded::readObjectText;
using embedded::TextFiler;
using embedded::TextForm;
using embedded::writeObjectText;
using testing_support::dataOf;
using testing_support::expectSame;
using testing_support::fieldText;
using testing_support::ReportRecorder;
using testing_support::sampleData;
using testing_support::setCode;
using testing_support::Texts;

namespace {

struct Group {
    const char* code;
    std::string value;
};
using Groups = std::vector<Group>;

std::string lines(const Groups& groups) {
    std::string text;
    for (const Group& group : groups)
        text += std::string(group.code) + "\r\n" + group.value + "\r\n";
    return text;
}

// What stands before the class's own groups, and behind them.
const Groups kHead = {
    {"  0", "SECTION"}, {"  2", "OBJECTS"}, {"  0", "ORV_CCSysPar"}, {"  5", "0"}, {"330", "0"}};
// The packed form begins with these, which the format fixes.
const char kPackedMark[] = {0x41, 0x75, 0x74, 0x6F, 0x43, 0x41, 0x44, 0x20, 0x42, 0x69, 0x6E,
                            0x61, 0x72, 0x79, 0x20, 0x44, 0x58, 0x46, 0x0D, 0x0A, 0x1A, 0x00};

const Groups kTail = {{"  0", "ENDSEC"}, {"  0", "EOF"}};

// The groups of an object with sampleData, as it writes them.
Groups sampleGroups() {
    return {{"100", "1"},         {"  1", "First \\U+00E4"}, {"  1", "Br\\U+00FCcke"},
            {" 90", "        1"}, {" 90", "        9"},      {" 90", "      120"},
            {" 90", "      345"}, {" 90", "       -2"},      {" 90", "     5000"},
            {" 90", "      -77"}, {" 90", "        3"},      {" 40", "1.5"},
            {" 90", "        1"}, {" 90", "        0"},      {" 40", "-0.1"},
            {" 90", "        1"}, {" 90", "       33"},      {" 90", " 30071996"},
            {" 90", "123456789"}, {" 90", "        7"},      {" 90", "        6"},
            {"  1", "EC_2-2004"}, {" 90", "       44"},      {"300", "11.50\\U+00A0b"},
            {"310", "00000000"},  {" 90", "       55"},      {"  1", "B"},
            {" 90", "        1"}};
}
constexpr std::size_t kMarkAt = 0, kSkippedAt = 17, kMagicAt = 18, kVersionAt = 19, kCodeNameAt = 21,
                      kVersionTextAt = 23, kChunkAt = 24;

// The same under the class's mark.
Groups markedGroups() {
    Groups groups = sampleGroups();
    groups[kMarkAt].value = "ORV_CCSysPar";
    groups[kChunkAt].value = "04030201";
    return groups;
}

// Cut to the items of a version.
Groups markedGroups(int version) {
    constexpr std::size_t kLast[] = {kMagicAt, 21, 22, 23, 25, 26, 27, 28};
    Groups groups = markedGroups();
    groups.resize(kLast[version]);
    if (version != 0)
        groups[kVersionAt].value = std::to_string(version);
    return groups;
}

std::string fileOf(const Groups& groups) { return lines(kHead) + lines(groups) + lines(kTail); }

// The file in one of the two forms: packed, it is translated group by group.
std::string inForm(TextForm form, const Groups& groups) {
    const std::string ascii = fileOf(groups);
    if (form == TextForm::kAscii)
        return ascii;
    std::string bytes;
    TextFiler out(form, bytes);
    TextFiler in(ascii);
    while (!in.atEOF()) {
        const std::wstring start = in.passObjectStart();
        if (!start.empty()) {
            out.writeString(AcDb::kDxfStart, start.c_str());
            continue;
        }
        resbuf* const value = acutNewRb(0);
        const Acad::ErrorStatus taken = in.readResBuf(value);
        const Acad::ErrorStatus put = out.writeResBuf(*value);
        acutRelRb(value);
        EXPECT_EQ(taken, Acad::eOk);
        EXPECT_EQ(put, Acad::eOk);
        if (taken != Acad::eOk || put != Acad::eOk)
            break;
    }
    return bytes;
}

Acad::ErrorStatus readFrom(ORV_CCSysPar& object, const Groups& groups, std::wstring* reason = nullptr) {
    return readObjectText(object, fileOf(groups), nullptr, reason);
}

class CCSysParTextVersion : public testing::TestWithParam<int> {};

// A text filer in which every operation that a filing method begins with throws.
class ThrowingText : public TextFiler {
public:
    using TextFiler::TextFiler;
    AcDb::FilerType filerType() const override { throw 4711; }
};

} // namespace

TEST(CCSysParDxf, WritesTheseLines) {
    std::string bytes;
    ASSERT_EQ(writeObjectText(ORV_CCSysPar(sampleData()), TextForm::kAscii, bytes), Acad::eOk);
    EXPECT_EQ(bytes, fileOf(sampleGroups()));
}

TEST(CCSysParDxf, WritesThesePackedBytes) {
    ccsys data;
    std::wcscpy(data.text1, L"A");
    data.double1 = 1.0;
    data.versionText2 = L"v";
    setCode(data.codeName, "EC_2");
    std::string expected(kPackedMark, sizeof kPackedMark);
    const auto text = [&](int code, const char* value) {
        expected += static_cast<char>(code % 256);
        expected += static_cast<char>(code / 256);
        expected.append(value, std::strlen(value) + 1);
    };
    const auto number = [&](Adesk::Int32 value) {
        expected.append("\x5A\0", 2);
        for (int shift = 0; shift < 32; shift += 8)
            expected += static_cast<char>(static_cast<Adesk::UInt32>(value) >> shift);
    };
    text(0, "SECTION");
    text(2, "OBJECTS");
    text(0, "ORV_CCSysPar");
    text(5, "0");
    text(330, "0");
    text(100, "1");
    text(1, "A");
    text(1, "");
    for (const Adesk::Int32 value : {0, 0, 0, 0, 0, 10000, 0, 0})
        number(value);
    expected.append("\x28\0\0\0\0\0\0\0\xF0\x3F", 10);
    number(0);
    number(0);
    expected.append("\x28\0\0\0\0\0\0\0\0\0", 10);
    for (const Adesk::Int32 value : {0, 0, 30071996, 123456789, 7, 0})
        number(value);
    text(1, "EC_2");
    number(0);
    text(300, "v");
    expected.append("\x36\x01\x04\0\0\0\0", 7);
    number(2);
    text(1, "");
    number(0);
    text(0, "ENDSEC");
    text(0, "EOF");
    std::string bytes;
    ASSERT_EQ(writeObjectText(ORV_CCSysPar(data), TextForm::kBinary, bytes), Acad::eOk);
    EXPECT_EQ(bytes, expected);
}

TEST(CCSysParDxf, WhatItWritesItDoesNotReadBack) {
    for (const TextForm form : {TextForm::kAscii, TextForm::kBinary}) {
        std::string bytes;
        ASSERT_EQ(writeObjectText(ORV_CCSysPar(sampleData()), form, bytes), Acad::eOk);
        ORV_CCSysPar back;
        EXPECT_EQ(readObjectText(back, bytes), Acad::eSomeInputDataLeftUnread);
        expectSame(dataOf(back), ccsys());
    }
}

TEST(CCSysParDxf, WithoutItsMarkItReadsNothingAndAnswersTheFilersStatus) {
    const std::string groups = lines(sampleGroups()) + lines(kTail);
    TextFiler filer(groups);
    ORV_CCSysPar object;
    EXPECT_EQ(object.dxfInFields(&filer), Acad::eOk);
    EXPECT_TRUE(filer.atSubclassData(L"1")) << "nothing is read";
    filer.setError(Acad::eInvalidInput, L"test");
    EXPECT_EQ(object.dxfInFields(&filer), Acad::eInvalidInput);
}

TEST_P(CCSysParTextVersion, IsReadUnderTheClassesMark) {
    const int version = GetParam();
    ReportRecorder reports;
    ccsys before;
    before.int4 = -4;
    before.int5 = -5;
    before.nation = 1;
    before.versionText = L"old";
    setCode(before.codeCategory, "old");
    ORV_CCSysPar object(before);
    std::wstring reason;
    ASSERT_EQ(readFrom(object, markedGroups(version), &reason), Acad::eOk) << reason.c_str();
    ccsys expected = sampleData();
    if (version == 0)
        expected.int2 = 1;
    if (version < 2) {
        std::memset(expected.codeName, 0, sizeof expected.codeName);
        setCode(expected.codeName, "OEN_4700");
    }
    if (version < 3)
        expected.int4 = version == 0 ? -4 : 0;
    if (version < 5)
        expected.int5 = -5;
    if (version < 6)
        std::memset(expected.codeCategory, 0, sizeof expected.codeCategory);
    if (version < 7)
        expected.nation = 0;
    expectSame(dataOf(object), expected);
    EXPECT_EQ(dataOf(object).versionText, version >= 4 ? L"11.50\u00a0b" : L"old");
    EXPECT_EQ(dataOf(object).chunkValue, version >= 4 ? 0x01020304 : 0);
    EXPECT_EQ(reports.size(), 0u);
}

TEST_P(CCSysParTextVersion, IsReadFromThePackedForm) {
    const Groups groups = markedGroups(GetParam());
    ORV_CCSysPar fromAscii, fromPacked;
    ASSERT_EQ(readObjectText(fromAscii, inForm(TextForm::kAscii, groups)), Acad::eOk);
    ASSERT_EQ(readObjectText(fromPacked, inForm(TextForm::kBinary, groups)), Acad::eOk);
    expectSame(dataOf(fromPacked), dataOf(fromAscii));
    EXPECT_EQ(dataOf(fromPacked).versionText, dataOf(fromAscii).versionText);
    EXPECT_EQ(dataOf(fromPacked).chunkValue, dataOf(fromAscii).chunkValue);
}

TEST_P(CCSysParTextVersion, EveryPrefixThatEndsBeforeTheNextObjectFails) {
    const std::string whole = lines(kHead) + lines(markedGroups(GetParam())) + lines({kTail[0]});
    ORV_CCSysPar object;
    ASSERT_EQ(readObjectText(object, whole), Acad::eOk);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        ORV_CCSysPar cut;
        EXPECT_NE(readObjectText(cut, std::string(whole, 0, length)), Acad::eOk) << length;
    }
}

TEST_P(CCSysParTextVersion, AMissingGroupIsTold) {
    const Groups groups = markedGroups(GetParam());
    // Mark and magic may be missing: an old object ends before them.
    for (std::size_t count = 1; count < groups.size(); ++count) {
        if (count == kSkippedAt || count == kMagicAt)
            continue;
        ORV_CCSysPar object;
        std::wstring reason;
        EXPECT_EQ(readFrom(object,
                           Groups(groups.begin(), groups.begin() + static_cast<std::ptrdiff_t>(count)),
                           &reason),
                  Acad::eMissingDxfField)
            << count;
        EXPECT_EQ(reason, L"the object ends where group code " +
                              std::to_wstring(std::stoi(groups[count].code)) + L" is due");
    }
}

INSTANTIATE_TEST_SUITE_P(All, CCSysParTextVersion, testing::Range(0, 8));

TEST(CCSysParDxf, AnotherNumberThanTheMagicIsAnOldObjectToo) {
    Groups groups = markedGroups(0);
    groups.push_back({" 90", "0"});
    ORV_CCSysPar object;
    ASSERT_EQ(readFrom(object, groups), Acad::eOk);
    EXPECT_EQ(dataOf(object).int2, 1);
    EXPECT_STREQ(dataOf(object).codeName, "OEN_4700");
}

TEST(CCSysParDxf, AnObjectThatEndsBehindItsFixedItemsIsAnOldOne) {
    Groups groups = markedGroups(0);
    groups.resize(kSkippedAt);
    ReportRecorder reports;
    for (const TextForm form : {TextForm::kAscii, TextForm::kBinary}) {
        ORV_CCSysPar object;
        std::wstring reason;
        ASSERT_EQ(readObjectText(object, inForm(form, groups), nullptr, &reason), Acad::eOk)
            << reason.c_str();
        EXPECT_EQ(dataOf(object).int2, 1);
        EXPECT_EQ(dataOf(object).int3, 33);
        EXPECT_STREQ(dataOf(object).codeName, "OEN_4700");
    }
    EXPECT_EQ(reports.size(), 0u);
}

TEST(CCSysParDxf, Version8Is301AfterTheMagicAndTheVersion) {
    Groups groups = markedGroups();
    groups[kVersionAt].value = "8";
    const std::string text = lines(groups) + lines(kTail);
    TextFiler filer(text);
    ORV_CCSysPar object;
    EXPECT_EQ(static_cast<int>(object.dxfInFields(&filer)), 301);
    EXPECT_EQ(filer.filerStatus(), Acad::eOk);
    resbuf next;
    ASSERT_EQ(filer.readResBuf(&next), Acad::eOk);
    EXPECT_EQ(next.resval.rlong, 6) << "the item behind the version comes next";
    EXPECT_EQ(static_cast<int>(readFrom(object, groups)), 301);
}

TEST(CCSysParDxf, TheNumberBeforeTheMagicIsNotLookedAt) {
    Groups groups = markedGroups();
    groups[kSkippedAt].value = "-1";
    ORV_CCSysPar object;
    ASSERT_EQ(readFrom(object, groups), Acad::eOk);
    expectSame(dataOf(object), sampleData());
}

TEST(CCSysParDxf, TheGroupBeforeTheMagicMayBeOfAnyCode) {
    for (const Group& other : {Group{" 62", "1"}, Group{"  2", "text"}, Group{"311", "AB"}}) {
        Groups groups = markedGroups();
        groups[kSkippedAt] = other;
        ORV_CCSysPar object;
        ASSERT_EQ(readFrom(object, groups), Acad::eOk);
        expectSame(dataOf(object), sampleData());
    }
}

TEST(CCSysParDxf, AGroupOfAnotherCodeIsTold) {
    const Groups groups = markedGroups();
    for (std::size_t i = 1; i < groups.size(); ++i) {
        if (i == kSkippedAt)
            continue; // passed over, whatever it is
        for (const Group& other : {Group{" 62", "1"}, Group{"  2", "text"}, Group{"311", "AB"}}) {
            Groups changed = groups;
            changed[i] = other;
            ORV_CCSysPar object;
            std::wstring reason;
            EXPECT_EQ(readFrom(object, changed, &reason), Acad::eInvalidDxfCode) << i;
            EXPECT_EQ(reason, L"group code " + std::to_wstring(std::stoi(other.code)) + L" where " +
                                  std::to_wstring(std::stoi(groups[i].code)) + L" is due");
        }
    }
}

TEST(CCSysParDxf, TextsThatAreTooLongAreCut) {
    Groups groups = markedGroups();
    groups[1].value = std::string(300, 'a');
    groups[2].value = std::string(100, 'b');
    groups[kCodeNameAt].value = "0123456789abcdefXYZ";
    groups[kVersionTextAt].value = std::string(200, 'v');
    ORV_CCSysPar object;
    ASSERT_EQ(readFrom(object, groups), Acad::eOk);
    const ccsys data = dataOf(object);
    EXPECT_EQ(fieldText(data.text1), std::wstring(261, L'a'));
    EXPECT_EQ(fieldText(data.projectName), std::wstring(73, L'b'));
    EXPECT_EQ(fieldText(data.codeName), "0123456789abcdef");
    EXPECT_EQ(data.versionText, std::wstring(132, L'v'));
}

TEST(CCSysParDxf, TheVersionTextIsWrittenAsItsBytesWouldBeRead) {
    ccsys data;
    data.versionText2 = L"\u20ac" + std::wstring(140, L'x');
    std::string bytes;
    ASSERT_EQ(writeObjectText(ORV_CCSysPar(data), TextForm::kAscii, bytes), Acad::eOk);
    EXPECT_NE(bytes.find("\r\n?" + std::string(131, 'x') + "\r\n"), std::string::npos);
}

TEST(CCSysParDxf, AOneByteChunkLeavesTheValueUnchanged) {
    ORV_CCSysPar object;
    ASSERT_EQ(readFrom(object, markedGroups()), Acad::eOk);
    Groups groups = markedGroups();
    for (const char* const chunk : {"", "FF"}) {
        groups[kChunkAt].value = chunk;
        ASSERT_EQ(readFrom(object, groups), Acad::eOk);
        EXPECT_EQ(dataOf(object).chunkValue, 0x01020304);
    }
    groups[kChunkAt].value = "FFFF";
    ASSERT_EQ(readFrom(object, groups), Acad::eOk);
    EXPECT_EQ(dataOf(object).chunkValue, 0x0102FFFF);
}

TEST(CCSysParDxf, AFailureOfTheFilerIsReportedOnlyWithoutAText) {
    std::string bytes;
    TextFiler filer(TextForm::kAscii, bytes);
    filer.setError(static_cast<Acad::ErrorStatus>(9999), L"test");
    ReportRecorder reports;
    EXPECT_EQ(static_cast<int>(ORV_CCSysPar(sampleData()).dxfOutFields(&filer)), 9999);
    EXPECT_EQ(reports.conditions(), Texts(28, "acadErrorStatusText(stat)"));
    filer.resetFilerStatus();
    filer.setError(Acad::eFilerError, L"test");
    reports.clear();
    EXPECT_EQ(ORV_CCSysPar(sampleData()).dxfOutFields(&filer), Acad::eFilerError);
    EXPECT_EQ(reports.size(), 0u);
    EXPECT_EQ(bytes, "");
}

TEST(CCSysParDxf, AnExceptionInAFilerTellsOnceForEachMethodAndGivesTheFixedStatus) {
    testing_support::BeepRecorder beep;
    ORV_CCSysPar object;
    std::string bytes;
    for (int round = 0; round < 2; ++round) {
        ThrowingText in("");
        EXPECT_EQ(static_cast<int>(object.dxfInFields(&in)), 301);
        EXPECT_EQ(beep.lines().size(), 1u);
    }
    for (int round = 0; round < 2; ++round) {
        ThrowingText out(TextForm::kAscii, bytes);
        EXPECT_EQ(static_cast<int>(object.dxfOutFields(&out)), 2);
        EXPECT_EQ(beep.lines().size(), 2u);
    }
}

TEST(CCSysParDxf, AnObjectIsMadeByItsDxfName) {
    std::unique_ptr<AcDbObject> made;
    ASSERT_EQ(embedded::makeObjectFromText(made, fileOf(markedGroups())), Acad::eOk);
    const ORV_CCSysPar* const object = ORV_CCSysPar::cast(made.get());
    ASSERT_NE(object, nullptr);
    expectSame(dataOf(*object), sampleData());
}

TEST(CCSysParDxf, AnySingleBitEndsInAStatus) {
    const std::string text = fileOf(markedGroups());
    for (std::size_t bit = 0; bit < text.size() * 8; ++bit) {
        std::string damaged = text;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
        ORV_CCSysPar object;
        std::wstring reason;
        const Acad::ErrorStatus es = readObjectText(object, damaged, nullptr, &reason);
        const bool told = es == Acad::eMakeMeProxy || es == Acad::eSomeInputDataLeftUnread || !reason.empty();
        EXPECT_TRUE(es == Acad::eOk || told) << bit << " " << es;
    }
}

RC_GTEST_PROP(CCSysParDxf, WhatIsWrittenComesBackUnderTheMark,
              (const std::vector<std::uint16_t>& text, const std::array<Adesk::Int32, 4>& numbers)) {
    ccsys data = sampleData();
    std::u16string units;
    for (const std::uint16_t unit : text)
        units += static_cast<char16_t>(unit == 0 ? 1 : unit);
    std::fill(std::begin(data.text1), std::end(data.text1), L'\0');
    platform::fromUtf16(units.substr(0, 261)).copy(data.text1, 261);
    data.norm = numbers[0];
    data.int2 = numbers[1];
    data.int3 = numbers[2];
    data.system = numbers[3];
    std::string bytes;
    RC_ASSERT(writeObjectText(ORV_CCSysPar(data), TextForm::kAscii, bytes) == Acad::eOk);
    bytes.replace(bytes.find("100\r\n1\r\n"), 8, "100\r\nORV_CCSysPar\r\n");
    ORV_CCSysPar back;
    RC_ASSERT(readObjectText(back, bytes) == Acad::eOk);
    expectSame(dataOf(back), data);
    RC_ASSERT(!testing::Test::HasFailure());
}
