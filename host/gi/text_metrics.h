#pragma once

#include "gi/glyph_outline.h"

#include <string>

class AcGiTextStyle;

namespace embedded {

// The lines that a text's codes ask for somewhere in it.
struct TextLines {
    bool isUnderlined = false;
    bool isOverlined = false;
};

// A text as it is read: %%d, %%p and %%c are the signs for degrees, plus or minus and diameter, %%% a percent
// sign, %%nnn the character of that number; %%u and %%o, which switch lines under and over the text, are left
// out. Any other code stays as it stands. `lines`, if there is one, gets what the switches switch on for at
// least one character.
std::wstring withoutTextCodes(const std::wstring& text, TextLines* lines = nullptr);

// The width of a line of text in drawing units, of the font's own letters. `height` is that of capital
// letters, `widthFactor` that of the style.
double textWidth(const std::wstring& text, double height, double widthFactor,
                 const TextSetting& setting = TextSetting());

// The font of a style and its letters' distance.
TextSetting settingOf(const AcGiTextStyle& style);

} // namespace embedded
