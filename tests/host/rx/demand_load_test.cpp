#include "embedded/demand_load.h"

#include "embedded/linker.h"
#include "rx_fixture.h"
#include "rxregsvc.h"

#include <algorithm>

namespace {

using embedded::rx::demandLoad;

class DemandLoad : public RxFixture {
protected:
    static void enter(const wchar_t* appName, const std::wstring& module, int reason) {
        AcadAppInfo info;
        info.setAppName(appName);
        info.setModuleName(module.c_str());
        info.setLoadReason(static_cast<AcadApp::LoadReasons>(reason));
        ASSERT_EQ(info.writeToRegistry(true, false), AcadApp::eOk);
    }
};

TEST_F(DemandLoad, LoadsOnTheOccasionsOfTheEntry) {
    enter(L"RX_TEST", L"Rx_Plain.dbx", AcadApp::kOnProxyDetection);
    EXPECT_FALSE(demandLoad(L"RX_TEST", AcadApp::kOnLoadRequest));
    EXPECT_TRUE(loaded().empty());
    EXPECT_TRUE(demandLoad(L"RX_TEST", AcadApp::kOnProxyDetection));
    EXPECT_TRUE(demandLoad(L"rx_test", AcadApp::kOnProxyDetection));
    EXPECT_EQ(loaded().size(), 1u);
}

TEST_F(DemandLoad, NineIsProxyDetectionAndLoadRequest) {
    std::wstring path = inBin(L"Rx_Plain.dbx");
    std::replace(path.begin(), path.end(), L'/', L'\\');
    enter(L"RX_TEST", path, 9);
    EXPECT_FALSE(demandLoad(L"RX_TEST", AcadApp::kOnAutoCADStartup));
    EXPECT_TRUE(demandLoad(L"RX_TEST", AcadApp::kOnLoadRequest));
    EXPECT_TRUE(acrxUnloadApp(L"RX_TEST"));
    EXPECT_TRUE(demandLoad(L"RX_TEST", AcadApp::kOnProxyDetection));
}

TEST_F(DemandLoad, DescriptionBehindTheNameIsLeftOut) {
    enter(L"RX_TEST", L"Rx_Plain.dbx", 9);
    EXPECT_TRUE(demandLoad(L"RX_TEST|Product: anything at all", AcadApp::kOnProxyDetection));
}

TEST_F(DemandLoad, NothingToLoadIsNoLoad) {
    EXPECT_FALSE(demandLoad(L"RX_TEST", AcadApp::kOnProxyDetection));
    EXPECT_FALSE(demandLoad(L"", AcadApp::kOnProxyDetection));
    enter(L"RX_TEST", L"", 9);
    EXPECT_FALSE(demandLoad(L"RX_TEST", AcadApp::kOnProxyDetection));
    enter(L"RX_TEST", L"no_such_module.dbx", 9);
    EXPECT_FALSE(demandLoad(L"RX_TEST", AcadApp::kOnProxyDetection));
    enter(L"RX_TEST", L"Rx_Plain.dbx", 9 | AcadApp::kLoadDisabled);
    EXPECT_FALSE(demandLoad(L"RX_TEST", AcadApp::kOnProxyDetection));
}

TEST_F(DemandLoad, IsNeverRecursive) {
    enter(L"RX_TEST", L"rx_partner.dbx", 9);
    ASSERT_TRUE(load(L"rx_partner.dbx"));
    ASSERT_TRUE(unload(L"rx_partner.dbx"));
    bool inner = true;
    journal(L"rx_partner.dbx")->onInit = [&] { inner = demandLoad(L"Rx_Test", AcadApp::kOnLoadRequest); };
    EXPECT_TRUE(demandLoad(L"RX_TEST", AcadApp::kOnLoadRequest));
    EXPECT_FALSE(inner);
}

TEST_F(DemandLoad, LinkerLoadsByApplicationName) {
    enter(L"RX_TEST", L"Rx_Plain.dbx", AcadApp::kOnLoadRequest);
    EXPECT_FALSE(acrxLoadApp(L"RX_OTHER"));
    EXPECT_NE(embedded::rx::lastLinkerFailure().find(L"RX_OTHER"), std::wstring::npos);
    EXPECT_TRUE(acrxLoadApp(L"RX_TEST"));
    EXPECT_TRUE(acrxUnloadApp(L"RX_TEST"));
    EXPECT_FALSE(acrxUnloadApp(L"RX_OTHER"));
}

} // namespace
