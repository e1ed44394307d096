#include "dbx/doc/drawing_unit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace orv;
using orv::detail::scaleOfUnit;
using orv::detail::unitOfScale;

TEST(DrawingUnit, EachUnitHasItsScale) {
    ASSERT_NE(scaleOfUnit(13), nullptr);
    EXPECT_EQ(*scaleOfUnit(13), 1.0);
    ASSERT_NE(scaleOfUnit(15), nullptr);
    EXPECT_EQ(*scaleOfUnit(15), 0.01);
    ASSERT_NE(scaleOfUnit(16), nullptr);
    EXPECT_EQ(*scaleOfUnit(16), 0.001);
}

TEST(DrawingUnit, OtherNumbersAreNoUnit) {
    for (const int unit : {-1, 0, 12, 14, 17})
        EXPECT_EQ(scaleOfUnit(unit), nullptr) << unit;
}

TEST(DrawingUnit, AScaleCountsAsTheUnitThatItIsNearTo) {
    EXPECT_EQ(unitOfScale(1.0), kUnitMetre);
    EXPECT_EQ(unitOfScale(0.9996), kUnitMetre);
    EXPECT_EQ(unitOfScale(0.01), kUnitCentimetre);
    EXPECT_EQ(unitOfScale(0.0104), kUnitCentimetre);
    EXPECT_EQ(unitOfScale(0.0096), kUnitCentimetre);
    EXPECT_EQ(unitOfScale(0.001), kUnitMillimetre);
    EXPECT_EQ(unitOfScale(0.0014), kUnitMillimetre);
    EXPECT_EQ(unitOfScale(0.0006), kUnitMillimetre);
}

TEST(DrawingUnit, AScaleNearToNoneCountsAsMetres) {
    for (const double scale : {0.0, 0.0004, 0.0016, 0.0094, 0.0106, 0.5, 0.9994, 1.0006, 2.0, -1.0,
                               std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_EQ(unitOfScale(scale), kUnitMetre) << scale;
}
