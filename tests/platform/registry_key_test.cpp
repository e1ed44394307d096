#include "platform/registry_key.h"

#include "platform/files.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace registry = platform::registry;

constexpr std::size_t kRoom = 300;

class RegistryKey : public testing::Test {
protected:
    void SetUp() override { registry::setRegistryFile(platform::joinPath(m_folder, L"registry")); }
    void TearDown() override {
        registry::closeKey(m_key);
        registry::setRegistryFile(L"");
        std::filesystem::remove_all(m_folder);
    }

    void create(const wchar_t* path) {
        registry::closeKey(m_key);
        ASSERT_EQ(registry::createKey(registry::currentUser(), path, registry::kAllAccess, m_key),
                  registry::kDone);
    }
    int value(std::uint32_t index, std::size_t room = kRoom) {
        return registry::enumerateValue(m_key, index, room, m_name, m_type, m_size);
    }

    const std::wstring m_folder = platform::makeTemporaryFolder();
    registry::KeyHandle m_key = nullptr;
    std::wstring m_name = L"before";
    std::uint32_t m_type = 77;
    std::uint32_t m_size = 88;
};

TEST_F(RegistryKey, OpeningMakesNothingAndCreatingMakesAllAbove) {
    EXPECT_EQ(registry::openKey(registry::currentUser(), L"A\\B", registry::kReadAccess, m_key),
              registry::kNotFound);
    EXPECT_EQ(m_key, nullptr);
    EXPECT_FALSE(platform::fileExists(registry::registryFile()));
    create(L"A\\B");
    EXPECT_TRUE(registry::keyExists(L"A"));
    EXPECT_TRUE(registry::keyExists(L"a\\b"));
}

TEST_F(RegistryKey, APathMayBeginAtAnyOpenKey) {
    create(L"A");
    registry::KeyHandle below = nullptr;
    ASSERT_EQ(registry::createKey(m_key, L"B\\C", registry::kAllAccess, below), registry::kDone);
    EXPECT_TRUE(registry::keyExists(L"A\\B\\C"));
    registry::closeKey(below);
    ASSERT_EQ(registry::openKey(m_key, L"b", registry::kReadAccess, below), registry::kDone);
    EXPECT_EQ(registry::enumerateKey(below, 0, kRoom, m_name), registry::kDone);
    EXPECT_EQ(m_name, L"C");
    registry::closeKey(below);
}

TEST_F(RegistryKey, KeepsTheBytesOfAnyType) {
    create(L"A");
    const unsigned char bytes[] = {1, 2, 3, 4, 5};
    const std::uint32_t types[] = {
        registry::kTextType, registry::kExpandableTextType, registry::kBinaryType, registry::kNumberType, 11,
        0xFFFFFFFF};
    for (const std::uint32_t type : types)
        ASSERT_EQ(registry::setData(m_key, L"v" + std::to_wstring(type), type, bytes, type % 6),
                  registry::kDone);
    for (std::uint32_t index = 0; index < 6; ++index) {
        ASSERT_EQ(value(index), registry::kDone);
        EXPECT_EQ(m_name, L"v" + std::to_wstring(types[index]));
        EXPECT_EQ(m_type, types[index]);
        EXPECT_EQ(m_size, types[index] % 6);
    }
    EXPECT_EQ(value(6), registry::kNoMoreItems);
}

TEST_F(RegistryKey, WhatIsSetRawIsReadAsAWhole) {
    create(L"A");
    const unsigned char text[] = {'h', 0, 0xDC, 0, 0, 0};
    registry::setData(m_key, L"bare", registry::kTextType, text, 4);
    registry::setData(m_key, L"ended", registry::kExpandableTextType, text, 6);
    registry::setData(m_key, L"other", 11, text, 6);
    registry::Value value;
    ASSERT_EQ(registry::getValue(L"A", L"bare", value), registry::kDone);
    EXPECT_EQ(value.text, L"h\u00DC");
    ASSERT_EQ(registry::getValue(L"A", L"ended", value), registry::kDone);
    EXPECT_EQ(value.type, registry::ValueType::kText);
    EXPECT_EQ(value.text, L"h\u00DC");
    ASSERT_EQ(registry::getValue(L"A", L"other", value), registry::kDone);
    EXPECT_EQ(value.type, registry::ValueType::kBinary);
    EXPECT_EQ(value.binary, std::vector<unsigned char>(text, text + 6));
}

TEST_F(RegistryKey, SettingAgainKeepsThePlaceAndTakesTypeAndSize) {
    create(L"A");
    registry::setData(m_key, L"One", registry::kTextType, "ab", 2);
    registry::setData(m_key, L"Two", registry::kTextType, "ab", 2);
    registry::setData(m_key, L"ONE", registry::kBinaryType, nullptr, 0);
    ASSERT_EQ(value(0), registry::kDone);
    EXPECT_EQ(m_name, L"One");
    EXPECT_EQ(m_type, registry::kBinaryType);
    EXPECT_EQ(m_size, 0u);
}

TEST_F(RegistryKey, KeysBelowComeByNameAndOnlyDirectOnes) {
    create(L"A\\b\\deep");
    create(L"A\\C");
    create(L"A\\a");
    create(L"A");
    std::vector<std::wstring> names;
    for (std::uint32_t index = 0; registry::enumerateKey(m_key, index, kRoom, m_name) == registry::kDone;
         ++index)
        names.push_back(m_name);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"a", L"b", L"C"}));
    EXPECT_EQ(registry::enumerateKey(m_key, 3, kRoom, m_name), registry::kNoMoreItems);
}

TEST_F(RegistryKey, ANameThatFillsTheRoomIsAFailureAndChangesNothing) {
    create(L"A");
    registry::setData(m_key, L"12345", registry::kTextType, "ab", 2);
    EXPECT_NE(value(0, 5), registry::kDone);
    EXPECT_NE(value(0, 5), registry::kNoMoreItems);
    EXPECT_EQ(m_name, L"before");
    EXPECT_EQ(m_type, 77u);
    EXPECT_EQ(m_size, 88u);
    EXPECT_EQ(value(0, 6), registry::kDone);
    create(L"B\\12345");
    create(L"B");
    m_name = L"before";
    EXPECT_NE(registry::enumerateKey(m_key, 0, 5, m_name), registry::kDone);
    EXPECT_EQ(m_name, L"before");
    EXPECT_EQ(registry::enumerateKey(m_key, 0, 6, m_name), registry::kDone);
}

TEST_F(RegistryKey, NamesHaveALongestLength) {
    create(L"A");
    EXPECT_EQ(registry::setData(m_key, std::wstring(16383, L'n'), 1, "", 0), registry::kDone);
    EXPECT_NE(registry::setData(m_key, std::wstring(16384, L'n'), 1, "", 0), registry::kDone);
    registry::KeyHandle below = nullptr;
    EXPECT_EQ(registry::createKey(m_key, std::wstring(255, L'k'), registry::kAllAccess, below),
              registry::kDone);
    registry::closeKey(below);
    EXPECT_NE(registry::createKey(m_key, L"x\\" + std::wstring(256, L'k'), registry::kAllAccess, below),
              registry::kDone);
    EXPECT_EQ(below, nullptr);
    EXPECT_FALSE(registry::keyExists(L"A\\x")) << "all of a path or none of it";
}

TEST_F(RegistryKey, AKeyThatIsDeletedWhileItIsOpenIsNotThere) {
    create(L"A");
    registry::setData(m_key, L"v", 1, "", 0);
    registry::deleteKey(L"A");
    EXPECT_EQ(value(0), registry::kNotFound);
    EXPECT_EQ(registry::enumerateKey(m_key, 0, kRoom, m_name), registry::kNotFound);
    EXPECT_EQ(registry::setData(m_key, L"v", 1, "", 0), registry::kNotFound);
    registry::KeyHandle below = nullptr;
    EXPECT_EQ(registry::createKey(m_key, L"B", registry::kAllAccess, below), registry::kNotFound);
}

TEST_F(RegistryKey, AWalkSeesWhatIsDeletedAndAddedMeanwhile) {
    create(L"A");
    for (const wchar_t* name : {L"1", L"2", L"3", L"4"})
        registry::setData(m_key, name, 1, "", 0);
    ASSERT_EQ(value(0), registry::kDone);
    ASSERT_EQ(value(1), registry::kDone);
    EXPECT_EQ(m_name, L"2");
    registry::deleteValue(L"A", L"1");
    // What was the third is the second now, and so on.
    ASSERT_EQ(value(2), registry::kDone);
    EXPECT_EQ(m_name, L"4");
    EXPECT_EQ(value(3), registry::kNoMoreItems);
    registry::setData(m_key, L"5", 1, "", 0);
    ASSERT_EQ(value(3), registry::kDone);
    EXPECT_EQ(m_name, L"5");
    EXPECT_EQ(value(4), registry::kNoMoreItems);
}

TEST_F(RegistryKey, AWalkThroughKeysSeesWhatIsDeletedAndAddedMeanwhile) {
    for (const wchar_t* path : {L"A\\b", L"A\\c", L"A\\d", L"A"})
        create(path);
    const auto key = [&](std::uint32_t index) {
        return registry::enumerateKey(m_key, index, kRoom, m_name) == registry::kDone ? m_name : L"<none>";
    };
    EXPECT_EQ(key(0), L"b");
    registry::createKey(L"A\\a");
    EXPECT_EQ(key(1), L"b");
    EXPECT_EQ(key(2), L"c");
    registry::deleteKey(L"A\\a");
    EXPECT_EQ(key(2), L"d");
    EXPECT_EQ(key(3), L"<none>");
}

TEST_F(RegistryKey, TwoWalksThroughOneKeyAndStepsInAnyOrderDoNotDisturbEachOther) {
    create(L"A\\sub");
    create(L"A");
    for (const wchar_t* name : {L"1", L"2", L"3"})
        registry::setData(m_key, name, 1, "", 0);
    std::wstring found;
    for (const std::uint32_t index : {0, 1, 2, 1, 2, 0, 0, 1, 2}) {
        ASSERT_EQ(value(index), registry::kDone);
        EXPECT_EQ(m_name, std::to_wstring(index + 1));
        ASSERT_EQ(registry::enumerateKey(m_key, 0, kRoom, found), registry::kDone);
        EXPECT_EQ(found, L"sub");
    }
    // A name that does not fit does not stop the walk.
    ASSERT_EQ(value(0), registry::kDone);
    EXPECT_NE(value(1, 1), registry::kDone);
    ASSERT_EQ(value(1), registry::kDone);
    EXPECT_EQ(m_name, L"2");
}

TEST_F(RegistryKey, AWalkGoesOnInTheFileThatIsTheRegistryNow) {
    create(L"A");
    registry::setData(m_key, L"1", 1, "", 0);
    registry::setData(m_key, L"2", 1, "", 0);
    ASSERT_EQ(value(0), registry::kDone);
    registry::setRegistryFile(platform::joinPath(m_folder, L"other"));
    EXPECT_EQ(value(1), registry::kNotFound);
    registry::createKey(L"A");
    for (const wchar_t* name : {L"x", L"y", L"z"})
        registry::setText(L"A", name, L"");
    ASSERT_EQ(value(1), registry::kDone);
    EXPECT_EQ(m_name, L"y");
}

TEST_F(RegistryKey, AWalkThroughManyValuesMeetsEachOnce) {
    create(L"A");
    constexpr std::uint32_t count = 3000;
    for (std::uint32_t i = 0; i < count; ++i)
        ASSERT_EQ(registry::setData(m_key, std::to_wstring(i), 1, "", 0), registry::kDone);
    for (std::uint32_t i = 0; i < count; ++i) {
        ASSERT_EQ(value(i), registry::kDone);
        ASSERT_EQ(m_name, std::to_wstring(i));
    }
    EXPECT_EQ(value(count), registry::kNoMoreItems);
}

TEST_F(RegistryKey, NoKeyIsAFailure) {
    registry::KeyHandle key = registry::currentUser();
    EXPECT_NE(registry::createKey(nullptr, L"A", registry::kAllAccess, key), registry::kDone);
    EXPECT_EQ(key, nullptr);
    key = registry::currentUser();
    EXPECT_NE(registry::openKey(nullptr, L"A", registry::kReadAccess, key), registry::kDone);
    EXPECT_EQ(key, nullptr);
    EXPECT_NE(registry::setData(nullptr, L"v", 1, "", 0), registry::kDone);
    EXPECT_NE(value(0), registry::kDone);
    EXPECT_NE(registry::enumerateKey(nullptr, 0, kRoom, m_name), registry::kDone);
    registry::closeKey(nullptr);
    registry::closeKey(registry::currentUser());
    EXPECT_TRUE(registry::keyExists(L""));
}

} // namespace
