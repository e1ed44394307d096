#include "rxregsvc.h"

#include "rx/sys_registry.h"
#include "rxclass.h"
#include "rxdlinkr.h"
#include "rxsrvice.h"

namespace {

// The linker that stands in the system registry, where an application may have put its own; the host's if
// there is none.
AcRxDynamicLinker& linker() {
    AcRxDynamicLinker* const registered = acrxDynamicLinker;
    return registered != nullptr ? *registered : embedded::rx::linker();
}

} // namespace

bool acrxLoadModule(const ACHAR* moduleName, bool printit, bool asCmd) {
    return linker().loadModule(moduleName, printit, asCmd);
}

bool acrxUnloadModule(const ACHAR* moduleName, bool asCmd) {
    return linker().unloadModule(moduleName, asCmd);
}

bool acrxLoadApp(const ACHAR* appName, bool asCmd) {
    return linker().loadApp(appName, AcadApp::kOnLoadRequest, false, asCmd);
}

bool acrxUnloadApp(const ACHAR* appName, bool asCmd) { return linker().unloadApp(appName, asCmd); }
bool acrxUnlockApplication(void* appId) { return linker().unlockApplication(appId); }
bool acrxLockApplication(void* appId) { return linker().lockApplication(appId); }
bool acrxApplicationIsLocked(const ACHAR* moduleName) { return linker().isApplicationLocked(moduleName); }
bool acrxRegisterAppMDIAware(void* appId) { return linker().registerAppMDIAware(appId); }
bool acrxRegisterAppNotMDIAware(void* appId) { return linker().registerAppNotMDIAware(appId); }
bool acrxIsAppMDIAware(const ACHAR* moduleName) { return linker().isAppMDIAware(moduleName); }

AcRxService* acrxRegisterService(const ACHAR* serviceName) {
    acrxSysRegistry(); // brings the class up
    if (AcRxService* known = acrxServiceIsRegistered(serviceName))
        return known;
    auto* service = new AcRxService;
    Adesk::UInt32 id = 0;
    embedded::rx::serviceDictionary().atPut(serviceName, service, id);
    return service;
}

AcRxService* acrxServiceIsRegistered(const ACHAR* serviceName) {
    return AcRxService::cast(embedded::rx::serviceDictionary().at(serviceName));
}
