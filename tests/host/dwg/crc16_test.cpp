#include "dwg/crc16.h"

#include "bits.h"

#include <gtest/gtest.h>

using namespace embedded::dwg;

TEST(Crc16, OfTheKnownCheckTextWithoutSeed) {
    const Bytes text = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(crc16(text, 0), 0xBB3D);
}

TEST(Crc16, OfTheEmptyLastPageOfAnObjectMap) { EXPECT_EQ(crc16(bytesOfHex("00 02")), 0x01D0); }

TEST(Crc16, OfNothingIsTheSeed) { EXPECT_EQ(crc16(ByteSpan()), kCrcSeed); }

TEST(Crc16, GoesOnWhereItStopped) {
    const Bytes bytes = bytesOfHex("01 02 03 04 05 06");
    const ByteSpan all(bytes);
    EXPECT_EQ(crc16(all.part(2, 4), crc16(all.part(0, 2))), crc16(all));
}
