#include "cli/arx/commands.h"
#include "cli/arx/elements.h"
#include "cli/arx/elements_summary.h"
#include "cli/common/output.h"
#include "cli/common/table.h"
#include "cli/common/terminal.h"

#include <nlohmann/json.hpp>

#include <map>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;

std::string textOf(const Json& value) {
    if (value.is_string())
        return value.get<std::string>();
    return value.is_null() ? "" : value.dump();
}

/// A number that was never given is shown like a missing one.
std::string numberText(const Json& number) { return number.is_null() || number == 0 ? "" : number.dump(); }

/// The ids of the plugins, those that are kept in brackets.
std::string pluginsText(const Json& row) {
    std::string text;
    for (const Json& id : row["plugins"])
        text += (text.empty() ? "" : ", ") + textOf(id);
    for (const Json& id : row["keptPlugins"])
        text += (text.empty() ? "[" : ", [") + textOf(id) + "]";
    return text;
}

class ElementsList : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("elements"), "list", "Lists the elements of a drawing",
            "Each element with handle, class, number, name, the system that it belongs to, how many "
            "elements\n"
            "it is connected to, its plugins, and its BIM identifier. A plugin whose module is not loaded "
            "is\n"
            "kept as it is and stands in brackets. An element whose class is not loaded is listed with what\n"
            "the drawing tells of it.\n"
            "\n"
            "Example: taldork elements list hall.dwg --class STR_Beam --system ASDWG");
        addDrawing(*command, m_file);
        command->add_option("--class", m_class, "Only this class: its name or its DXF name")
            ->option_text("NAME");
        command->add_option("--system", m_system, "Only the elements of this system")->option_text("NAME");
        addJson(*command, m_json);
        return command;
    }

    void run() override {
        const Drawing drawing = Drawing::open(m_file);
        Json rows = Json::array();
        Progress progress("reading elements");
        forEachElement(drawing, [&](const FoundElement& found) {
            progress.step();
            if (!m_class.empty() && !isOfClass(found, m_class))
                return;
            Json row = describeElement(found);
            if (m_system.empty() || row["system"] == m_system)
                rows.push_back(std::move(row));
        });
        m_json ? printJson({{"file", m_file}, {"elements", std::move(rows)}}) : print(rows);
    }

private:
    static void print(const Json& rows) {
        Table table({"handle", "class", "number", "name", "system", "connected", "plugins", "BIM id"});
        std::map<std::string, std::size_t> classes;
        std::size_t away = 0;
        for (const Json& row : rows) {
            ++classes[textOf(row["class"])];
            away += row["state"] != "live";
            const bool live = row["state"] == "live";
            table.add({textOf(row["handle"]), textOf(row["class"]), numberText(row["number"]),
                       textOf(row["name"]), textOf(row["system"]),
                       live ? std::to_string(row["connections"].size()) : "",
                       live ? pluginsText(row) : awayText(row), textOf(row["bimId"])});
        }
        std::string counts;
        for (const auto& [name, count] : classes)
            counts += (counts.empty() ? ": " : ", ") + std::to_string(count) + " " + name;
        std::string last = counted(rows.size(), "element") + counts + "\n";
        if (away != 0)
            last += std::to_string(away) + " without the code of " +
                    (away == 1 ? "its class" : "their classes") + "\n";
        printText(table.text() + last);
    }

    static std::string awayText(const Json& row) {
        return "(" + textOf(row["remark"]) + "; application " + textOf(row["application"]) + ")";
    }

    std::string m_file, m_class, m_system;
    bool m_json = false;
};

} // namespace

std::unique_ptr<Command> makeElementsList() { return std::make_unique<ElementsList>(); }

} // namespace taldork::cli
