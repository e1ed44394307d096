#include "app/acad_console_logger.h"
#include "app/file_log_listener.h"
#include "app/log.h"
#include "embedded/console.h"
#include "platform/files.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include <string>
#include <vector>

using namespace orv;

namespace {

class LogListeners : public testing::Test {
protected:
    LogListeners() {
        clearLogs();
        m_folder = platform::makeTemporaryFolder();
        m_file = platform::joinPath(m_folder, L"log.txt");
        m_console = embedded::setConsoleSink([this](const std::wstring& text) { printed += text; });
    }
    ~LogListeners() override {
        clearLogs();
        embedded::setConsoleSink(m_console);
        platform::removeFile(m_file);
    }
    std::string path() const { return platform::toSystem(m_file); }
    std::string written() const {
        std::vector<unsigned char> bytes;
        platform::readFile(m_file, bytes);
        return std::string(bytes.begin(), bytes.end());
    }
    void listenWithBoth() {
        addListener(new FileLogListener(path()));
        addListener(new AcadConsoleLogger);
    }

    std::wstring printed;

private:
    std::wstring m_folder;
    std::wstring m_file;
    embedded::ConsoleSink m_console;
};

} // namespace

TEST_F(LogListeners, AWarningReachesTheFileAlone) {
    listenWithBoth();
    log("other", kLogWarning, "text");
    EXPECT_EQ(written(), "[] [other] WARNING : text\n");
    EXPECT_EQ(printed, L"");
}

TEST_F(LogListeners, AnErrorReachesBoth) {
    listenWithBoth();
    log("other", kLogError, "text");
    EXPECT_EQ(written(), "[] [other] ERROR : text\n");
    EXPECT_EQ(printed, L"\n[other] ERROR : text");
}

TEST_F(LogListeners, AnErrorOfASilentChannelReachesTheFileAlone) {
    listenWithBoth();
    for (const char* const channel : {"doc", "db", "sys", "MovedElementsReactor", "NamedSel"})
        log(channel, kLogFatal, "x");
    EXPECT_EQ(printed, L"");
    EXPECT_NE(written().find("[sys] FATAL : x\n"), std::string::npos);
}

TEST_F(LogListeners, TheConsoleComparesTheWholeChannel) {
    AcadConsoleLogger().onLog("", "sys2", kLogError, "m");
    AcadConsoleLogger().onLog("", "system", kLogError, "m");
    EXPECT_EQ(printed, L"\n[sys2] ERROR : m\n[system] ERROR : m");
}

TEST_F(LogListeners, UnknownLevelsHaveTheirWordAndAboveDebugArePrinted) {
    listenWithBoth();
    log("c", static_cast<LogLevel>(0), "low");
    log("c", static_cast<LogLevel>(6), "high");
    EXPECT_EQ(written(), "[] [c] unknown : low\n[] [c] unknown : high\n");
    EXPECT_EQ(printed, L"\n[c] unknown : high");
}

TEST_F(LogListeners, TheConsoleLeavesOutEmptyMessages) {
    AcadConsoleLogger().onLog("", "c", kLogFatal, "");
    EXPECT_EQ(printed, L"");
}

TEST_F(LogListeners, TheConsoleWidensByteByByteAndTakesTheMessageAsAFormat) {
    AcadConsoleLogger().onLog("", "c", kLogFatal, "50%% \xC3\xA4");
    EXPECT_EQ(printed, L"\n[c] FATAL : 50% \u00C3\u00A4");
}

TEST_F(LogListeners, TheFileIsEmptiedAtFirstAndHasEachLineAtOnce) {
    { FileLogListener("" + path()).onLog("d", "c", kLogInfo, "old"); }
    FileLogListener listener(path());
    EXPECT_EQ(written(), "");
    listener.onLog("d", "c", kLogInfo, "one");
    EXPECT_EQ(written(), "[d] [c] INFO : one\n");
    listener.onLog("d", "c", kLogDebug, "two");
    EXPECT_EQ(written(), "[d] [c] INFO : one\n[d] [c] DEBUG : two\n");
}

TEST_F(LogListeners, AFileThatCannotBeOpenedLeavesTheListenerInert) {
    FileLogListener listener(path() + "/no/such/folder");
    EXPECT_NO_THROW(listener.onLog("", "c", kLogFatal, "x"));
    EXPECT_EQ(written(), "");
}
