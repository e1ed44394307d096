#include "gi/text_metrics.h"

#include <cmath>
#include <cwctype>

namespace embedded {
namespace {

// In thousandths of the font's size, from the blank on.
const short kWidths[] = {278,  278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278,
                         556,  556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556,
                         1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778,
                         667,  778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556,
                         333,  556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556,
                         556,  556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584};
const double kCapitalHeight = 718.0;
const double kOtherLetter = 600.0;
const double kFullWidth = 1000.0;
const wchar_t kFirstFullWidth = 0x2E80;

double widthOf(wchar_t letter) {
    if (letter >= L' ' && letter <= L'~')
        return kWidths[letter - L' '];
    if (letter < L' ')
        return 0.0;
    return letter >= kFirstFullWidth ? kFullWidth : kOtherLetter;
}

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

std::wstring withoutTextCodes(const std::wstring& text) {
    std::wstring plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        wchar_t character = 0;
        std::size_t length = 0;
        if (text[i] == L'%' && i + 1 < text.size() && text[i + 1] == L'%' &&
            codeAt(text, i + 2, character, length)) {
            if (character != 0)
                plain.push_back(character);
            i += 1 + length;
        } else {
            plain.push_back(text[i]);
        }
    }
    return plain;
}

double estimatedTextWidth(const std::wstring& text, double height, double widthFactor, double tracking) {
    double width = 0.0;
    for (const wchar_t letter : text)
        width += widthOf(letter);
    return width / kCapitalHeight * height * widthFactor * tracking;
}

} // namespace embedded
