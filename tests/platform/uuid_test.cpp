#include "platform/uuid.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

using platform::Uuid;
using platform::uuidCalls;

namespace {

std::string textOf(const Uuid& uuid) {
    char* text = nullptr;
    EXPECT_EQ(uuidCalls().toText(uuid, text), 0);
    const std::string copy = text;
    uuidCalls().freeText(text);
    EXPECT_EQ(text, nullptr);
    return copy;
}

// The 60 bits of time that a UUID of version 1 carries.
std::uint64_t timeOf(const Uuid& uuid) {
    return static_cast<std::uint64_t>(uuid.data3 & 0x0FFF) << 48 |
           static_cast<std::uint64_t>(uuid.data2) << 32 | uuid.data1;
}

} // namespace

TEST(Uuid, TextShowsTheNumbersAndThenTheBytes) {
    const Uuid uuid = {0x12345678, 0x9ABC, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 0xFF}};
    EXPECT_EQ(textOf(uuid), "12345678-9abc-def0-0102-0304050607ff");
}

TEST(Uuid, HasThreeNumbersInTheMachinesOrderAndEightBytes) {
    const Uuid uuid = {0x12345678, 0x9ABC, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 8}};
    unsigned char bytes[16];
    ASSERT_EQ(sizeof uuid, sizeof bytes);
    std::memcpy(bytes, &uuid, sizeof bytes);
    const unsigned char expected[16] = {0x78, 0x56, 0x34, 0x12, 0xBC, 0x9A, 0xF0, 0xDE,
                                        1,    2,    3,    4,    5,    6,    7,    8};
    EXPECT_EQ(std::memcmp(bytes, expected, sizeof bytes), 0);
}

TEST(Uuid, SequentialOnesFollowEachOtherInTime) {
    Uuid before = {};
    ASSERT_EQ(uuidCalls().createSequential(before), 0);
    for (int i = 0; i < 1000; ++i) {
        Uuid next = {};
        ASSERT_EQ(uuidCalls().createSequential(next), 0);
        ASSERT_GT(timeOf(next), timeOf(before));
        EXPECT_EQ(next.data3 >> 12, 1);
        before = next;
    }
}

TEST(Uuid, OnlyAllZeroBitsAreNil) {
    int status = -1;
    EXPECT_TRUE(uuidCalls().isNil(Uuid{}, status));
    EXPECT_EQ(status, 0);
    for (int bit = 0; bit < 128; ++bit) {
        Uuid uuid = {};
        reinterpret_cast<unsigned char*>(&uuid)[bit / 8] = static_cast<unsigned char>(1 << bit % 8);
        EXPECT_FALSE(uuidCalls().isNil(uuid, status)) << bit;
    }
}

TEST(Uuid, OtherCallsStandInUntilTheSystemsAreBack) {
    struct Failing : platform::UuidCalls {
        int toText(const Uuid&, char*&) override { return 99; }
    } failing;
    char* text = nullptr;
    platform::setUuidCalls(&failing);
    EXPECT_EQ(uuidCalls().toText(Uuid{}, text), 99);
    platform::setUuidCalls(nullptr);
    EXPECT_EQ(textOf(Uuid{}), "00000000-0000-0000-0000-000000000000");
}
