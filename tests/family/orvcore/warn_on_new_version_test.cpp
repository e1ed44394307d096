#include "orvcore/warn_on_new_version.h"

#include "embedded/console.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class WarnOnNewVersion : public testing::Test {
protected:
    WarnOnNewVersion() {
        orv_forgetNewVersionWarnings();
        m_before = orv_setNewVersionSink([this](const ORV_NewVersionWarning& w) { warnings.push_back(w); });
    }
    ~WarnOnNewVersion() override {
        orv_setNewVersionSink(m_before);
        orv_forgetNewVersionWarnings();
    }

    std::vector<ORV_NewVersionWarning> warnings;

private:
    ORV_NewVersionSink m_before;
};

} // namespace

TEST_F(WarnOnNewVersion, SaysNothingOfTheSameAndOfOlderVersions) {
    orv_warnOnNewVersion(1, 1, CString(L"A"));
    orv_warnOnNewVersion(0, 1, CString(L"A"));
    orv_warnOnNewVersion(-1, 0, CString(L"A"));
    EXPECT_TRUE(warnings.empty());
}

TEST_F(WarnOnNewVersion, WarnsOncePerNameAndVersion) {
    orv_warnOnNewVersion(2, 1, CString(L"A"));
    orv_warnOnNewVersion(2, 1, CString(L"A"));
    orv_warnOnNewVersion(3, 1, CString(L"A"));
    orv_warnOnNewVersion(2, 1, CString(L"B"));
    ASSERT_EQ(warnings.size(), 3u);
    EXPECT_EQ(warnings[0].version, 2);
    EXPECT_EQ(warnings[0].current, 1);
    EXPECT_TRUE(warnings[0].name == L"A");
    EXPECT_EQ(warnings[1].version, 3);
    EXPECT_TRUE(warnings[2].name == L"B");
}

TEST_F(WarnOnNewVersion, TakesTheHighestUnsignedVersionAsHigh) {
    orv_warnOnNewVersion(0xFFFFFFFFu, 1, CString(L"A"));
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_EQ(warnings[0].version, 4294967295);
}

TEST_F(WarnOnNewVersion, PrintsALineOnTheConsoleWithoutASink) {
    std::wstring printed;
    const auto console = embedded::setConsoleSink([&](const std::wstring& text) { printed += text; });
    orv_setNewVersionSink(ORV_NewVersionSink());
    orv_warnOnNewVersion(9, 4, CString(L"Taldork.ARX"));
    embedded::setConsoleSink(console);
    EXPECT_NE(printed.find(L"Taldork.ARX"), std::wstring::npos);
    EXPECT_NE(printed.find(L"version 9"), std::wstring::npos);
    EXPECT_NE(printed.find(L"newer than 4"), std::wstring::npos);
}
