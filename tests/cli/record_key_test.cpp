#include "cli/common/record_key.h"

#include <gtest/gtest.h>

namespace tests {

using namespace taldork::cli;

TEST(RecordKeyTest, AKeyIsTwoNumbersWithASlash) {
    const auto key = parseRecordKey("10/98");
    ASSERT_TRUE(key);
    EXPECT_FALSE(key->isGroup());
    EXPECT_EQ(key->kwh, 10);
    EXPECT_EQ(*key->kwl, 98);
    EXPECT_EQ(key->text(), "10/98");
}

TEST(RecordKeyTest, ANumberAloneIsAGroup) {
    const auto key = parseRecordKey("10");
    ASSERT_TRUE(key);
    EXPECT_TRUE(key->isGroup());
    EXPECT_EQ(key->text(), "10");
}

TEST(RecordKeyTest, TheGreatestNumberIsTaken) {
    EXPECT_EQ(parseRecordKey("2147483647/2147483647")->text(), "2147483647/2147483647");
    EXPECT_FALSE(parseRecordKey("2147483648/0"));
    EXPECT_FALSE(parseRecordKey("0/2147483648"));
}

TEST(RecordKeyTest, EverythingElseIsRefused) {
    for (const char* text : {"", "/", "1/", "/1", "-1", "1/-1", "+1", " 1", "1 ", "1/2/3", "a", "0x1"})
        EXPECT_FALSE(parseRecordKey(text)) << text;
}

TEST(RecordKeyTest, ARangeIsTwoNumbersInOrder) {
    EXPECT_EQ(parseKeyRange("5:9")->from, 5);
    EXPECT_EQ(parseKeyRange("5:9")->to, 9);
    EXPECT_EQ(parseKeyRange("-5:-5")->to, -5);
    for (const char* text : {"", ":", "1:", ":1", "9:5", "1", "1:2:3", "a:b", "1-2"})
        EXPECT_FALSE(parseKeyRange(text)) << text;
}

TEST(RecordKeyTest, TheChecksSayWhatIsWrong) {
    EXPECT_EQ(checkKey("1/2"), "");
    EXPECT_NE(checkKey("1").find("'1'"), std::string::npos);
    EXPECT_EQ(checkGroup("1"), "");
    EXPECT_NE(checkGroup("1/2"), "");
    EXPECT_EQ(checkKeyOrGroup("1") + checkKeyOrGroup("1/2"), "");
    EXPECT_NE(checkKeyOrGroup("x"), "");
    EXPECT_EQ(checkRange("1:2"), "");
    EXPECT_NE(checkRange("2:1"), "");
    EXPECT_EQ(checkPosition("0") + checkPosition("1000000"), "");
    EXPECT_NE(checkPosition("-1"), "");
    EXPECT_NE(checkPosition("first"), "");
}

} // namespace tests
