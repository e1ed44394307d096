#include "platform/afx_extension.h"

#include <vector>

namespace {

struct Framework {
    AFX_MODULE_STATE state;
    std::vector<CDynLinkLibrary*> libraries;
    bool refuses = false;
};

// Never destroyed: modules end their records in their own static termination.
Framework& framework() {
    static Framework& one = *new Framework;
    return one;
}

} // namespace

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE module) {
    if (record.bInitialized)
        return TRUE;
    if (module == nullptr || framework().refuses)
        return FALSE;
    record.bInitialized = TRUE;
    record.hModule = module;
    record.hResource = module;
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all) {
    const std::vector<CDynLinkLibrary*> libraries = framework().libraries;
    for (CDynLinkLibrary* library : libraries)
        if (all || library->m_record == &record)
            delete library;
    record.bInitialized = FALSE;
}

AFX_MODULE_STATE* AfxGetModuleState() { return &framework().state; }

void AfxSetResourceHandle(HINSTANCE resource) { AfxGetModuleState()->m_hCurrentResourceHandle = resource; }

HINSTANCE AfxGetResourceHandle() { return AfxGetModuleState()->m_hCurrentResourceHandle; }

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& record, BOOL)
    : m_hModule(record.hModule), m_hResource(record.hResource), m_record(&record) {
    framework().libraries.push_back(this);
}

CDynLinkLibrary::~CDynLinkLibrary() {
    auto& libraries = framework().libraries;
    for (auto place = libraries.begin(); place != libraries.end(); ++place)
        if (*place == this) {
            libraries.erase(place);
            break;
        }
}

namespace platform {

int extensionLibraries() { return static_cast<int>(framework().libraries.size()); }
void refuseExtensionModules(bool refuse) { framework().refuses = refuse; }

} // namespace platform
