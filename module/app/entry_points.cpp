// The two functions that the host looks for in the module's file.

#include "app/entry_points.h"

#include "app/taldork_dbx_application.h"
#include "platform/export.h"

namespace {

using Operation = AcRx::AppRetCode (AcRxDbxApp::*)(void*);

// The operation of each message, by its rank from the first.
constexpr Operation kOperations[] = {
    &AcRxDbxApp::On_kInitAppMsg,      // 0
    &AcRxDbxApp::On_kUnloadAppMsg,    // 1
    &AcRxDbxApp::On_kLoadDwgMsg,      // 2
    &AcRxDbxApp::On_kUnloadDwgMsg,    // 3
    &AcRxDbxApp::On_kInvkSubrMsg,     // 4
    &AcRxDbxApp::On_kCfgMsg,          // 5
    &AcRxDbxApp::On_kEndMsg,          // 6
    &AcRxDbxApp::On_kQuitMsg,         // 7
    &AcRxDbxApp::On_kSaveMsg,         // 8
    &AcRxDbxApp::On_kDependencyMsg,   // 9
    &AcRxDbxApp::On_kNoDependencyMsg, // 10
    &AcRxDbxApp::On_kOleUnloadAppMsg, // 11
    &AcRxDbxApp::On_kPreQuitMsg,      // 12
    &AcRxDbxApp::On_kInitDialogMsg,   // 13
    &AcRxDbxApp::On_kEndDialogMsg,    // 14
    &AcRxDbxApp::On_kSuspendMsg,      // 15
};
constexpr unsigned int kOperationCount = sizeof kOperations / sizeof kOperations[0];

} // namespace

namespace orv {

AcRx::AppRetCode answer(AcRxDbxApp& application, AcRx::AppMsgCode message, void* packet) {
    // The host numbers its messages as it likes. One below the first has a rank beyond all others.
    const unsigned int rank =
        static_cast<unsigned int>(message) - static_cast<unsigned int>(AcRx::kInitAppMsg);
    return rank < kOperationCount ? (application.*kOperations[rank])(packet) : AcRx::kRetOK;
}

} // namespace orv

PLATFORM_ENTRY AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    return orv::answer(Taldork_DBX_Application::instance(), message, packet);
}

PLATFORM_ENTRY int acrxGetApiVersion() { return kAcRxApiVersion; }
