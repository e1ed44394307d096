#pragma once

#include "platform/text.h"
#include "rxdict.h"
#include "rxdlinkr.h"

#include <set>
#include <string>
#include <vector>

namespace testing_support {

using Calls = std::vector<std::string>;

// Stands in the place of the host's linker while it lives, and writes down what it is asked to do. Nothing is
// really loaded or unloaded.
class LinkerRecorder {
public:
    LinkerRecorder() {
        Adesk::UInt32 id = 0;
        m_before = acrxSysRegistry()->atPut(ACRX_DYNAMIC_LINKER, &m_linker, id);
    }
    ~LinkerRecorder() {
        Adesk::UInt32 id = 0;
        acrxSysRegistry()->atPut(ACRX_DYNAMIC_LINKER, m_before, id);
    }
    LinkerRecorder(const LinkerRecorder&) = delete;
    LinkerRecorder& operator=(const LinkerRecorder&) = delete;

    const Calls& calls() const { return m_linker.calls; }
    void clear() { m_linker.calls.clear(); }
    // Loading that module fails.
    void refuse(const std::wstring& name) { m_linker.refused.insert(name); }

private:
    struct Linker : AcRxDynamicLinker {
        mutable Calls calls;
        std::set<std::wstring> refused;

        bool note(const std::string& call) const {
            calls.push_back(call);
            return true;
        }
        bool loadModule(const ACHAR* name, bool printit, bool asCmd) override {
            note("load " + platform::toUtf8(name) + (printit || asCmd ? " loudly" : ""));
            return refused.count(name) == 0;
        }
        bool unloadModule(const ACHAR* name, bool asCmd) override {
            note("unload " + platform::toUtf8(name) + (asCmd ? " as command" : ""));
            return false;
        }
        bool loadApp(const ACHAR*, AcadApp::LoadReasons, bool, bool) override { return note("loadApp"); }
        bool unloadApp(const ACHAR*, bool) override { return note("unloadApp"); }
        bool unlockApplication(void*) const override { return note("unlock"); }
        bool lockApplication(void*) const override { return note("lock"); }
        bool isApplicationLocked(const ACHAR*) const override { return false; }
        bool registerAppMDIAware(void*) const override { return note("mdi"); }
        bool registerAppNotMDIAware(void*) const override { return note("not mdi"); }
        bool isAppMDIAware(const ACHAR*) const override { return false; }
        void addReactor(AcRxDLinkerReactor*) override {}
        void removeReactor(AcRxDLinkerReactor*) override {}
    };

    Linker m_linker;
    AcRxObject* m_before;
};

} // namespace testing_support
