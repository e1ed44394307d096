// A module that does what the compile definitions say, and tells what it was sent.

#include "test_module.h"

#include "dbxEntryPoint.h"
#include "platform/export.h"
#include "rxdict.h"
#include "rxdlinkr.h"

#ifndef API_VERSION
#define API_VERSION kAcRxApiVersion
#endif

#ifndef REFUSES
#define REFUSES false
#endif

namespace {

ModuleJournal g_journal;

class TestApplication : public AcRxDbxApp {
public:
    TestApplication() {
#if defined(STAYS_LOCKED)
        m_bUnlock = false;
        m_bMDIAware = false;
#endif
    }

    void RegisterServerComponents() override { ++g_journal.registrations; }

    AcRx::AppRetCode On_kInitAppMsg(void* packet) override {
        g_journal.packet = packet;
        if (g_journal.onInit)
            g_journal.onInit();
        const AcRx::AppRetCode code = AcRxDbxApp::On_kInitAppMsg(packet);
        g_journal.instance = m_hdllInstance;
        return REFUSES ? AcRx::kRetError : code;
    }

    AcRx::AppRetCode On_kUnloadAppMsg(void* packet) override {
        if (g_journal.onUnload)
            g_journal.onUnload();
        return AcRxDbxApp::On_kUnloadAppMsg(packet);
    }
};

TestApplication g_application;

} // namespace

#if !defined(NO_ENTRY)
PLATFORM_ENTRY AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    g_journal.messages.push_back(message);
    if (message == AcRx::kInitAppMsg)
        return g_application.On_kInitAppMsg(packet);
    if (message == AcRx::kUnloadAppMsg)
        return g_application.On_kUnloadAppMsg(packet);
    if (g_journal.onMessage)
        g_journal.onMessage(message);
    return AcRx::kRetOK;
}
#endif

PLATFORM_ENTRY int acrxGetApiVersion() { return API_VERSION; }
PLATFORM_ENTRY ModuleJournal* journal() { return &g_journal; }
