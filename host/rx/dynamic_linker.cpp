#include "rx/dynamic_linker.h"

#include "embedded/console.h"
#include "embedded/demand_load.h"
#include "embedded/linker.h"
#include "platform/files.h"
#include "platform/text.h"
#include "rx/module_finder.h"
#include "rx/sys_registry.h"
#include "rxclass.h"

#include <algorithm>
#include <exception>

ACRX_NO_CONS_DEFINE_MEMBERS(AcRxDynamicLinker, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcRxDLinkerReactor, AcRxObject)

namespace embedded::rx {

namespace {

// Never destroyed: modules unload each other while the process ends.
DynamicLinker& theLinker() {
    static DynamicLinker& one = *new DynamicLinker;
    return one;
}

std::wstring textOf(const ACHAR* text) { return text == nullptr ? std::wstring() : text; }

} // namespace

AcRxDynamicLinker& linker() { return theLinker(); }

LoadedModule* DynamicLinker::find(const std::wstring& name) const {
    const std::wstring key = moduleKey(name);
    for (const auto& module : m_modules)
        if (module->key == key)
            return module.get();
    return nullptr;
}

LoadedModule* DynamicLinker::withId(const void* appId) const {
    for (const auto& module : m_modules)
        if (module.get() == appId)
            return module.get();
    return nullptr;
}

bool DynamicLinker::refuse(const std::wstring& name, const std::wstring& reason) {
    m_failure = L"module '" + name + L"': " + reason;
    return false;
}

void DynamicLinker::tell(Event event, const std::wstring& name) {
    const std::vector<AcRxDLinkerReactor*> now = m_reactors;
    for (AcRxDLinkerReactor* reactor : now)
        if (std::find(m_reactors.begin(), m_reactors.end(), reactor) != m_reactors.end())
            (reactor->*event)(name.c_str());
}

bool DynamicLinker::loadModule(const ACHAR* fileName, bool printit, bool) {
    const std::wstring name = textOf(fileName);
    if (m_observer)
        m_observer({LinkerCall::kLoad, name, printit});
    m_failure.clear();
    if (!name.empty() && find(name) != nullptr)
        return true;
    const std::wstring path = findModule(name);
    const bool done = path.empty() ? refuse(name, L"there is no such file") : start(name, path);
    if (!done && printit)
        writeToConsole(m_failure + L"\n");
    return done;
}

// The entry point of a module that was built for this host, or null.
AcRxEntryPoint DynamicLinker::openEntry(const std::wstring& name, const std::wstring& path) {
    std::wstring reason;
    const platform::ModuleHandle library = platform::openLibrary(path, reason);
    if (library == nullptr) {
        refuse(name, reason);
        return nullptr;
    }
    const auto entry = reinterpret_cast<AcRxEntryPoint>(platform::librarySymbol(library, "acrxEntryPoint"));
    const auto version =
        reinterpret_cast<AcRxApiVersionEntry>(platform::librarySymbol(library, "acrxGetApiVersion"));
    if (entry == nullptr || version == nullptr)
        refuse(name, L"it has no entry point of an application");
    else if (version() != kAcRxApiVersion)
        refuse(name, L"it was built for another release of the host");
    else
        return entry;
    return nullptr;
}

bool DynamicLinker::start(const std::wstring& name, const std::wstring& path) {
    const std::wstring bareName = platform::bareNameOf(path);
    tell(&AcRxDLinkerReactor::rxAppWillBeLoaded, bareName);
    const AcRxEntryPoint entry = openEntry(name, path);
    if (entry == nullptr) {
        tell(&AcRxDLinkerReactor::rxAppLoadAborted, bareName);
        return false;
    }
    m_modules.push_back(std::make_unique<LoadedModule>());
    LoadedModule& module = *m_modules.back();
    module.key = moduleKey(path);
    module.application.name = bareName;
    module.application.path = path;
    module.entry = entry;
    AcRx::AppRetCode code = AcRx::kRetError;
    try {
        code = entry(AcRx::kInitAppMsg, &module);
    } catch (...) {
        forget(module);
        throw;
    }
    if (code != AcRx::kRetOK) {
        forget(module);
        tell(&AcRxDLinkerReactor::rxAppLoadAborted, bareName);
        return refuse(name, L"it refused to start");
    }
    module.state = LoadedModule::kRunning;
    tell(&AcRxDLinkerReactor::rxAppLoaded, bareName);
    return true;
}

bool DynamicLinker::unloadModule(const ACHAR* fileName, bool asCmd) {
    const std::wstring name = textOf(fileName);
    if (m_observer)
        m_observer({LinkerCall::kUnload, name, asCmd});
    m_failure.clear();
    LoadedModule* module = find(name);
    if (module == nullptr)
        return refuse(name, L"it is not loaded");
    if (module->state == LoadedModule::kUnloading)
        return true;
    if (module->state == LoadedModule::kLoading)
        return refuse(name, L"it is just being loaded");
    if (module->application.locked) {
        tell(&AcRxDLinkerReactor::rxAppUnloadAborted, module->application.name);
        return refuse(name, L"it is locked");
    }
    end(*module);
    return true;
}

// The application's answer is not asked for: it has no say in going.
void DynamicLinker::end(LoadedModule& module) {
    const std::wstring bareName = module.application.name;
    module.state = LoadedModule::kUnloading;
    tell(&AcRxDLinkerReactor::rxAppWillBeUnloaded, bareName);
    try {
        module.entry(AcRx::kUnloadAppMsg, &module);
    } catch (...) {
        forget(module);
        throw;
    }
    forget(module);
    tell(&AcRxDLinkerReactor::rxAppUnloaded, bareName);
}

void DynamicLinker::forget(const LoadedModule& module) {
    for (auto at = m_modules.begin(); at != m_modules.end(); ++at)
        if (at->get() == &module) {
            m_forgotten.push_back(std::move(*at));
            m_modules.erase(at);
            return;
        }
}

bool DynamicLinker::loadApp(const ACHAR* appName, AcadApp::LoadReasons reason, bool printit, bool) {
    m_failure.clear();
    if (demandLoad(textOf(appName), reason))
        return true;
    if (m_failure.empty())
        m_failure = L"application '" + textOf(appName) + L"' has no entry to be loaded from";
    if (printit)
        writeToConsole(m_failure + L"\n");
    return false;
}

bool DynamicLinker::unloadApp(const ACHAR* appName, bool asCmd) {
    AcadAppInfo entry;
    entry.setAppName(appName);
    return entry.readFromRegistry() == AcadApp::eOk && unloadModule(entry.moduleName(), asCmd);
}

bool DynamicLinker::unlockApplication(void* appId) const {
    LoadedModule* module = withId(appId);
    if (module != nullptr)
        module->application.locked = false;
    return module != nullptr;
}

bool DynamicLinker::lockApplication(void* appId) const {
    LoadedModule* module = withId(appId);
    if (module != nullptr)
        module->application.locked = true;
    return module != nullptr;
}

bool DynamicLinker::isApplicationLocked(const ACHAR* fileName) const {
    const LoadedModule* module = find(textOf(fileName));
    return module != nullptr && module->application.locked;
}

bool DynamicLinker::registerAppMDIAware(void* appId) const {
    LoadedModule* module = withId(appId);
    if (module != nullptr)
        module->application.mdiAware = true;
    return module != nullptr;
}

bool DynamicLinker::registerAppNotMDIAware(void* appId) const {
    LoadedModule* module = withId(appId);
    if (module != nullptr)
        module->application.mdiAware = false;
    return module != nullptr;
}

bool DynamicLinker::isAppMDIAware(const ACHAR* fileName) const {
    const LoadedModule* module = find(textOf(fileName));
    return module != nullptr && module->application.mdiAware;
}

void DynamicLinker::addReactor(AcRxDLinkerReactor* reactor) {
    if (reactor != nullptr && std::find(m_reactors.begin(), m_reactors.end(), reactor) == m_reactors.end())
        m_reactors.push_back(reactor);
}

void DynamicLinker::removeReactor(AcRxDLinkerReactor* reactor) {
    m_reactors.erase(std::remove(m_reactors.begin(), m_reactors.end(), reactor), m_reactors.end());
}

// What goes wrong inside one application must keep neither the others from the message nor the host from what
// it is about.
AcRx::AppRetCode DynamicLinker::send(const LoadedModule& module, AcRx::AppMsgCode message, void* packet) {
    std::string what;
    try {
        return module.entry(message, packet);
    } catch (const std::exception& failure) {
        what = failure.what();
    } catch (...) {
        what = "unknown";
    }
    writeToConsole(module.application.name + L": exception in message " + std::to_wstring(message) + L": " +
                   platform::fromUtf8(what) + L"\n");
    return AcRx::kRetError;
}

AcRx::AppRetCode DynamicLinker::sendToAll(AcRx::AppMsgCode message, void* packet) {
    std::vector<const LoadedModule*> now;
    for (const auto& module : m_modules)
        now.push_back(module.get());
    AcRx::AppRetCode first = AcRx::kRetOK;
    for (const LoadedModule* module : now) {
        if (withId(module) == nullptr || module->state != LoadedModule::kRunning)
            continue;
        const AcRx::AppRetCode code = send(*module, message, packet);
        if (first == AcRx::kRetOK)
            first = code;
    }
    return first;
}

std::vector<Application> DynamicLinker::applications() const {
    std::vector<Application> list;
    for (const auto& module : m_modules)
        list.push_back(module->application);
    return list;
}

void DynamicLinker::unloadAll() {
    for (;;) {
        LoadedModule* newest = nullptr;
        for (const auto& module : m_modules)
            if (module->state == LoadedModule::kRunning)
                newest = module.get();
        if (newest == nullptr)
            return;
        end(*newest);
    }
}

LinkerObserver DynamicLinker::exchangeObserver(LinkerObserver observer) {
    std::swap(m_observer, observer);
    return observer;
}

void unloadAll() { theLinker().unloadAll(); }
const std::wstring& lastLinkerFailure() { return theLinker().lastFailure(); }

} // namespace embedded::rx

namespace embedded {

LinkerObserver setLinkerObserver(LinkerObserver observer) {
    return rx::theLinker().exchangeObserver(std::move(observer));
}

AcRx::AppRetCode sendToAll(AcRx::AppMsgCode message, void* packet) {
    return rx::theLinker().sendToAll(message, packet);
}

std::vector<Application> applications() { return rx::theLinker().applications(); }

} // namespace embedded
