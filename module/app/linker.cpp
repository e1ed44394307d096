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

void unloadModule(const wchar_t* name) {
    if (AcRxDynamicLinker* const present = linker())
        present->unloadModule(name, false);
}

} // namespace orv
