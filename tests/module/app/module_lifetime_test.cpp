// The module under the real linker: from its loading to the unloading of the whole family.

#include "app/class_table.h"
#include "app/extension_record.h"
#include "app/linker.h"
#include "app/taldork_dbx_application.h"
#include "dbx/keyvalue_serialization.h"
#include "embedded/applications.h"
#include "embedded/classes.h"
#include "embedded/linker.h"
#include "embedded/linker_observer.h"
#include "platform/files.h"
#include "platform/registry.h"
#include "platform/shared_library.h"
#include "platform/text.h"
#include "rxclass.h"
#include "rxdict.h"
#include "rxdlinkr.h"
#include "support/linker_recorder.h"
#include "support/log_recorder.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using orv::KeyValueSerialization;
using testing_support::Calls;
using testing_support::LinkerRecorder;
using testing_support::Texts;

namespace {

constexpr const wchar_t* kModule = L"taldork191_x64.dbx";
constexpr const wchar_t* kEntry = L"Software\\EmbeddedHost\\R19.1\\Applications\\ORV_OE_LOADER_191";

// Whether a type is registered, by the one question that tells it.
bool hasType(const std::type_info& type) {
    const testing_support::ReportRecorder quiet;
    return !KeyValueSerialization::instance().getTypeId(type).empty();
}

void registerType() {
    KeyValueSerialization::instance().addValue<int>(
        "number", [](orv::KeyValueTreeReaderWriter&, const int&) {},
        [](orv::KeyValueTreeReaderWriter&, int&) {});
}

// Writes down what the linker tells of applications that come and go.
class Arrivals : public AcRxDLinkerReactor {
public:
    Arrivals() { acrxDynamicLinker->addReactor(this); }
    ~Arrivals() override { acrxDynamicLinker->removeReactor(this); }

    void rxAppLoaded(const ACHAR* name) override { note("+ ", name); }
    void rxAppWillBeUnloaded(const ACHAR* name) override { note("- ", name); }
    void rxAppUnloaded(const ACHAR* name) override { note("gone ", name); }

    Calls told;

private:
    void note(const char* what, const ACHAR* name) { told.push_back(what + platform::toUtf8(name)); }
};

class ModuleLifetime : public testing::Test {
protected:
    ModuleLifetime() {
        const std::wstring bin = platform::folderOf(platform::modulePath(platform::moduleHandle(kModule)));
        m_loader = platform::joinPath(bin, L"orv_oe_loader191_x64.dbx");
        embedded::rx::setModuleSearchPath({platform::joinPath(bin, L"module_siblings")});
        platform::registry::deleteKey(kEntry);
    }
    ~ModuleLifetime() override {
        embedded::setLinkerObserver({});
        embedded::rx::unloadAll();
        embedded::rx::setModuleSearchPath({});
        platform::registry::deleteKey(kEntry);
        platform::removeFile(m_loader);
        KeyValueSerialization::instance().clear();
    }

    static bool load(const wchar_t* name) { return acrxDynamicLinker->loadModule(name, false); }
    static bool unload(const wchar_t* name) { return acrxDynamicLinker->unloadModule(name, false); }
    static bool isLoaded(const std::wstring& name) {
        for (const embedded::Application& application : embedded::applications())
            if (application.name == name)
                return true;
        return false;
    }
    static std::wstring entryModule() {
        platform::registry::Value value;
        platform::registry::getValue(kEntry, L"LOADER", value);
        return value.text;
    }

    std::wstring m_loader;
};

} // namespace

TEST_F(ModuleLifetime, AnUnloadAsksForTheFamilyWithTheTypesDroppedBeforeTheFirstSibling) {
    registerType();
    Calls calls;
    bool hadType = true;
    embedded::setLinkerObserver([&](const embedded::LinkerCall& call) {
        if (hadType && !hasType(typeid(int))) {
            hadType = false;
            calls.push_back("clear");
        }
        EXPECT_EQ(call.kind, embedded::LinkerCall::kUnload);
        EXPECT_FALSE(call.flag) << "no command asks";
        calls.push_back(platform::toUtf8(call.name));
    });
    Taldork_DBX_Application application;
    EXPECT_EQ(application.On_kUnloadAppMsg(nullptr), AcRx::kRetOK);
    EXPECT_EQ(calls,
              (Calls{"taldork.arx", "clear", "orv_velmar.arx", "orv_velmar191_x64.dbx", "orv_tondrik.arx",
                     "orv_tondrik191_x64.dbx", "drennoc.arx", "drennoc191_x64.dbx", "hasmuir191_x64.dbx",
                     "quillet.arx", "quillet191_x64.dbx", "kelmoran.arx", "kelmoran191_x64.dbx",
                     "taldork.arx", "taldork191_x64.dbx", "orv_brisel191_x64.dbx"}));
}

TEST_F(ModuleLifetime, WithoutALinkerTheTypesAreDroppedAndTheFrameIsTakenDown) {
    registerType();
    Taldork_DBX_Application application;
    {
        LinkerRecorder linker;
        int packet = 0;
        ASSERT_EQ(application.On_kInitAppMsg(&packet), AcRx::kRetOK);
        application.loadDependency(L"dependency.dbx");
    }
    ASSERT_TRUE(orv::ExtensionRecord::instance().isAttached());
    AcRxObject* const entry = acrxSysRegistry()->remove(ACRX_DYNAMIC_LINKER);
    EXPECT_EQ(orv::linker(), nullptr);
    EXPECT_EQ(application.On_kUnloadAppMsg(nullptr), AcRx::kRetOK);
    Adesk::UInt32 id = 0;
    acrxSysRegistry()->atPut(ACRX_DYNAMIC_LINKER, entry, id);
    EXPECT_FALSE(hasType(typeid(int)));
    EXPECT_FALSE(orv::ExtensionRecord::instance().isAttached());
}

TEST_F(ModuleLifetime, SomethingElseInTheLinkersPlaceIsNoLinker) {
    struct Other : AcRxObject {
    } other;
    Adesk::UInt32 id = 0;
    AcRxObject* const entry = acrxSysRegistry()->atPut(ACRX_DYNAMIC_LINKER, &other, id);
    EXPECT_EQ(orv::linker(), nullptr);
    Taldork_DBX_Application application;
    EXPECT_EQ(application.On_kUnloadAppMsg(nullptr), AcRx::kRetOK);
    acrxSysRegistry()->atPut(ACRX_DYNAMIC_LINKER, entry, id);
    EXPECT_NE(orv::linker(), nullptr);
}

TEST_F(ModuleLifetime, TheFramesOwnUnloadingComesLast) {
    LinkerRecorder linker;
    Taldork_DBX_Application application;
    application.loadDependency(L"dependency.dbx");
    linker.clear();
    EXPECT_EQ(application.On_kUnloadAppMsg(nullptr), AcRx::kRetOK);
    ASSERT_EQ(linker.calls().size(), 16u);
    EXPECT_EQ(linker.calls()[14], "unload orv_brisel191_x64.dbx");
    EXPECT_EQ(linker.calls()[15], "unload dependency.dbx");
}

TEST_F(ModuleLifetime, AfterAnUnloadEveryReadFailsForWantOfAReader) {
    constexpr const char* kBase = "Software\\TaldorkTest";
    registerType();
    orv::KeyValueTreeReaderWriter rw(kBase);
    ASSERT_TRUE(KeyValueSerialization::instance().tryWrite(rw, "x", boost::any(1)));
    {
        LinkerRecorder linker;
        Taldork_DBX_Application::instance().On_kUnloadAppMsg(nullptr);
    }
    testing_support::LogRecorder log("KeyValueSerialization::tryRead");
    const testing_support::ReportRecorder quiet;
    boost::any value;
    EXPECT_FALSE(KeyValueSerialization::instance().tryRead(rw, "x", value));
    EXPECT_EQ(log.messages(), (Texts{"3 FAILED to find serialization function for id 'x' and type: number"}));
    platform::registry::deleteKey(L"Software\\TaldorkTest");
}

TEST_F(ModuleLifetime, WhatIsLoadedOfTheFamilyGoesInItsOrder) {
    // Loaded in another order than the one they go in.
    for (const wchar_t* name : {kModule, L"kelmoran191_x64.dbx", L"orv_brisel191_x64.dbx",
                                L"orv_velmar191_x64.dbx", L"orv_velmar.arx"})
        ASSERT_TRUE(load(name)) << platform::toUtf8(name);
    Arrivals arrivals;
    EXPECT_TRUE(unload(kModule));
    EXPECT_EQ(
        arrivals.told,
        (Calls{"- taldork191_x64.dbx", "- orv_velmar.arx", "gone orv_velmar.arx", "- orv_velmar191_x64.dbx",
               "gone orv_velmar191_x64.dbx", "- kelmoran191_x64.dbx", "gone kelmoran191_x64.dbx",
               "- orv_brisel191_x64.dbx", "gone orv_brisel191_x64.dbx", "gone taldork191_x64.dbx"}));
    EXPECT_TRUE(embedded::applications().empty());
}

TEST_F(ModuleLifetime, ItMayComeAndGoTwiceInOneProcess) {
    std::vector<AcRxClass*> descriptors;
    for (int round = 0; round < 2; ++round) {
        // In the second round the small loader stands beside the module.
        if (round == 1) {
            ASSERT_TRUE(platform::replaceFile(m_loader, "x", 1));
        }
        Arrivals arrivals;
        const unsigned builds = embedded::rx::hierarchyBuilds();
        ASSERT_TRUE(load(kModule));
        EXPECT_TRUE(isLoaded(kModule));
        EXPECT_EQ(embedded::rx::hierarchyBuilds(), builds + 1);
        for (int i = 0; i < orv::kRegisteredClassCount; ++i) {
            auto* const found =
                static_cast<AcRxClass*>(acrxClassDictionary->at(orv::kRegisteredClasses[i].row->className));
            ASSERT_NE(found, nullptr) << i;
            if (round == 0)
                descriptors.push_back(found);
            EXPECT_EQ(found, descriptors[static_cast<std::size_t>(i)]) << i;
        }
        EXPECT_EQ(platform::bareNameOf(entryModule()),
                  round == 1 ? L"orv_oe_loader191_x64.dbx" : L"taldork191_x64.dbx");

        registerType();
        EXPECT_TRUE(unload(kModule));
        EXPECT_FALSE(isLoaded(kModule));
        EXPECT_FALSE(hasType(typeid(int)));
        EXPECT_EQ(arrivals.told,
                  (Calls{"+ taldork191_x64.dbx", "- taldork191_x64.dbx", "gone taldork191_x64.dbx"}));
        EXPECT_TRUE(platform::registry::keyExists(kEntry)) << "the host may load it again on demand";
        for (int i = 0; i < orv::kRegisteredClassCount; ++i)
            EXPECT_TRUE(acrxClassDictionary->has(orv::kRegisteredClasses[i].row->className)) << i;
        platform::registry::deleteKey(kEntry);
    }
}
