#pragma once

#include "support/program_run.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>
#include <vector>

namespace tests {

/// Runs the program as a person would, in a folder of its own and with a user's registry of its own.
class CliTest : public ::testing::Test {
protected:
    using Words = std::vector<std::string>;

    /// The program of this build, or the copy that `program` has been set to.
    ProgramRun taldork(const Words& arguments);
    /// The same, expecting that it is done without a word on standard error.
    std::string done(const Words& arguments);
    /// Its output read as JSON.
    nlohmann::ordered_json json(const Words& arguments);

    /// Expects exit code 1 and exactly one line, which begins with "taldork: " and the subject.
    void expectFailure(const ProgramRun& run, const std::string& subject);

    /// A path in the test's folder.
    std::string file(const std::string& name) const { return (folder.path() / name).string(); }

    /// A new drawing with an empty store.
    std::string drawingWithStore(const std::string& name = "drawing.dwg");

    TemporaryFolder folder;
    std::filesystem::path program = std::filesystem::path(TALDORK_BIN) / "taldork";
};

/// One of the real drawings; empty when the folder of them is not there.
std::filesystem::path realDrawing(const std::string& name);

/// The names of the drawings of version 2000 among them.
std::vector<std::string> realDrawings2000();

} // namespace tests

/// Leaves the test when the real drawing `NAME` is missing; otherwise `VARIABLE` is its path.
#define NEED_DRAWING(VARIABLE, NAME)                                                                         \
    const std::filesystem::path VARIABLE = ::tests::realDrawing(NAME);                                       \
    if (VARIABLE.empty())                                                                                    \
    GTEST_SKIP() << "no " << NAME << " in " << TALDORK_DRAWINGS
