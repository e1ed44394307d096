#include "gi/text_metrics.h"

#include "acgitextstyle.h"

#include <cwctype>

namespace embedded {
namespace {

// The character of the code behind two percent signs, and how long the code is; 0 for a switch; false for
// what is no code.
bool codeAt(const std::wstring& text, std::size_t at, wchar_t& character, std::size_t& length) {
    if (at >= text.size())
        return false;
    length = 1;
    switch (std::towlower(static_cast<wint_t>(text[at]))) {
    case L'd':
        character = 0x00B0;
        return true;
    case L'p':
        character = 0x00B1;
        return true;
    case L'c':
        character = 0x2205;
        return true;
    case L'%':
        character = L'%';
        return true;
    case L'u':
    case L'o':
        character = 0;
        return true;
    default:
        break;
    }
    int number = 0;
    for (length = 0; length < 3 && at + length < text.size(); ++length) {
        const wchar_t digit = text[at + length];
        if (digit < L'0' || digit > L'9')
            return false;
        number = number * 10 + (digit - L'0');
    }
    character = static_cast<wchar_t>(number);
    return length == 3 && number > 0 && number < 256;
}

} // namespace

std::wstring withoutTextCodes(const std::wstring& text, TextLines* lines) {
    std::wstring plain;
    TextLines now, ever;
    const auto append = [&](wchar_t character) {
        plain.push_back(character);
        ever.isUnderlined = ever.isUnderlined || now.isUnderlined;
        ever.isOverlined = ever.isOverlined || now.isOverlined;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        wchar_t character = 0;
        std::size_t length = 0;
        if (text[i] == L'%' && i + 1 < text.size() && text[i + 1] == L'%' &&
            codeAt(text, i + 2, character, length)) {
            if (character != 0)
                append(character);
            else if (text[i + 2] == L'u' || text[i + 2] == L'U')
                now.isUnderlined = !now.isUnderlined;
            else
                now.isOverlined = !now.isOverlined;
            i += 1 + length;
        } else {
            append(text[i]);
        }
    }
    if (lines != nullptr)
        *lines = ever;
    return plain;
}

double textWidth(const std::wstring& text, double height, double widthFactor, const TextSetting& setting) {
    return glyphWidth(text, setting) * height * widthFactor;
}

TextSetting settingOf(const AcGiTextStyle& style) {
    const ACHAR* font = style.fileName();
    return {font != nullptr ? font : L"", style.trackingPercent()};
}

} // namespace embedded
