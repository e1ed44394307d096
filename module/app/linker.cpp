#include "app/linker.h"

#include "rxclass.h"
#include "rxdict.h"
#include "rxdlinkr.h"

namespace orv {

AcRxDynamicLinker* linker() {
    AcRxObject* const entry = acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER);
    if (entry == nullptr || !entry->isA()->isDerivedFrom(AcRxDynamicLinker::desc()))
        return nullptr;
    return static_cast<AcRxDynamicLinker*>(entry);
}

} // namespace orv
