#pragma once

#include "dwg/bit_writer.h"

#include <functional>
#include <string>

// Bits as text, "1001 0110": what a code looks like on the page. Blanks count nothing.
inline std::string bitsOf(const embedded::dwg::BitWriter& writer) {
    std::string text;
    for (std::size_t i = 0; i < writer.length(); ++i)
        text.push_back((writer.bytes()[i / 8] >> (7 - i % 8) & 1) != 0 ? '1' : '0');
    return text;
}

inline std::string bitsWritten(const std::function<void(embedded::dwg::BitWriter&)>& write) {
    embedded::dwg::BitWriter writer;
    write(writer);
    return bitsOf(writer);
}

inline std::string withoutBlanks(std::string text) {
    std::string result;
    for (char c : text)
        if (c != ' ')
            result.push_back(c);
    return result;
}

inline embedded::dwg::Bytes bytesOfBits(const std::string& bits) {
    embedded::dwg::BitWriter writer;
    for (char c : withoutBlanks(bits))
        writer.bit(c == '1');
    return writer.takeBytes();
}

inline embedded::dwg::Bytes bytesOfHex(const std::string& hex) {
    const std::string digits = withoutBlanks(hex);
    embedded::dwg::Bytes bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    return bytes;
}
