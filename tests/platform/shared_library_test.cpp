#include "platform/shared_library.h"

#include "platform/files.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <cwchar>

namespace {

const std::wstring kLibrary = platform::fromUtf8(TEST_LIBRARY);

platform::ModuleHandle opened() {
    std::wstring failure;
    return platform::openLibrary(kLibrary, failure);
}

TEST(SharedLibrary, OpensAndFindsExportedNames) {
    const platform::ModuleHandle module = opened();
    ASSERT_NE(module, nullptr);
    auto* answer = reinterpret_cast<int (*)()>(platform::librarySymbol(module, "answer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(platform::librarySymbol(module, "noSuchName"), nullptr);
}

TEST(SharedLibrary, TellsWhyItCannotOpen) {
    std::wstring failure;
    EXPECT_EQ(platform::openLibrary(L"/nowhere/at all.dbx", failure), nullptr);
    EXPECT_NE(failure.find(L"/nowhere/at all.dbx"), std::wstring::npos);
}

TEST(SharedLibrary, HandleByNameIgnoresCaseAndFolders) {
    const platform::ModuleHandle module = opened();
    EXPECT_EQ(platform::moduleHandle(L"Platform_Test.dbx"), module);
    EXPECT_EQ(platform::moduleHandle(L"PLATFORM_TEST.DBX"), module);
    EXPECT_EQ(platform::moduleHandle(kLibrary.c_str()), module);
    EXPECT_EQ(platform::moduleHandle(L"platform_test"), nullptr);
    EXPECT_EQ(platform::moduleHandle(L""), nullptr);
}

TEST(SharedLibrary, FileNameIsTheWholePath) {
    wchar_t buffer[platform::kMaxModulePath];
    const std::size_t length = platform::moduleFileName(opened(), buffer);
    EXPECT_EQ(std::wstring(buffer, length), platform::realPath(kLibrary));
    EXPECT_EQ(buffer[length], L'\0');
}

TEST(SharedLibrary, FileNameIsCutToTheBuffer) {
    wchar_t buffer[8];
    EXPECT_EQ(platform::moduleFileName(opened(), buffer, 8), 7u);
    EXPECT_EQ(std::wstring(buffer), platform::realPath(kLibrary).substr(0, 7));
}

TEST(SharedLibrary, FileNameOfNoModuleIsEmpty) {
    int stranger = 0;
    wchar_t buffer[4] = L"abc";
    EXPECT_EQ(platform::moduleFileName(&stranger, buffer, 4), 0u);
    EXPECT_EQ(buffer[0], L'\0');
}

TEST(SharedLibrary, NullHandleIsTheProgram) {
    EXPECT_EQ(platform::modulePath(nullptr), platform::programPath());
    EXPECT_EQ(platform::bareNameOf(platform::programPath()), L"tests_platform");
}

TEST(SharedLibrary, StaticInitialiserFindsItsOwnModule) {
    const platform::ModuleHandle module = opened();
    auto* path = reinterpret_cast<const wchar_t* (*)()>(platform::librarySymbol(module, "pathAtStart"));
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(std::wstring(path()), platform::realPath(kLibrary));
}

TEST(SharedLibrary, AddressTellsItsModule) {
    const void* address = platform::librarySymbol(opened(), "answer");
    EXPECT_EQ(platform::modulePathOfAddress(address), platform::realPath(kLibrary));
}

} // namespace
