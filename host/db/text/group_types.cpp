#include "db/text/group_types.h"

#include <cstddef>

namespace embedded::text {

namespace {

struct Range {
    int first;
    int last;
    GroupType type;
};

constexpr Range kRanges[] = {
    {0, 4, GroupType::kText},         {5, 5, GroupType::kHandle},       {6, 9, GroupType::kText},
    {10, 59, GroupType::kReal},       {60, 79, GroupType::kInt16},      {90, 99, GroupType::kInt32},
    {100, 102, GroupType::kText},     {105, 105, GroupType::kHandle},   {110, 149, GroupType::kReal},
    {160, 169, GroupType::kInt64},    {170, 179, GroupType::kInt16},    {210, 239, GroupType::kReal},
    {270, 289, GroupType::kInt16},    {290, 299, GroupType::kSwitch},   {300, 309, GroupType::kText},
    {310, 319, GroupType::kChunk},    {320, 329, GroupType::kHandle},   {330, 369, GroupType::kObjectId},
    {370, 389, GroupType::kInt16},    {390, 399, GroupType::kObjectId}, {400, 409, GroupType::kInt16},
    {410, 419, GroupType::kText},     {420, 429, GroupType::kInt32},    {430, 439, GroupType::kText},
    {440, 459, GroupType::kInt32},    {460, 469, GroupType::kReal},     {470, 479, GroupType::kText},
    {480, 481, GroupType::kObjectId}, {999, 1003, GroupType::kText},    {1004, 1004, GroupType::kChunk},
    {1005, 1005, GroupType::kHandle}, {1006, 1009, GroupType::kText},   {1010, 1059, GroupType::kReal},
    {1060, 1070, GroupType::kInt16},  {1071, 1071, GroupType::kInt32},
};

// Codes from which the two other coordinates follow. 38 and 39 are an elevation and a thickness, so there is
// no third coordinate for 18 and 19.
constexpr Range kPoints[] = {
    {10, 17, GroupType::kReal},
    {110, 119, GroupType::kReal},
    {210, 219, GroupType::kReal},
    {1010, 1019, GroupType::kReal},
};

template <std::size_t kSize>
const Range* find(const Range (&ranges)[kSize], int code) {
    for (const Range& range : ranges)
        if (range.first <= code && code <= range.last)
            return &range;
    return nullptr;
}

} // namespace

GroupType groupTypeOf(int code) {
    const Range* const range = find(kRanges, code);
    return range != nullptr ? range->type : GroupType::kNone;
}

bool beginsPoint(int code) { return find(kPoints, code) != nullptr; }

} // namespace embedded::text
