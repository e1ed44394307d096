#pragma once

// The part of the framework library that an extension module calls.
#if defined(_WIN32)

#include <afxdllx.h>
#include <afxwin.h>

#else

#include "platform/export.h"
#include "platform/shared_library.h"

using HMODULE = platform::ModuleHandle;
using HINSTANCE = platform::ModuleHandle;
using BOOL = int;
#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

class CDynLinkLibrary;

// What the framework keeps about an extension module. Static in the module, all zero at first.
struct AFX_EXTENSION_MODULE {
    BOOL bInitialized = FALSE;
    HMODULE hModule = nullptr;
    HMODULE hResource = nullptr;
};

struct AFX_MODULE_STATE {
    HINSTANCE m_hCurrentInstanceHandle = nullptr;
    HINSTANCE m_hCurrentResourceHandle = nullptr;
};

// Fills the record. TRUE, also if it was filled already; FALSE for a null handle.
PLATFORM_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE module);
// Deletes the libraries made on the record, of all records with `all`, and marks the record as not
// initialised.
PLATFORM_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all = FALSE);

// The one state; never null. Its resource handle is the program's until another is set.
PLATFORM_API AFX_MODULE_STATE* AfxGetModuleState();
PLATFORM_API void AfxSetResourceHandle(HINSTANCE resource);
PLATFORM_API HINSTANCE AfxGetResourceHandle();

// Enters an extension module in the chain in which resources are looked for. Made on the heap; the framework
// deletes it when the module's record ends.
class PLATFORM_API CDynLinkLibrary {
public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& record, BOOL system = FALSE);
    virtual ~CDynLinkLibrary();

    HMODULE m_hModule;
    HMODULE m_hResource;

private:
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

    friend PLATFORM_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all);
    AFX_EXTENSION_MODULE* m_record;
};

namespace platform {

// The number of libraries in the chain.
PLATFORM_API int extensionLibraries();
// Makes AfxInitExtensionModule fail, as it does when the framework has no memory left.
PLATFORM_API void refuseExtensionModules(bool refuse);

} // namespace platform

#endif
