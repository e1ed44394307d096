#pragma once

// Where a load's name and the sizes of its picture are kept.
namespace orv::elem {

// The property of an element that holds its name.
constexpr unsigned int kElementNameKey = 30001;

// Sizes of a system's visual settings.
constexpr int kArrowHeadSize = 2;    // how long a head is at most
constexpr int kArrowSpacingSize = 3; // from arrow to arrow
constexpr int kLoadTextSize = 4;     // height of letters
constexpr int kLoadUnitSize = 7;     // how long a value of 1 is drawn

} // namespace orv::elem
