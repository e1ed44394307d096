#include "db/line_weight.h"

#include <algorithm>
#include <array>

namespace embedded {

namespace {

constexpr std::array<AcDb::LineWeight, 24> kWidths = {
    AcDb::kLnWt000, AcDb::kLnWt005, AcDb::kLnWt009, AcDb::kLnWt013, AcDb::kLnWt015, AcDb::kLnWt018,
    AcDb::kLnWt020, AcDb::kLnWt025, AcDb::kLnWt030, AcDb::kLnWt035, AcDb::kLnWt040, AcDb::kLnWt050,
    AcDb::kLnWt053, AcDb::kLnWt060, AcDb::kLnWt070, AcDb::kLnWt080, AcDb::kLnWt090, AcDb::kLnWt100,
    AcDb::kLnWt106, AcDb::kLnWt120, AcDb::kLnWt140, AcDb::kLnWt158, AcDb::kLnWt200, AcDb::kLnWt211};

} // namespace

AcDb::LineWeight lineWeightOfCode(std::uint8_t code) {
    if (code < kWidths.size())
        return kWidths[code];
    if (code == kWeightByBlock)
        return AcDb::kLnWtByBlock;
    return code == kWeightDefault ? AcDb::kLnWtByLwDefault : AcDb::kLnWtByLayer;
}

bool codeOfLineWeight(AcDb::LineWeight weight, std::uint8_t& code) {
    switch (weight) {
    case AcDb::kLnWtByLayer:
        code = kWeightByLayer;
        return true;
    case AcDb::kLnWtByBlock:
        code = kWeightByBlock;
        return true;
    case AcDb::kLnWtByLwDefault:
        code = kWeightDefault;
        return true;
    default:
        break;
    }
    const auto it = std::find(kWidths.begin(), kWidths.end(), weight);
    if (it == kWidths.end())
        return false;
    code = static_cast<std::uint8_t>(it - kWidths.begin());
    return true;
}

} // namespace embedded
