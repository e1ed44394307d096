#include "dwg/text_codec.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace embedded::dwg;

namespace {

const std::uint16_t kAnsi1250 = 28;
const std::uint16_t kAnsi1251 = 29;
const std::uint16_t kAnsi1252 = 30;
const std::uint16_t kAnsi932 = 38;

void expectFiled(std::uint16_t codePage, const std::wstring& text, const std::string& bytes) {
    const TextCodec codec(codePage);
    EXPECT_EQ(codec.encode(text), bytes);
    EXPECT_EQ(codec.decode(bytes), text);
}

} // namespace

TEST(TextCodec, AsciiIsItself) { expectFiled(kAnsi1252, L"Layer 1", "Layer 1"); }

TEST(TextCodec, CharactersOfTheCodePageTakeItsBytes) {
    expectFiled(kAnsi1252, L"Stra\u00DFe \u20AC",
                "Stra\xDF"
                "e \x80");
    expectFiled(kAnsi1251, L"\u0421\u043B\u043E\u0439", "\xD1\xEB\xEE\xE9");
    expectFiled(kAnsi1250, L"\u017Eluva", "\x9Eluva");
}

TEST(TextCodec, CharactersThatTheCodePageLacksAreEscaped) {
    expectFiled(kAnsi1252, L"\u0421", "\\U+0421");
    expectFiled(kAnsi1251, L"\u00DF", "\\U+00DF");
}

TEST(TextCodec, CharactersBeyondTheFirstPlaneTakeTwoEscapes) {
    expectFiled(kAnsi1252, L"\U0001F600", "\\U+D83D\\U+DE00");
}

TEST(TextCodec, ALiteralBackslashUStaysText) {
    expectFiled(kAnsi1252, L"\\U+0041", "\\U+005CU+0041");
    expectFiled(kAnsi1252, L"\\M+1826E", "\\U+005CM+1826E");
}

TEST(TextCodec, ABackslashThatBeginsNoEscapeStaysItself) {
    expectFiled(kAnsi1252, L"C:\\Users\\U+00", "C:\\Users\\U+00");
    expectFiled(kAnsi1252, L"\\", "\\");
    expectFiled(kAnsi1252, L"\\U+00G1", "\\U+00G1");
    expectFiled(kAnsi1252, L"\\P\\u+0041", "\\P\\u+0041");
}

TEST(TextCodec, DoubleByteCodePagesMayHaveABackslashAsSecondByte) {
    // The second byte of this one is 0x5C.
    expectFiled(kAnsi932, L"\u8868U+0041", "\x95\x5CU+0041");
}

TEST(TextCodec, EscapesOfMultibyteCodePagesAreRead) {
    EXPECT_EQ(TextCodec(kAnsi1252).decode("\\M+1955C"), L"\u8868");
    EXPECT_EQ(TextCodec(kAnsi1252).decode("\\M+6955C"), L"\\M+6955C");
}

TEST(TextCodec, SmallHexDigitsAreRead) { EXPECT_EQ(TextCodec(kAnsi1252).decode("\\U+00df"), L"\u00DF"); }

TEST(TextCodec, BytesThatStandForNothingKeepTheirNumber) {
    const TextCodec codec(kAnsi1252);
    EXPECT_EQ(codec.decode("\x81"), L"\u0081");
    EXPECT_EQ(codec.decode(codec.encode(L"\u0081")), L"\u0081");
    EXPECT_EQ(TextCodec(kAnsi932).decode("\x95"), L"\u0095");
}

TEST(TextCodec, AnUnknownCodePageHasAscii) { expectFiled(9999, L"a\u00E4", "a\\U+00E4"); }

TEST(TextCodec, AZeroInsideDoesNotEndTheText) {
    expectFiled(kAnsi1252, std::wstring(L"a\0b", 3), "a\\U+0000b");
}

RC_GTEST_PROP(TextCodecProperty, EveryTextComesBack, ()) {
    const auto codePage =
        *rc::gen::element<std::uint16_t>(0, 23, 28, 29, 30, 31, 33, 35, 38, 39, 40, 41, 42, 44);
    const auto alphabet =
        rc::gen::weightedOneOf<wchar_t>({{4, rc::gen::elementOf(std::wstring(L"\\UM+0019AFaf "))},
                                         {2, rc::gen::cast<wchar_t>(rc::gen::inRange(1, 0xD800))},
                                         {1, rc::gen::cast<wchar_t>(rc::gen::inRange(0xE000, 0x110000))}});
    const auto text = *rc::gen::container<std::wstring>(alphabet);
    const TextCodec codec(codePage);
    RC_ASSERT(codec.decode(codec.encode(text)) == text);
}

RC_GTEST_PROP(TextCodecProperty, WhateverBytesAreReadComeBackAsTheSameText, (std::string bytes)) {
    const TextCodec codec(kAnsi1252);
    const std::wstring text = codec.decode(bytes);
    RC_ASSERT(codec.decode(codec.encode(text)) == text);
}
