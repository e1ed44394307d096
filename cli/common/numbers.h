#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace taldork::cli {

// Numbers as people write and read them: with a decimal point, whatever the system's language is.

using Point = std::array<double, 3>;

/// A decimal number, with or without sign and exponent. Nothing for a text that is none, for infinity, for
/// "not a number", and for one that no double holds.
std::optional<double> parseNumber(const std::string& text);

/// A number from 0 to `last` without sign.
std::optional<int> parseIndex(const std::string& text, int last);

/// Numbers with a comma between each two, exactly `count`.
std::optional<std::vector<double>> parseNumbers(const std::string& text, std::size_t count);

/// "X,Y,Z".
std::optional<Point> parsePoint(const std::string& text);

/// The shortest text that reads back as the same number; zero without a sign.
std::string numberText(double value);
/// The same with blanks between the three.
std::string pointText(const Point& point);

/// For people: seven digits, which is what the single numbers of records have.
std::string roundedText(double value);

/// Check for CLI11.
std::string checkPoint(const std::string& text);

} // namespace taldork::cli
