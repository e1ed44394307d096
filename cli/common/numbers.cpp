#include "cli/common/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace taldork::cli {

std::optional<double> parseNumber(const std::string& text) {
    const char* begin = text.data();
    const char* const end = begin + text.size();
    // The library takes a minus alone.
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        ++begin;
    double value = 0.0;
    const auto result = std::from_chars(begin, end, value);
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<int> parseIndex(const std::string& text, int last) {
    int value = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end || text[0] == '-' || value > last)
        return std::nullopt;
    return value;
}

std::optional<std::vector<double>> parseNumbers(const std::string& text, std::size_t count) {
    std::vector<double> numbers;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t comma = std::min(text.find(',', begin), text.size());
        const auto number = parseNumber(text.substr(begin, comma - begin));
        if (!number || numbers.size() == count)
            return std::nullopt;
        numbers.push_back(*number);
        begin = comma + 1;
    }
    if (numbers.size() != count)
        return std::nullopt;
    return numbers;
}

std::optional<Point> parsePoint(const std::string& text) {
    const auto numbers = parseNumbers(text, 3);
    if (!numbers)
        return std::nullopt;
    return Point{(*numbers)[0], (*numbers)[1], (*numbers)[2]};
}

std::string numberText(double value) {
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, value == 0.0 ? 0.0 : value);
    return {text, result.ptr};
}

std::string pointText(const Point& point) {
    return numberText(point[0]) + " " + numberText(point[1]) + " " + numberText(point[2]);
}

std::string roundedText(double value) {
    char text[32];
    const auto result =
        std::to_chars(text, text + sizeof text, value == 0.0 ? 0.0 : value, std::chars_format::general, 7);
    return {text, result.ptr};
}

std::string checkPoint(const std::string& text) {
    return parsePoint(text) ? "" : "'" + text + "' is no point: write X,Y,Z, as in 1.5,-2,0";
}

} // namespace taldork::cli
