#include "base/guard.h"

#include "base/exceptions.h"
#include "support/beep_recorder.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

using testing_support::BeepRecorder;
using Lines = std::vector<std::wstring>;

namespace {

int s_guardLine = 0;

// Answers whether the guarded function left by its normal exit.
bool runGuarded(const std::function<void()>& hook) {
    s_guardLine = __LINE__ + 4;
    try {
        hook();
    }
    ORV_GUARD
    return true;
}

std::wstring place() { return L"" __FILE__ L"@" + std::to_wstring(s_guardLine); }

const std::wstring kCritical =
    L"Kritischer Fehler in Vandril, speichern Sie die Zeichnung unter anderem Namen, "
    L"starten Sie Vandril neu und \u00C3\u00B6ffnen Sie die Datei mit "
    L"'Wiederherstellen'.";

int fileOne(bool fail) {
    try {
        if (fail)
            throw std::runtime_error("inside");
        return 0;
    }
    ORV_CRITICAL_GUARD(67)
}

int fileTwo(bool fail) {
    try {
        if (fail)
            throw 5;
        return 0;
    }
    ORV_CRITICAL_GUARD(2)
}

int fileThree() {
    try {
        throw std::runtime_error("inside");
    }
    ORV_CRITICAL_GUARD(67)
}

// A console that refuses each line while it lives.
class FailingBeep {
public:
    FailingBeep() {
        m_before = orvBeep.setSink([this](const std::wstring&) {
            ++tried;
            throw std::runtime_error("console");
        });
    }
    ~FailingBeep() { orvBeep.setSink(m_before); }

    int tried = 0;

private:
    ORV_COStream::Sink m_before;
};

} // namespace

TEST(Guard, AnExceptionButNoOutputIsSilent) {
    BeepRecorder beep;
    EXPECT_TRUE(runGuarded([] { throw orv::ExceptionButNoOutput(); }));
    EXPECT_TRUE(beep.lines().empty());
}

TEST(Guard, ARuntimeErrorPrintsExactlyOneLine) {
    BeepRecorder beep;
    EXPECT_TRUE(runGuarded([] { throw std::runtime_error("boom"); }));
    EXPECT_EQ(beep.lines(), (Lines{L"Caught Exception: boom " + place()}));
}

TEST(Guard, AnExceptionOfTheFamilyPrintsItsMessage) {
    BeepRecorder beep;
    EXPECT_TRUE(runGuarded([] { throw orv::NotFoundException(3u, "ctx"); }));
    EXPECT_EQ(beep.lines(), (Lines{L"Caught Exception: ctx Key not found: 3 " + place()}));
}

TEST(Guard, AThrownWideTextIsPrintedByTheFourthHandlerAThrownIntByTheFifth) {
    BeepRecorder beep;
    wchar_t text[] = L"wide text";
    EXPECT_TRUE(runGuarded([&] { throw static_cast<wchar_t*>(text); }));
    EXPECT_TRUE(runGuarded([] { throw 5; }));
    EXPECT_EQ(beep.lines(),
              (Lines{L"Caught Exception (tchar): wide text " + place(), L"Unhandled Exception: " + place()}));
}

TEST(Guard, EnclosesAPassSoThatAFailureEndsItAndTheFunctionReturnsNormally) {
    BeepRecorder beep;
    int called = 0;
    EXPECT_TRUE(runGuarded([&] {
        for (int plugin = 0; plugin < 3; ++plugin) {
            ++called;
            if (plugin == 1)
                throw std::runtime_error("second");
        }
    }));
    EXPECT_EQ(called, 2);
    EXPECT_EQ(beep.lines().size(), 1u);
}

TEST(CriticalGuard, TellsOncePerFunctionAndAlwaysReturnsItsStatus) {
    BeepRecorder beep;
    EXPECT_EQ(fileOne(false), 0);
    EXPECT_TRUE(beep.lines().empty());
    EXPECT_EQ(fileOne(true), 67);
    EXPECT_EQ(beep.lines(), Lines{kCritical});
    EXPECT_EQ(fileOne(true), 67);
    EXPECT_EQ(beep.lines().size(), 1u);
    EXPECT_EQ(fileTwo(true), 2);
    EXPECT_EQ(beep.lines(), (Lines{kCritical, kCritical}));
    EXPECT_EQ(fileTwo(true), 2);
    EXPECT_EQ(fileTwo(false), 0);
    EXPECT_EQ(beep.lines().size(), 2u);
}

TEST(Guard, AConsoleThatThrowsIsNotHeardOutsideOfAnyHandler) {
    {
        FailingBeep beep;
        wchar_t text[] = L"wide text";
        EXPECT_NO_THROW(EXPECT_TRUE(runGuarded([] { throw orv::NotFoundException(3u, "ctx"); })));
        EXPECT_NO_THROW(EXPECT_TRUE(runGuarded([] { throw std::runtime_error("boom"); })));
        EXPECT_NO_THROW(EXPECT_TRUE(runGuarded([&] { throw static_cast<wchar_t*>(text); })));
        EXPECT_NO_THROW(EXPECT_TRUE(runGuarded([] { throw 5; })));
        EXPECT_EQ(beep.tried, 4);
    }
    BeepRecorder beep;
    EXPECT_TRUE(runGuarded([] { throw std::runtime_error("after"); }));
    EXPECT_EQ(beep.lines(), (Lines{L"Caught Exception: after " + place()}))
        << "nothing is left of the lines before";
}

TEST(CriticalGuard, AConsoleThatThrowsLeavesTheStatusAndIsNotToldAgain) {
    {
        FailingBeep beep;
        EXPECT_NO_THROW(EXPECT_EQ(fileThree(), 67));
        EXPECT_EQ(beep.tried, 1);
    }
    BeepRecorder beep;
    EXPECT_EQ(fileThree(), 67);
    EXPECT_TRUE(beep.lines().empty());
}
