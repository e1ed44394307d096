#include "support/golden.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace testing_support {
namespace {

// The line with that number, from 1 on, and whether there is one.
bool lineAt(const std::string& text, std::size_t number, std::string& line) {
    std::istringstream in(text);
    for (std::size_t i = 0; i < number; ++i)
        if (!std::getline(in, line))
            return false;
    return true;
}

std::string firstDifference(const std::string& expected, const std::string& actual) {
    for (std::size_t number = 1;; ++number) {
        std::string before = "(end)", now = "(end)";
        const bool hadOne = lineAt(expected, number, before);
        const bool hasOne = lineAt(actual, number, now);
        if (!hadOne && !hasOne)
            return "the line ends differ";
        if (hadOne != hasOne || before != now)
            return "line " + std::to_string(number) + "\n  expected: " + (hadOne ? before : "(end)") +
                   "\n  actual:   " + (hasOne ? now : "(end)");
    }
}

} // namespace

bool rewritesGoldens() {
    const char* value = std::getenv("TALDORK_REWRITE_GOLDENS");
    return value != nullptr && *value != '\0' && std::string(value) != "0";
}

std::string goldenPath(const std::string& name) { return std::string(TALDORK_GOLDEN_FOLDER "/") + name; }

bool readFile(const std::string& path, std::string& bytes) {
    std::ifstream in(std::filesystem::u8path(path), std::ios::binary);
    std::ostringstream all;
    all << in.rdbuf();
    bytes = all.str();
    return static_cast<bool>(in);
}

bool writeFile(const std::string& path, const std::string& bytes) {
    const std::filesystem::path place = std::filesystem::u8path(path);
    std::filesystem::create_directories(place.parent_path());
    std::ofstream out(place, std::ios::binary);
    out << bytes;
    out.close();
    return static_cast<bool>(out);
}

testing::AssertionResult isGoldenText(const std::string& name, const std::string& text) {
    const std::string path = goldenPath(name);
    if (rewritesGoldens())
        return writeFile(path, text) ? testing::AssertionSuccess()
                                     : testing::AssertionFailure() << path << " cannot be written";
    std::string expected;
    if (!readFile(path, expected))
        return testing::AssertionFailure() << path << " is not there; its text would be\n" << text;
    if (expected == text)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << path << ": " << firstDifference(expected, text);
}

} // namespace testing_support
