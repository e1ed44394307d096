#pragma once

namespace orv {

// A colour by its parts, each from 0 to 1. Full opacity is alpha 1.
struct ColourRGBA {
    double red = 1.0;
    double green = 1.0;
    double blue = 1.0;
    double alpha = 1.0;

    constexpr ColourRGBA() = default;
    constexpr ColourRGBA(double r, double g, double b, double a) : red(r), green(g), blue(b), alpha(a) {}
};

constexpr bool operator==(const ColourRGBA& left, const ColourRGBA& right) {
    return left.red == right.red && left.green == right.green && left.blue == right.blue &&
           left.alpha == right.alpha;
}
constexpr bool operator!=(const ColourRGBA& left, const ColourRGBA& right) { return !(left == right); }

// All four parts, alpha too.
constexpr ColourRGBA operator*(const ColourRGBA& colour, double factor) {
    return {colour.red * factor, colour.green * factor, colour.blue * factor, colour.alpha * factor};
}

} // namespace orv
