#include "db/text/group_text.h"

#include "platform/text.h"

#include <charconv>

namespace embedded::text {

namespace {

constexpr char16_t kEscapeOffset = 0x40;
constexpr char kUnitEscape[] = "\\U+";
constexpr std::size_t kUnitEscapeLength = 3;
constexpr std::size_t kUnitDigits = 4;
constexpr char kHexDigits[] = "0123456789ABCDEF";

void appendUnit(std::string& line, char16_t unit) {
    line += kUnitEscape;
    for (int shift = 12; shift >= 0; shift -= 4)
        line += kHexDigits[(unit >> shift) & 0xF];
}

// -1 for what is no hexadecimal digit.
int digitOf(char16_t character) {
    if (character >= u'0' && character <= u'9')
        return character - u'0';
    const char16_t letter = character | 0x20;
    return letter >= u'a' && letter <= u'f' ? letter - u'a' + 10 : -1;
}

// Whether an escaped unit begins at `at`, and which.
bool unitAt(std::u16string_view text, std::size_t at, char16_t& unit) {
    if (text.size() - at < kUnitEscapeLength + kUnitDigits ||
        text.compare(at, kUnitEscapeLength, u"\\U+") != 0)
        return false;
    unsigned value = 0;
    for (std::size_t i = 0; i < kUnitDigits; ++i) {
        const int digit = digitOf(text[at + kUnitEscapeLength + i]);
        if (digit < 0)
            return false;
        value = value * 16 + static_cast<unsigned>(digit);
    }
    unit = static_cast<char16_t>(value);
    return true;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// from_chars takes no plus sign.
std::string_view withoutPlus(std::string_view text) {
    return text.size() > 1 && text[0] == '+' && text[1] != '-' ? text.substr(1) : text;
}

template <class T, class... Rest>
bool parseWhole(std::string_view text, T& value, Rest... rest) {
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, value, rest...);
    return error == std::errc() && stopped == end && !text.empty();
}

} // namespace

std::string encodeText(std::wstring_view text) {
    const std::u16string units = platform::toUtf16(text);
    std::string line;
    line.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char16_t unit = units[i];
        if (unit < u' ') {
            line += '^';
            line += static_cast<char>(unit + kEscapeOffset);
        } else if (unit == u'^') {
            line += "^ ";
        } else if (unit > u'~' || units.compare(i, kUnitEscapeLength, u"\\U+") == 0) {
            appendUnit(line, unit);
        } else {
            line += static_cast<char>(unit);
        }
    }
    return line;
}

std::wstring decodeText(std::string_view line) {
    const std::u16string raw = platform::toUtf16(platform::fromUtf8(line));
    std::u16string units;
    units.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const char16_t next = i + 1 < raw.size() ? raw[i + 1] : u'\0';
        char16_t unit = raw[i];
        if (unit == u'^' && next == u' ') {
            ++i;
        } else if (unit == u'^' && next > kEscapeOffset && next < kEscapeOffset + u' ') {
            unit = static_cast<char16_t>(next - kEscapeOffset);
            ++i;
        } else if (unitAt(raw, i, unit)) {
            i += kUnitEscapeLength + kUnitDigits - 1;
        }
        units += unit;
    }
    return platform::fromUtf16(units);
}

std::string realText(double value, int digits) {
    char buffer[64];
    const auto end =
        digits < 0 ? std::to_chars(buffer, buffer + sizeof buffer, value)
                   : std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits);
    std::string text(buffer, end.ptr);
    // Not a number and infinity have letters of their own.
    if (text.find_first_of(".en") == std::string::npos)
        text += ".0";
    return text;
}

bool parseReal(std::string_view text, double& value) { return parseWhole(withoutPlus(trimmed(text)), value); }

bool parseInteger(std::string_view text, std::int64_t& value) {
    return parseWhole(withoutPlus(trimmed(text)), value, 10);
}

bool parseHandle(std::string_view text, std::uint64_t& value) { return parseWhole(trimmed(text), value, 16); }

std::string handleText(std::uint64_t value) {
    char buffer[16];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, 16);
    std::string text(buffer, end.ptr);
    for (char& digit : text)
        if (digit >= 'a')
            digit = static_cast<char>(digit - 'a' + 'A');
    return text;
}

std::string hexText(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char byte : bytes) {
        text += kHexDigits[static_cast<unsigned char>(byte) >> 4];
        text += kHexDigits[static_cast<unsigned char>(byte) & 0xF];
    }
    return text;
}

bool parseHex(std::string_view text, std::string& bytes) {
    text = trimmed(text);
    if (text.size() % 2 != 0)
        return false;
    bytes.clear();
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const int high = digitOf(static_cast<unsigned char>(text[i]));
        const int low = digitOf(static_cast<unsigned char>(text[i + 1]));
        if (high < 0 || low < 0)
            return false;
        bytes += static_cast<char>(high * 16 + low);
    }
    return true;
}

} // namespace embedded::text
