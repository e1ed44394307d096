#pragma once

#include "appinfo.h"
#include "rxdict.h"
#include "rxobject.h"

// Hears of applications as they come and go. Belongs to whoever added it.
class AcRxDLinkerReactor : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxDLinkerReactor);

    virtual void rxAppWillBeLoaded(const ACHAR*) {}
    virtual void rxAppLoaded(const ACHAR*) {}
    virtual void rxAppLoadAborted(const ACHAR*) {}
    virtual void rxAppWillBeUnloaded(const ACHAR*) {}
    virtual void rxAppUnloaded(const ACHAR*) {}
    virtual void rxAppUnloadAborted(const ACHAR*) {}
};

// Loads and unloads modules. Names are file names, with or without folders, with slashes or backslashes;
// letters' case does not count. A name without a folder is looked for beside the host, then in the search
// folders (embedded/linker.h). Application ids are the packets that applications get with kInitAppMsg.
class AcRxDynamicLinker : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxDynamicLinker);

    // Loads a module and sends it kInitAppMsg. True if it runs, also if it did already or is just being
    // loaded. False if there is no such file, if it has no entry points or was built for another release, or
    // if it refused. With `printit` a failure is told on the console. `asCmd` says that a command of the user
    // asked.
    virtual bool loadModule(const ACHAR* fileName, bool printit, bool asCmd = false) = 0;

    // Sends kUnloadAppMsg and forgets the application; its code stays in memory. True if it is gone, or is
    // just being unloaded. False if no such module is loaded or if it is locked.
    virtual bool unloadModule(const ACHAR* fileName, bool asCmd = false) = 0;

    // The same by the application's name in the user's registry.
    virtual bool loadApp(const ACHAR* appName, AcadApp::LoadReasons reason, bool printit,
                         bool asCmd = false) = 0;
    virtual bool unloadApp(const ACHAR* appName, bool asCmd = false) = 0;

    // An application is locked, that is it cannot be unloaded, until it unlocks itself. False for an unknown
    // id.
    virtual bool unlockApplication(void* appId) const = 0;
    virtual bool lockApplication(void* appId) const = 0;
    // False for a module that is not loaded.
    virtual bool isApplicationLocked(const ACHAR* fileName) const = 0;

    // Says that the application can serve several open drawings. False for an unknown id.
    virtual bool registerAppMDIAware(void* appId) const = 0;
    virtual bool registerAppNotMDIAware(void* appId) const = 0;
    virtual bool isAppMDIAware(const ACHAR* fileName) const = 0;

    virtual void addReactor(AcRxDLinkerReactor* reactor) = 0;
    virtual void removeReactor(AcRxDLinkerReactor* reactor) = 0;
};

#define acrxDynamicLinker AcRxDynamicLinker::cast(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER))
