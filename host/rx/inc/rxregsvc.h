#pragma once

#include "AdAChar.h"
#include "rxdefs.h"
#include "rxobject.h"

class AcRxService;

// Shorthands for the linker's operations of the same meaning (rxdlinkr.h).
bool acrxLoadModule(const ACHAR* moduleName, bool printit, bool asCmd = false);
bool acrxUnloadModule(const ACHAR* moduleName, bool asCmd = false);
bool acrxLoadApp(const ACHAR* appName, bool asCmd = false);
bool acrxUnloadApp(const ACHAR* appName, bool asCmd = false);
bool acrxUnlockApplication(void* appId);
bool acrxLockApplication(void* appId);
bool acrxApplicationIsLocked(const ACHAR* moduleName);
bool acrxRegisterAppMDIAware(void* appId);
bool acrxRegisterAppNotMDIAware(void* appId);
bool acrxIsAppMDIAware(const ACHAR* moduleName);

// Enters a fresh service under a name, or answers the one that is there. The dictionary owns it.
AcRxService* acrxRegisterService(const ACHAR* serviceName);
// Null if there is none.
AcRxService* acrxServiceIsRegistered(const ACHAR* serviceName);
