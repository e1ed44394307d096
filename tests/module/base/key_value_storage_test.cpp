#include "base/key_value_storage.h"

#include <boost/optional/optional_io.hpp>
#include <gtest/gtest.h>

#include <string>
#include <utility>

using orv::KeyValueStorage;

TEST(KeyValueStorage, GetOfAMissingKeyIsEmptyAndGetValueOfItIsNone) {
    const KeyValueStorage storage;
    EXPECT_TRUE(storage.get("absent").empty());
    EXPECT_FALSE(storage.getValue<int>("absent"));
    EXPECT_FALSE(storage.getValue<std::wstring>("absent"));
}

TEST(KeyValueStorage, GetValueIsTheValueOfExactlyThatType) {
    KeyValueStorage storage;
    storage.set("number", 7);
    storage.set("count", 8u);
    storage.set("text", std::wstring(L"t"));
    EXPECT_EQ(storage.getValue<int>("number"), 7);
    EXPECT_EQ(storage.getValue<unsigned int>("count"), 8u);
    EXPECT_EQ(storage.getValue<std::wstring>("text").get(), L"t");
}

TEST(KeyValueStorage, GetValueConvertsNothing) {
    KeyValueStorage storage;
    storage.set("count", 8u);
    EXPECT_FALSE(storage.getValue<int>("count"));
    EXPECT_FALSE(storage.getValue<long>("count"));
    EXPECT_FALSE(storage.getValue<std::wstring>("count"));
}

TEST(KeyValueStorage, TheDefaultComesForAMissingKeyAndForAnotherType) {
    KeyValueStorage storage;
    storage.set("number", 7);
    storage.set("text", std::wstring(L"there"));
    const std::wstring absent = L"default";
    EXPECT_EQ(storage.getValue("absent", absent), L"default");
    EXPECT_EQ(storage.getValue("number", absent), L"default");
    EXPECT_EQ(storage.getValue("text", absent), L"there");
}

TEST(KeyValueStorage, SetOnACopyOfAHandleIsSeenThroughTheFirst) {
    const KeyValueStorage first;
    KeyValueStorage copy = first;
    copy.set("key", 1);
    EXPECT_EQ(first.getValue<int>("key"), 1);
}

TEST(KeyValueStorage, SetAnswersAHandleOnTheSameMap) {
    KeyValueStorage storage;
    KeyValueStorage answered = storage.set("a", 1).set("b", 2);
    answered.set("c", 3);
    EXPECT_EQ(storage.getValue<int>("a"), 1);
    EXPECT_EQ(storage.getValue<int>("b"), 2);
    EXPECT_EQ(storage.getValue<int>("c"), 3);
}

TEST(KeyValueStorage, SetReplacesTheValueAndItsType) {
    KeyValueStorage storage;
    storage.set("key", 1);
    storage.set("key", 2.5);
    EXPECT_FALSE(storage.getValue<int>("key"));
    EXPECT_EQ(storage.getValue<double>("key"), 2.5);
}

TEST(KeyValueStorage, KeepsACopyOfTheValueAndGivesCopies) {
    KeyValueStorage storage;
    boost::any value = std::string("before");
    storage.set("key", value);
    boost::any_cast<std::string&>(value) = "after";
    boost::any got = storage.get("key");
    boost::any_cast<std::string&>(got) = "changed";
    EXPECT_EQ(storage.getValue<std::string>("key"), std::string("before"));
}

TEST(KeyValueStorage, ASlashIsAPartOfTheName) {
    KeyValueStorage storage;
    storage.set("general/number", 1);
    EXPECT_TRUE(storage.get("general").empty());
    EXPECT_TRUE(storage.get("number").empty());
    EXPECT_EQ(storage.getValue<int>("general/number"), 1);
}

TEST(KeyValueStorage, TwoNewHandlesHaveMapsOfTheirOwn) {
    KeyValueStorage one;
    KeyValueStorage two;
    one.set("key", 1);
    EXPECT_TRUE(two.get("key").empty());
}

TEST(KeyValueStorage, AHandleThatWasMovedFromStillHasItsMap) {
    KeyValueStorage one;
    one.set("key", 1);
    KeyValueStorage two = std::move(one);
    one.set("other", 2);
    EXPECT_EQ(two.getValue<int>("other"), 2);
}
