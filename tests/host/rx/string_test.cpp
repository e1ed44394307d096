#include "AcString.h"
#include "acutmem.h"

#include <gtest/gtest.h>

#include <cstring>
#include <cwchar>

namespace {

TEST(AcStringTest, NullIsEmpty) {
    EXPECT_TRUE(AcString().isEmpty());
    EXPECT_TRUE(AcString(static_cast<const ACHAR*>(nullptr)).isEmpty());
    EXPECT_STREQ(AcString(static_cast<const ACHAR*>(nullptr)).kACharPtr(), L"");
    AcString text(L"x");
    text = nullptr;
    EXPECT_TRUE(text.isEmpty());
    EXPECT_EQ(text, static_cast<const ACHAR*>(nullptr));
}

TEST(AcStringTest, Compares) {
    const AcString text(L"Abc");
    EXPECT_EQ(text, L"Abc");
    EXPECT_NE(text, AcString(L"abc"));
    EXPECT_EQ(text.compareNoCase(L"aBC"), 0);
    EXPECT_LT(text.compare(L"Abd"), 0);
    EXPECT_GT(text.compare(L"Ab"), 0);
    EXPECT_TRUE(AcString(L"a") < AcString(L"b"));
}

TEST(AcStringTest, AppendsAlsoItself) {
    AcString text(L"ab");
    text += text.kACharPtr();
    text += L'!';
    EXPECT_EQ(text, L"abab!");
    EXPECT_EQ(AcString(L"x") + L"y" + AcString(L"z"), L"xyz");
    text = text.kACharPtr() + 2;
    EXPECT_EQ(text, L"ab!");
}

TEST(AcStringTest, Parts) {
    const AcString text(L"abcdef");
    EXPECT_EQ(text.mid(2, 2), L"cd");
    EXPECT_EQ(text.mid(4), L"ef");
    EXPECT_EQ(text.mid(9), L"");
    EXPECT_EQ(text.left(2), L"ab");
    EXPECT_EQ(text.left(-1), L"");
    EXPECT_EQ(text.right(2), L"ef");
    EXPECT_EQ(text.right(99), L"abcdef");
    EXPECT_EQ(text.find(L"cd"), 2);
    EXPECT_EQ(text.find(L"x"), -1);
    EXPECT_EQ(text.findRev(L'a'), 0);
    EXPECT_EQ(text.getAt(5), L'f');
    EXPECT_EQ(text.getAt(6), L'\0');
}

TEST(AcStringTest, CaseAndBlanks) {
    EXPECT_EQ(AcString(L"\u00C4b").makeLower(), L"\u00E4b");
    EXPECT_EQ(AcString(L"\u00E4b").makeUpper(), L"\u00C4B");
    EXPECT_EQ(AcString(L" \tx y\n").trim(), L"x y");
    EXPECT_EQ(AcString(L"  ").trim(), L"");
}

TEST(AcStringTest, FormatsLongTextsToo) {
    AcString text;
    EXPECT_EQ(text.format(L"%d-%ls", 7, L"x"), L"7-x");
    const std::wstring longText(5000, L'y');
    EXPECT_EQ(text.format(L"%ls", longText.c_str()).length(), 5000u);
}

TEST(AcStringTest, Utf8) {
    EXPECT_EQ(AcString("gr\xC3\xBCn"), L"gr\u00FCn");
    EXPECT_EQ(AcString(L"gr\u00FCn").utf8(), "gr\xC3\xBCn");
}

TEST(AcStringTest, NarrowTextIsThatOfTheSystem) {
    EXPECT_STREQ(AcString().kszPtr(), "");
    EXPECT_STREQ(AcString(L"orv.base").kszPtr(), "orv.base");
#if !defined(_WIN32)
    EXPECT_STREQ(AcString(L"gr\u00FCn \U0001F600").kszPtr(), "gr\xC3\xBCn \xF0\x9F\x98\x80");
#endif
    // It follows the text.
    AcString text(L"a");
    EXPECT_STREQ(text.kszPtr(), "a");
    text += L"b";
    EXPECT_STREQ(text.kszPtr(), "ab");
}

TEST(AcStringTest, HalfACharacterHasNoNarrowForm) {
    const ACHAR high = static_cast<ACHAR>(0xD83D);
    const ACHAR low = static_cast<ACHAR>(0xDE00);
    EXPECT_EQ(AcString(high, 1).kszPtr(), nullptr);
    EXPECT_EQ(AcString(low, 1).kszPtr(), nullptr);
    EXPECT_EQ((AcString(L"a") += high).append(L"b").kszPtr(), nullptr);
    AcString turned(low, 1);
    turned += high;
    EXPECT_EQ(turned.kszPtr(), nullptr);
}

TEST(AcStringTest, AsciiEndsAt127) {
    EXPECT_TRUE(AcString().isAscii());
    EXPECT_TRUE(AcString(L"orv.base\x7f\x01").isAscii());
    EXPECT_FALSE(AcString(L"a\u0080").isAscii());
    EXPECT_FALSE(AcString(L"\u4E2D").isAscii());
}

TEST(HostMemory, StringsAreCopiedAndGivenBack) {
    ACHAR* copy = acutNewString(L"text");
    EXPECT_STREQ(copy, L"text");
    acutUpdString(copy + 1, copy);
    EXPECT_STREQ(copy, L"ext");
    acutDelString(copy);
    EXPECT_EQ(copy, nullptr);
    acutDelString(copy);
    EXPECT_EQ(acutNewString(nullptr), nullptr);
    char* bytes = static_cast<char*>(acutNewBuffer(10));
    std::memset(bytes, 1, 10);
    acutDelBuffer(bytes);
    EXPECT_EQ(bytes, nullptr);
}

} // namespace
