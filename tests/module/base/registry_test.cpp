#include "base/registry.h"

#include "platform/files.h"
#include "platform/system_messages.h"
#include "support/registry_tree.h"

#include <gtest/gtest.h>

#include <system_error>

using orv::registry;
using testing_support::WideErrorRecorder;

namespace calls = platform::registry;

namespace {

std::wstring line(const wchar_t* operation, std::errc error) {
    return operation + platform::systemMessage(static_cast<int>(error)) + L"\n";
}

class ModuleRegistry : public testing_support::RegistryTreeTest {
protected:
    static bool setValue(const std::wstring& node, const std::wstring& name, std::uint32_t type = 1,
                         std::uint32_t size = 2) {
        return registry::set(calls::currentUser(), kWideBase + node, name, type, "abcdefgh", size);
    }

    using Entries = std::vector<std::pair<std::wstring, std::uint32_t>>;

    static Entries walk(const std::wstring& node = L"") {
        Entries entries;
        registry::iterator entry(calls::currentUser(), kWideBase + node);
        for (; !entry.atEnd(); entry.next())
            entries.emplace_back(entry.name(), entry.kind());
        return entries;
    }
};

// Makes the registry's file one that is none, and brings the good one back.
class SpoiltRegistry {
public:
    SpoiltRegistry() : m_good(calls::registryFile()), m_folder(platform::makeTemporaryFolder()) {
        const std::wstring file = platform::joinPath(m_folder, L"registry");
        const std::string junk(100, 'x');
        platform::replaceFile(file, junk.data(), junk.size());
        calls::setRegistryFile(file);
    }
    ~SpoiltRegistry() {
        calls::setRegistryFile(m_good);
        platform::removeFile(platform::joinPath(m_folder, L"registry"));
    }
    SpoiltRegistry(const SpoiltRegistry&) = delete;
    SpoiltRegistry& operator=(const SpoiltRegistry&) = delete;

private:
    std::wstring m_good;
    std::wstring m_folder;
};

} // namespace

TEST_F(ModuleRegistry, SetMakesTheKeyAndTakesTheBytesAsTheyAre) {
    const WideErrorRecorder errors;
    EXPECT_TRUE(setValue(L"\\a\\b", L"text", 1, 4));
    EXPECT_TRUE(setValue(L"\\a\\b", L"odd", 1, 3));
    EXPECT_TRUE(setValue(L"\\a\\b", L"none", 7, 0));
    EXPECT_EQ(storedValues(L"\\a\\b"), (std::vector<std::wstring>{L"text 1 4", L"odd 1 3", L"none 7 0"}));
    EXPECT_EQ(errors.text(), L"");
}

TEST_F(ModuleRegistry, AKeyThatCannotBeMadeIsToldInOneLine) {
    const WideErrorRecorder errors;
    const SpoiltRegistry spoilt;
    EXPECT_FALSE(setValue(L"\\a", L"v"));
    EXPECT_EQ(errors.text(), line(L"registry::set(): ", std::errc::io_error));
}

TEST_F(ModuleRegistry, AValueThatCannotBeSetIsToldInOneLine) {
    const WideErrorRecorder errors;
    EXPECT_FALSE(setValue(L"\\a", std::wstring(20000, L'n')));
    EXPECT_EQ(errors.text(), line(L"registry::set(): ", std::errc::filename_too_long));
    EXPECT_TRUE(calls::keyExists(std::wstring(kWideBase) + L"\\a"));
}

TEST_F(ModuleRegistry, ARootThatIsNoneIsAFailure) {
    const WideErrorRecorder errors;
    EXPECT_FALSE(registry::set(nullptr, L"a", L"v", 1, "", 0));
    EXPECT_EQ(errors.text(), line(L"registry::set(): ", std::errc::bad_file_descriptor));
    EXPECT_TRUE(registry::iterator(nullptr, L"a").atEnd());
}

TEST_F(ModuleRegistry, AnIteratorOnAMissingKeyIsAtItsEndAtOnce) {
    const WideErrorRecorder errors;
    registry::iterator entry(calls::currentUser(), kWideBase);
    EXPECT_TRUE(entry.atEnd());
    EXPECT_EQ(entry.kind(), 0x10000000u);
    EXPECT_EQ(entry.name(), L"");
    entry.next();
    EXPECT_TRUE(entry.atEnd());
    EXPECT_EQ(errors.text(), L"");
}

TEST_F(ModuleRegistry, AnEmptyKeyHasNoEntries) {
    const WideErrorRecorder errors;
    calls::createKey(kWideBase);
    EXPECT_TRUE(walk().empty());
    EXPECT_EQ(errors.text(), L"");
}

TEST_F(ModuleRegistry, EachTypeOfValueHasItsKind) {
    const std::pair<std::uint32_t, std::uint32_t> kinds[] = {
        {1, 4}, {2, 8}, {3, 1}, {4, 2}, {0, 0x10000000}, {5, 0x10000000}, {7, 0x10000000}, {11, 0x10000000}};
    for (const auto& [type, kind] : kinds)
        setValue(L"", L"v" + std::to_wstring(type), type, type % 5);
    registry::iterator entry(calls::currentUser(), kWideBase);
    for (const auto& [type, kind] : kinds) {
        ASSERT_FALSE(entry.atEnd());
        EXPECT_EQ(entry.name(), L"v" + std::to_wstring(type));
        EXPECT_EQ(entry.kind(), kind);
        EXPECT_EQ(entry.dataSize(), type % 5);
        entry.next();
    }
    EXPECT_TRUE(entry.atEnd());
}

TEST_F(ModuleRegistry, ValuesComeBeforeTheKeysBelow) {
    setValue(L"\\node b", L"x");
    setValue(L"\\Node a", L"x");
    setValue(L"", L"__type");
    EXPECT_EQ(walk(), (Entries{{L"__type", 4}, {L"Node a", 16}, {L"node b", 16}}));
}

TEST_F(ModuleRegistry, AKeyWithoutValuesBeginsWithTheKeysBelow) {
    setValue(L"\\only", L"x");
    EXPECT_EQ(walk(), (Entries{{L"only", 16}}));
}

TEST_F(ModuleRegistry, TheEndHasNoEntry) {
    setValue(L"", L"x");
    registry::iterator entry(calls::currentUser(), kWideBase);
    EXPECT_EQ(entry.kind(), 4u);
    entry.next();
    EXPECT_TRUE(entry.atEnd());
    EXPECT_EQ(entry.kind(), 0x10000000u);
    EXPECT_EQ(entry.name(), L"");
}

TEST_F(ModuleRegistry, ANameOf254UnitsIsTheLongestThatAWalkTakes) {
    setValue(L"\\" + std::wstring(254, L'k'), L"x");
    EXPECT_EQ(walk(), (Entries{{std::wstring(254, L'k'), 16}}));
    setValue(L"\\" + std::wstring(255, L'k'), L"x");
    setValue(L"", std::wstring(16382, L'v'));
    const WideErrorRecorder errors;
    EXPECT_EQ(walk(), (Entries{{std::wstring(16382, L'v'), 4}, {std::wstring(254, L'k'), 16}}));
    EXPECT_EQ(errors.text(), line(L"registry::iterator::next(): ", std::errc::filename_too_long));
}

TEST_F(ModuleRegistry, AFailureOnTheWayEndsTheWalkWithOneLine) {
    setValue(L"", L"one");
    setValue(L"", L"two");
    registry::iterator entry(calls::currentUser(), kWideBase);
    ASSERT_EQ(entry.name(), L"one");
    const WideErrorRecorder errors;
    {
        const SpoiltRegistry spoilt;
        entry.next();
    }
    EXPECT_TRUE(entry.atEnd());
    EXPECT_EQ(entry.kind(), 0x10000000u);
    EXPECT_EQ(errors.text(), line(L"registry::iterator::next(): ", std::errc::io_error));
    entry.next();
    EXPECT_EQ(errors.text(), line(L"registry::iterator::next(): ", std::errc::io_error));
}

TEST_F(ModuleRegistry, AHeldValueGoesWithTheStep) {
    setValue(L"", L"one");
    setValue(L"", L"two");
    unsigned char own[] = {1, 2};
    registry::iterator entry(calls::currentUser(), kWideBase);
    EXPECT_EQ(entry.held(), nullptr);
    entry.hold(own, false);
    EXPECT_EQ(entry.held(), own);
    entry.next();
    EXPECT_EQ(entry.held(), nullptr);
    entry.hold(new unsigned char[4], true);
    entry.hold(new unsigned char[4], true);
    entry.next();
    EXPECT_EQ(entry.held(), nullptr);
}

TEST_F(ModuleRegistry, AClosedWalkIsAtItsEnd) {
    setValue(L"", L"one");
    registry::iterator entry(calls::currentUser(), kWideBase);
    entry.close();
    EXPECT_TRUE(entry.atEnd());
    entry.close();
    entry.next();
    EXPECT_EQ(entry.name(), L"");
}
