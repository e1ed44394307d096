#include "embedded/abort.h"
#include "embedded/console.h"
#include "embedded/linker.h"
#include "rx_fixture.h"
#include "rxregsvc.h"

#include <algorithm>
#include <stdexcept>

namespace {

using Names = std::vector<std::wstring>;

class Linker : public RxFixture {};

TEST_F(Linker, IsFoundInTheSystemRegistry) {
    AcRxObject* entry = acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER);
    ASSERT_NE(entry, nullptr);
    EXPECT_TRUE(entry->isA()->isDerivedFrom(AcRxDynamicLinker::desc()));
    EXPECT_EQ(entry, acrxSysRegistry()->at(L"dynamiclinker"));
}

TEST_F(Linker, SendsInitFirstAndUnloadLast) {
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    ModuleJournal& journal = *this->journal(L"Rx_Plain.dbx");
    ASSERT_EQ(journal.messages, std::vector<int>{AcRx::kInitAppMsg});
    embedded::sendToAll(AcRx::kLoadDwgMsg, nullptr);
    ASSERT_TRUE(unload(L"Rx_Plain.dbx"));
    EXPECT_EQ(journal.messages,
              (std::vector<int>{AcRx::kInitAppMsg, AcRx::kLoadDwgMsg, AcRx::kUnloadAppMsg}));
    embedded::sendToAll(AcRx::kLoadDwgMsg, nullptr);
    EXPECT_EQ(journal.messages.size(), 3u);
}

TEST_F(Linker, AnExceptionInOneApplicationKeepsNoOtherFromTheMessage) {
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    ASSERT_TRUE(load(L"rx_second.dbx"));
    journal(L"Rx_Plain.dbx")->onMessage = [](int) { throw std::runtime_error("broken"); };
    std::wstring printed;
    const auto before = embedded::setConsoleSink([&](const std::wstring& text) { printed += text; });
    EXPECT_EQ(embedded::sendToAll(AcRx::kLoadDwgMsg, nullptr), AcRx::kRetError);
    embedded::setConsoleSink(before);
    journal(L"Rx_Plain.dbx")->onMessage = nullptr;
    EXPECT_EQ(printed, L"Rx_Plain.dbx: exception in message 2: broken\n");
    EXPECT_EQ(journal(L"rx_second.dbx")->messages.back(), AcRx::kLoadDwgMsg);
    EXPECT_EQ(embedded::applications().size(), 2u);
}

TEST_F(Linker, LoadOfALoadedModuleIsDoneAtOnce) {
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    const std::size_t messages = journal(L"Rx_Plain.dbx")->messages.size();
    EXPECT_TRUE(load(L"RX_PLAIN.DBX"));
    EXPECT_TRUE(load(inBin(L"Rx_Plain.dbx")));
    EXPECT_EQ(journal(L"Rx_Plain.dbx")->messages.size(), messages);
    EXPECT_EQ(loaded(), Names{L"Rx_Plain.dbx"});
}

TEST_F(Linker, TakesBothKindsOfSlashesAndAnyCase) {
    std::wstring path = inBin(L"rX_pLAIN.DbX");
    std::replace(path.begin(), path.end(), L'/', L'\\');
    EXPECT_TRUE(load(path));
    EXPECT_EQ(embedded::applications().at(0).path, platform::realPath(inBin(L"Rx_Plain.dbx")));
    EXPECT_TRUE(unload(L"c:\\anywhere\\rx_plain.dbx"));
}

TEST_F(Linker, LooksThroughTheSearchPath) {
    EXPECT_FALSE(load(L"rx_away.dbx"));
    embedded::rx::setModuleSearchPath({m_folder, inBin(L"rx_modules")});
    EXPECT_TRUE(load(L"rx_away.dbx"));
    embedded::rx::setModuleSearchPath({});
}

TEST_F(Linker, RefusesWhatIsNoModuleOfThisRelease) {
    EXPECT_FALSE(load(L""));
    EXPECT_FALSE(acrxDynamicLinker->loadModule(nullptr, false));
    EXPECT_FALSE(load(L"no_such_module.dbx"));
    EXPECT_EQ(embedded::rx::lastLinkerFailure(), L"module 'no_such_module.dbx': there is no such file");
    EXPECT_FALSE(load(L"rx_no_entry.dbx"));
    EXPECT_FALSE(load(L"rx_old_release.dbx"));
    EXPECT_TRUE(journal(L"rx_old_release.dbx")->messages.empty());
    ASSERT_TRUE(platform::replaceFile(platform::joinPath(m_folder, L"junk.dbx"), "junk", 4));
    EXPECT_FALSE(load(platform::joinPath(m_folder, L"junk.dbx")));
    EXPECT_FALSE(load(m_folder));
    EXPECT_TRUE(loaded().empty());
}

TEST_F(Linker, PrintsAFailureOnlyWhenAsked) {
    EXPECT_FALSE(acrxLoadModule(L"no_such_module.dbx", false));
    EXPECT_EQ(m_console, L"");
    EXPECT_FALSE(acrxLoadModule(L"no_such_module.dbx", true));
    EXPECT_EQ(m_console, L"module 'no_such_module.dbx': there is no such file\n");
}

TEST_F(Linker, AFailedInitForgetsTheModule) {
    EXPECT_FALSE(load(L"rx_refuses.dbx"));
    EXPECT_TRUE(loaded().empty());
    EXPECT_FALSE(unload(L"rx_refuses.dbx"));
    EXPECT_EQ(journal(L"rx_refuses.dbx")->messages, std::vector<int>{AcRx::kInitAppMsg});
    EXPECT_FALSE(acrxUnlockApplication(journal(L"rx_refuses.dbx")->packet));
}

TEST_F(Linker, ALockedModuleCannotBeUnloaded) {
    ASSERT_TRUE(load(L"rx_locked.dbx"));
    EXPECT_TRUE(acrxApplicationIsLocked(L"rx_locked.dbx"));
    EXPECT_FALSE(unload(L"rx_locked.dbx"));
    EXPECT_EQ(loaded(), Names{L"rx_locked.dbx"});
    EXPECT_TRUE(acrxUnlockApplication(journal(L"rx_locked.dbx")->packet));
    EXPECT_TRUE(unload(L"rx_locked.dbx"));
}

TEST_F(Linker, BaseInitUnlocksAndRegistersByItsFlags) {
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    ASSERT_TRUE(load(L"rx_locked.dbx"));
    EXPECT_FALSE(acrxApplicationIsLocked(L"Rx_Plain.dbx"));
    EXPECT_TRUE(acrxIsAppMDIAware(L"Rx_Plain.dbx"));
    EXPECT_FALSE(acrxIsAppMDIAware(L"rx_locked.dbx"));
    EXPECT_EQ(journal(L"Rx_Plain.dbx")->instance, platform::moduleHandle(L"Rx_Plain.dbx"));
}

TEST_F(Linker, BaseInitRegistersServerComponentsOnce) {
    ASSERT_TRUE(load(L"rx_second.dbx"));
    EXPECT_EQ(journal(L"rx_second.dbx")->registrations, 1);
}

TEST_F(Linker, UnknownIdsAreRefused) {
    int stranger = 0;
    EXPECT_FALSE(acrxUnlockApplication(&stranger));
    EXPECT_FALSE(acrxRegisterAppMDIAware(nullptr));
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    void* id = journal(L"Rx_Plain.dbx")->packet;
    EXPECT_TRUE(acrxRegisterAppNotMDIAware(id));
    EXPECT_FALSE(acrxIsAppMDIAware(L"Rx_Plain.dbx"));
    unload(L"Rx_Plain.dbx");
    EXPECT_FALSE(acrxRegisterAppMDIAware(id));
}

TEST_F(Linker, AModuleThatUnloadsItselfIsUnloadedOnce) {
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    ModuleJournal& journal = *this->journal(L"Rx_Plain.dbx");
    journal.messages.clear();
    bool answer = false;
    journal.onUnload = [&] { answer = acrxUnloadModule(L"rx_plain.dbx"); };
    EXPECT_TRUE(unload(L"Rx_Plain.dbx"));
    EXPECT_TRUE(answer);
    EXPECT_EQ(journal.messages, std::vector<int>{AcRx::kUnloadAppMsg});
    EXPECT_TRUE(loaded().empty());
}

TEST_F(Linker, TwoModulesThatUnloadEachOtherBothGo) {
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    ASSERT_TRUE(load(L"rx_partner.dbx"));
    ModuleJournal& first = *journal(L"Rx_Plain.dbx");
    ModuleJournal& second = *journal(L"rx_partner.dbx");
    first.onUnload = [] { acrxUnloadModule(L"rx_partner.dbx"); };
    second.onUnload = [] { acrxUnloadModule(L"Rx_Plain.dbx"); };
    EXPECT_TRUE(unload(L"Rx_Plain.dbx"));
    EXPECT_TRUE(loaded().empty());
    EXPECT_EQ(second.messages.back(), AcRx::kUnloadAppMsg);
}

TEST_F(Linker, AModuleThatLoadsItselfWhileItStartsRunsOnce) {
    ASSERT_TRUE(load(L"rx_partner.dbx"));
    ASSERT_TRUE(unload(L"rx_partner.dbx"));
    ModuleJournal& journal = *this->journal(L"rx_partner.dbx");
    journal = {};
    bool again = false;
    bool gone = true;
    journal.onInit = [&] {
        again = acrxLoadModule(L"rx_partner.dbx", false);
        gone = acrxUnloadModule(L"rx_partner.dbx");
    };
    EXPECT_TRUE(load(L"rx_partner.dbx"));
    EXPECT_TRUE(again);
    EXPECT_FALSE(gone);
    EXPECT_EQ(journal.messages, std::vector<int>{AcRx::kInitAppMsg});
}

TEST_F(Linker, AnUnloadedModuleCanBeLoadedAgain) {
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    const int registrations = journal(L"Rx_Plain.dbx")->registrations;
    ASSERT_TRUE(unload(L"Rx_Plain.dbx"));
    EXPECT_FALSE(unload(L"Rx_Plain.dbx"));
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    EXPECT_EQ(journal(L"Rx_Plain.dbx")->registrations, registrations + 1);
}

TEST_F(Linker, MessagesGoInTheOrderOfLoading) {
    ASSERT_TRUE(load(L"rx_second.dbx"));
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    EXPECT_EQ(loaded(), (Names{L"rx_second.dbx", L"Rx_Plain.dbx"}));
    embedded::rx::unloadAll();
    EXPECT_TRUE(loaded().empty());
}

TEST_F(Linker, UnloadAllTakesLockedModulesTooAndTheNewestFirst) {
    ASSERT_TRUE(load(L"rx_locked.dbx"));
    ASSERT_TRUE(load(L"Rx_Plain.dbx"));
    std::vector<std::wstring> order;
    journal(L"rx_locked.dbx")->onUnload = [&] { order.emplace_back(L"locked"); };
    journal(L"Rx_Plain.dbx")->onUnload = [&] { order.emplace_back(L"plain"); };
    embedded::rx::unloadAll();
    EXPECT_EQ(order, (Names{L"plain", L"locked"}));
}

TEST_F(Linker, ObserverHearsOfEveryCall) {
    std::vector<std::wstring> calls;
    embedded::setLinkerObserver([&](const embedded::LinkerCall& call) {
        calls.push_back((call.kind == embedded::LinkerCall::kLoad ? L"load " : L"unload ") + call.name);
        EXPECT_FALSE(call.flag);
    });
    unload(L"not there.arx");
    load(L"Rx_Plain.dbx");
    load(L"Rx_Plain.dbx");
    EXPECT_EQ(calls, (Names{L"unload not there.arx", L"load Rx_Plain.dbx", L"load Rx_Plain.dbx"}));
}

TEST_F(Linker, AnExceptionDuringInitLeavesNothingBehind) {
    ASSERT_TRUE(load(L"rx_partner.dbx"));
    ASSERT_TRUE(unload(L"rx_partner.dbx"));
    journal(L"rx_partner.dbx")->onInit = [] { acrx_abort(L"Class mismatch"); };
    embedded::setAbortHandler([](const std::wstring&) { throw std::runtime_error("aborted"); });
    EXPECT_THROW(load(L"rx_partner.dbx"), std::runtime_error);
    embedded::setAbortHandler({});
    EXPECT_TRUE(loaded().empty());
    *journal(L"rx_partner.dbx") = {};
    EXPECT_TRUE(load(L"rx_partner.dbx"));
}

TEST_F(Linker, ReactorsHearOfModules) {
    class Listener : public AcRxDLinkerReactor {
    public:
        void rxAppWillBeLoaded(const ACHAR* name) override { log += L"+" + std::wstring(name) + L" "; }
        void rxAppLoaded(const ACHAR*) override { log += L"loaded "; }
        void rxAppLoadAborted(const ACHAR*) override { log += L"aborted "; }
        void rxAppWillBeUnloaded(const ACHAR*) override { log += L"- "; }
        void rxAppUnloaded(const ACHAR*) override { log += L"unloaded "; }
        std::wstring log;
    } listener;
    acrxDynamicLinker->addReactor(&listener);
    acrxDynamicLinker->addReactor(&listener);
    load(L"rx_refuses.dbx");
    load(L"Rx_Plain.dbx");
    unload(L"Rx_Plain.dbx");
    acrxDynamicLinker->removeReactor(&listener);
    load(L"Rx_Plain.dbx");
    EXPECT_EQ(listener.log, L"+rx_refuses.dbx aborted +Rx_Plain.dbx loaded - unloaded ");
}

} // namespace
