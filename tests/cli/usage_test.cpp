// The command line itself: help, exit codes, wrong usage.

#include "cli/cli_test.h"

namespace tests {

namespace {

class UsageTest : public CliTest {};

const std::vector<std::vector<std::string>> subcommands = {{"new"},
                                                           {"save"},
                                                           {"info"},
                                                           {"store", "create"},
                                                           {"records", "list"},
                                                           {"records", "get"},
                                                           {"records", "put"},
                                                           {"records", "del"},
                                                           {"records", "copy"},
                                                           {"records", "sync"},
                                                           {"data", "get"},
                                                           {"data", "set"},
                                                           {"systems", "list"},
                                                           {"systems", "create"},
                                                           {"systems", "set"},
                                                           {"systems", "check"},
                                                           {"convert"},
                                                           {"elements", "list"},
                                                           {"elements", "show"},
                                                           {"elements", "number"},
                                                           {"elements", "copy"},
                                                           {"elements", "edit"},
                                                           {"plot"},
                                                           {"select", "list"},
                                                           {"select", "set"},
                                                           {"select", "del"},
                                                           {"example"}};

} // namespace

TEST_F(UsageTest, HelpNamesEverySubcommandOfTheFirstLevel) {
    const std::string help = done({"--help"});
    for (const char* word : {"new", "save", "info", "store", "records", "data", "systems", "convert",
                             "elements", "plot", "select", "settings", "example"})
        EXPECT_NE(help.find(std::string("\n  ") + word + " "), std::string::npos) << word << "\n" << help;
}

TEST_F(UsageTest, EverySubcommandHasHelp) {
    for (const auto& subcommand : subcommands) {
        Words words = subcommand;
        words.push_back("--help");
        const std::string help = done(words);
        EXPECT_NE(help.find("Usage:"), std::string::npos) << help;
        EXPECT_NE(help.find("FILE") + help.find("SRC"), 2 * std::string::npos) << help;
    }
}

TEST_F(UsageTest, EverySubcommandWithoutArgumentsIsWrongUsage) {
    for (const auto& subcommand : subcommands) {
        const ProgramRun run = taldork(subcommand);
        EXPECT_EQ(run.code, 2) << subcommand.back();
        EXPECT_NE(run.err, "") << subcommand.back();
        EXPECT_EQ(run.out, "") << subcommand.back();
    }
}

TEST_F(UsageTest, NoSubcommandIsWrongUsage) { EXPECT_EQ(taldork({}).code, 2); }

TEST_F(UsageTest, AGroupWithoutItsSecondWordIsWrongUsage) {
    for (const char* group : {"store", "records", "data", "systems", "elements", "select", "settings"})
        EXPECT_EQ(taldork({group}).code, 2) << group;
}

TEST_F(UsageTest, AnUnknownWordOrOptionIsWrongUsage) {
    EXPECT_EQ(taldork({"melt", "a.dwg"}).code, 2);
    EXPECT_EQ(taldork({"info", "a.dwg", "--melt"}).code, 2);
    EXPECT_EQ(taldork({"records", "melt", "a.dwg"}).code, 2);
}

TEST_F(UsageTest, AKeyThatIsNoneIsWrongUsage) {
    const std::string drawing = drawingWithStore();
    for (const char* key : {"10", "10/", "/0", "a/b", "10/0x", "-1/0", "10/-1", "10/99999999999", ""})
        EXPECT_EQ(taldork({"records", "get", drawing, key}).code, 2) << key;
    for (const char* group : {"10/0", "x", "-1", ""})
        EXPECT_EQ(taldork({"records", "sync", drawing, drawing, group}).code, 2) << group;
}

TEST_F(UsageTest, ARangeThatIsNoneIsWrongUsage) {
    const std::string drawing = drawingWithStore();
    for (const char* range : {"5", "9:5", ":", "a:b", "1:2:3"})
        EXPECT_EQ(taldork({"records", "copy", drawing, drawing, "10", "--range", range}).code, 2) << range;
}

TEST_F(UsageTest, ARangeWithAKeyIsWrongUsage) {
    EXPECT_EQ(taldork({"records", "copy", "a.dwg", "b.dwg", "10/3", "--range", "0:9"}).code, 2);
}

TEST_F(UsageTest, BytesThatAreNoneAreWrongUsage) {
    const std::string drawing = drawingWithStore();
    for (const char* bytes : {"0", "0g", "00 1", "hello"})
        EXPECT_EQ(taldork({"records", "put", drawing, "10/0", "--hex", bytes}).code, 2) << bytes;
    EXPECT_EQ(taldork({"records", "put", drawing, "10/0"}).code, 2);
}

TEST_F(UsageTest, AValueIsGivenInExactlyOneForm) {
    const std::string drawing = drawingWithStore();
    EXPECT_EQ(taldork({"data", "set", drawing, "ASDWG", "n"}).code, 2);
    EXPECT_EQ(taldork({"data", "set", drawing, "ASDWG", "n", "--text", "a", "--flag", "true"}).code, 2);
    EXPECT_EQ(taldork({"data", "get", drawing, "ASDWG", "n", "--raw", "--flag"}).code, 2);
    EXPECT_EQ(taldork({"data", "set", drawing, "ASDWG", "n", "--flag", "perhaps"}).code, 2);
}

TEST_F(UsageTest, VersionIsPrinted) { EXPECT_EQ(done({"--version"}), std::string(TALDORK_VERSION) + "\n"); }

} // namespace tests
