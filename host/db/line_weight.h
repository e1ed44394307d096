#pragma once

#include "acdb.h"

#include <cstdint>

namespace embedded {

// Line weights as the drawing file codes them: widths by their place in the row, 29 by layer, 30 by block, 31
// default.
constexpr std::uint8_t kWeightByLayer = 29;
constexpr std::uint8_t kWeightByBlock = 30;
constexpr std::uint8_t kWeightDefault = 31;

// A code without a weight counts as by layer.
AcDb::LineWeight lineWeightOfCode(std::uint8_t code);
// False for a weight that drawings don't have.
bool codeOfLineWeight(AcDb::LineWeight weight, std::uint8_t& code);

} // namespace embedded
