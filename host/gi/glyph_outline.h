#pragma once

#include "AdAChar.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace embedded {

// The letters of a line of text as curves, in units of the height of capital letters: X along the base line
// from its begin, Y up.
struct GlyphOutline {
    // A move and a line take one point, a curve (a cubic one) takes three, a close none.
    enum class Step : std::uint8_t { kMove, kLine, kCurve, kClose };
    struct Point {
        double x, y;
    };

    std::vector<Step> steps;
    std::vector<Point> points;
    double width = 0.0;
};

// How a line of text is set. `font` is a file's or a family's name as text styles have it. One that is
// installed is taken; for all others, among them all shape fonts, it is DejaVu Sans, so that a drawing looks
// the same on every machine. `tracking` is the share of each letter's width.
struct TextSetting {
    std::wstring font;
    double tracking = 1.0;
};

// The width of a line of text, with the room behind its last letter, in units of the height of capital
// letters. The letters are not fitted to any pixels.
double glyphWidth(const std::wstring& text, const TextSetting& setting);
std::shared_ptr<const GlyphOutline> glyphOutline(const std::wstring& text, const TextSetting& setting);

} // namespace embedded
