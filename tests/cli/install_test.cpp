// The program from an install tree, and from a bin folder that has been moved.

#include "cli/cli_test.h"

namespace tests {

namespace fs = std::filesystem;

namespace {

class InstallTest : public CliTest {
protected:
    void expectWholeProgram() {
        const std::string drawing = drawingWithStore();
        done({"records", "put", drawing, "10/0", "--hex", "0102"});
        EXPECT_EQ(json({"records", "get", drawing, "10/0"})["hex"], "0102");
    }
};

} // namespace

TEST_F(InstallTest, AnInstallTreeRunsFromWhereItStands) {
    const ProgramRun installed =
        runProgram(TALDORK_CMAKE, {"--install", TALDORK_BUILD, "--prefix", file("first")}, {}, folder.path());
    ASSERT_EQ(installed.code, 0) << installed.err;
    fs::rename(file("first"), file("second"));
    program = folder.path() / "second" / "bin" / "taldork";
    expectWholeProgram();
}

TEST_F(InstallTest, ALinkToTheProgramFindsItsModules) {
    fs::create_symlink(fs::path(TALDORK_BIN) / "taldork", file("link"));
    program = file("link");
    expectWholeProgram();
}

} // namespace tests
