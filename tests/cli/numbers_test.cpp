#include "cli/common/numbers.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>

namespace tests {

using namespace taldork::cli;

TEST(NumbersTest, DecimalNumbersAreRead) {
    EXPECT_EQ(parseNumber("1"), 1.0);
    EXPECT_EQ(parseNumber("-1.5"), -1.5);
    EXPECT_EQ(parseNumber("+2"), 2.0);
    EXPECT_EQ(parseNumber(".5"), 0.5);
    EXPECT_EQ(parseNumber("1e-3"), 0.001);
    EXPECT_EQ(parseNumber("-0"), 0.0);
}

TEST(NumbersTest, WhatIsNoNumberIsRefused) {
    for (const char* text :
         {"", "+", "-", "+-1", "--1", "1x", " 1", "1 ", "1,5", "nan", "inf", "-inf", "1e999", "0x10"})
        EXPECT_FALSE(parseNumber(text)) << text;
}

TEST(NumbersTest, AnIndexIsAWholeNumberUpToTheLast) {
    EXPECT_EQ(parseIndex("0", 299), 0);
    EXPECT_EQ(parseIndex("299", 299), 299);
    for (const char* text : {"", "300", "-1", "-0", "+1", "1.0", "x", "99999999999"})
        EXPECT_FALSE(parseIndex(text, 299)) << text;
}

TEST(NumbersTest, APointHasThreeNumbers) {
    EXPECT_EQ(parsePoint("1,-2,.5"), (Point{1.0, -2.0, 0.5}));
    for (const char* text : {"", "1", "1,2", "1,2,", ",1,2", "1,,2", "1,2,3,4", "1,2,3,", "1;2;3", "1,2,nan"})
        EXPECT_FALSE(parsePoint(text)) << text;
}

TEST(NumbersTest, TheShortestTextIsWritten) {
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(numberText(-12.0), "-12");
    EXPECT_EQ(numberText(-0.0), "0");
    EXPECT_EQ(numberText(1e300), "1e+300");
    EXPECT_EQ(pointText({1.0, -0.5, 0.0}), "1 -0.5 0");
}

TEST(NumbersTest, ForPeopleANumberHasSevenDigits) {
    EXPECT_EQ(roundedText(static_cast<double>(0.1F)), "0.1");
    EXPECT_EQ(roundedText(-1234567.0), "-1234567");
    EXPECT_EQ(roundedText(1e8), "1e+08");
    EXPECT_EQ(roundedText(-0.0), "0");
}

TEST(NumbersTest, AnyNumberReadsBackAsTheSame) {
    EXPECT_TRUE(rc::check([](std::uint64_t bits) {
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        if (std::isfinite(value))
            RC_ASSERT(parseNumber(numberText(value)) == value);
        else
            RC_ASSERT(!parseNumber(numberText(value)));
    }));
}

} // namespace tests
