#pragma once

#include "orvshape/settings.h"

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace taldork::cli {

/// A colour as "#RRGGBBAA", each part as it is filed.
std::string colourText(const orv::ColourRGBA& colour);

/// How many sizes, switches and colours differ from the defaults. One that a store gives back for a default
/// (a size goes through a float, a colour through bytes) does not differ.
std::size_t countDifferences(const orv::settings::Settings& settings);

/// Those that differ, for people: "size 8 = 0.4", "switch 21 off", "colour 1 #00FF00FF".
std::vector<std::string> differenceTexts(const orv::settings::Settings& settings);

/// The objects "sizes", "switches" and "colours": those that differ, or all, by their numbers.
nlohmann::ordered_json describeSettings(const orv::settings::Settings& settings, bool all);

} // namespace taldork::cli
