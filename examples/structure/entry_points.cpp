// The two functions that the host looks for in the module's file.

#include "app/entry_points.h"
#include "structure/application.h"

#include "platform/export.h"

PLATFORM_ENTRY AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    return orv::answer(structure::Application::instance(), message, packet);
}

PLATFORM_ENTRY int acrxGetApiVersion() { return kAcRxApiVersion; }
