#include "geintrvl.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

TEST(Interval, IsWithoutBoundsAtFirst) {
    const AcGeInterval all;
    EXPECT_TRUE(all.isUnBounded());
    EXPECT_FALSE(all.isBounded());
    EXPECT_FALSE(all.isBoundedAbove());
    EXPECT_FALSE(all.isBoundedBelow());
    EXPECT_EQ(all.tolerance(), 1.0e-12);
    EXPECT_EQ(all.length(), -1.0);
    EXPECT_EQ(all.lowerBound(), 0.0);
    EXPECT_EQ(all.upperBound(), 0.0);
    EXPECT_TRUE(all.contains(-1.0e300));
    EXPECT_FALSE(all.contains(std::nan("")));
    EXPECT_EQ(AcGeInterval(0.5).tolerance(), 0.5);
}

TEST(Interval, HasBothBounds) {
    const AcGeInterval interval(2.0, 5.0);
    EXPECT_TRUE(interval.isBounded());
    EXPECT_FALSE(interval.isUnBounded());
    EXPECT_EQ(interval.length(), 3.0);
    EXPECT_EQ(interval.element(), 2.0);
    double lower = 0.0;
    double upper = 0.0;
    interval.getBounds(lower, upper);
    EXPECT_EQ(lower, 2.0);
    EXPECT_EQ(upper, 5.0);
}

TEST(Interval, HasOneBound) {
    const AcGeInterval above(true, 2.0);
    EXPECT_TRUE(above.isBoundedBelow());
    EXPECT_FALSE(above.isBoundedAbove());
    EXPECT_EQ(above.length(), -1.0);
    EXPECT_TRUE(above.contains(1.0e9));
    EXPECT_FALSE(above.contains(1.9));
    const AcGeInterval below(false, 2.0);
    EXPECT_TRUE(below.isBoundedAbove());
    EXPECT_FALSE(below.isBoundedBelow());
    EXPECT_EQ(below.element(), 2.0);
    EXPECT_TRUE(below.contains(-1.0e9));
    EXPECT_FALSE(below.contains(2.1));
}

TEST(Interval, BoundsCountWithTheTolerance) {
    const AcGeInterval interval(2.0, 5.0, 0.1);
    EXPECT_TRUE(interval.contains(1.95));
    EXPECT_TRUE(interval.contains(5.05));
    EXPECT_FALSE(interval.contains(1.8));
    EXPECT_FALSE(interval.contains(5.2));
    EXPECT_TRUE(AcGeInterval(2.0, 2.05, 0.1).isSingleton());
    EXPECT_FALSE(AcGeInterval(2.0, 2.2, 0.1).isSingleton());
    EXPECT_FALSE(AcGeInterval(true, 0.0).isSingleton());
    EXPECT_FALSE(AcGeInterval(5.0, 2.0).contains(3.0));
}

TEST(Interval, ContainsAnotherOrIsApartFromIt) {
    const AcGeInterval interval(2.0, 5.0);
    EXPECT_TRUE(interval.contains(AcGeInterval(2.0, 4.0)));
    EXPECT_FALSE(interval.contains(AcGeInterval(1.0, 4.0)));
    EXPECT_FALSE(interval.contains(AcGeInterval(true, 3.0)));
    EXPECT_TRUE(AcGeInterval(true, 2.0).contains(interval));
    EXPECT_TRUE(AcGeInterval().contains(interval));
    EXPECT_FALSE(interval.contains(AcGeInterval()));
    EXPECT_TRUE(interval.isDisjoint(AcGeInterval(6.0, 7.0)));
    EXPECT_TRUE(interval.isDisjoint(AcGeInterval(false, 1.0)));
    EXPECT_FALSE(interval.isDisjoint(AcGeInterval(5.0, 7.0)));
    EXPECT_FALSE(interval.isDisjoint(AcGeInterval()));
}

TEST(Interval, TakesOtherBounds) {
    AcGeInterval interval(2.0, 5.0);
    interval.setUpper(9.0).setLower(-1.0).setTolerance(0.25);
    EXPECT_EQ(interval, AcGeInterval(-1.0, 9.0));
    EXPECT_EQ(interval.tolerance(), 0.25);
    EXPECT_TRUE(interval.set().isUnBounded());
    EXPECT_EQ(interval.tolerance(), 0.25);
    EXPECT_EQ(interval.set(true, 3.0), AcGeInterval(true, 3.0));
    EXPECT_NE(interval, AcGeInterval(false, 3.0));
    EXPECT_EQ(interval.set(false, 3.0), AcGeInterval(false, 3.0));
    EXPECT_EQ(interval.set(1.0, 2.0), AcGeInterval(1.0, 2.0));
    EXPECT_NE(interval, AcGeInterval(1.0, 3.0));
}

} // namespace
