#include "platform/cstring.h"

#include <gtest/gtest.h>

namespace {

TEST(CString, ConvertsByTheSystemsCodePage) {
    EXPECT_STREQ(CStringA(L"gr\u00FCn"), "gr\xC3\xBCn");
    EXPECT_STREQ(CStringW("gr\xC3\xBCn"), L"gr\u00FCn");
    const CStringW wide(L"\u4E2D");
    EXPECT_EQ(CStringA(wide).GetLength(), 3);
    EXPECT_EQ(CStringW(CStringA(wide)), wide);
}

TEST(CString, NullIsEmpty) {
    EXPECT_TRUE(CStringA(static_cast<const char*>(nullptr)).IsEmpty());
    EXPECT_TRUE(CStringA(static_cast<const wchar_t*>(nullptr)).IsEmpty());
    EXPECT_EQ(CStringW(static_cast<const wchar_t*>(nullptr)).GetLength(), 0);
    EXPECT_EQ(CString(L"a").Compare(nullptr), 1);
}

TEST(CString, AppendsAndCompares) {
    CString text(L"Taldork");
    text += L".ARX";
    text += L'!';
    EXPECT_EQ(text, L"Taldork.ARX!");
    EXPECT_NE(text, CString(L"Taldork.arx!"));
    EXPECT_LT(CString(L"a"), CString(L"b"));
    EXPECT_EQ((CString(L"a") + L"b").GetLength(), 2);
    EXPECT_EQ(text[0], L'T');
    EXPECT_EQ(CString(L"abc", 2), L"ab");
    text.Empty();
    EXPECT_TRUE(text.IsEmpty());
}

} // namespace
