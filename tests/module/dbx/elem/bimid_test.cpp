#include "dbx/elem/bimid.h"

#include "platform/uuid.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstring>
#include <set>
#include <string>

using orv::Blob;
using testing_support::ReportRecorder;
using testing_support::Texts;
using testing_support::Values;
namespace bimid = orv::bimid;

namespace {

const orv::GUID kGuid = {0x00112233, 0x4455, 0x6677, {0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF}};
constexpr char kGuidText[] = "guid:128:00112233-4455-6677-8899-aabbccddeeff";

// Stands in for the system's calls while it lives.
class OtherCalls : public platform::UuidCalls {
public:
    OtherCalls() { platform::setUuidCalls(this); }
    ~OtherCalls() override { platform::setUuidCalls(nullptr); }

    int createSequential(platform::Uuid& uuid) override {
        const int status = UuidCalls::createSequential(uuid);
        if (nil)
            uuid = {};
        return createStatus != 0 ? createStatus : status;
    }
    int toText(const platform::Uuid& uuid, char*& text) override {
        if (textStatus != 0)
            return textStatus;
        const int status = UuidCalls::toText(uuid, text);
        ++texts;
        return status;
    }
    void freeText(char*& text) override {
        UuidCalls::freeText(text);
        ++freed;
    }

    bool nil = false;
    int createStatus = 0;
    int textStatus = 0;
    int texts = 0;
    int freed = 0;
};

Blob record(const std::string& bytes) { return bytes.empty() ? Blob() : Blob(bytes.data(), bytes.size()); }
std::string bytesOf(const Blob& blob) {
    return std::string(reinterpret_cast<const char*>(blob.data()), blob.size());
}
std::string bytes(std::initializer_list<int> values) { return std::string(values.begin(), values.end()); }

const std::string kHead = bytes({0xE7, 0x03, 0, 0}); // 999

} // namespace

TEST(BimId, AGeneratedIdentifierIsAGuidInSmallLetters) {
    const std::string id = bimid::generate();
    const std::string form = "guid:128:xxxxxxxx-xxxx-1xxx-xxxx-xxxxxxxxxxxx";
    ASSERT_EQ(id.size(), form.size());
    for (std::size_t i = 0; i < form.size(); ++i) {
        const std::string allowed = form[i] == 'x' ? "0123456789abcdef" : std::string(1, form[i]);
        EXPECT_NE(allowed.find(id[i]), std::string::npos) << id << " at " << i;
    }
}

TEST(BimId, GeneratedIdentifiersDiffer) {
    std::set<std::string> ids;
    for (int i = 0; i < 1000; ++i)
        ids.insert(bimid::generate());
    EXPECT_EQ(ids.size(), 1000u);
}

TEST(BimId, GenerateOfANilUuidIsEmpty) {
    OtherCalls calls;
    calls.nil = true;
    EXPECT_EQ(bimid::generate(), "");
    EXPECT_EQ(calls.texts, 0);
}

TEST(BimId, TheStatusOfMakingAUuidIsNotLookedAt) {
    OtherCalls calls;
    calls.createStatus = 1824;
    EXPECT_EQ(bimid::generate().size(), 45u);
}

TEST(BimId, AssignWritesTheNumbersAsNumbersAndTheBytesAsBytes) {
    std::string id = "before";
    bimid::assign(id, kGuid);
    EXPECT_EQ(id, kGuidText);
}

TEST(BimId, AssignGivesTheTextBack) {
    OtherCalls calls;
    std::string id;
    bimid::assign(id, kGuid);
    EXPECT_EQ(calls.texts, 1);
    EXPECT_EQ(calls.freed, 1);
}

TEST(BimId, AUuidThatCannotBeWrittenIsInvalidAndFreesNothing) {
    OtherCalls calls;
    calls.textStatus = 14;
    std::string id = "before";
    bimid::assign(id, kGuid);
    EXPECT_EQ(id, "invalid:failed_to_convert");
    EXPECT_EQ(bimid::generate(), "invalid:failed_to_convert");
    EXPECT_EQ(calls.freed, 0);
}

TEST(BimId, AssignOfANilGuidIsItsText) {
    std::string id;
    bimid::assign(id, orv::GUID{});
    EXPECT_EQ(id, "guid:128:00000000-0000-0000-0000-000000000000");
}

TEST(BimId, ToStringIsTheIdentifierItself) {
    EXPECT_EQ(bimid::toString(kGuidText), kGuidText);
    EXPECT_EQ(bimid::toString(""), "");
    const std::string withZero("a\0b", 3);
    EXPECT_EQ(bimid::toString(withZero), withZero);
}

TEST(BimIdRecord, AnEmptyTextIs999AndNoWords) { EXPECT_EQ(bytesOf(bimid::toCDB("")), kHead); }

TEST(BimIdRecord, OfAnEmptyTextIsReportedAndReadsAsEmpty) {
    ReportRecorder recorder;
    EXPECT_EQ(bimid::fromCDB(bimid::toCDB("")), "");
    ASSERT_EQ(recorder.conditions(), (Texts{"data.size() > sizeof(int)", "sizeWithoutId > 0"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"data.size()", "4"}}));
    EXPECT_EQ(recorder.messages(), (Texts{"", "GUID record without data"}));
}

TEST(BimIdRecord, APackedWordHasItsFirstCharacterLowest) {
    EXPECT_EQ(bytesOf(bimid::toCDB("abcd")), kHead + "abcd");
    EXPECT_EQ(bytesOf(bimid::toCDB("abcdefg")), kHead + "abcdefg ");
    EXPECT_EQ(bytesOf(bimid::toCDB("a")), kHead + "a   ");
}

TEST(BimIdRecord, AGuidOf45CharactersEndsInThreeBlanks) {
    const Blob packed = bimid::toCDB(kGuidText);
    EXPECT_EQ(packed.size(), 4u + 48u);
    EXPECT_EQ(bytesOf(packed), kHead + kGuidText + "   ");
    EXPECT_EQ(bimid::fromCDB(packed), kGuidText);
}

TEST(BimIdRecord, TheTextEndsAtItsFirstZeroByteAndItsWordsAreBlanks) {
    EXPECT_EQ(bytesOf(bimid::toCDB(std::string("ab\0defghi", 9))), kHead + "ab          ");
    EXPECT_EQ(bytesOf(bimid::toCDB(std::string("\0bcd", 4))), kHead + "    ");
}

TEST(BimIdRecord, TrailingBlanksOfATextAreLost) {
    EXPECT_EQ(bimid::fromCDB(bimid::toCDB("ab  ")), "ab");
    EXPECT_EQ(bimid::fromCDB(bimid::toCDB("      ")), "");
    EXPECT_EQ(bimid::fromCDB(bimid::toCDB(" a b")), " a b");
}

TEST(BimIdRecord, TheBlanksInFrontOfAZeroByteStay) {
    EXPECT_EQ(bimid::fromCDB(record(kHead + std::string("ab \0cd  ", 8))), "ab ");
    EXPECT_EQ(bimid::fromCDB(record(kHead + std::string("\0abc", 4))), "");
}

TEST(BimIdRecord, ABlockOf6BytesHasNoWordAndIsEmptyWithoutAReport) {
    ReportRecorder recorder;
    EXPECT_EQ(bimid::fromCDB(record(kHead + "ab")), "");
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(BimIdRecord, BytesBehindTheLastWholeWordAreNotRead) {
    EXPECT_EQ(bimid::fromCDB(record(kHead + "abcdefg")), "abcd");
}

TEST(BimIdRecord, LessThanANumberIsReportedAndReadsAsEmpty) {
    for (std::size_t size : {0u, 1u, 3u}) {
        ReportRecorder recorder;
        std::string id = "before";
        bimid::fromCDB(record(kHead.substr(0, size)), id);
        EXPECT_EQ(id, "");
        ASSERT_EQ(recorder.conditions(), (Texts{"data.size() > sizeof(int)"}));
        EXPECT_EQ(recorder.at(0).values, (Values{{"data.size()", std::to_string(size)}}));
    }
}

TEST(BimIdRecord, TheNumberInFrontIsNotLookedAt) {
    ReportRecorder recorder;
    EXPECT_EQ(bimid::fromCDB(record("\xff\xff\xff\xff"
                                    "abcd")),
              "abcd");
    EXPECT_EQ(recorder.size(), 0u);
}

RC_GTEST_PROP(BimIdProperty, AnyTextComesBackUpToItsZeroByteWithoutTrailingBlanks, ()) {
    const auto text = *rc::gen::container<std::string>(
        rc::gen::oneOf(rc::gen::arbitrary<char>(), rc::gen::elementOf(std::string("  \0ab", 5))));
    std::string expected = text.substr(0, text.find('\0'));
    expected.erase(expected.find_last_not_of(' ') + 1);
    const Blob packed = bimid::toCDB(text);
    RC_ASSERT(packed.size() == 4 + (text.size() + 3) / 4 * 4);
    ReportRecorder recorder;
    RC_ASSERT(bimid::fromCDB(packed) == expected);
}

RC_GTEST_PROP(BimIdProperty, AnyBytesGiveATextOfNoMoreThanTheirWholeWords, ()) {
    const auto data = *rc::gen::container<std::string>(rc::gen::arbitrary<char>());
    ReportRecorder recorder;
    const std::string id = bimid::fromCDB(record(data));
    RC_ASSERT(id.size() <= (data.size() < 4 ? 0 : (data.size() - 4) / 4 * 4));
    RC_ASSERT(recorder.size() == (data.size() < 4 ? 1u : data.size() == 4 ? 2u : 0u));
}
