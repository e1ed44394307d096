#include "orvcore/co_stream.h"

#include "embedded/console.h"
#include "support/beep_recorder.h"

#include <gtest/gtest.h>

#include <stdexcept>

using testing_support::BeepRecorder;
using Lines = std::vector<std::wstring>;

TEST(COStream, HandsOnALineWhenItEnds) {
    BeepRecorder recorder;
    orvBeep << L"wide " << "narrow " << 12 << L"@" << -3;
    EXPECT_TRUE(recorder.lines().empty());
    orvBeep << endl;
    EXPECT_EQ(recorder.lines(), (Lines{L"wide narrow 12@-3"}));
}

TEST(COStream, EachLineBeginsEmpty) {
    BeepRecorder recorder;
    orvBeep << std::wstring(L"a") << endl << std::string("b") << endl << endl;
    EXPECT_EQ(recorder.lines(), (Lines{L"a", L"b", L""}));
}

TEST(COStream, TakesNarrowTextAsUtf8) {
    BeepRecorder recorder;
    orvBeep << "\xC3\xA4" << endl;
    EXPECT_EQ(recorder.lines(), (Lines{L"\u00e4"}));
}

TEST(COStream, NullTextIsNothing) {
    BeepRecorder recorder;
    orvBeep << static_cast<const wchar_t*>(nullptr) << static_cast<const char*>(nullptr) << L"x" << endl;
    EXPECT_EQ(recorder.lines(), (Lines{L"x"}));
}

TEST(COStream, ASinkThatThrowsLeavesAFreshLine) {
    const ORV_COStream::Sink before =
        orvBeep.setSink([](const std::wstring&) { throw std::runtime_error("sink"); });
    EXPECT_THROW(orvBeep << L"lost" << endl, std::runtime_error);
    orvBeep.setSink(before);
    BeepRecorder recorder;
    orvBeep << L"next" << endl;
    EXPECT_EQ(recorder.lines(), (Lines{L"next"}));
}

TEST(COStream, PrintsOnTheConsoleWithoutASinkOfItsOwn) {
    std::wstring printed;
    const auto console = embedded::setConsoleSink([&](const std::wstring& text) { printed += text; });
    const ORV_COStream::Sink before = orvBeep.setSink(ORV_COStream::Sink());
    orvBeep << L"100 %s sure" << endl;
    orvBeep.setSink(before);
    embedded::setConsoleSink(console);
    EXPECT_EQ(printed, L"\n100 %s sure\n");
}
