#include "dwg/text_codec.h"

#include <algorithm>

namespace embedded::dwg {
namespace {

const std::size_t kUnicodeEscape = 7;   // \U+XXXX
const std::size_t kMultibyteEscape = 8; // \M+nXXXX

bool isHighSurrogate(char32_t c) { return c >= 0xD800 && c < 0xDC00; }
bool isLowSurrogate(char32_t c) { return c >= 0xDC00 && c < 0xE000; }

// The value of four hexadecimal digits, or -1.
int hexValue(std::wstring_view digits) {
    int value = 0;
    for (wchar_t digit : digits) {
        if (digit >= L'0' && digit <= L'9')
            value = value * 16 + (digit - L'0');
        else if (digit >= L'A' && digit <= L'F')
            value = value * 16 + (digit - L'A' + 10);
        else if (digit >= L'a' && digit <= L'f')
            value = value * 16 + (digit - L'a' + 10);
        else
            return -1;
    }
    return value;
}

struct Escape {
    std::size_t length = 0; // 0: none begins here
    char32_t character = 0;
};

char32_t multibyteCharacter(wchar_t digit, int code) {
    const unsigned char bytes[2] = {static_cast<unsigned char>(code >> 8), static_cast<unsigned char>(code)};
    std::size_t at = code > 0xFF ? 0 : 1;
    return CharacterTable::ofMultibyteDigit(digit)->decode(bytes, 2, at);
}

Escape escapeAt(std::wstring_view text, std::size_t at) {
    if (text[at] != L'\\' || text.size() - at < kUnicodeEscape || text[at + 2] != L'+')
        return {};
    if (text[at + 1] == L'U') {
        const int value = hexValue(text.substr(at + 3, 4));
        return value < 0 ? Escape{} : Escape{kUnicodeEscape, static_cast<char32_t>(value)};
    }
    if (text[at + 1] != L'M' || text.size() - at < kMultibyteEscape || text[at + 3] < L'1' ||
        text[at + 3] > L'5')
        return {};
    const int code = hexValue(text.substr(at + 4, 4));
    return code < 0 ? Escape{} : Escape{kMultibyteEscape, multibyteCharacter(text[at + 3], code)};
}

void appendCharacter(std::wstring& text, char32_t character) {
    if (sizeof(wchar_t) == 2 && character > 0xFFFF) {
        text.push_back(static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10)));
        text.push_back(static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
        return;
    }
    if (sizeof(wchar_t) > 2 && isLowSurrogate(character) && !text.empty() &&
        isHighSurrogate(static_cast<char32_t>(text.back()))) {
        const char32_t high = static_cast<char32_t>(text.back());
        text.back() = static_cast<wchar_t>(0x10000 + ((high - 0xD800) << 10) + (character - 0xDC00));
        return;
    }
    text.push_back(static_cast<wchar_t>(character));
}

std::wstring withoutEscapes(const std::wstring& filed) {
    std::wstring text;
    text.reserve(filed.size());
    for (std::size_t at = 0; at < filed.size();) {
        const Escape escape = escapeAt(filed, at);
        appendCharacter(text, escape.length != 0 ? escape.character : static_cast<char32_t>(filed[at]));
        at += std::max<std::size_t>(escape.length, 1);
    }
    return text;
}

void appendUnit(std::string& bytes, char32_t unit) {
    bytes += "\\U+";
    for (int shift = 12; shift >= 0; shift -= 4)
        bytes.push_back("0123456789ABCDEF"[unit >> shift & 0xF]);
}

void appendEscaped(std::string& bytes, char32_t character) {
    if (character > 0x10FFFF)
        character = 0xFFFD;
    if (character <= 0xFFFF)
        return appendUnit(bytes, character);
    appendUnit(bytes, 0xD800 + ((character - 0x10000) >> 10));
    appendUnit(bytes, 0xDC00 + ((character - 0x10000) & 0x3FF));
}

} // namespace

std::wstring TextCodec::decode(std::string_view bytes) const {
    std::wstring text;
    text.reserve(bytes.size());
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    for (std::size_t at = 0; at < bytes.size();) {
        if (data[at] < 0x80)
            text.push_back(data[at++]);
        else
            appendCharacter(text, m_table->decode(data, bytes.size(), at));
    }
    return text.find(L'\\') == std::wstring::npos ? text : withoutEscapes(text);
}

std::string TextCodec::encode(std::wstring_view text) const {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char32_t character = static_cast<char32_t>(text[at]);
        const bool escapes = character == L'\\' && escapeAt(text, at).length != 0;
        // A zero would end the text for who reads it.
        if (escapes || character == 0 || !m_table->encode(character, bytes))
            appendEscaped(bytes, character);
    }
    return bytes;
}

} // namespace embedded::dwg
