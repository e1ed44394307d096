#include "platform/registry.h"

#include "platform/files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace {

namespace registry = platform::registry;

class Registry : public testing::Test {
protected:
    void SetUp() override { registry::setRegistryFile(platform::joinPath(m_folder, L"sub/registry")); }
    void TearDown() override {
        registry::setRegistryFile(L"");
        std::filesystem::remove_all(m_folder);
    }

    std::wstring text(const wchar_t* path, const wchar_t* name) {
        registry::Value value;
        return registry::getValue(path, name, value) == registry::kDone ? value.text : L"<none>";
    }

    const std::wstring m_folder = platform::makeTemporaryFolder();
};

TEST_F(Registry, LookingMakesNoFile) {
    registry::Value value;
    std::vector<std::wstring> names;
    EXPECT_EQ(registry::getValue(L"A", L"x", value), registry::kNotFound);
    EXPECT_EQ(registry::listKeys(L"A", names), registry::kNotFound);
    EXPECT_FALSE(registry::keyExists(L"A"));
    EXPECT_EQ(registry::deleteKey(L"A"), registry::kNotFound);
    EXPECT_FALSE(platform::fileExists(registry::registryFile()));
}

TEST_F(Registry, KeepsEveryTypeOfValue) {
    ASSERT_EQ(registry::createKey(L"Software\\X"), registry::kDone);
    registry::Value binary;
    binary.type = registry::ValueType::kBinary;
    binary.binary = {0, 255, 7};
    EXPECT_EQ(registry::setText(L"Software\\X", L"t", std::wstring_view(L"\u00E4\0b", 3)), registry::kDone);
    EXPECT_EQ(registry::setNumber(L"Software\\X", L"n", 0xFEDCBA98), registry::kDone);
    EXPECT_EQ(registry::setValue(L"Software\\X", L"b", binary), registry::kDone);

    std::vector<registry::NamedValue> values;
    ASSERT_EQ(registry::listValues(L"software\\x", values), registry::kDone);
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(values[0].name, L"t");
    EXPECT_EQ(values[0].value.text, std::wstring(L"\u00E4\0b", 3));
    EXPECT_EQ(values[1].value.type, registry::ValueType::kNumber);
    EXPECT_EQ(values[1].value.number, 0xFEDCBA98);
    EXPECT_EQ(values[2].value.type, registry::ValueType::kBinary);
    EXPECT_EQ(values[2].value.binary, binary.binary);
}

TEST_F(Registry, NamesIgnoreCaseButKeepTheirs) {
    registry::createKey(L"Software\\Host");
    registry::createKey(L"SOFTWARE\\HOST\\Apps");
    registry::setText(L"software\\host", L"Name", L"one");
    registry::setText(L"Software\\Host", L"NAME", L"two");
    std::vector<std::wstring> names;
    EXPECT_EQ(registry::listKeys(L"", names), registry::kDone);
    EXPECT_EQ(names, std::vector<std::wstring>{L"Software"});
    EXPECT_EQ(registry::listKeys(L"SOFTWARE\\host", names), registry::kDone);
    EXPECT_EQ(names, std::vector<std::wstring>{L"Apps"});
    std::vector<registry::NamedValue> values;
    registry::listValues(L"software\\host", values);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0].name, L"Name");
    EXPECT_EQ(values[0].value.text, L"two");
}

TEST_F(Registry, AValueNeedsItsKey) {
    EXPECT_EQ(registry::setText(L"None", L"x", L"y"), registry::kNotFound);
    registry::createKey(L"None");
    EXPECT_EQ(registry::setText(L"None", L"", L"own"), registry::kDone);
    EXPECT_EQ(text(L"None", L""), L"own");
}

TEST_F(Registry, DeletesAKeyWithAllBelowAndNothingBeside) {
    registry::createKey(L"A\\B\\C");
    registry::createKey(L"A\\BB");
    registry::createKey(L"A\\B]");
    registry::setText(L"A\\B\\C", L"x", L"below");
    registry::setText(L"A\\BB", L"x", L"beside");
    EXPECT_EQ(registry::deleteKey(L"a\\b"), registry::kDone);
    EXPECT_FALSE(registry::keyExists(L"A\\B"));
    EXPECT_FALSE(registry::keyExists(L"A\\B\\C"));
    EXPECT_TRUE(registry::keyExists(L"A\\B]"));
    EXPECT_EQ(text(L"A\\BB", L"x"), L"beside");
    registry::createKey(L"A\\B\\C");
    EXPECT_EQ(text(L"A\\B\\C", L"x"), L"<none>");
}

TEST_F(Registry, DeletesAValue) {
    registry::createKey(L"A");
    registry::setNumber(L"A", L"x", 1);
    EXPECT_EQ(registry::deleteValue(L"A", L"X"), registry::kDone);
    EXPECT_EQ(registry::deleteValue(L"A", L"X"), registry::kNotFound);
}

TEST_F(Registry, BackslashesAroundAPathDoNotCount) {
    ASSERT_EQ(registry::createKey(L"\\\\A\\\\B\\"), registry::kDone);
    EXPECT_EQ(registry::setText(L"\\A\\B", L"x", L"y"), registry::kDone);
    EXPECT_EQ(text(L"A\\B", L"x"), L"y");
    EXPECT_TRUE(registry::keyExists(L"\\A\\B"));
    EXPECT_EQ(registry::deleteKey(L"\\A\\B"), registry::kDone);
    EXPECT_FALSE(registry::keyExists(L"A\\B"));
}

TEST_F(Registry, PathsAndNamesEndAtTheirFirstZero) {
    const std::wstring_view path(L"A\0B", 3), name(L"x\0y", 3);
    ASSERT_EQ(registry::createKey(path), registry::kDone);
    EXPECT_EQ(registry::setText(path, name, L"one"), registry::kDone);
    EXPECT_EQ(text(L"A", L"x"), L"one");
    EXPECT_EQ(registry::setText(L"A", L"x", L"two"), registry::kDone);
    registry::Value value;
    ASSERT_EQ(registry::getValue(path, std::wstring_view(L"X\0z", 3), value), registry::kDone);
    EXPECT_EQ(value.text, L"two");
    std::vector<registry::NamedValue> values;
    ASSERT_EQ(registry::listValues(path, values), registry::kDone);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0].name, L"x");
    EXPECT_EQ(registry::deleteValue(path, name), registry::kDone);
    EXPECT_EQ(text(L"A", L"x"), L"<none>");
    EXPECT_EQ(registry::deleteKey(path), registry::kDone);
    EXPECT_FALSE(registry::keyExists(L"A"));
}

TEST_F(Registry, TheRootIsNotDeleted) {
    registry::createKey(L"A");
    registry::setText(L"", L"x", L"own");
    for (const std::wstring_view path :
         {std::wstring_view(L""), std::wstring_view(L"\\"), std::wstring_view(L"\0A", 2)})
        EXPECT_EQ(registry::deleteKey(path), registry::kNotFound);
    EXPECT_TRUE(registry::keyExists(L"A"));
    EXPECT_EQ(text(L"", L"x"), L"own");
}

TEST_F(Registry, AFileThatIsNoRegistryIsAFailure) {
    ASSERT_TRUE(platform::makeFolders(platform::folderOf(registry::registryFile())));
    const char junk[] = "this is no registry, but it is long enough to be read as the beginning of a file";
    ASSERT_TRUE(platform::replaceFile(registry::registryFile(), junk, sizeof(junk)));
    EXPECT_NE(registry::createKey(L"A"), registry::kDone);
    std::vector<unsigned char> bytes;
    ASSERT_TRUE(platform::readFile(registry::registryFile(), bytes));
    EXPECT_EQ(bytes.size(), sizeof(junk));
}

TEST_F(Registry, AFileThatWentAwayIsMadeAnew) {
    registry::createKey(L"A");
    std::filesystem::remove_all(platform::folderOf(registry::registryFile()));
    EXPECT_FALSE(registry::keyExists(L"A"));
    EXPECT_EQ(registry::createKey(L"B"), registry::kDone);
    EXPECT_TRUE(registry::keyExists(L"B"));
}

TEST_F(Registry, TwoFilesAreTwoRegistries) {
    registry::createKey(L"A");
    const std::wstring first = registry::registryFile();
    registry::setRegistryFile(platform::joinPath(m_folder, L"other"));
    EXPECT_FALSE(registry::keyExists(L"A"));
    registry::setRegistryFile(first);
    EXPECT_TRUE(registry::keyExists(L"A"));
}

// Puts an environment variable back at its end.
class KeptVariable {
public:
    explicit KeptVariable(const char* name) : m_name(name), m_wasSet(std::getenv(name) != nullptr) {
        if (m_wasSet)
            m_value = std::getenv(name);
    }
    ~KeptVariable() {
        if (m_wasSet)
            setenv(m_name, m_value.c_str(), 1);
        else
            unsetenv(m_name);
    }
    KeptVariable(const KeptVariable&) = delete;
    KeptVariable& operator=(const KeptVariable&) = delete;

private:
    const char* m_name;
    bool m_wasSet;
    std::string m_value;
};

TEST_F(Registry, TheEnvironmentNamesTheFile) {
    const KeptVariable own("TALDORK_REGISTRY");
    const KeptVariable settings("XDG_CONFIG_HOME");
    const KeptVariable home("HOME");
    registry::setRegistryFile(L"");
    setenv("TALDORK_REGISTRY", "/somewhere/registry", 1);
    EXPECT_EQ(registry::registryFile(), L"/somewhere/registry");
    unsetenv("TALDORK_REGISTRY");
    setenv("XDG_CONFIG_HOME", "/settings", 1);
    EXPECT_EQ(registry::registryFile(), L"/settings/taldork/registry");
    unsetenv("XDG_CONFIG_HOME");
    setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(registry::registryFile(), L"/home/someone/.config/taldork/registry");
    unsetenv("HOME");
    EXPECT_EQ(registry::registryFile().front(), L'/');
}

} // namespace
