#include "cli/arx/commands.h"
#include "cli/arx/report_scope.h"
#include "cli/arx/system_complaints.h"
#include "cli/arx/system_summary.h"
#include "cli/arx/systems.h"
#include "cli/common/messages.h"
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
            "code (which only old drawings tell), and the graphic settings that differ from the defaults, "
            "the\n"
            "first eight of them. A store without a system is listed with a remark. JSON has all that "
            "differ,\n"
            "and for the axes also the matrix of the turn.\n"
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
        const std::size_t complaints = reports != 0 ? countComplaints() : 0;
        m_json ? printAsJson(drawing, complaints) : print(drawing, complaints);
    }

private:
    Drawing openCounting(std::size_t& reports) const {
        const ReportScope counting([&](const ReportScope::Report&) { ++reports; },
                                   ReportScope::Before::kHearsToo);
        return Drawing::open(m_file);
    }

    /// Reads the drawing once more, store by store: of several exceptions only the first leaves the module
    /// when a drawing opens, and it goes to the host.
    std::size_t countComplaints() const {
        const ReportScope quiet([](const ReportScope::Report&) {});
        const Drawing drawing = Drawing::read(m_file);
        return readSystems(drawing.database()).list.size();
    }

    static void print(const Drawing& drawing, std::size_t complaints) {
        std::string text;
        std::size_t systems = 0;
        const auto stores = systemStores(drawing.database());
        for (const std::string& name : stores) {
            const auto system = systemOf(drawing.database(), name);
            systems += system != nullptr;
            text += system ? systemText(name, *system) : oneLine(name) + ": " + noSystem + "\n";
        }
        text += counted(stores.size(), "store") + ", " + counted(systems, "system") + "\n";
        if (complaints != 0)
            text += counted(complaints, "complaint") + "; 'taldork systems check' tells them\n";
        printText(text);
    }

    void printAsJson(const Drawing& drawing, std::size_t complaints) const {
        Json systems = Json::array();
        for (const std::string& name : systemStores(drawing.database())) {
            const auto system = systemOf(drawing.database(), name);
            Json entry = {{"name", name}, {"remark", system ? Json() : Json(noSystem)}};
            if (system)
                entry.update(describeSystem(*system, m_all));
            systems.push_back(std::move(entry));
        }
        printJson({{"file", m_file}, {"systems", std::move(systems)}, {"complaints", complaints}});
    }

    std::string m_file;
    bool m_json = false, m_all = false;
};

} // namespace

std::unique_ptr<Command> makeSystemsList() { return std::make_unique<SystemsList>(); }

} // namespace taldork::cli
