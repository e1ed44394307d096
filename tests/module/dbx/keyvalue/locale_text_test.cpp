#include "dbx/keyvalue/locale_text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <locale>

using orv::narrowByLocale;
using orv::widenByLocale;

namespace {

// Knows one character of its own: the byte 0x80 is the euro sign.
class EuroFacet : public std::ctype<wchar_t> {
protected:
    char_type do_widen(char byte) const override {
        return byte == '\x80' ? L'\u20AC' : std::ctype<wchar_t>::do_widen(byte);
    }
    char do_narrow(char_type character, char byDefault) const override {
        return character == L'\u20AC' ? '\x80' : std::ctype<wchar_t>::do_narrow(character, byDefault);
    }
};

// The global locale is this one while it lives.
class GlobalLocale {
public:
    explicit GlobalLocale(const std::locale& locale) : m_before(std::locale::global(locale)) {}
    ~GlobalLocale() { std::locale::global(m_before); }
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;

private:
    std::locale m_before;
};

} // namespace

TEST(LocaleText, GoesCharacterByCharacter) {
    EXPECT_EQ(widenByLocale("a\xDC\xFF"), L"a\u00DC\u00FF");
    EXPECT_EQ(narrowByLocale(L"a\u00DC\u00FF"), "a\xDC\xFF");
    EXPECT_EQ(widenByLocale(std::string("a\0b", 3)), std::wstring(L"a\0b", 3));
    EXPECT_EQ(narrowByLocale(std::wstring(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(LocaleText, ACharacterWithoutAByteIsAQuestionMark) {
    EXPECT_EQ(narrowByLocale(L"\u20ACx\u03A9"), "?x?");
}

TEST(LocaleText, TheGlobalLocaleSaysWhatAByteIs) {
    const GlobalLocale euro(std::locale(std::locale::classic(), new EuroFacet));
    EXPECT_EQ(widenByLocale("a\x80"), L"a\u20AC");
    EXPECT_EQ(narrowByLocale(L"a\u20AC"), "a\x80");
    EXPECT_EQ(widenByLocale("\xDC"), L"\u00DC");
}

RC_GTEST_PROP(LocaleText, AnyNarrowTextComesBack, (const std::string& text)) {
    RC_ASSERT(narrowByLocale(widenByLocale(text)) == text);
    const GlobalLocale euro(std::locale(std::locale::classic(), new EuroFacet));
    RC_ASSERT(narrowByLocale(widenByLocale(text)) == text);
}
