#include "db/text/group_types.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

using embedded::text::beginsPoint;
using embedded::text::GroupType;
using embedded::text::groupTypeOf;

namespace {

// The type of each code from 0 to 1071 by its first and last one, as runs without the codes that do not
// exist.
struct CodeRun {
    int first, last;
    GroupType type;
};

constexpr CodeRun kRuns[] = {
    {0, 4, GroupType::kText},         {5, 5, GroupType::kHandle},       {6, 9, GroupType::kText},
    {10, 59, GroupType::kReal},       {60, 79, GroupType::kInt16},      {80, 89, GroupType::kNone},
    {90, 99, GroupType::kInt32},      {100, 102, GroupType::kText},     {103, 104, GroupType::kNone},
    {105, 105, GroupType::kHandle},   {106, 109, GroupType::kNone},     {110, 149, GroupType::kReal},
    {150, 159, GroupType::kNone},     {160, 169, GroupType::kInt64},    {170, 179, GroupType::kInt16},
    {180, 209, GroupType::kNone},     {210, 239, GroupType::kReal},     {240, 269, GroupType::kNone},
    {270, 289, GroupType::kInt16},    {290, 299, GroupType::kSwitch},   {300, 309, GroupType::kText},
    {310, 319, GroupType::kChunk},    {320, 329, GroupType::kHandle},   {330, 369, GroupType::kObjectId},
    {370, 389, GroupType::kInt16},    {390, 399, GroupType::kObjectId}, {400, 409, GroupType::kInt16},
    {410, 419, GroupType::kText},     {420, 429, GroupType::kInt32},    {430, 439, GroupType::kText},
    {440, 459, GroupType::kInt32},    {460, 469, GroupType::kReal},     {470, 479, GroupType::kText},
    {480, 481, GroupType::kObjectId}, {482, 998, GroupType::kNone},     {999, 1003, GroupType::kText},
    {1004, 1004, GroupType::kChunk},  {1005, 1005, GroupType::kHandle}, {1006, 1009, GroupType::kText},
    {1010, 1059, GroupType::kReal},   {1060, 1070, GroupType::kInt16},  {1071, 1071, GroupType::kInt32},
};

} // namespace

TEST(GroupTypes, EveryCodeHasTheTypeOfItsRange) {
    int next = 0;
    for (const CodeRun& run : kRuns) {
        ASSERT_EQ(run.first, next);
        for (int code = run.first; code <= run.last; ++code)
            EXPECT_EQ(groupTypeOf(code), run.type) << code;
        next = run.last + 1;
    }
    EXPECT_EQ(next, 1072);
}

TEST(GroupTypes, ThereAreNoCodesOutsideTheTable) {
    for (const int code : {-9999, -5, -3, -1, 1072, 2000, 32767})
        EXPECT_EQ(groupTypeOf(code), GroupType::kNone) << code;
}

TEST(GroupTypes, PointsBeginWhereTwoFurtherCoordinatesAreReals) {
    std::set<int> begins;
    for (int code = -10; code < 1100; ++code)
        if (beginsPoint(code))
            begins.insert(code);
    std::set<int> expected;
    for (int i = 0; i < 10; ++i) {
        if (i < 8)
            expected.insert(10 + i);
        expected.insert(110 + i);
        expected.insert(210 + i);
        expected.insert(1010 + i);
    }
    EXPECT_EQ(begins, expected);
}
