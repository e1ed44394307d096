#include "plot/colour_table.h"

namespace embedded {
namespace {

constexpr Adesk::UInt8 kFull = 255;
// 1 to 9; 7 stands for both of its colours.
constexpr Rgb kNamed[] = {{kFull, 0, 0},         {kFull, kFull, 0}, {0, kFull, 0},
                          {0, kFull, kFull},     {0, 0, kFull},     {kFull, 0, kFull},
                          {kFull, kFull, kFull}, {128, 128, 128},   {192, 192, 192}};
constexpr int kForeground = 7;
constexpr int kFirstHue = 10;
constexpr int kFirstGrey = 250;
// 250 to 255.
constexpr Adesk::UInt8 kGreys[] = {51, 91, 132, 173, 214, 255};
// From 10 on there are ten shades to each of 24 hues: five brightnesses, each full and half as strong.
constexpr double kBrightness[] = {1.0, 0.65, 0.5, 0.3, 0.15};
constexpr int kShades = 10;
constexpr int kHues = 24;

// How much of the red is in a hue, from 0 to 1; green and blue are a third of the circle behind.
double shareOfRed(int hue) {
    const double turn = 6.0 * (hue % kHues) / kHues;
    if (turn <= 1.0 || turn >= 5.0)
        return 1.0;
    if (turn >= 2.0 && turn <= 4.0)
        return 0.0;
    return turn < 2.0 ? 2.0 - turn : turn - 4.0;
}

Rgb shade(int hue, int shade) {
    const double bright = kFull * kBrightness[shade / 2];
    const double least = shade % 2 == 0 ? 0.0 : bright / 2.0;
    const auto channel = [&](int behind) {
        return static_cast<Adesk::UInt8>(least + (bright - least) * shareOfRed(hue + kHues - behind));
    };
    return {channel(0), channel(kHues / 3), channel(2 * kHues / 3)};
}

} // namespace

Rgb colourOfIndex(int index, bool onDark) {
    if (index >= kFirstGrey && index <= 255)
        return {kGreys[index - kFirstGrey], kGreys[index - kFirstGrey], kGreys[index - kFirstGrey]};
    if (index >= kFirstHue && index < kFirstGrey)
        return shade((index - kFirstHue) / kShades, (index - kFirstHue) % kShades);
    if (index < 1 || index >= kFirstHue || index == kForeground)
        return onDark ? Rgb{kFull, kFull, kFull} : Rgb{0, 0, 0};
    return kNamed[index - 1];
}

} // namespace embedded
