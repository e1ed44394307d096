// taldork.arx: brings the subcommands that need the module.

#include "cli/arx/commands.h"
#include "cli/arx/store.h"

#include "orvcheck/report_sink.h"

#include "dbxEntryPoint.h"
#include "rxdict.h"

#ifdef _WIN32
#define TALDORK_ARX_EXPORT __declspec(dllexport)
#else
#define TALDORK_ARX_EXPORT __attribute__((visibility("default")))
#endif

namespace taldork::cli {

namespace {

class ModuleCommands : public CommandModule {
public:
    ModuleCommands() {
        m_commands.push_back(makeStoreCreate());
        m_commands.push_back(makeRecordsList());
        m_commands.push_back(makeRecordsGet());
        m_commands.push_back(makeRecordsPut());
        m_commands.push_back(makeRecordsDel());
        m_commands.push_back(makeRecordsCopy());
        m_commands.push_back(makeRecordsSync());
        m_commands.push_back(makeDataGet());
        m_commands.push_back(makeDataSet());
    }

    std::vector<Command*> commands() override {
        std::vector<Command*> commands;
        for (const auto& command : m_commands)
            commands.push_back(command.get());
        return commands;
    }

    std::vector<StoreSummary> stores(AcDbDatabase& database) override { return listStores(database); }

    bool createStore(AcDbDatabase& database, const std::string& name) override {
        return cli::createStore(database, name);
    }

    void setReportSink(std::function<void(const std::string&)> sink) override {
        orv::smartassert::ReportSink reports;
        if (sink)
            reports = [sink](const orv::smartassert::Report& report) {
                sink(orv::smartassert::toLine(report));
            };
        orv::smartassert::setReportSink(std::move(reports));
    }

private:
    std::vector<std::unique_ptr<Command>> m_commands;
};

// Lives as long as the process: the program still holds the commands when the module has been told to go.
ModuleCommands& moduleCommands() {
    static ModuleCommands commands;
    return commands;
}

class CommandApplication : public AcRxDbxApp {
public:
    AcRx::AppRetCode On_kInitAppMsg(void* packet) override {
        const AcRx::AppRetCode code = AcRxDbxApp::On_kInitAppMsg(packet);
        Adesk::UInt32 id = 0;
        if (code == AcRx::kRetOK)
            acrxSysRegistry()->atPut(commandsEntry, &moduleCommands(), id);
        return code;
    }

    AcRx::AppRetCode On_kUnloadAppMsg(void* packet) override {
        acrxSysRegistry()->remove(commandsEntry);
        return AcRxDbxApp::On_kUnloadAppMsg(packet);
    }

    void RegisterServerComponents() override {}
};

} // namespace

} // namespace taldork::cli

extern "C" TALDORK_ARX_EXPORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    static taldork::cli::CommandApplication application;
    switch (message) {
    case AcRx::kInitAppMsg:
        return application.On_kInitAppMsg(packet);
    case AcRx::kUnloadAppMsg:
        return application.On_kUnloadAppMsg(packet);
    default:
        return AcRx::kRetOK;
    }
}

extern "C" TALDORK_ARX_EXPORT int acrxGetApiVersion() { return kAcRxApiVersion; }
