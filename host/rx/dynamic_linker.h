#pragma once

#include "embedded/applications.h"
#include "embedded/linker_observer.h"
#include "platform/shared_library.h"
#include "rxdlinkr.h"

#include <memory>
#include <vector>

namespace embedded::rx {

// A module that runs, or is about to. Its address is the application's id.
struct LoadedModule {
    std::wstring key;
    Application application;
    AcRxEntryPoint entry = nullptr;
    enum { kLoading, kRunning, kUnloading } state = kLoading;
};

class DynamicLinker : public AcRxDynamicLinker {
public:
    bool loadModule(const ACHAR* fileName, bool printit, bool asCmd) override;
    bool unloadModule(const ACHAR* fileName, bool asCmd) override;
    bool loadApp(const ACHAR* appName, AcadApp::LoadReasons reason, bool printit, bool asCmd) override;
    bool unloadApp(const ACHAR* appName, bool asCmd) override;
    bool unlockApplication(void* appId) const override;
    bool lockApplication(void* appId) const override;
    bool isApplicationLocked(const ACHAR* fileName) const override;
    bool registerAppMDIAware(void* appId) const override;
    bool registerAppNotMDIAware(void* appId) const override;
    bool isAppMDIAware(const ACHAR* fileName) const override;
    void addReactor(AcRxDLinkerReactor* reactor) override;
    void removeReactor(AcRxDLinkerReactor* reactor) override;

    AcRx::AppRetCode sendToAll(AcRx::AppMsgCode message, void* packet);
    std::vector<Application> applications() const;
    void unloadAll();
    LinkerObserver exchangeObserver(LinkerObserver observer);
    const std::wstring& lastFailure() const { return m_failure; }

private:
    using Event = void (AcRxDLinkerReactor::*)(const ACHAR*);

    LoadedModule* find(const std::wstring& name) const;
    LoadedModule* withId(const void* appId) const;
    bool refuse(const std::wstring& name, const std::wstring& reason);
    bool start(const std::wstring& name, const std::wstring& path);
    AcRxEntryPoint openEntry(const std::wstring& name, const std::wstring& path);
    AcRx::AppRetCode send(const LoadedModule& module, AcRx::AppMsgCode message, void* packet);
    void end(LoadedModule& module);
    void forget(const LoadedModule& module);
    void tell(Event event, const std::wstring& name);

    std::vector<std::unique_ptr<LoadedModule>> m_modules;
    // What was unloaded: an id that is used too late is unknown, and not a stranger's.
    std::vector<std::unique_ptr<LoadedModule>> m_forgotten;
    std::vector<AcRxDLinkerReactor*> m_reactors;
    LinkerObserver m_observer;
    std::wstring m_failure;
};

} // namespace embedded::rx
