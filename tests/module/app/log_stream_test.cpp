#include "app/log_stream.h"

#include "app/log.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include <stdexcept>
#include <string>
#include <vector>

using namespace orv;
using Heard = std::vector<std::string>;

namespace {

struct Listener : ILogListener {
    void onLog(const std::string&, const std::string& channel, LogLevel level,
               const std::string& message) override {
        heard.push_back(channel + " " + std::to_string(static_cast<int>(level)) + " " + message);
        if (fails)
            throw std::runtime_error("listener");
    }
    Heard heard;
    bool fails = false;
};

class LogStreamTest : public testing::Test {
protected:
    LogStreamTest() {
        clearLogs();
        addLogListener("c", listener);
    }
    ~LogStreamTest() override { clearLogs(); }
    boost::shared_ptr<Listener> listener = boost::make_shared<Listener>();
};

} // namespace

TEST_F(LogStreamTest, SendsWhatIsLeftAtItsEndAtLevelDebug) {
    {
        LogStream stream("c");
        stream << "a" << 1 << ' ' << 2.5 << std::string("b") << L"\u00e4";
        EXPECT_TRUE(listener->heard.empty());
    }
#if !defined(_WIN32)
    EXPECT_EQ(listener->heard, Heard{"c 3 a1 2.5b\xC3\xA4"});
#endif
}

TEST_F(LogStreamTest, WithNothingPendingItWritesNothingAtItsEnd) {
    { LogStream stream("c"); }
    {
        LogStream stream("c");
        stream << "\n\n";
    }
    EXPECT_TRUE(listener->heard.empty());
}

TEST_F(LogStreamTest, ATrailingLineFeedEndsAMessage) {
    LogStream stream("c");
    stream << "one\n";
    EXPECT_EQ(listener->heard, Heard{"c 3 one"});
    stream << "two"
           << "\n";
    EXPECT_EQ(listener->heard, (Heard{"c 3 one", "c 3 two"}));
}

TEST_F(LogStreamTest, ALineFeedBetweenTwoWordsJoinsThem) {
    {
        LogStream stream("c");
        stream << "one\ntwo";
        EXPECT_TRUE(listener->heard.empty());
    }
    EXPECT_EQ(listener->heard, Heard{"c 3 onetwo"});
}

TEST_F(LogStreamTest, ABlankLineIsAFlush) {
    {
        LogStream stream("c");
        stream << "one\n\ntwo";
        EXPECT_EQ(listener->heard, Heard{"c 3 one"});
    }
    EXPECT_EQ(listener->heard, (Heard{"c 3 one", "c 3 two"}));
}

TEST_F(LogStreamTest, ALeadingLineFeedSendsWhatWasPending) {
    LogStream stream("c");
    stream << "one";
    stream << "\ntwo\n";
    EXPECT_EQ(listener->heard, (Heard{"c 3 one", "c 3 two"}));
}

TEST_F(LogStreamTest, AnEmptyTextIsAFlush) {
    LogStream stream("c");
    stream << "one"
           << "";
    EXPECT_EQ(listener->heard, Heard{"c 3 one"});
}

TEST_F(LogStreamTest, SetLevelHoldsForWhatFollowsAndIsNoFlush) {
    {
        LogStream stream("c");
        stream << "a" << setLevel(kLogError) << "b";
        EXPECT_TRUE(listener->heard.empty());
    }
    EXPECT_EQ(listener->heard, Heard{"c 4 ab"});
}

TEST_F(LogStreamTest, AFailingListenerIsHeardWhileStreamingAndNotAtTheEnd) {
    listener->fails = true;
    EXPECT_NO_THROW({
        LogStream stream("c");
        stream << "left";
    });
    LogStream stream("c");
    EXPECT_THROW(stream << "x\n", std::runtime_error);
    EXPECT_EQ(listener->heard, (Heard{"c 3 left", "c 3 x"}));
}

TEST_F(LogStreamTest, WideTextThatIsNotConstIsTextAndNoAddress) {
    wchar_t text[] = L"wide";
    wchar_t* const pointer = text;
    {
        LogStream stream("c");
        stream << pointer << text;
    }
    EXPECT_EQ(listener->heard, Heard{"c 3 widewide"});
}

TEST_F(LogStreamTest, AWideCharacterIsTextAndNoNumber) {
    LogStream stream("c");
    const wchar_t character = L'y';
    stream << L'x' << character << L'\n';
    EXPECT_EQ(listener->heard, Heard{"c 3 xy"});
}
