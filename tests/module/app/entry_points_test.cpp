#include "app/taldork_dbx_application.h"
#include "embedded/applications.h"
#include "platform/export.h"
#include "rxdefs.h"
#include "rxdict.h"
#include "rxdlinkr.h"
#include "support/linker_recorder.h"

#include <gtest/gtest.h>

#include <algorithm>

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet);
extern "C" int acrxGetApiVersion();

using testing_support::Calls;
using testing_support::LinkerRecorder;

namespace {

bool isLoaded() {
    const auto applications = embedded::applications();
    return std::any_of(
        applications.begin(), applications.end(), [](const embedded::Application& application) {
            return application.name == L"taldork191_x64.dbx" && !application.locked && application.mdiAware;
        });
}

} // namespace

TEST(EntryPoints, TheVersionWordIsThatOfTheRelease) { EXPECT_EQ(acrxGetApiVersion(), 0x130000); }

TEST(EntryPoints, AMessageOf16OrMoreTouchesNothing) {
    LinkerRecorder linker;
    for (const int message : {16, 17, 1000, -1})
        EXPECT_EQ(acrxEntryPoint(static_cast<AcRx::AppMsgCode>(message), nullptr), AcRx::kRetOK);
    EXPECT_TRUE(linker.calls().empty());
}

TEST(EntryPoints, MessagesReachTheirOperations) {
    LinkerRecorder linker;
    EXPECT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, nullptr), AcRx::kRetOK);
    EXPECT_EQ(linker.calls().front(), "unlock");
    linker.clear();
    for (int message = 2; message <= 15; ++message)
        EXPECT_EQ(acrxEntryPoint(static_cast<AcRx::AppMsgCode>(message), nullptr), AcRx::kRetOK);
    EXPECT_TRUE(linker.calls().empty());
    EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr), AcRx::kRetOK);
    EXPECT_EQ(linker.calls().front(), "unload taldork.arx");
}

TEST(EntryPoints, TheHostLoadsAndUnloadsTheModuleByItsName) {
    AcRxDynamicLinker* const linker = acrxDynamicLinker;
    ASSERT_NE(linker, nullptr);
    ASSERT_TRUE(linker->loadModule(L"taldork191_x64.dbx", false));
    EXPECT_TRUE(isLoaded());
    EXPECT_TRUE(linker->unloadModule(L"taldork191_x64.dbx"));
    EXPECT_FALSE(isLoaded());
}
