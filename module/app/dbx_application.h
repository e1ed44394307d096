#pragma once

#include "base/export.h"

#include "dbxEntryPoint.h"

#include <deque>
#include <string>

namespace orv {

// The frame of a module's application object: answers the host's messages, keeps what the module has loaded,
// and writes the entry from which the host loads the module on demand. The virtual operations go on behind
// those of the base; their order is known to other modules.
class TALDORK_API DBX_Application : public AcRxDbxApp {
public:
    // `name` is the module's bare file name. An empty one makes an application that knows neither path nor
    // handle; so does, for the path alone, a module that was loaded under another suffix than ".dbx".
    explicit DBX_Application(const std::wstring& name);

    // Unlocks and registers the application, attaches the module to the framework, then runs onBeforeInit,
    // the base, registerClasses and the demand-load entry. The first code that is not 0 ends it.
    AcRx::AppRetCode On_kInitAppMsg(void* packet) override;
    // Unloads the dependencies, the newest first, and detaches the module from the framework.
    AcRx::AppRetCode On_kUnloadAppMsg(void* packet) override;
    void RegisterServerComponents() override;

    // Loads a module that is unloaded again with this one. Null, and one that cannot be loaded, do nothing.
    virtual void loadDependency(const wchar_t* name);
    // Steps of On_kInitAppMsg for an application of one's own; here they do nothing. `packet` is the
    // message's own, by which the linker knows the module. A code other than 0 ends the message with that
    // code: nothing is registered after it, and no demand-load entry is written.
    virtual AcRx::AppRetCode onBeforeInit(void* packet);
    virtual AcRx::AppRetCode registerClasses(void* packet);
    // After the demand-load entry was written, or the host has refused it.
    virtual void onRegistered();

    const std::wstring& moduleName() const { return m_moduleName; }
    // Empty if the module was loaded under another suffix.
    const std::wstring& modulePath() const { return m_modulePath; }
    HMODULE moduleHandle() const { return m_moduleHandle; }
    const std::deque<std::wstring>& loadedDependencies() const { return m_dependencies; }

protected:
    ~DBX_Application();

    void writeLoaderEntry();

private:
    std::wstring m_moduleName;
    std::wstring m_modulePath;
    HMODULE m_moduleHandle;
    std::deque<std::wstring> m_dependencies; // the oldest first
};

} // namespace orv
