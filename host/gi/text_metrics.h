#pragma once

#include "AdAChar.h"

#include <string>

namespace embedded {

// A text as it is read: %%d, %%p and %%c are the signs for degrees, plus or minus and diameter, %%% a percent
// sign, %%nnn the character of that number; %%u and %%o, which switch lines under and over the text, are left
// out. Any other code stays as it stands.
std::wstring withoutTextCodes(const std::wstring& text);

// The width of a line of text in drawing units, by the common widths of a sans-serif's letters. `height` is
// that of capital letters, `widthFactor` that of the style, `tracking` the share of each letter's width.
double estimatedTextWidth(const std::wstring& text, double height, double widthFactor, double tracking = 1.0);

} // namespace embedded
