#pragma once

#include "embedded/applications.h"
#include "embedded/console.h"
#include "embedded/host_start.h"
#include "embedded/linker_observer.h"
#include "platform/files.h"
#include "platform/registry.h"
#include "platform/shared_library.h"
#include "platform/text.h"
#include "rxclass.h"
#include "rxdict.h"
#include "rxdlinkr.h"
#include "test_module.h"

#include <gtest/gtest.h>

#include <filesystem>

// A started host with a registry and a console of its own; all modules are unloaded at the end.
class RxFixture : public testing::Test {
protected:
    void SetUp() override {
        embedded::startHost();
        platform::registry::setRegistryFile(platform::joinPath(m_folder, L"registry"));
        embedded::setConsoleSink([this](const std::wstring& text) { m_console += text; });
    }

    void TearDown() override {
        embedded::setLinkerObserver({});
        forgetJournals();
        embedded::rx::unloadAll();
        forgetJournals();
        embedded::setConsoleSink({});
        platform::registry::setRegistryFile(L"");
        std::filesystem::remove_all(m_folder);
    }

    static bool load(const std::wstring& name) { return acrxDynamicLinker->loadModule(name.c_str(), false); }
    static bool unload(const std::wstring& name) { return acrxDynamicLinker->unloadModule(name.c_str()); }

    // What a module in memory wrote down.
    static ModuleJournal* journal(const std::wstring& name) {
        auto* get = reinterpret_cast<ModuleJournal* (*)()>(
            platform::librarySymbol(platform::moduleHandle(name.c_str()), "journal"));
        return get == nullptr ? nullptr : get();
    }

    // Modules stay in memory for the tests that follow.
    static void forgetJournals() {
        for (const wchar_t* name : {L"Rx_Plain.dbx", L"rx_second.dbx", L"rx_locked.dbx", L"rx_refuses.dbx",
                                    L"rx_partner.dbx", L"rx_away.dbx"})
            if (ModuleJournal* found = journal(name))
                *found = {};
    }

    static std::wstring inBin(const std::wstring& name) {
        return platform::joinPath(platform::fromUtf8(MODULE_FOLDER), name);
    }

    static std::vector<std::wstring> loaded() {
        std::vector<std::wstring> names;
        for (const auto& application : embedded::applications())
            names.push_back(application.name);
        return names;
    }

    const std::wstring m_folder = platform::makeTemporaryFolder();
    std::wstring m_console;
};
