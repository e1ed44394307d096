// taldork.arx: brings the subcommands that need the module.

#include "cli/arx/commands.h"
#include "cli/arx/store.h"

#include "orvcheck/report_sink.h"

#include "dbxEntryPoint.h"
#include "rxdict.h"
#include "rxevent.h"

#ifdef _WIN32
#define TALDORK_ARX_EXPORT __declspec(dllexport)
#else
#define TALDORK_ARX_EXPORT __attribute__((visibility("default")))
#endif

namespace taldork::cli {

namespace {

/// Knows when the module takes up a drawing: between the moment in which the drawing is whole and the end of
/// the message that tells of it, which reaches the module, loaded earlier, before this one.
class TakeUpWatch : public AcRxEventReactor {
public:
    void databaseConstructed(AcDbDatabase*) override { m_takesUp = true; }
    void databaseToBeDestroyed(AcDbDatabase*) override { m_takesUp = false; }
    void end() { m_takesUp = false; }
    bool takesUp() const { return m_takesUp; }

private:
    bool m_takesUp = false;
};

// For the life of the process, as the events are.
TakeUpWatch& takeUpWatch() {
    static auto* const watch = new TakeUpWatch;
    return *watch;
}

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
        m_commands.push_back(makeSystemsList());
        m_commands.push_back(makeSystemsCreate());
        m_commands.push_back(makeSystemsSet());
        m_commands.push_back(makeSystemsCheck());
        m_commands.push_back(makeConvert());
        m_commands.push_back(makeElementsList());
        m_commands.push_back(makeElementsShow());
        m_commands.push_back(makeElementsNumber());
        m_commands.push_back(makeElementsCopy());
        m_commands.push_back(makeElementsEdit());
        m_commands.push_back(makeLoadsList());
        m_commands.push_back(makeLoadsExport());
        m_commands.push_back(makePlot());
        m_commands.push_back(makeSelectList());
        m_commands.push_back(makeSelectSet());
        m_commands.push_back(makeSelectDel());
        m_commands.push_back(makeSettingsGet());
        m_commands.push_back(makeSettingsSet());
        m_commands.push_back(makeSettingsList());
        m_commands.push_back(makeSettingsDelete());
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

    bool takesUpDrawing() const override { return takeUpWatch().takesUp(); }

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
        if (code == AcRx::kRetOK) {
            acrxSysRegistry()->atPut(commandsEntry, &moduleCommands(), id);
            acrxEvent->addReactor(&takeUpWatch());
        }
        return code;
    }

    AcRx::AppRetCode On_kLoadDwgMsg(void* packet) override {
        takeUpWatch().end();
        return AcRxDbxApp::On_kLoadDwgMsg(packet);
    }

    AcRx::AppRetCode On_kUnloadAppMsg(void* packet) override {
        acrxSysRegistry()->remove(commandsEntry);
        acrxEvent->removeReactor(&takeUpWatch());
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
    case AcRx::kLoadDwgMsg:
        return application.On_kLoadDwgMsg(packet);
    case AcRx::kUnloadAppMsg:
        return application.On_kUnloadAppMsg(packet);
    default:
        return AcRx::kRetOK;
    }
}

extern "C" TALDORK_ARX_EXPORT int acrxGetApiVersion() { return kAcRxApiVersion; }
