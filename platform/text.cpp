#include "platform/text.h"

#include <algorithm>
#include <type_traits>

namespace platform {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
// A byte that is no UTF-8 is kept as this plus its number.
constexpr char32_t kByteEscape = 0xDC00;

bool isHighSurrogate(char32_t character) { return character >= 0xD800 && character <= 0xDBFF; }
bool isLowSurrogate(char32_t character) { return character >= 0xDC00 && character <= 0xDFFF; }
bool isEscapedByte(char32_t character) {
    return character >= kByteEscape + 0x80 && character <= kByteEscape + 0xFF;
}
char32_t joined(char32_t high, char32_t low) { return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00); }

// The character numbers of a wide text: pairs of surrogates are joined where wide characters have 16 bits.
char32_t nextCharacter(std::wstring_view text, std::size_t& at) {
    char32_t character = static_cast<char32_t>(text[at++]);
    if constexpr (sizeof(wchar_t) == 2) {
        character &= 0xFFFF;
        if (isHighSurrogate(character) && at < text.size() &&
            isLowSurrogate(static_cast<char32_t>(text[at]) & 0xFFFF))
            return joined(character, static_cast<char32_t>(text[at++]) & 0xFFFF);
    }
    return character > 0x10FFFF ? kReplacement : character;
}

void appendWide(std::wstring& text, char32_t character) {
    if (sizeof(wchar_t) == 2 && character > 0xFFFF) {
        text += static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xDC00 + (character & 0x3FF));
    } else {
        text += static_cast<wchar_t>(character);
    }
}

void appendUtf8(std::string& text, char32_t character) {
    const auto trail = [&](int shift) { text += static_cast<char>(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        trail(0);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0 | (character >> 12));
        trail(6);
        trail(0);
    } else {
        text += static_cast<char>(0xF0 | (character >> 18));
        trail(12);
        trail(6);
        trail(0);
    }
}

// Decodes one character at `at`, and tells its length; a length of 0 for bytes that are no character. The
// lone surrogates that stand for single bytes are taken as no character, so that they too come back as they
// were.
char32_t decodeUtf8(std::string_view text, std::size_t at, std::size_t& length) {
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned char first = byte(at);
    length = first < 0x80             ? 1
             : (first & 0xE0) == 0xC0 ? 2
             : (first & 0xF0) == 0xE0 ? 3
             : (first & 0xF8) == 0xF0 ? 4
                                      : 0;
    if (length == 0 || at + length > text.size()) {
        length = 0;
        return 0;
    }
    static constexpr unsigned char kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    static constexpr char32_t kLowest[] = {0, 0, 0x80, 0x800, 0x10000};
    char32_t character = first & kLeadBits[length];
    for (std::size_t index = 1; index < length; ++index) {
        if ((byte(at + index) & 0xC0) != 0x80) {
            length = 0;
            return 0;
        }
        character = character << 6 | (byte(at + index) & 0x3F);
    }
    if (character < kLowest[length] || character > 0x10FFFF || isEscapedByte(character))
        length = 0;
    return character;
}

// Takes over the plain characters that a text begins with, which most texts are made of altogether; where the
// others begin.
template <class To, class From>
std::size_t copyAscii(To& to, const From& from) {
    std::size_t length = 0;
    while (length < from.size() &&
           static_cast<std::make_unsigned_t<typename From::value_type>>(from[length]) < 0x80)
        ++length;
    to.resize(length);
    std::copy_n(from.begin(), length, to.begin());
    return length;
}

} // namespace

std::wstring fromUtf8(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (std::size_t at = copyAscii(wide, text); at < text.size();) {
        std::size_t length = 0;
        char32_t character = decodeUtf8(text, at, length);
        if (length == 0) {
            character = kByteEscape + static_cast<unsigned char>(text[at]);
            length = 1;
        }
        appendWide(wide, character);
        at += length;
    }
    return wide;
}

std::string toUtf8(std::wstring_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t at = copyAscii(utf8, text); at < text.size();) {
        const char32_t character = nextCharacter(text, at);
        if (isEscapedByte(character))
            utf8 += static_cast<char>(character - kByteEscape);
        else
            appendUtf8(utf8, character);
    }
    return utf8;
}

std::u16string toUtf16(std::wstring_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (std::size_t at = copyAscii(units, text); at < text.size();) {
        const char32_t character = nextCharacter(text, at);
        if (character > 0xFFFF) {
            units += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
            units += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
        } else {
            units += static_cast<char16_t>(character);
        }
    }
    return units;
}

std::wstring fromUtf16(std::u16string_view units) {
    std::wstring wide;
    wide.reserve(units.size());
    for (std::size_t at = copyAscii(wide, units); at < units.size(); ++at) {
        char32_t character = units[at];
        if (isHighSurrogate(character) && at + 1 < units.size() && isLowSurrogate(units[at + 1]))
            character = joined(character, units[++at]);
        appendWide(wide, character);
    }
    return wide;
}

std::wstring widen(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (const char character : text)
        wide += static_cast<wchar_t>(static_cast<unsigned char>(character));
    return wide;
}

std::string narrow(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text)
        bytes += static_cast<unsigned long long>(character) <= 0xFF ? static_cast<char>(character) : '?';
    return bytes;
}

std::wstring foldCase(std::wstring_view text) {
    std::wstring folded(text);
    for (wchar_t& character : folded)
        character = foldCase(character);
    return folded;
}

bool equalNoCase(std::wstring_view left, std::wstring_view right) {
    if (left.size() != right.size())
        return false;
    for (std::size_t at = 0; at < left.size(); ++at)
        if (left[at] != right[at] && foldCase(left[at]) != foldCase(right[at]))
            return false;
    return true;
}

} // namespace platform
