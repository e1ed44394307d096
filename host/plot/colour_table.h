#pragma once

#include "adesk.h"

namespace embedded {

struct Rgb {
    Adesk::UInt8 red = 0;
    Adesk::UInt8 green = 0;
    Adesk::UInt8 blue = 0;

    bool operator==(const Rgb& other) const {
        return red == other.red && green == other.green && blue == other.blue;
    }
};

// A colour of a drawing's index, 1 to 255. Colour 7 is the one that the ground is not: white, or black on a
// white ground. So is whatever is no index.
Rgb colourOfIndex(int index, bool onDark);

} // namespace embedded
