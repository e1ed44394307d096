#pragma once

#include <functional>
#include <string>
#include <vector>

namespace embedded {

// What is read of a text with format codes: paragraphs end at a line feed, a blank that must not be broken at
// is U+00A0. A code that is none stands as it is; one whose end is missing takes the rest with it.
std::wstring withoutFormatCodes(const std::wstring& contents);

// The paragraphs of a plain text as lines, broken at blanks so that none is wider than `width`, as far as
// there are blanks; 0 breaks at line feeds alone. `widthOf` tells the width of a run of letters. Blanks that
// must not be broken at come out as blanks.
std::vector<std::wstring> brokenLines(const std::wstring& text, double width,
                                      const std::function<double(const std::wstring&)>& widthOf);

} // namespace embedded
