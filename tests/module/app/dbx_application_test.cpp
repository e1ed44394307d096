#include "app/dbx_application.h"

#include "app/extension_record.h"
#include "appinfo.h"
#include "embedded/demand_load.h"
#include "platform/files.h"
#include "platform/registry.h"
#include "platform/shared_library.h"
#include "platform/text.h"
#include "rxdict.h"
#include "support/linker_recorder.h"
#include "support/slots.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using testing_support::Calls;
using testing_support::LinkerRecorder;

namespace {

constexpr const wchar_t* kModule = L"taldork191_x64.dbx";
constexpr const wchar_t* kLoader = L"orv_oe_loader191_x64.dbx";
constexpr const wchar_t* kEntry = L"Software\\EmbeddedHost\\R19.1\\Applications\\ORV_OE_LOADER_191";

struct Application : orv::DBX_Application {
    explicit Application(const std::wstring& name) : DBX_Application(name) {}

    AcRx::AppRetCode onBeforeInit(void* with) override {
        calls.push_back("onBeforeInit");
        packets.push_back(with);
        return refuseBefore ? AcRx::kRetError : AcRx::kRetOK;
    }
    void RegisterServerComponents() override { calls.push_back("RegisterServerComponents"); }
    AcRx::AppRetCode registerClasses(void* with) override {
        calls.push_back("registerClasses");
        packets.push_back(with);
        return refuseClasses ? AcRx::kRetError : AcRx::kRetOK;
    }
    void onRegistered() override { calls.push_back("onRegistered"); }

    Calls calls;
    std::vector<void*> packets; // of the steps that get one
    bool refuseBefore = false;
    bool refuseClasses = false;
};

class DbxApplication : public testing::Test {
protected:
    DbxApplication() { platform::registry::deleteKey(kEntry); }
    ~DbxApplication() override { platform::registry::deleteKey(kEntry); }

    static bool valueOf(const wchar_t* name, platform::registry::Value& value) {
        return platform::registry::getValue(kEntry, name, value) == platform::registry::kDone;
    }

    // The entry says when to load, and not what.
    static void expectEntryWithoutModule() {
        platform::registry::Value value;
        EXPECT_TRUE(platform::registry::keyExists(kEntry));
        EXPECT_FALSE(valueOf(L"LOADER", value));
        ASSERT_TRUE(valueOf(L"LOADCTRLS", value));
        EXPECT_EQ(value.number, 9u);
    }

    LinkerRecorder linker;
    int packet = 0;
};

// Brings a file that stands beside the module into memory; its path comes back.
std::wstring loadBesideTheModule(const wchar_t* file) {
    const std::wstring own = platform::modulePath(platform::moduleHandle(kModule));
    const std::wstring path = platform::joinPath(platform::folderOf(own), file);
    std::wstring failure;
    EXPECT_NE(platform::openLibrary(path, failure), nullptr) << platform::toUtf8(failure);
    return path;
}

} // namespace

TEST_F(DbxApplication, AnEmptyNameKnowsNeitherPathNorHandle) {
    Application application(L"");
    EXPECT_EQ(application.moduleHandle(), nullptr);
    EXPECT_EQ(application.modulePath(), L"");
    EXPECT_EQ(application.On_kInitAppMsg(&packet), AcRx::kRetOK);
    EXPECT_FALSE(orv::ExtensionRecord::instance().isAttached());
    platform::registry::Value value;
    EXPECT_TRUE(platform::registry::keyExists(kEntry));
    EXPECT_FALSE(valueOf(L"LOADER", value));
    EXPECT_FALSE(valueOf(L"LOADCTRLS", value));
    EXPECT_EQ(application.calls.back(), "onRegistered");
}

TEST_F(DbxApplication, TheModulesOwnNameGivesHandleAndPath) {
    const Application application(kModule);
    EXPECT_NE(application.moduleHandle(), nullptr);
    EXPECT_EQ(platform::bareNameOf(application.modulePath()), kModule);
}

TEST_F(DbxApplication, AModuleUnderAnotherSuffixHasNoPathAndItsEntryNoModule) {
    loadBesideTheModule(L"tests_other_suffix.arx");
    Application application(L"tests_other_suffix.arx");
    ASSERT_NE(application.moduleHandle(), nullptr);
    EXPECT_EQ(application.modulePath(), L"");
    EXPECT_EQ(application.On_kInitAppMsg(&packet), AcRx::kRetOK);
    expectEntryWithoutModule();
    application.On_kUnloadAppMsg(&packet);
}

TEST_F(DbxApplication, TheSuffixCountsInCapitalsToo) {
    const std::wstring path = loadBesideTheModule(L"tests_upper_suffix.DBX");
    Application application(L"tests_upper_suffix.DBX");
    ASSERT_NE(application.moduleHandle(), nullptr);
    EXPECT_EQ(application.modulePath(), path);
    platform::removeFile(platform::joinPath(platform::folderOf(path), kLoader));
    EXPECT_EQ(application.On_kInitAppMsg(&packet), AcRx::kRetOK);
    platform::registry::Value value;
    ASSERT_TRUE(valueOf(L"LOADER", value));
    EXPECT_EQ(value.text, path);
    application.On_kUnloadAppMsg(&packet);
}

TEST_F(DbxApplication, ANameThatIsNotLoadedStandsForTheProgram) {
    Application unknown(L"not_loaded.dbx");
    EXPECT_EQ(unknown.moduleHandle(), nullptr);
    EXPECT_EQ(unknown.modulePath(), L"") << "the program's suffix is not that of a module";
    EXPECT_EQ(unknown.On_kInitAppMsg(&packet), AcRx::kRetOK);
    expectEntryWithoutModule();
}

TEST_F(DbxApplication, WithoutTheLoaderTheEntryNamesTheModuleItself) {
    Application application(kModule);
    platform::removeFile(platform::joinPath(platform::folderOf(application.modulePath()), kLoader));
    ASSERT_EQ(application.On_kInitAppMsg(&packet), AcRx::kRetOK);
    platform::registry::Value value;
    ASSERT_TRUE(valueOf(L"LOADER", value));
    EXPECT_EQ(value.text, application.modulePath());
    ASSERT_TRUE(valueOf(L"LOADCTRLS", value));
    EXPECT_EQ(value.number, 9u);
    application.On_kUnloadAppMsg(&packet);
}

TEST_F(DbxApplication, WithTheLoaderBesideTheModuleTheEntryNamesItWithBackslashes) {
    Application application(kModule);
    const std::wstring loader = platform::joinPath(platform::folderOf(application.modulePath()), kLoader);
    ASSERT_TRUE(platform::replaceFile(loader, "x", 1));
    ASSERT_EQ(application.On_kInitAppMsg(&packet), AcRx::kRetOK);
    platform::removeFile(loader);
    platform::registry::Value value;
    ASSERT_TRUE(valueOf(L"LOADER", value));
    EXPECT_EQ(value.text.find(L'/'), std::wstring::npos);
    EXPECT_EQ(platform::bareNameOf(value.text), kLoader);
    EXPECT_NE(value.text.find(L'\\'), std::wstring::npos);
    application.On_kUnloadAppMsg(&packet);
}

TEST_F(DbxApplication, InitRunsItsStepsInOrder) {
    Application application(kModule);
    ASSERT_EQ(application.On_kInitAppMsg(&packet), AcRx::kRetOK);
    // The frame unlocks and registers, the latter in two ways, and the base does both again as its flags say.
    EXPECT_EQ(linker.calls(), (Calls{"unlock", "mdi", "mdi", "unlock", "mdi"}));
    EXPECT_EQ(application.calls,
              (Calls{"onBeforeInit", "RegisterServerComponents", "registerClasses", "onRegistered"}));
    EXPECT_EQ(application.packets, (std::vector<void*>{&packet, &packet}));
    EXPECT_TRUE(orv::ExtensionRecord::instance().isAttached());
    EXPECT_EQ(orv::ExtensionRecord::instance().moduleResource(), application.moduleHandle());
    application.On_kUnloadAppMsg(&packet);
    EXPECT_FALSE(orv::ExtensionRecord::instance().isAttached());
}

TEST_F(DbxApplication, TheDefaultResourceIsTheFrameworksCurrentOneAtTheAttachment) {
    int resource = 0;
    const HINSTANCE before = AfxGetModuleState()->m_hCurrentResourceHandle;
    AfxSetResourceHandle(reinterpret_cast<HINSTANCE>(&resource));
    Application application(kModule);
    EXPECT_EQ(application.On_kInitAppMsg(&packet), AcRx::kRetOK);
    AfxSetResourceHandle(before);
    EXPECT_EQ(orv::ExtensionRecord::instance().defaultResource(), reinterpret_cast<HINSTANCE>(&resource));
    EXPECT_EQ(orv::ExtensionRecord::instance().moduleResource(), application.moduleHandle());
    application.On_kUnloadAppMsg(&packet);
}

TEST_F(DbxApplication, ARefusalBeforeInitEndsTheMessage) {
    Application application(L"");
    application.refuseBefore = true;
    EXPECT_EQ(application.On_kInitAppMsg(&packet), AcRx::kRetError);
    EXPECT_EQ(application.calls, (Calls{"onBeforeInit"}));
    EXPECT_FALSE(platform::registry::keyExists(kEntry));
}

TEST_F(DbxApplication, ARefusalOfTheClassesEndsTheMessageWithoutAnEntry) {
    Application application(L"");
    application.refuseClasses = true;
    EXPECT_EQ(application.On_kInitAppMsg(&packet), AcRx::kRetError);
    EXPECT_EQ(application.calls, (Calls{"onBeforeInit", "RegisterServerComponents", "registerClasses"}));
    EXPECT_FALSE(platform::registry::keyExists(kEntry));
}

TEST_F(DbxApplication, TheModuleIsAttachedToTheFrameworkOnce) {
    Application application(kModule);
    const int before = platform::extensionLibraries();
    application.On_kInitAppMsg(&packet);
    application.On_kInitAppMsg(&packet);
    EXPECT_EQ(platform::extensionLibraries(), before + 1);
    application.On_kUnloadAppMsg(&packet);
    EXPECT_EQ(platform::extensionLibraries(), before);
}

TEST_F(DbxApplication, ARefusalOfTheFrameworkIsNoFailure) {
    Application application(kModule);
    const int before = platform::extensionLibraries();
    platform::refuseExtensionModules(true);
    EXPECT_EQ(application.On_kInitAppMsg(&packet), AcRx::kRetOK);
    platform::refuseExtensionModules(false);
    EXPECT_FALSE(orv::ExtensionRecord::instance().isAttached());
    EXPECT_EQ(platform::extensionLibraries(), before);
    EXPECT_EQ(application.calls.back(), "onRegistered");
}

TEST_F(DbxApplication, DependenciesAreUnloadedTheNewestFirst) {
    Application application(L"");
    application.loadDependency(L"first.dbx");
    application.loadDependency(nullptr);
    linker.refuse(L"missing.dbx");
    application.loadDependency(L"missing.dbx");
    application.loadDependency(L"second.dbx");
    EXPECT_EQ(application.loadedDependencies(), (std::deque<std::wstring>{L"first.dbx", L"second.dbx"}));
    EXPECT_EQ(linker.calls(), (Calls{"load first.dbx", "load missing.dbx", "load second.dbx"}));
    linker.clear();
    EXPECT_EQ(application.On_kUnloadAppMsg(&packet), AcRx::kRetOK);
    EXPECT_EQ(linker.calls(), (Calls{"unload second.dbx", "unload first.dbx"}));
    EXPECT_EQ(application.loadedDependencies().size(), 2u) << "the queue is left as it is";
}

TEST_F(DbxApplication, MessagesWithoutAnOperationOfTheirOwnAnswerZero) {
    struct Plain : orv::DBX_Application {
        Plain() : DBX_Application(L"") {}
    } application;
    EXPECT_EQ(application.On_kLoadDwgMsg(&packet), 0);
    EXPECT_EQ(application.On_kUnloadDwgMsg(&packet), 0);
    EXPECT_EQ(application.On_kInvkSubrMsg(&packet), 0);
    EXPECT_EQ(application.On_kCfgMsg(&packet), 0);
    EXPECT_EQ(application.On_kEndMsg(&packet), 0);
    EXPECT_EQ(application.On_kQuitMsg(&packet), 0);
    EXPECT_EQ(application.On_kSaveMsg(&packet), 0);
    EXPECT_EQ(application.On_kDependencyMsg(&packet), 0);
    EXPECT_EQ(application.On_kNoDependencyMsg(&packet), 0);
    EXPECT_EQ(application.On_kOleUnloadAppMsg(&packet), 0);
    EXPECT_EQ(application.On_kPreQuitMsg(&packet), 0);
    EXPECT_EQ(application.On_kInitDialogMsg(&packet), 0);
    EXPECT_EQ(application.On_kEndDialogMsg(&packet), 0);
    EXPECT_EQ(application.On_kSuspendMsg(&packet), 0);
    EXPECT_EQ(application.onBeforeInit(&packet), 0);
    EXPECT_EQ(application.registerClasses(&packet), 0);
    application.RegisterServerComponents();
    application.onRegistered();
    EXPECT_TRUE(linker.calls().empty());
}

namespace {

// Each operation notes its place in the table.
struct Numbered : orv::DBX_Application {
    Numbered() : DBX_Application(L"") {}
    int called = 0;
    AcRx::AppRetCode note(int number) {
        called = number;
        return AcRx::kRetOK;
    }
    AcRx::AppRetCode On_kInitAppMsg(void*) override { return note(1); }
    AcRx::AppRetCode On_kUnloadAppMsg(void*) override { return note(2); }
    AcRx::AppRetCode On_kLoadDwgMsg(void*) override { return note(3); }
    AcRx::AppRetCode On_kUnloadDwgMsg(void*) override { return note(4); }
    AcRx::AppRetCode On_kInvkSubrMsg(void*) override { return note(5); }
    AcRx::AppRetCode On_kCfgMsg(void*) override { return note(6); }
    AcRx::AppRetCode On_kEndMsg(void*) override { return note(7); }
    AcRx::AppRetCode On_kQuitMsg(void*) override { return note(8); }
    AcRx::AppRetCode On_kSaveMsg(void*) override { return note(9); }
    AcRx::AppRetCode On_kDependencyMsg(void*) override { return note(10); }
    AcRx::AppRetCode On_kNoDependencyMsg(void*) override { return note(11); }
    AcRx::AppRetCode On_kOleUnloadAppMsg(void*) override { return note(12); }
    AcRx::AppRetCode On_kPreQuitMsg(void*) override { return note(13); }
    AcRx::AppRetCode On_kInitDialogMsg(void*) override { return note(14); }
    AcRx::AppRetCode On_kEndDialogMsg(void*) override { return note(15); }
    AcRx::AppRetCode On_kSuspendMsg(void*) override { return note(16); }
    void RegisterServerComponents() override { note(17); }
    void loadDependency(const wchar_t*) override { note(18); }
    AcRx::AppRetCode onBeforeInit(void*) override { return note(19); }
    AcRx::AppRetCode registerClasses(void*) override { return note(20); }
    void onRegistered() override { note(21); }
};

} // namespace

TEST_F(DbxApplication, OperationsStandInTheirSlots) {
    Numbered application;
    using Operation = void (*)(void*, void*);
    for (int number = 1; number <= 21; ++number) {
        application.called = 0;
        testing_support::slotOf<Operation>(&application, number - 1)(&application, nullptr);
        EXPECT_EQ(application.called, number);
    }
}
