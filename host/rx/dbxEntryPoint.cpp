#include "dbxEntryPoint.h"

#include "platform/files.h"
#include "platform/shared_library.h"
#include "rxclass.h"
#include "rxdlinkr.h"
#include "rxregsvc.h"

#include <typeinfo>

namespace {

// The module that holds the code of an application, seen from the description of its class.
platform::ModuleHandle moduleOf(const AcRxDbxApp& application) {
    const std::type_info& type = typeid(application);
    return platform::moduleHandle(platform::bareNameOf(platform::modulePathOfAddress(&type)).c_str());
}

} // namespace

AcRx::AppRetCode AcRxDbxApp::On_kInitAppMsg(void* packet) {
    m_hdllInstance = static_cast<HINSTANCE>(moduleOf(*this));
    if (m_bUnlock)
        acrxDynamicLinker->unlockApplication(packet);
    if (m_bMDIAware)
        acrxDynamicLinker->registerAppMDIAware(packet);
    RegisterServerComponents();
    for (const ClassEntry* entry = m_classTable.first; entry != m_classTable.end; ++entry)
        entry->init();
    if (m_classTable.first != m_classTable.end)
        acrxBuildClassHierarchy();
    return AcRx::kRetOK;
}

AcRx::AppRetCode AcRxDbxApp::On_kUnloadAppMsg(void*) {
    for (const ClassEntry* entry = m_classTable.end; entry != m_classTable.first;)
        (--entry)->remove();
    return AcRx::kRetOK;
}
