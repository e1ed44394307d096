#include "db/text/group_text.h"

#include "platform/text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

using namespace embedded::text;

TEST(GroupText, PlainTextStandsAsItIs) {
    EXPECT_EQ(encodeText(L"ORV_CCSysPar {a} 100%"), "ORV_CCSysPar {a} 100%");
    EXPECT_EQ(encodeText(L""), "");
    EXPECT_EQ(encodeText(L"  spaces  "), "  spaces  ");
    EXPECT_EQ(decodeText("  spaces  "), L"  spaces  ");
}

TEST(GroupText, AControlCharacterIsACaretAndItsLetter) {
    EXPECT_EQ(encodeText(L"a\nb"), "a^Jb");
    EXPECT_EQ(encodeText(L"\r\t\x1"), "^M^I^A");
    EXPECT_EQ(encodeText(L"\x1f"), "^_");
    EXPECT_EQ(decodeText("a^Jb^M^I^A^_"), L"a\nb\r\t\x1\x1f");
}

TEST(GroupText, ACaretIsACaretAndABlank) {
    EXPECT_EQ(encodeText(L"x^2"), "x^ 2");
    EXPECT_EQ(encodeText(L"^J"), "^ J");
    EXPECT_EQ(decodeText("x^ 2"), L"x^2");
    EXPECT_EQ(decodeText("^ J"), L"^J");
}

TEST(GroupText, WhatIsNotAsciiIsFourHexadecimalDigits) {
    EXPECT_EQ(encodeText(L"\u00e4\u20ac"), "\\U+00E4\\U+20AC");
    EXPECT_EQ(decodeText("\\U+00E4\\U+20ac"), L"\u00e4\u20ac");
    EXPECT_EQ(encodeText(L"\x7f"), "\\U+007F");
}

TEST(GroupText, ACharacterOutsideTheFirstPlaneIsTwoUnits) {
    EXPECT_EQ(encodeText(platform::fromUtf8("\xF0\x9F\x98\x80")), "\\U+D83D\\U+DE00");
    EXPECT_EQ(decodeText("\\U+D83D\\U+DE00"), platform::fromUtf8("\xF0\x9F\x98\x80"));
    EXPECT_EQ(decodeText("\\U+D83D"), std::wstring(1, wchar_t(0xD83D))) << "half a pair stays so";
}

TEST(GroupText, ATextThatLooksLikeAnEscapeComesBackAsItWas) {
    EXPECT_EQ(encodeText(L"\\U+0041"), "\\U+005CU+0041");
    EXPECT_EQ(decodeText("\\U+005CU+0041"), L"\\U+0041");
    EXPECT_EQ(encodeText(L"C:\\Users"), "C:\\Users");
}

TEST(GroupText, WhatIsNoEscapeStandsForItself) {
    for (const char* const text : {"^a", "^", "a^", "^@", "\\U+12", "\\U+12G4", "\\u+0041", "\\", "\\U"})
        EXPECT_EQ(decodeText(text), platform::widen(text)) << text;
}

TEST(GroupText, BytesAboveAsciiAreUtf8) { EXPECT_EQ(decodeText("\xC3\xA4"), L"\u00e4"); }

TEST(GroupText, ARealHasAPointOrAnExponent) {
    EXPECT_EQ(realText(0.0, -1), "0.0");
    EXPECT_EQ(realText(-0.0, -1), "-0.0");
    EXPECT_EQ(realText(1.0, -1), "1.0");
    EXPECT_EQ(realText(-12.5, -1), "-12.5");
    EXPECT_EQ(realText(1e300, -1), "1e+300");
    EXPECT_EQ(realText(0.1, -1), "0.1");
    EXPECT_EQ(realText(1.0 / 3.0, -1), "0.3333333333333333");
}

TEST(GroupText, ARealHasAsManyDigitsAsAreAskedFor) {
    EXPECT_EQ(realText(1.0 / 3.0, 4), "0.3333");
    EXPECT_EQ(realText(1.0 / 3.0, 16), "0.3333333333333333");
    EXPECT_EQ(realText(12345.678, 6), "12345.7");
    EXPECT_EQ(realText(12345.678, 0), "1e+04");
    EXPECT_EQ(realText(2.0, 8), "2.0");
    EXPECT_EQ(realText(5e-324, 16), "4.940656458412465e-324");
    EXPECT_EQ(realText(-1.7976931348623157e308, 16), "-1.797693134862316e+308");
}

TEST(GroupText, WhatIsNoNumberHasItsLetters) {
    EXPECT_EQ(realText(std::numeric_limits<double>::infinity(), -1), "inf");
    EXPECT_EQ(realText(-std::numeric_limits<double>::infinity(), 16), "-inf");
    double value = 0;
    ASSERT_TRUE(parseReal(realText(std::numeric_limits<double>::quiet_NaN(), -1), value));
    EXPECT_TRUE(std::isnan(value));
    ASSERT_TRUE(parseReal("inf", value));
    EXPECT_TRUE(std::isinf(value));
}

TEST(GroupText, ARealIsReadFromAWholeText) {
    double value = 0;
    for (const char* const text : {"2.5", " 2.5", "2.5  ", "+2.5", "25e-1", "\t2.5"}) {
        value = 0;
        EXPECT_TRUE(parseReal(text, value)) << text;
        EXPECT_EQ(value, 2.5) << text;
    }
    for (const char* const text : {"", " ", "2.5x", "x", "2.5 3", "+-2.5", "++2", "1e999", "2,5", "."})
        EXPECT_FALSE(parseReal(text, value)) << text;
}

TEST(GroupText, AnIntegerIsReadFromAWholeText) {
    std::int64_t value = 0;
    for (const char* const text : {"-42", "   -42", "-42 "}) {
        EXPECT_TRUE(parseInteger(text, value)) << text;
        EXPECT_EQ(value, -42);
    }
    EXPECT_TRUE(parseInteger("+7", value));
    EXPECT_EQ(value, 7);
    EXPECT_TRUE(parseInteger("-9223372036854775808", value));
    for (const char* const text : {"", "1.0", "0x10", "9223372036854775808", "1 2", "-", "+", "+-1"})
        EXPECT_FALSE(parseInteger(text, value)) << text;
}

TEST(GroupText, AHandleIsHexadecimalWithoutLeadingZeros) {
    EXPECT_EQ(handleText(0), "0");
    EXPECT_EQ(handleText(0x1aBc), "1ABC");
    EXPECT_EQ(handleText(~0ULL), "FFFFFFFFFFFFFFFF");
    std::uint64_t value = 0;
    EXPECT_TRUE(parseHandle(" 1abC ", value));
    EXPECT_EQ(value, 0x1abcu);
    for (const char* const text : {"", "G", "-1", "+1", "0x1", "1FFFFFFFFFFFFFFFF"})
        EXPECT_FALSE(parseHandle(text, value)) << text;
}

TEST(GroupText, BytesAreTwoCapitalDigitsEach) {
    EXPECT_EQ(hexText(std::string("\x00\xff\x1a", 3)), "00FF1A");
    EXPECT_EQ(hexText(""), "");
    std::string bytes;
    ASSERT_TRUE(parseHex("00ff1A", bytes));
    EXPECT_EQ(bytes, std::string("\x00\xff\x1a", 3));
    ASSERT_TRUE(parseHex("", bytes));
    EXPECT_EQ(bytes, "");
    for (const char* const text : {"0", "0G", "G0", "00 1", "\xC3\xA4"})
        EXPECT_FALSE(parseHex(text, bytes)) << text;
}

RC_GTEST_PROP(GroupText, AnyTextComesBackOnOneAsciiLine, (const std::vector<std::uint16_t>& numbers)) {
    std::u16string units;
    for (const std::uint16_t number : numbers)
        units += static_cast<char16_t>(number == 0 ? 1 : number);
    const std::wstring text = platform::fromUtf16(units);
    const std::string line = encodeText(text);
    for (const char character : line)
        RC_ASSERT(character >= ' ' && character <= '~');
    RC_ASSERT(decodeText(line) == text);
}

RC_GTEST_PROP(GroupText, AnyTextOfTheLettersOfEscapesComesBack, ()) {
    const auto text =
        *rc::gen::container<std::wstring>(rc::gen::elementOf(std::wstring(L"^ \\U+0aF4J\u00e4\n")));
    RC_ASSERT(decodeText(encodeText(text)) == text);
}

RC_GTEST_PROP(GroupText, AnyLineIsSomeText, (const std::string& line)) {
    const std::wstring text = decodeText(line);
    RC_ASSERT(decodeText(encodeText(text)) == text);
}

RC_GTEST_PROP(GroupText, AnyRealComesBackBitForBit, (std::uint64_t bits)) {
    double value = 0, back = 0;
    std::memcpy(&value, &bits, sizeof value);
    if (std::isnan(value))
        return;
    RC_ASSERT(parseReal(realText(value, -1), back));
    RC_ASSERT(std::memcmp(&value, &back, sizeof value) == 0);
}

RC_GTEST_PROP(GroupText, AnyBytesComeBack, (const std::string& bytes)) {
    std::string back;
    RC_ASSERT(parseHex(hexText(bytes), back));
    RC_ASSERT(back == bytes);
}
