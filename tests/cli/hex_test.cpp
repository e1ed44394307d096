#include "cli/common/hex.h"

#include <gtest/gtest.h>

namespace tests {

using namespace taldork::cli;

TEST(HexTest, DigitsOfEitherCaseAreRead) { EXPECT_EQ(parseHex("00fFA9"), (Bytes{0x00, 0xff, 0xa9})); }

TEST(HexTest, BlanksAndColonsBetweenBytesAndAPrefixAreSkipped) {
    EXPECT_EQ(parseHex("0x01 02:03"), (Bytes{1, 2, 3}));
    EXPECT_EQ(parseHex(" 01  02 "), (Bytes{1, 2}));
}

TEST(HexTest, AnEmptyTextIsNoBytes) { EXPECT_EQ(parseHex(""), Bytes()); }

TEST(HexTest, APrefixAloneIsNoBytes) { EXPECT_EQ(parseHex("0x"), Bytes()); }

TEST(HexTest, WhatIsNoRowOfBytesIsRefused) {
    for (const char* text : {"0", "0 1", "0g", "x", "01 0", "0x 0x", "01,02"})
        EXPECT_FALSE(parseHex(text)) << text;
}

TEST(HexTest, DigitsAreWrittenInPairs) { EXPECT_EQ(hexDigits({0x00, 0x0f, 0xf0}), "000ff0"); }

TEST(HexTest, ADumpOfNothingIsEmpty) { EXPECT_EQ(hexDump({}), ""); }

TEST(HexTest, ADumpShowsOffsetBytesAndPrintableCharacters) {
    Bytes bytes;
    for (int i = 0; i < 18; ++i)
        bytes.push_back(static_cast<std::uint8_t>(0x3c + i * 4));
    EXPECT_EQ(hexDump(bytes),
              "00000000  3c 40 44 48 4c 50 54 58 5c 60 64 68 6c 70 74 78  |<@DHLPTX\\`dhlptx|\n"
              "00000010  7c 80                                            ||.|\n");
}

} // namespace tests
