#include "app/entry_points.h"

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

// The message of a rank, wherever the host's numbers begin.
AcRx::AppMsgCode messageOf(int rank) { return static_cast<AcRx::AppMsgCode>(AcRx::kInitAppMsg + rank); }

// Notes the operation that is called and with what.
struct Noting : AcRxDbxApp {
    int called = -1;
    void* packet = nullptr;

    // Three codes in turn, none of them 0.
    static int codeOf(int number) { return 1 + number % 3; }

    AcRx::AppRetCode note(int number, void* with) {
        called = number;
        packet = with;
        return static_cast<AcRx::AppRetCode>(codeOf(number));
    }
    AcRx::AppRetCode On_kInitAppMsg(void* with) override { return note(0, with); }
    AcRx::AppRetCode On_kUnloadAppMsg(void* with) override { return note(1, with); }
    AcRx::AppRetCode On_kLoadDwgMsg(void* with) override { return note(2, with); }
    AcRx::AppRetCode On_kUnloadDwgMsg(void* with) override { return note(3, with); }
    AcRx::AppRetCode On_kInvkSubrMsg(void* with) override { return note(4, with); }
    AcRx::AppRetCode On_kCfgMsg(void* with) override { return note(5, with); }
    AcRx::AppRetCode On_kEndMsg(void* with) override { return note(6, with); }
    AcRx::AppRetCode On_kQuitMsg(void* with) override { return note(7, with); }
    AcRx::AppRetCode On_kSaveMsg(void* with) override { return note(8, with); }
    AcRx::AppRetCode On_kDependencyMsg(void* with) override { return note(9, with); }
    AcRx::AppRetCode On_kNoDependencyMsg(void* with) override { return note(10, with); }
    AcRx::AppRetCode On_kOleUnloadAppMsg(void* with) override { return note(11, with); }
    AcRx::AppRetCode On_kPreQuitMsg(void* with) override { return note(12, with); }
    AcRx::AppRetCode On_kInitDialogMsg(void* with) override { return note(13, with); }
    AcRx::AppRetCode On_kEndDialogMsg(void* with) override { return note(14, with); }
    AcRx::AppRetCode On_kSuspendMsg(void* with) override { return note(15, with); }
    void RegisterServerComponents() override { called = 100; }
};

} // namespace

TEST(EntryPoints, AMessageCallsTheOperationOfItsRankWithThePacketAndAnswersItsCode) {
    for (int message = 0; message <= 15; ++message) {
        Noting application;
        int packet = 0;
        const int code = orv::answer(application, messageOf(message), &packet);
        EXPECT_EQ(code, Noting::codeOf(message)) << message;
        EXPECT_EQ(application.called, message);
        EXPECT_EQ(application.packet, &packet) << message;
    }
}

TEST(EntryPoints, AMessageThatIsNoneOfThe16CallsNoOperation) {
    for (const int message : {16, 17, 1000, -1}) {
        Noting application;
        EXPECT_EQ(orv::answer(application, messageOf(message), &application), 0);
        EXPECT_EQ(application.called, -1) << message;
    }
}

TEST(EntryPoints, TheVersionWordIsThatOfTheRelease) { EXPECT_EQ(acrxGetApiVersion(), 0x130000); }

TEST(EntryPoints, AMessageOf16OrMoreTouchesNothing) {
    LinkerRecorder linker;
    for (const int message : {16, 17, 1000, -1})
        EXPECT_EQ(acrxEntryPoint(messageOf(message), nullptr), AcRx::kRetOK);
    EXPECT_TRUE(linker.calls().empty());
}

TEST(EntryPoints, MessagesReachTheirOperations) {
    LinkerRecorder linker;
    EXPECT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, nullptr), AcRx::kRetOK);
    EXPECT_EQ(linker.calls().front(), "unlock");
    linker.clear();
    for (int message = 2; message <= 15; ++message)
        EXPECT_EQ(acrxEntryPoint(messageOf(message), nullptr), AcRx::kRetOK);
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
