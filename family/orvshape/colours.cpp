#include "orvshape/colours.h"

namespace orv {

const ColourRGBA Colours::Red(1.0, 0.0, 0.0, 1.0);
const ColourRGBA Colours::Green(0.0, 1.0, 0.0, 1.0);
const ColourRGBA Colours::Blue(0.0, 0.0, 1.0, 1.0);
const ColourRGBA Colours::Yellow(1.0, 1.0, 0.0, 1.0);
const ColourRGBA Colours::Cyan(0.0, 1.0, 1.0, 1.0);
const ColourRGBA Colours::Purple(1.0, 0.0, 1.0, 1.0);

} // namespace orv
