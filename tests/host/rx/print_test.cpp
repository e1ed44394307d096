#include "acutads.h"

#include "acestext.h"
#include "embedded/abort.h"
#include "embedded/console.h"
#include "platform/text.h"
#include "rxdefs.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <stdexcept>

namespace {

class Print : public testing::Test {
protected:
    void SetUp() override {
        embedded::setConsoleSink([this](const std::wstring& text) { m_text += text; });
    }
    void TearDown() override { embedded::setConsoleSink({}); }

    template <class... Arguments>
    std::wstring print(const wchar_t* format, const Arguments&... arguments) {
        m_text.clear();
        EXPECT_EQ(acutPrintf(format, arguments...), RTNORM);
        return m_text;
    }

    std::wstring m_text;
};

TEST_F(Print, Numbers) {
    EXPECT_EQ(print(L"%d|%5d|%-5d|%05d|%+d", 1, 2, 3, 4, 5), L"1|    2|3    |00004|+5");
    EXPECT_EQ(print(L"%u %x %X %#x %o", 7u, 255, 255u, 16, 8), L"7 ff FF 0x10 10");
    EXPECT_EQ(print(L"%x", -1), L"ffffffff");
    EXPECT_EQ(print(L"%.2f|%8.3f|%g|%e", 1.005, 2.5, 0.5f, 1e10), L"1.00|   2.500|0.5|1.000000e+10");
    EXPECT_EQ(print(L"%c%c", L'\u4E2D', 'a'), L"\u4E2Da");
}

TEST_F(Print, WideIntegersNeedNoLengthMark) {
    EXPECT_EQ(print(L"%d %lld %I64d %u", std::int64_t(-5000000000), std::int64_t(-5000000000),
                    std::int64_t(5000000000), std::uint64_t(18446744073709551615u)),
              L"-5000000000 -5000000000 5000000000 18446744073709551615");
    EXPECT_EQ(print(L"%d entries", std::uint64_t(3)), L"3 entries");
}

TEST_F(Print, TextsOfBothWidthsInAnyDirective) {
    EXPECT_EQ(print(L"%s %ls %hs %S", L"wide", "n\xC3\xA4rrow", "narrow", L"w"),
              L"wide n\u00E4rrow narrow w");
    EXPECT_EQ(print(L"[%6s|%-6s|%.2s]", L"abc", "abc", L"abc"), L"[   abc|abc   |ab]");
    const wchar_t* null = nullptr;
    EXPECT_EQ(print(L"%s", null), L"(null)");
}

TEST_F(Print, WidthFromAnArgument) {
    EXPECT_EQ(print(L"[%*d|%-*d|%.*f]", 4, 1, 4, 2, 1, 2.25), L"[   1|2   |2.2]");
    EXPECT_EQ(print(L"[%*d]", -4, 1), L"[1   ]");
    EXPECT_EQ(print(L"[%*d]", L"no number", 1), L"[%*d]");
}

TEST_F(Print, PercentSigns) {
    EXPECT_EQ(print(L"100%%"), L"100%");
    EXPECT_EQ(print(L"100%"), L"100%");
    EXPECT_EQ(print(L"100% sure"), L"100% sure");
    EXPECT_EQ(print(L"%5%|%q|%n"), L"%5%|%q|%n");
}

TEST_F(Print, DirectiveWithoutAnArgumentStandsAsItIs) {
    EXPECT_EQ(print(L"%s and %d and %f"), L"%s and %d and %f");
    EXPECT_EQ(print(L"%d %s", 1), L"1 %s");
}

TEST_F(Print, DirectiveWithAnArgumentOfAnotherKindStandsAsItIs) {
    EXPECT_EQ(print(L"%s|%d", 1, 2), L"%s|2");
    EXPECT_EQ(print(L"%d|%f|%d", L"a", 1, 1.5), L"%d|%f|%d");
}

TEST_F(Print, HugeWidthStandsAsItIs) {
    EXPECT_EQ(print(L"%999999999999d", 1), L"%999999999999d");
    EXPECT_EQ(print(L"%.99999f", 1.0), L"%.99999f");
    EXPECT_EQ(print(L"%.4096f", 1e300).size(), 301u + 1 + 4096);
}

TEST_F(Print, NullFormatIsAnError) { EXPECT_EQ(acutPrintf(nullptr), RTERROR); }

RC_GTEST_PROP(PrintAnything, NoFormatDoesHarm, ()) {
    const auto format = *rc::gen::container<std::wstring>(
        rc::gen::elementOf(std::wstring(L"%%%%sdfxcnp*.lhI64-+0 9aZ\u00E4")));
    std::wstring text;
    embedded::setConsoleSink([&](const std::wstring& printed) { text = printed; });
    acutPrintf(format.c_str());
    if (format.find(L"%%") == std::wstring::npos)
        RC_ASSERT(text == format);
    acutPrintf(format.c_str(), 1, L"two", "three", 4.0, nullptr);
    embedded::setConsoleSink({});
}

TEST(Console, SinkIsHandedBack) {
    std::wstring first;
    embedded::setConsoleSink([&](const std::wstring& text) { first += text; });
    embedded::ConsoleSink earlier = embedded::setConsoleSink([](const std::wstring&) {});
    embedded::writeToConsole(L"dropped");
    embedded::setConsoleSink(earlier);
    embedded::writeToConsole(L"%d");
    embedded::setConsoleSink({});
    EXPECT_EQ(first, L"%d");
}

TEST(Console, DefaultSinkWritesUtf8ToStandardOutput) {
    testing::internal::CaptureStdout();
    acutPrintf(L"gr\u00FCn\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "gr\xC3\xBCn\n");
}

TEST(Abort, HandlerGetsTheText) {
    std::wstring text;
    embedded::setAbortHandler([&](const std::wstring& said) { text = said, throw std::runtime_error(""); });
    EXPECT_THROW(acrx_abort(L"%ls is %d", L"it", 7), std::runtime_error);
    embedded::setAbortHandler({});
    EXPECT_EQ(text, L"it is 7");
}

TEST(AbortDeathTest, DefaultTellsAndEndsTheProcess) {
    EXPECT_DEATH(acrx_abort(L"Class mismatch"), "Class mismatch");
    EXPECT_DEATH(
        {
            embedded::setAbortHandler([](const std::wstring&) {});
            acrx_abort(L"came back");
        },
        "came back");
}

TEST(ErrorStatusText, EveryStatusHasAText) {
    int texts = 0;
#define ACAD_STATUS(name, number)                                                                            \
    EXPECT_STREQ(acadErrorStatusText(Acad::name), L## #name);                                                \
    EXPECT_EQ(static_cast<int>(Acad::name), number);                                                         \
    ++texts;
#include "acad_statuses.inc"
#undef ACAD_STATUS
    EXPECT_GT(texts, 200);
}

TEST(ErrorStatusText, OtherNumbersHaveNone) {
    EXPECT_EQ(acadErrorStatusText(static_cast<Acad::ErrorStatus>(-1)), nullptr);
    EXPECT_EQ(acadErrorStatusText(static_cast<Acad::ErrorStatus>(299)), nullptr);
    EXPECT_EQ(acadErrorStatusText(static_cast<Acad::ErrorStatus>(99999)), nullptr);
}

TEST(ErrorStatusText, NumbersThatDrawingsAndModulesRelyOn) {
    EXPECT_EQ(Acad::eOk, 0);
    EXPECT_EQ(Acad::eNotImplementedYet, 1);
    EXPECT_EQ(Acad::eNotApplicable, 2);
    EXPECT_EQ(Acad::eInvalidInput, 3);
    EXPECT_EQ(Acad::eKeyNotFound, 22);
    EXPECT_EQ(Acad::eInvalidKey, 33);
    EXPECT_EQ(Acad::eWrongObjectType, 34);
    EXPECT_EQ(Acad::eDwgObjectImproperlyRead, 67);
    EXPECT_EQ(Acad::ePermanentlyErased, 81);
    EXPECT_EQ(Acad::eMakeMeProxy, 301);
}

} // namespace
