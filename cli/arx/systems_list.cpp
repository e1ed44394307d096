#include "cli/arx/commands.h"
#include "cli/arx/report_scope.h"
#include "cli/arx/system_summary.h"
#include "cli/arx/systems.h"
#include "cli/common/output.h"
#include "cli/common/terminal.h"

#include <nlohmann/json.hpp>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* noSystem = "no system; 'taldork systems check' tells why";

class SystemsList : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("systems"), "list", "Lists the structural systems of a drawing",
            "Each store's system comes as the module reads it when the drawing opens: kind, gravity axis, "
            "unit\n"
            "and scale, the store's axes as the drawing sees them, extents, node numbers, project and "
            "design\n"
            "code (which only old drawings tell), and how the graphic settings differ from the defaults. A\n"
            "store without a system is listed with a remark. JSON has the settings one by one.\n"
            "\n"
            "Example: taldork systems list hall.dwg --json --all");
        addDrawing(*command, m_file);
        CLI::Option* json = addJson(*command, m_json);
        command->add_flag("--all", m_all, "All sizes, switches and colours, not only those that differ")
            ->needs(json);
        return command;
    }

    void run() override {
        std::size_t reports = 0;
        const Drawing drawing = openCounting(reports);
        m_json ? printAsJson(drawing, reports) : print(drawing, reports);
    }

private:
    Drawing openCounting(std::size_t& reports) const {
        const ReportScope counting([&](const ReportScope::Report&) { ++reports; },
                                   ReportScope::Before::kHearsToo);
        return Drawing::open(m_file);
    }

    static void print(const Drawing& drawing, std::size_t reports) {
        std::string text;
        std::size_t systems = 0;
        const auto stores = systemStores(drawing.database());
        for (const std::string& name : stores) {
            const auto system = systemOf(drawing.database(), name);
            systems += system != nullptr;
            text += system ? systemText(name, *system) : name + ": " + noSystem + "\n";
        }
        text += counted(stores.size(), "store") + ", " + counted(systems, "system") + "\n";
        if (reports != 0)
            text += counted(reports, "complaint") + "; 'taldork systems check' tells them\n";
        printText(text);
    }

    void printAsJson(const Drawing& drawing, std::size_t reports) const {
        Json systems = Json::array();
        for (const std::string& name : systemStores(drawing.database())) {
            const auto system = systemOf(drawing.database(), name);
            Json entry = {{"name", name}, {"remark", system ? Json() : Json(noSystem)}};
            if (system)
                entry.update(describeSystem(*system, m_all));
            systems.push_back(std::move(entry));
        }
        printJson({{"file", m_file}, {"systems", std::move(systems)}, {"complaints", reports}});
    }

    std::string m_file;
    bool m_json = false, m_all = false;
};

} // namespace

std::unique_ptr<Command> makeSystemsList() { return std::make_unique<SystemsList>(); }

} // namespace taldork::cli
