#include "dbx/doc/ccsys.h"

#include <algorithm>
#include <cstring>

namespace {

// By `norm`.
constexpr const char* kCodeNames[] = {"DIN_1045", "EC_2", "BS_8110", "OEN_4700", "SIA_162", "US_AISC"};
constexpr Adesk::Int32 kCodeCount = sizeof kCodeNames / sizeof kCodeNames[0];
constexpr std::size_t kClearedCategory = 8;

} // namespace

void ccsys::oldCodeNameFromNorm() {
    // With its zero, so that nothing of a longer name shows behind it.
    if (norm >= 0 && norm < kCodeCount)
        std::memcpy(codeName, kCodeNames[norm], std::strlen(kCodeNames[norm]) + 1);
    std::fill_n(codeCategory, kClearedCategory, '\0');
}
