// structure.arx: brings the example's subcommand to the program. The elements are in the object module, which
// drawings need; this one only works with them.

#include "cli/structure/example_command.h"
#include "platform/export.h"

#include "dbxEntryPoint.h"
#include "rxdict.h"
#include "rxdlinkr.h"

namespace structure {

namespace {

constexpr const wchar_t* kObjectModule = L"structure191_x64.dbx";

class ExampleCommands : public taldork::cli::CommandSet {
public:
    std::vector<taldork::cli::Command*> commands() override { return {m_example.get()}; }

private:
    std::unique_ptr<taldork::cli::Command> m_example = makeExampleCommand();
};

// Lives as long as the process: the program still holds the command when the module has been told to go.
ExampleCommands& exampleCommands() {
    static ExampleCommands commands;
    return commands;
}

class CommandApplication : public AcRxDbxApp {
public:
    AcRx::AppRetCode On_kInitAppMsg(void* packet) override {
        if (!acrxDynamicLinker->loadModule(kObjectModule, false))
            return AcRx::kRetError;
        const AcRx::AppRetCode code = AcRxDbxApp::On_kInitAppMsg(packet);
        Adesk::UInt32 id = 0;
        if (code == AcRx::kRetOK)
            acrxSysRegistry()->atPut(taldork::cli::exampleCommandsEntry, &exampleCommands(), id);
        return code;
    }

    AcRx::AppRetCode On_kUnloadAppMsg(void* packet) override {
        acrxSysRegistry()->remove(taldork::cli::exampleCommandsEntry);
        return AcRxDbxApp::On_kUnloadAppMsg(packet);
    }

    void RegisterServerComponents() override {}
};

} // namespace

} // namespace structure

PLATFORM_ENTRY AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    static structure::CommandApplication application;
    switch (message) {
    case AcRx::kInitAppMsg:
        return application.On_kInitAppMsg(packet);
    case AcRx::kUnloadAppMsg:
        return application.On_kUnloadAppMsg(packet);
    default:
        return AcRx::kRetOK;
    }
}

PLATFORM_ENTRY int acrxGetApiVersion() { return kAcRxApiVersion; }
