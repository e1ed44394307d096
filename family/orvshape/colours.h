#pragma once

#include "orvshape/colour_rgba.h"
#include "orvshape/export.h"

namespace orv {

// The colours that have a name: the pure ones and their mixtures of two, all opaque. They are there before
// any static initialiser runs.
struct ORVSHAPE_API Colours {
    static const ColourRGBA Red;
    static const ColourRGBA Green;
    static const ColourRGBA Blue;
    static const ColourRGBA Yellow; // red and green
    static const ColourRGBA Cyan;   // green and blue
    static const ColourRGBA Purple; // red and blue
};

} // namespace orv
