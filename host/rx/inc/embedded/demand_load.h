#pragma once

#include "appinfo.h"

#include <string>

namespace embedded::rx {

// Below the user's part of the registry; an application's entry is a key of its name in it.
constexpr const wchar_t* kApplicationsKey = L"Software\\EmbeddedHost\\R19.1\\Applications";

// Loads an application from its entry. `appName` may carry a description behind a bar ("Name|More text"),
// which is left out. True if a module was loaded, or runs already. False if there is no entry, if it does not
// name a module, if it does not ask for being loaded on this occasion or is disabled, if the load failed, and
// for an application that is just being loaded on demand.
bool demandLoad(const std::wstring& appName, AcadApp::LoadReasons reason);

} // namespace embedded::rx
