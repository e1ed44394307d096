#include "cli/common/hex.h"

#include <cctype>
#include <cstdio>

namespace taldork::cli {

namespace {

constexpr char digits[] = "0123456789abcdef";
constexpr std::size_t bytesPerLine = 16;

int digitValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace

std::optional<Bytes> parseHex(const std::string& text) {
    Bytes bytes;
    int high = -1;
    const bool prefixed = text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    for (std::size_t i = prefixed ? 2 : 0; i < text.size(); ++i) {
        const char c = text[i];
        if (high < 0 && (c == ' ' || c == ':'))
            continue;
        const int value = digitValue(c);
        if (value < 0)
            return std::nullopt;
        if (high < 0) {
            high = value;
        } else {
            bytes.push_back(static_cast<std::uint8_t>(high << 4 | value));
            high = -1;
        }
    }
    if (high >= 0)
        return std::nullopt;
    return bytes;
}

std::string hexDigits(const Bytes& bytes) {
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

std::string hexDump(const Bytes& bytes) {
    std::string text;
    for (std::size_t line = 0; line < bytes.size(); line += bytesPerLine) {
        char offset[24];
        std::snprintf(offset, sizeof offset, "%08zx ", line);
        text += offset;
        std::string printable;
        for (std::size_t i = line; i < line + bytesPerLine; ++i) {
            if (i >= bytes.size()) {
                text += "   ";
                continue;
            }
            text += ' ';
            text += digits[bytes[i] >> 4];
            text += digits[bytes[i] & 15];
            printable += bytes[i] < 0x7f && std::isprint(bytes[i]) ? static_cast<char>(bytes[i]) : '.';
        }
        text += "  |" + printable + "|\n";
    }
    return text;
}

std::string checkHex(const std::string& text) {
    return parseHex(text)
               ? ""
               : "'" + text + "' is no row of bytes: write two hexadecimal digits a byte, as in 00ff1c";
}

} // namespace taldork::cli
