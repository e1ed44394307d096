#pragma once

#include <gtest/gtest.h>

#include <string>

namespace testing_support {

// What is expected of an output as a whole stands in a file below tests/golden. With
// TALDORK_REWRITE_GOLDENS=1 in the environment the files are written anew instead of compared; look at what
// git tells of them then.
bool rewritesGoldens();

// The path of such a file; `name` is below tests/golden, "plot/circle.png".
std::string goldenPath(const std::string& name);

// Whether a text is that of the file. A failure names the first line that differs.
testing::AssertionResult isGoldenText(const std::string& name, const std::string& text);

// A whole file; false if it cannot be read.
bool readFile(const std::string& path, std::string& bytes);
// Makes the folder too. Paths are UTF-8.
bool writeFile(const std::string& path, const std::string& bytes);

} // namespace testing_support
