#include "base/number_text.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

TEST(NumberText, ToIntTakesTheNumberAtTheBeginning) {
    EXPECT_EQ(orv::toInt(L"12"), 12);
    EXPECT_EQ(orv::toInt(L"007"), 7);
    EXPECT_EQ(orv::toInt(L" \t+5x9"), 5);
    EXPECT_EQ(orv::toInt(L"-40"), -40);
    EXPECT_EQ(orv::toInt(L""), 0);
    EXPECT_EQ(orv::toInt(L"abc"), 0);
    EXPECT_EQ(orv::toInt(L"-"), 0);
    EXPECT_EQ(orv::toInt(L"- 3"), 0);
}

TEST(NumberText, ToIntStopsAtTheEndsOfTheRange) {
    EXPECT_EQ(orv::toInt(L"2147483647"), INT_MAX);
    EXPECT_EQ(orv::toInt(L"2147483648"), INT_MAX);
    EXPECT_EQ(orv::toInt(L"-2147483648"), INT_MIN);
    EXPECT_EQ(orv::toInt(L"-99999999999999999999"), INT_MIN);
}

TEST(NumberText, IntTextIsPlainDecimal) {
    EXPECT_EQ(std::wstring(orv::IntText(0)), L"0");
    EXPECT_EQ(std::wstring(orv::IntText(173)), L"173");
    EXPECT_EQ(std::wstring(orv::IntText(-5)), L"-5");
    EXPECT_EQ(std::wstring(orv::IntText(INT_MIN)), L"-2147483648");
    EXPECT_EQ(std::wstring(orv::IntText(INT_MAX)), L"2147483647");
}

TEST(NumberText, IntTextIsPaddedWithZeros) {
    EXPECT_EQ(std::wstring(orv::IntText(0, 6)), L"000000");
    EXPECT_EQ(std::wstring(orv::IntText(42, 6)), L"000042");
    EXPECT_EQ(std::wstring(orv::IntText(1000000, 6)), L"1000000");
    EXPECT_EQ(std::wstring(orv::IntText(-42, 6)), L"-000042");
    EXPECT_EQ(std::wstring(orv::IntText(INT_MIN, 6)), L"-2147483648");
}
