#pragma once

#include "rxdefs.h"

#include <string>
#include <vector>

namespace embedded {

// Sends a message to every application that is loaded, in the order in which they were loaded. One that a
// message unloads gets no further ones. The first answer other than kRetOK comes back, after all have been
// told. An exception that leaves an application is printed on the console and counts as the answer kRetError.
AcRx::AppRetCode sendToAll(AcRx::AppMsgCode message, void* packet);

struct Application {
    std::wstring name; // the bare file name as the file bears it
    std::wstring path;
    bool locked = true;
    bool mdiAware = false;
};

// The applications that are loaded, in the order of loading.
std::vector<Application> applications();

} // namespace embedded

namespace embedded::rx {

// Unloads every application, the newest first, locked ones too. Programs call it before they end.
void unloadAll();

} // namespace embedded::rx
