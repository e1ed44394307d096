#include "app/log.h"

#include "support/slots.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

using namespace orv;
using Heard = std::vector<std::string>;

namespace {

struct Listener : ILogListener {
    void onLog(const std::string& document, const std::string& channel, LogLevel level,
               const std::string& message) override {
        heard.push_back("[" + document + "] " + channel + " " + std::to_string(static_cast<int>(level)) +
                        " " + message);
        if (fails)
            throw std::runtime_error("listener");
    }
    Heard heard;
    bool fails = false;
};

std::wstring documentName() { return L"pl\u00e4n"; }

class LogTest : public testing::Test {
protected:
    LogTest() { clearLogs(); }
    ~LogTest() override {
        clearLogs();
        setGetAcApDocumentNameFn(nullptr);
    }
    boost::shared_ptr<Listener> one = boost::make_shared<Listener>();
    boost::shared_ptr<Listener> two = boost::make_shared<Listener>();
};

} // namespace

TEST_F(LogTest, AMessageReachesItsChannelAndDefaultEachOnceWithTheChannelsName) {
    addLogListener("db", one);
    addLogListener(two);
    log("db", kLogError, "text");
    EXPECT_EQ(one->heard, Heard{"[] db 4 text"});
    EXPECT_EQ(two->heard, Heard{"[] db 4 text"});
}

TEST_F(LogTest, AMessageToDefaultIsDeliveredOnce) {
    addLogListener("default", one);
    log("default", kLogInfo, "a");
    log(kLogWarning, "b");
    EXPECT_EQ(one->heard, (Heard{"[] default 1 a", "[] default 2 b"}));
}

TEST_F(LogTest, ANullListenerChangesNothingAndTheSameOneTwiceIsCalledOnce) {
    addLogListener("db", boost::shared_ptr<ILogListener>());
    addLogListener("db", one);
    addLogListener("db", one);
    log("db", kLogDebug, "x");
    EXPECT_EQ(one->heard.size(), 1u);
}

TEST_F(LogTest, AfterClearLogsAMessageReachesNobodyAndTheChannelExistsAgain) {
    addLogListener("db", one);
    addLogListener(two);
    clearLogs();
    log("db", kLogError, "lost");
    EXPECT_TRUE(one->heard.empty());
    EXPECT_TRUE(two->heard.empty());
    addLogListener("db", one);
    log("db", kLogError, "found");
    EXPECT_EQ(one->heard, Heard{"[] db 4 found"});
}

TEST_F(LogTest, TheDocumentsNameIsNarrowed) {
    addLogListener("db", one);
    setGetAcApDocumentNameFn(&documentName);
    log("db", kLogInfo, "x");
#if !defined(_WIN32)
    EXPECT_EQ(one->heard, Heard{"[pl\xC3\xA4n] db 1 x"});
#endif
}

TEST_F(LogTest, AListenerThatThrowsEndsTheDelivery) {
    one->fails = true;
    addLogListener("db", one);
    addLogListener(two);
    EXPECT_THROW(log("db", kLogInfo, "x"), std::runtime_error);
    EXPECT_EQ(one->heard.size(), 1u);
    EXPECT_TRUE(two->heard.empty());
}

TEST_F(LogTest, PlainPointersAreTakenOver) {
    struct Ending : ILogListener {
        explicit Ending(int& ended) : m_ended(ended) {}
        ~Ending() override { ++m_ended; }
        void onLog(const std::string&, const std::string&, LogLevel, const std::string&) override {}
        int& m_ended;
    };
    int ended = 0;
    addListener("db", new Ending(ended));
    addListener(new Ending(ended));
    EXPECT_EQ(ended, 0);
    clearLogs();
    EXPECT_EQ(ended, 2);
}

TEST_F(LogTest, ClearLogsInAListenerDoesNotEndTheDeliveringChannel) {
    struct Clearing : ILogListener {
        void onLog(const std::string&, const std::string&, LogLevel, const std::string&) override {
            clearLogs();
        }
    };
    addLogListener("db", boost::make_shared<Clearing>());
    log("db", kLogInfo, "x");
    log("db", kLogInfo, "y");
    addLogListener("db", one);
    log("db", kLogInfo, "z");
    EXPECT_EQ(one->heard.size(), 1u);
}

TEST_F(LogTest, LevelListenersHearTheirLevelAloneAndInAddition) {
    Log channel;
    channel.addListener(one);
    channel.addListener(kLogError, one);
    channel.addListener(kLogError, two);
    channel.addListener(boost::shared_ptr<ILogListener>());
    channel.log("c", kLogError, "e");
    channel.log("c", kLogFatal, "f");
    EXPECT_EQ(one->heard, (Heard{"[] c 4 e", "[] c 4 e", "[] c 5 f"}));
    EXPECT_EQ(two->heard, Heard{"[] c 4 e"});
}

TEST_F(LogTest, ListenersAreCalledInTheOrderOfTheirPointers) {
    struct Noting : ILogListener {
        explicit Noting(std::vector<const ILogListener*>& called) : m_called(called) {}
        void onLog(const std::string&, const std::string&, LogLevel, const std::string&) override {
            m_called.push_back(this);
        }
        std::vector<const ILogListener*>& m_called;
    };
    std::vector<const ILogListener*> called;
    std::vector<boost::shared_ptr<ILogListener>> listeners;
    for (int i = 0; i < 5; ++i)
        listeners.push_back(boost::make_shared<Noting>(called));
    std::sort(listeners.begin(), listeners.end());
    std::vector<const ILogListener*> expected;
    for (const auto& listener : listeners)
        expected.push_back(listener.get());
    for (int i : {3, 1, 4, 0, 2})
        addLogListener("db", listeners[i]);
    log("db", kLogInfo, "x");
    EXPECT_EQ(called, expected);
}

TEST_F(LogTest, TheListenersOperationStandsBehindItsDestructor) {
    using OnLog =
        void (*)(ILogListener*, const std::string&, const std::string&, LogLevel, const std::string&);
#if defined(_WIN32)
    constexpr int kSlot = 1;
#else
    constexpr int kSlot = 2;
#endif
    testing_support::slotOf<OnLog>(one.get(), kSlot)(one.get(), "plan", "db", kLogFatal, "text");
    EXPECT_EQ(one->heard, Heard{"[plan] db 5 text"});
}

TEST(LogLevel, WordsOfTheLevels) {
    EXPECT_EQ(orv::to_string(kLogInfo), L"INFO");
    EXPECT_EQ(orv::to_string(static_cast<LogLevel>(2)), L"WARNING");
    EXPECT_EQ(orv::to_string(static_cast<LogLevel>(3)), L"DEBUG");
    EXPECT_EQ(orv::to_string(static_cast<LogLevel>(4)), L"ERROR");
    EXPECT_EQ(orv::to_string(static_cast<LogLevel>(5)), L"FATAL");
    EXPECT_EQ(orv::to_string(static_cast<LogLevel>(0)), L"unknown");
    EXPECT_EQ(orv::to_string(static_cast<LogLevel>(6)), L"unknown");
}
