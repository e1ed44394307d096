// What depends on a person sitting at the other end.

#include "cli/cli_test.h"
#include "cli/common/terminal.h"

#include <chrono>

namespace tests {

using namespace taldork::cli;

TEST(TextTableTest, WidthsCountCharacters) {
    EXPECT_EQ(displayWidth("Geb\xc3\xa4ude"), 7U);
    EXPECT_EQ(padRight("\xc3\xa4", 3), "\xc3\xa4  ");
    EXPECT_EQ(padLeft("\xc3\xa4", 3), "  \xc3\xa4");
    EXPECT_EQ(padRight("long", 2), "long");
}

TEST(TextTableTest, NounsFollowTheirNumber) {
    EXPECT_EQ(counted(0, "key"), "0 keys");
    EXPECT_EQ(counted(1, "key"), "1 key");
    EXPECT_EQ(counted(2, "key"), "2 keys");
}

namespace {

/// A display with a clock that the test moves.
struct FakeDisplay {
    std::string shown;
    ProgressDisplay::Time time{};

    ProgressDisplay display(bool isTerminal) {
        return {isTerminal, [this](const std::string& text) { shown += text; }, [this] { return time; }};
    }
};

using std::chrono::milliseconds;

} // namespace

TEST(ProgressTest, LongWorkIsShownOnATerminalAndWipedAtItsEnd) {
    FakeDisplay fake;
    {
        Progress progress("copying records", 3, fake.display(true));
        progress.step();
        EXPECT_EQ(fake.shown, "");
        fake.time += milliseconds(500);
        progress.step();
        EXPECT_EQ(fake.shown, "\rcopying records 2 of 3");
        progress.step(); // too soon for another look
        EXPECT_EQ(fake.shown, "\rcopying records 2 of 3");
    }
    EXPECT_EQ(fake.shown, "\rcopying records 2 of 3\r" + std::string(22, ' ') + "\r");
}

TEST(ProgressTest, WorkWithoutAKnownEndCountsItsSteps) {
    FakeDisplay fake;
    Progress progress("reading keys", 0, fake.display(true));
    fake.time += milliseconds(500);
    progress.step();
    EXPECT_EQ(fake.shown, "\rreading keys 1");
}

TEST(ProgressTest, NothingIsShownInAPipe) {
    FakeDisplay fake;
    {
        Progress progress("copying records", 3, fake.display(false));
        fake.time += milliseconds(5000);
        progress.step();
    }
    EXPECT_EQ(fake.shown, "");
}

TEST(ProgressTest, ShortWorkIsNotShown) {
    FakeDisplay fake;
    {
        Progress progress("copying records", 3, fake.display(true));
        for (int i = 0; i < 3; ++i) {
            fake.time += milliseconds(100);
            progress.step();
        }
    }
    EXPECT_EQ(fake.shown, "");
}

namespace {

class TerminalTest : public CliTest {};

} // namespace

TEST_F(TerminalTest, TheProgramWorksOnATerminalAsInAPipe) {
    if (findOnPath("python3").empty())
        GTEST_SKIP() << "no python3 to provide a terminal";
    const std::string drawing = drawingWithStore();
    done({"records", "put", drawing, "10/0", "--hex", "4142"});
    const std::string line = std::string(TALDORK_REGISTRY_VARIABLE) + "=" +
                             shellQuote(file("registry.sqlite")) + " " + shellQuote(program.string()) +
                             " records get " + shellQuote(drawing) + " 10/0";
    const ProgramRun shown = runProgram(
        "python3", {"-c", "import pty, sys; sys.exit(pty.spawn(['/bin/sh', '-c', sys.argv[1]]) >> 8)", line},
        {}, folder.path());
    EXPECT_EQ(shown.code, 0);
    EXPECT_NE(shown.out.find("00000000  41 42 "), std::string::npos) << shown.out;
}

TEST_F(TerminalTest, LongWorkSaysNothingOnStandardErrorInAPipe) {
    const std::string source = drawingWithStore("source.dwg");
    const std::string target = drawingWithStore("target.dwg");
    Words words = {"records", "put", source, "10/0"};
    for (int i = 0; i < 10000; ++i)
        words.insert(words.end(), {"--hex", "07"});
    done(words);
    EXPECT_NE(done({"records", "copy", source, target, "10"}).find("10000 records"), std::string::npos);
}

} // namespace tests
