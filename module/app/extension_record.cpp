#include "app/extension_record.h"

namespace orv {

ExtensionRecord& ExtensionRecord::instance() {
    static ExtensionRecord s_instance;
    return s_instance;
}

void ExtensionRecord::attach(HMODULE module) {
    m_attached = AfxInitExtensionModule(m_record, module) != FALSE;
    if (!m_attached)
        return;
    m_defaultResource = AfxGetModuleState()->m_hCurrentResourceHandle;
    m_moduleResource = module;
    new CDynLinkLibrary(m_record); // the framework deletes it with the record
}

void ExtensionRecord::detach() {
    AfxTermExtensionModule(m_record, FALSE);
    m_attached = false;
}

} // namespace orv
