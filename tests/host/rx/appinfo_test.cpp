#include "appinfo.h"

#include "embedded/demand_load.h"
#include "rx_fixture.h"

namespace {

class AppInfo : public RxFixture {
protected:
    const std::wstring m_key = std::wstring(embedded::rx::kApplicationsKey) + L"\\APP";

    std::vector<std::wstring> valueNames() const {
        std::vector<platform::registry::NamedValue> values;
        EXPECT_EQ(platform::registry::listValues(m_key, values), platform::registry::kDone);
        std::vector<std::wstring> names;
        for (const auto& value : values)
            names.push_back(value.name);
        return names;
    }
};

TEST_F(AppInfo, EntryHoldsWhatWasSet) {
    AcadAppInfo info;
    info.setAppName(L"APP");
    info.setModuleName(L"C:\\x\\y.dbx");
    info.setLoadReason(static_cast<AcadApp::LoadReasons>(9));
    info.setAppDesc(L"Something");
    ASSERT_EQ(info.writeToRegistry(true, false), AcadApp::eOk);

    platform::registry::Value value;
    ASSERT_EQ(platform::registry::getValue(m_key, L"LOADER", value), platform::registry::kDone);
    EXPECT_EQ(value.text, L"C:\\x\\y.dbx");
    ASSERT_EQ(platform::registry::getValue(m_key, L"LOADCTRLS", value), platform::registry::kDone);
    EXPECT_EQ(value.type, platform::registry::ValueType::kNumber);
    EXPECT_EQ(value.number, 9u);

    AcadAppInfo back;
    back.setAppName(L"app");
    ASSERT_EQ(back.readFromRegistry(), AcadApp::eOk);
    EXPECT_STREQ(back.moduleName(), L"C:\\x\\y.dbx");
    EXPECT_STREQ(back.appDesc(), L"Something");
    EXPECT_EQ(back.loadReason(), 9);
}

TEST_F(AppInfo, NameAloneMakesAnEmptyEntry) {
    AcadAppInfo info;
    info.setAppName(L"APP");
    ASSERT_EQ(info.writeToRegistry(true, false), AcadApp::eOk);
    EXPECT_TRUE(platform::registry::keyExists(m_key));
    EXPECT_TRUE(valueNames().empty());
}

TEST_F(AppInfo, ReasonWithoutAModule) {
    AcadAppInfo info;
    info.setAppName(L"APP");
    info.setLoadReason(AcadApp::kOnLoadRequest);
    ASSERT_EQ(info.writeToRegistry(true, false), AcadApp::eOk);
    EXPECT_EQ(valueNames(), std::vector<std::wstring>{L"LOADCTRLS"});
}

TEST_F(AppInfo, WritingAgainTakesAwayWhatIsNotSet) {
    AcadAppInfo info;
    info.setAppName(L"APP");
    info.setModuleName(L"y.dbx");
    info.setAppDesc(L"Something");
    info.setLoadReason(AcadApp::kOnLoadRequest);
    ASSERT_EQ(info.writeToRegistry(), AcadApp::eOk);
    AcadAppInfo other;
    other.setAppName(L"APP");
    ASSERT_EQ(other.writeToRegistry(false), AcadApp::eOk);
    EXPECT_EQ(valueNames().size(), 3u);
    ASSERT_EQ(other.writeToRegistry(true), AcadApp::eOk);
    EXPECT_TRUE(valueNames().empty());
}

TEST_F(AppInfo, FailuresAreTold) {
    AcadAppInfo info;
    EXPECT_EQ(info.writeToRegistry(), AcadApp::eNoName);
    EXPECT_EQ(info.readFromRegistry(), AcadApp::eNoName);
    info.setAppName(L"APP");
    EXPECT_EQ(info.readFromRegistry(), AcadApp::eRegistryOpen);
    EXPECT_EQ(info.delFromRegistry(), AcadApp::eRegistryOpen);
    ASSERT_EQ(info.writeToRegistry(), AcadApp::eOk);
    EXPECT_EQ(info.delFromRegistry(), AcadApp::eOk);
    EXPECT_FALSE(platform::registry::keyExists(m_key));
}

} // namespace
