// A module of the family, as far as the linker sees one: it can be loaded, and lets itself be unloaded.

#include "platform/export.h"
#include "rxdefs.h"
#include "rxdlinkr.h"

PLATFORM_ENTRY AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    if (message == AcRx::kInitAppMsg)
        acrxDynamicLinker->unlockApplication(packet);
    return AcRx::kRetOK;
}

PLATFORM_ENTRY int acrxGetApiVersion() { return kAcRxApiVersion; }
