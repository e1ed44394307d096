#include "gepnt3d.h"
#include "text_fixture.h"

#include <rapidcheck/gtest.h>

#include <vector>

using namespace testing_text;

namespace {

struct Damage {
    const char* name;
    std::string bytes;
    const wchar_t* message;
};

// One value of each kind, and the start of what follows.
std::string sample(TextForm form) {
    char data[] = "\x01\xFF\x7F";
    std::string bytes;
    TextFiler filer(form, bytes);
    filer.writeString(AcDb::kDxfSubclass, L"Mark");
    filer.writeString(AcDb::kDxfText, L"\u00e4^\n");
    filer.writeDouble(AcDb::kDxfReal, -0.1);
    filer.writeInt16(AcDb::kDxfInt16, -3);
    filer.writeInt32(AcDb::kDxfInt32, 123456789);
    filer.writeInt64(AcDb::kDxfInt64, -1);
    filer.writeBool(AcDb::kDxfBool, true);
    filer.writePoint3d(AcDb::kDxfXCoord, {1, 2, 3});
    filer.writeAcDbHandle(AcDb::kDxfHandle, AcDbHandle(0xFE));
    filer.writeObjectId(AcDb::kDxfSoftPointerId, {});
    filer.writeBChunk(AcDb::kDxfBinaryChunk, {3, data});
    filer.writeString(AcDb::kDxfStart, L"ENDSEC");
    return bytes;
}

// Reads to the end of the object and a little further. True if the object was whole.
bool readAll(std::string_view bytes) {
    TextFiler filer(bytes);
    std::size_t count = 0;
    while (!filer.atEndOfObject()) {
        const Value value = read(filer);
        if (!value)
            break;
        EXPECT_LE(++count, bytes.size());
    }
    const bool whole = filer.filerStatus() == Acad::eOk && !filer.atEOF();
    EXPECT_EQ(read(filer), nullptr);
    EXPECT_EQ(read(filer), nullptr);
    EXPECT_NE(filer.filerStatus(), Acad::eOk);
    EXPECT_STRNE(filer.errorMessage(), L"");
    return whole;
}

} // namespace

TEST(TextDamage, LinesThatAreNoGroupsAreToldWithTheirNumber) {
    const Damage damages[] = {
        {"code", lines({"abc", "1"}), L"line 1: no group code: \"abc\""},
        {"unknown code", lines({" 70", "1", " 80", "1"}), L"line 3: no group code: \" 80\""},
        {"negative code", lines({" -3", "1"}), L"line 1: no group code: \" -3\""},
        {"huge code", lines({"999999999999999999999", "1"}),
         L"line 1: no group code: \"999999999999999999999\""},
        {"empty code", lines({"", "1"}), L"line 1: no group code: \"\""},
        {"real", lines({" 40", "1,5"}), L"line 2: no number: \"1,5\""},
        {"16 bits", lines({" 70", "1.5"}), L"line 2: no integer: \"1.5\""},
        {"16 bits range", lines({" 70", "32768"}), L"line 2: out of range: \"32768\""},
        {"16 bits low", lines({" 70", "-32769"}), L"line 2: out of range: \"-32769\""},
        {"32 bits range", lines({" 90", "2147483648"}), L"line 2: out of range: \"2147483648\""},
        {"64 bits", lines({"160", "9223372036854775808"}), L"line 2: no integer: \"9223372036854775808\""},
        {"switch", lines({"290", "2"}), L"line 2: out of range: \"2\""},
        {"handle", lines({"  5", "XYZ"}), L"line 2: no handle: \"XYZ\""},
        {"id", lines({"330", ""}), L"line 2: no handle: \"\""},
        {"odd digits", lines({"310", "ABC"}), L"line 2: no binary data: \"ABC\""},
        {"no digits", lines({"310", "AX"}), L"line 2: no binary data: \"AX\""},
        {"cut in a code", " 7", L"line 1: the text breaks off in a group code"},
        {"cut before a value", " 70\r\n", L"line 2: the text breaks off in a value"},
        {"cut in a value", " 70\r\n   1", L"line 2: the text breaks off in a value"},
    };
    for (const Damage& damage : damages) {
        TextFiler filer(damage.bytes);
        while (read(filer))
            ;
        EXPECT_EQ(filer.filerStatus(), Acad::eBadDxfSequence) << damage.name;
        EXPECT_STREQ(filer.errorMessage(), damage.message) << damage.name;
        EXPECT_TRUE(filer.atEOF());
    }
}

TEST(TextDamage, PackedBytesThatAreNoGroupsAreToldWithTheirOffset) {
    const Damage damages[] = {
        {"unknown code", packed("\x46\0\x01\0\x50\0\x01\0"), L"offset 26: no group code: 80"},
        {"negative code", packed("\xFD\xFF\x01\0"), L"offset 22: no group code: -3"},
        {"cut code", packed("\x46"), L"offset 22: the bytes break off in a group code"},
        {"cut 16 bits", packed("\x46\0\x01"), L"offset 22: the bytes break off in a value"},
        {"cut 32 bits", packed("\x5A\0\x01\0\0"), L"offset 22: the bytes break off in a value"},
        {"cut 64 bits", packed("\xA0\0\x01\0\0\0\0\0\0"), L"offset 22: the bytes break off in a value"},
        {"cut real", packed("\x28\0\x01\0\0\0\0\0\0"), L"offset 22: the bytes break off in a value"},
        {"cut switch", packed("\x22\x01"), L"offset 22: the bytes break off in a value"},
        {"switch", packed("\x22\x01\x02"), L"offset 22: out of range"},
        {"text without end", packed("\x01\0abc"), L"offset 22: the bytes break off in a value"},
        {"handle without end", packed("\x05\0abc"), L"offset 22: the bytes break off in a value"},
        {"handle", packed("\x05\0xyz\0"), L"offset 22: no handle"},
        {"data without length", packed("\x36\x01"), L"offset 22: the bytes break off in a value"},
        {"data longer than the rest",
         packed("\x36\x01\x04"
                "abc"),
         L"offset 22: the bytes break off in a value"},
    };
    for (const Damage& damage : damages) {
        const std::string bytes = sentinel() + damage.bytes;
        TextFiler filer(bytes);
        while (read(filer))
            ;
        EXPECT_EQ(filer.filerStatus(), Acad::eBadDxfSequence) << damage.name;
        EXPECT_STREQ(filer.errorMessage(), damage.message) << damage.name;
    }
}

TEST(TextDamage, BehindADamageNothingIsReadBeforeReadingAnew) {
    const std::string bytes = lines({" 10", "1.0", " 20", "x", " 70", "5", "  0", "X"});
    TextFiler filer(bytes);
    EXPECT_EQ(read(filer)->resval.rreal, 1.0) << "what stands before it counts";
    EXPECT_FALSE(read(filer));
    EXPECT_STREQ(filer.errorMessage(), L"line 4: no number: \"x\"");
    filer.resetFilerStatus();
    EXPECT_FALSE(read(filer));
    EXPECT_STREQ(filer.errorMessage(), L"line 4: no number: \"x\"");
    filer.rewindFiler();
    EXPECT_TRUE(read(filer));
}

TEST(TextDamage, EveryPrefixOfASampleIsToldToBeCut) {
    for (const TextForm form : {TextForm::kAscii, TextForm::kBinary}) {
        const std::string bytes = sample(form);
        ASSERT_TRUE(readAll(bytes));
        for (std::size_t length = 0; length < bytes.size(); ++length)
            // A copy, so that a read behind it is one outside its memory.
            EXPECT_FALSE(readAll(std::string(bytes, 0, length))) << length;
    }
}

TEST(TextDamage, AnySingleBitEndsInValuesOrAFailure) {
    for (const TextForm form : {TextForm::kAscii, TextForm::kBinary}) {
        const std::string bytes = sample(form);
        for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
            std::string damaged = bytes;
            damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
            readAll(damaged);
        }
    }
}

RC_GTEST_PROP(TextDamage, AnyBytesEndInValuesOrAFailure, (const std::string& bytes, bool binary)) {
    readAll(binary ? sentinel() + bytes : bytes);
}

RC_GTEST_PROP(TextDamage, AnyLinesEndInValuesOrAFailure, ()) {
    const auto texts = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
        "  0", "  1", "  5", " 10", " 20", " 30", " 40", " 70", " 90", "100", "160", "290", "310", "330",
        "999", "1071", "0", "1", "-1", "2.5", "AB", "nan", "", "text"));
    std::string bytes;
    for (const std::string& text : texts)
        bytes += text + "\n";
    readAll(bytes);
}
