#include "orvcore/read_key.h"

#include "platform/files.h"
#include "platform/registry.h"

#include <gtest/gtest.h>

namespace {

class ReadKey : public testing::Test {
protected:
    ReadKey() : m_folder(platform::makeTemporaryFolder()) {
        platform::registry::setRegistryFile(platform::joinPath(m_folder, L"registry"));
        platform::registry::createKey(L"Software\\Test");
    }
    ~ReadKey() override { platform::registry::setRegistryFile(L""); }

private:
    std::wstring m_folder;
};

} // namespace

TEST_F(ReadKey, ReadsAText) {
    platform::registry::setText(L"Software\\Test", L"name", L"v\u00e4lue");
    std::wstring out;
    EXPECT_EQ(orv_readKey(out, L"name", L"Software\\Test"), 0);
    EXPECT_EQ(out, L"v\u00e4lue");
}

TEST_F(ReadKey, LeavesTheTextAloneWhenThereIsNoValue) {
    std::wstring out = L"before";
    EXPECT_EQ(orv_readKey(out, L"absent", L"Software\\Test"), 2);
    EXPECT_EQ(orv_readKey(out, L"name", L"Software\\Absent"), 2);
    EXPECT_EQ(out, L"before");
}

TEST_F(ReadKey, RefusesAValueThatIsNoText) {
    platform::registry::setNumber(L"Software\\Test", L"number", 7);
    std::wstring out = L"before";
    EXPECT_EQ(orv_readKey(out, L"number", L"Software\\Test"), 1630);
    EXPECT_EQ(out, L"before");
}
