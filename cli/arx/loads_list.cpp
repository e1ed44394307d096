#include "cli/arx/commands.h"
#include "cli/arx/loads.h"
#include "cli/common/numbers.h"
#include "cli/common/output.h"
#include "cli/common/table.h"
#include "cli/common/terminal.h"

#include <nlohmann/json.hpp>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;

std::string textOf(const Json& value) {
    if (value.is_string())
        return value.get<std::string>();
    return value.is_null() ? "" : value.dump();
}

std::string listText(const Json& list, const std::function<std::string(const Json&)>& textOfOne) {
    std::string text;
    for (const Json& one : list)
        text += (text.empty() ? "" : " ") + textOfOne(one);
    return text;
}

/// A number that is none in JSON is null.
std::string valueText(const Json& value) {
    return value.is_number() ? roundedText(value.get<double>()) : "not a number";
}

std::string referenceText(const Json& reference) {
    if (reference.is_null())
        return "";
    const std::string numbers = listText(reference["numbers"], textOf);
    return textOf(reference["type"]) + (numbers.empty() ? "" : ": " + numbers);
}

class LoadsList : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("loads"), "list", "Lists the loads of a drawing",
            "Each load with handle, number, name, type (the analysis number and what it says), kind, "
            "whether\n"
            "it acts at a point, along a line or over an area, how its values run between the vertices as\n"
            "far as the front end says so, load cases, the values, the element that it acts on, and, for a\n"
            "free load, what it refers to. JSON has more.\n"
            "\n"
            "Example: taldork loads list hall.dwg --case 2");
        addDrawing(*command, m_file);
        addLoadCase(*command, m_case);
        addJson(*command, m_json);
        return command;
    }

    void run() override {
        const Drawing drawing = Drawing::open(m_file);
        Json rows = Json::array();
        const std::size_t unknown =
            forEachLoad(drawing, m_case, [&](const FoundLoad& load) { rows.push_back(describeLoad(load)); });
        m_json ? printJson({{"file", m_file}, {"loads", std::move(rows)}, {"unknown", unknown}})
               : print(rows, unknown);
    }

private:
    static void print(const Json& rows, std::size_t unknown) {
        Table table({"handle", "number", "name", "type", "kind", "acts", "shape", "cases", "values",
                     "element", "reference"});
        for (const Json& row : rows) {
            const Json& name = row["name"];
            table.add({textOf(row["handle"]), row["number"] == 0 ? "" : textOf(row["number"]),
                       textOf(name.is_null() || name == "" ? row["label"] : name),
                       textOf(row["type"]) + " " + textOf(row["direction"]), textOf(row["kind"]),
                       textOf(row["distribution"]), textOf(row["shape"]), listText(row["cases"], textOf),
                       listText(row["values"], valueText), textOf(row["element"]),
                       referenceText(row["reference"])});
        }
        std::string last = counted(rows.size(), "load") + "\n";
        if (unknown != 0)
            last += unknownText(unknown) + "\n";
        printText(table.text() + last);
    }

    std::string m_file;
    std::optional<unsigned int> m_case;
    bool m_json = false;
};

} // namespace

std::unique_ptr<Command> makeLoadsList() { return std::make_unique<LoadsList>(); }

} // namespace taldork::cli
