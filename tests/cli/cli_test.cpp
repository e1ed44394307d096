#include "cli/cli_test.h"

#include <algorithm>

namespace tests {

ProgramRun CliTest::taldork(const Words& arguments) {
    return runProgram(program, arguments, {{TALDORK_REGISTRY_VARIABLE, file("registry.sqlite")}},
                      folder.path());
}

std::string CliTest::done(const Words& arguments) {
    const ProgramRun run = taldork(arguments);
    std::string line;
    for (const std::string& argument : arguments)
        line += " " + argument;
    EXPECT_EQ(run.code, 0) << "taldork" << line << "\n" << run.err;
    EXPECT_EQ(run.err, "") << "taldork" << line;
    return run.out;
}

nlohmann::ordered_json CliTest::json(const Words& arguments) {
    Words words = arguments;
    words.push_back("--json");
    const std::string text = done(words);
    auto document = nlohmann::ordered_json::parse(text, nullptr, false);
    EXPECT_FALSE(document.is_discarded()) << text;
    return document;
}

void CliTest::expectFailure(const ProgramRun& run, const std::string& subject) {
    EXPECT_EQ(run.code, 1) << run.out << run.err;
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
    EXPECT_EQ(run.err.rfind("taldork: " + subject + ": ", 0), 0U) << run.err;
}

std::string CliTest::drawingWithStore(const std::string& name) {
    done({"new", file(name), "--store", "ASDWG"});
    return file(name);
}

std::filesystem::path realDrawing(const std::string& name) {
    const auto path = std::filesystem::path(TALDORK_DRAWINGS) / name;
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) ? path : std::filesystem::path();
}

std::vector<std::string> realDrawings2000() { return {"small_AC1015", "leader_AC1015", "sample_AC1015"}; }

} // namespace tests
