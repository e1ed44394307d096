#pragma once

#include "platform/afx_extension.h"

namespace orv {

// This module's place in the framework's chain of extension modules. One for the module, whatever application
// objects it has.
class ExtensionRecord {
public:
    static ExtensionRecord& instance();

    bool isAttached() const { return m_attached; }
    // Enters the chain. A refusal of the framework leaves the record unattached.
    void attach(HMODULE module);
    void detach();

    HINSTANCE defaultResource() const { return m_defaultResource; }
    HINSTANCE moduleResource() const { return m_moduleResource; }

private:
    AFX_EXTENSION_MODULE m_record;
    bool m_attached = false;
    HINSTANCE m_defaultResource = nullptr;
    HINSTANCE m_moduleResource = nullptr;
};

} // namespace orv
