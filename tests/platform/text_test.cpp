#include "platform/text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <clocale>
#include <cwchar>

namespace {

std::wstring wideOf(const std::vector<unsigned>& numbers) {
    std::wstring text;
    for (const unsigned number : numbers)
        text += static_cast<wchar_t>(number);
    return text;
}

TEST(Text, Utf8OfEveryLength) {
    EXPECT_EQ(platform::toUtf8(wideOf({0x41, 0xE4, 0x20AC, 0x1F600})),
              "A\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(platform::fromUtf8("A\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"),
              wideOf({0x41, 0xE4, 0x20AC, 0x1F600}));
}

TEST(Text, BytesThatAreNoUtf8AreKeptOneByOne) {
    // A lone follower, a cut sequence, an overlong form, a number above the last character.
    for (const char* bytes : {"\x80", "a\xC3", "\xC0\xAF", "\xF4\x90\x80\x80", "\xFF\xFE", "\xED\xB2\x80"}) {
        const std::wstring wide = platform::fromUtf8(bytes);
        EXPECT_EQ(platform::toUtf8(wide), bytes);
    }
    EXPECT_EQ(platform::fromUtf8("\x80"), wideOf({0xDC80}));
}

TEST(Text, NumbersThatAreNoCharactersAreReplaced) {
    EXPECT_EQ(platform::toUtf8(wideOf({0x110000})), "\xEF\xBF\xBD");
    EXPECT_EQ(platform::toUtf16(wideOf({0x7FFFFFFF})), u"\xFFFD");
}

TEST(Text, Utf16PairsAndLoneSurrogates) {
    EXPECT_EQ(platform::toUtf16(wideOf({0x1F600})), (std::u16string{0xD83D, 0xDE00}));
    EXPECT_EQ(platform::fromUtf16(std::u16string{0xD83D, 0xDE00}), wideOf({0x1F600}));
    EXPECT_EQ(platform::fromUtf16(std::u16string{0xDE00, 0xD83D}), wideOf({0xDE00, 0xD83D}));
    EXPECT_EQ(platform::toUtf16(wideOf({0xD83D})), (std::u16string{0xD83D}));
}

TEST(Text, CharacterByCharacter) {
    EXPECT_EQ(platform::widen("\xE4\xFF"), wideOf({0xE4, 0xFF}));
    EXPECT_EQ(platform::narrow(wideOf({0xE4, 0xFF, 0x100, 0x20AC})), "\xE4\xFF??");
}

TEST(Text, CaseDoesNotDependOnTheLocale) {
    ASSERT_NE(std::setlocale(LC_ALL, "C"), nullptr);
    EXPECT_EQ(platform::foldCase(std::wstring_view(L"\u00C4\u0416Z")), L"\u00E4\u0436z");
    EXPECT_EQ(platform::upperCase(L"\u00E4\u0436z"), L"\u00C4\u0416Z");
    EXPECT_TRUE(platform::equalNoCase(L"TALDORK.arx", L"taldork.ARX"));
    EXPECT_FALSE(platform::equalNoCase(L"taldork", L"taldor"));
    EXPECT_FALSE(platform::equalNoCase(L"taldork", L"taldorx"));
}

RC_GTEST_PROP(Text, AnyBytesComeBackFromWide, (const std::string& bytes)) {
    RC_ASSERT(platform::toUtf8(platform::fromUtf8(bytes)) == bytes);
}

RC_GTEST_PROP(Text, AnyUnitsComeBackFromWide, ()) {
    const auto numbers = *rc::gen::container<std::vector<unsigned>>(
        rc::gen::oneOf(rc::gen::inRange(0u, 0x10000u), rc::gen::inRange(0xD800u, 0xE000u)));
    std::u16string units;
    for (const unsigned number : numbers)
        units += static_cast<char16_t>(number);
    RC_ASSERT(platform::toUtf16(platform::fromUtf16(units)) == units);
}

RC_GTEST_PROP(Text, AnyCharactersComeBackFromUtf8, ()) {
    const auto numbers = *rc::gen::container<std::vector<unsigned>>(
        rc::gen::oneOf(rc::gen::inRange(0u, 0xD800u), rc::gen::inRange(0xE000u, 0x110000u)));
    RC_ASSERT(platform::fromUtf8(platform::toUtf8(wideOf(numbers))) == wideOf(numbers));
}

} // namespace
