#pragma once

#include "platform/afx_extension.h"
#include "rxdefs.h"

// The base of a module's one application object. Each message of the entry point has its operation, in the
// order of the message numbers; all answer kRetOK unless they are overridden.
class AcRxDbxApp {
public:
    AcRxDbxApp() = default;

    // Stores the instance handle, releases the lock and registers as MDI aware as the two flags say, calls
    // RegisterServerComponents, and registers the classes of the automatic class-entry table.
    virtual AcRx::AppRetCode On_kInitAppMsg(void* packet);
    // Takes the classes of the automatic class-entry table out again.
    virtual AcRx::AppRetCode On_kUnloadAppMsg(void* packet);
    virtual AcRx::AppRetCode On_kLoadDwgMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kUnloadDwgMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kInvkSubrMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kCfgMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kEndMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kQuitMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kSaveMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kDependencyMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kNoDependencyMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kOleUnloadAppMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kPreQuitMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kInitDialogMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kEndDialogMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kSuspendMsg(void*) { return AcRx::kRetOK; }

    virtual void RegisterServerComponents() = 0;

protected:
    // Not virtual: the table of virtual operations begins with the messages, and applications are static
    // objects.
    ~AcRxDbxApp() = default;

    // A class of the automatic table: how it is registered and how it is taken out.
    struct ClassEntry {
        void (*init)();
        void (*remove)();
    };
    // The module's automatic class-entry table; empty unless a module says otherwise.
    struct ClassTable {
        const ClassEntry* first = nullptr;
        const ClassEntry* end = nullptr;
    };
    void setClassTable(const ClassTable& table) { m_classTable = table; }

    HINSTANCE m_hdllInstance = nullptr;
    bool m_bUnlock = true;
    bool m_bMDIAware = true;

private:
    ClassTable m_classTable;
};
