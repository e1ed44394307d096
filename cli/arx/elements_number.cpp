#include "cli/arx/commands.h"
#include "cli/arx/elements_numbering.h"
#include "cli/common/handles.h"
#include "cli/common/messages.h"
#include "cli/common/output.h"
#include "cli/common/table.h"
#include "cli/common/terminal.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;

struct Renumbering {
    std::string className;
    std::vector<NumberChange> changes; // by new number
};

std::string handlesText(const std::vector<AcDbObjectId>& ids) {
    std::string text;
    for (const AcDbObjectId& id : ids)
        text += " " + handleText(id);
    return text;
}

std::string describe(const ClassNumbers& numbers) {
    std::string text = oneLine(numbers.className) + ": " + counted(numbers.elements.size(), "element") +
                       ", highest number " + std::to_string(numbers.highest()) + "\n";
    for (const auto& duplicate : numbers.duplicates())
        text += "  duplicate  " + std::to_string(duplicate.number) + ":" + handlesText(duplicate.ids) + "\n";
    for (const auto& gap : numbers.gaps())
        text += "  gap        " + std::to_string(gap.first) +
                (gap.last != gap.first ? " to " + std::to_string(gap.last) : "") + "\n";
    if (const auto without = numbers.unnumbered(); !without.empty())
        text += "  no number " + handlesText(without) + "\n";
    return text;
}

Json handlesJson(const std::vector<AcDbObjectId>& ids) {
    Json handles = Json::array();
    for (const AcDbObjectId& id : ids)
        handles.push_back(handleText(id));
    return handles;
}

Json jsonOf(const ClassNumbers& numbers) {
    Json duplicates = Json::array(), gaps = Json::array();
    for (const auto& duplicate : numbers.duplicates())
        duplicates.push_back({{"number", duplicate.number}, {"handles", handlesJson(duplicate.ids)}});
    for (const auto& gap : numbers.gaps())
        gaps.push_back({{"first", gap.first}, {"last", gap.last}});
    return {{"class", numbers.className},
            {"dxfName", numbers.dxfName},
            {"elements", numbers.elements.size()},
            {"highest", numbers.highest()},
            {"duplicates", std::move(duplicates)},
            {"gaps", std::move(gaps)},
            {"unnumbered", handlesJson(numbers.unnumbered())}};
}

Json jsonOf(const std::vector<Renumbering>& renumberings) {
    Json rows = Json::array();
    for (const Renumbering& renumbering : renumberings)
        for (const NumberChange& change : renumbering.changes)
            rows.push_back({{"handle", handleText(change.id)},
                            {"class", renumbering.className},
                            {"from", change.from},
                            {"to", change.to}});
    return rows;
}

std::string describe(const std::vector<Renumbering>& renumberings) {
    Table table({"handle", "class", "number", "new number"});
    for (const Renumbering& renumbering : renumberings)
        for (const NumberChange& change : renumbering.changes)
            table.add({handleText(change.id), renumbering.className,
                       change.from != 0 ? std::to_string(change.from) : "", std::to_string(change.to)});
    return table.text();
}

class ElementsNumber : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("elements"), "number",
            "Checks the numbers of elements, or numbers them anew",
            "Each class counts for itself, in model space. Told are numbers that several elements have,\n"
            "numbers from 1 on that none has, and elements without a number. --renumber numbers the "
            "elements\n"
            "of a class from 1 on without a gap, in the order of the numbers that they have, and saves the\n"
            "drawing; with --dry-run it tells what it would change.\n"
            "\n"
            "Example: taldork elements number hall.dwg --class STR_Beam --renumber --dry-run");
        addDrawing(*command, m_file);
        command->add_option("--class", m_class, "Only this class: its name or its DXF name")
            ->option_text("NAME");
        CLI::Option* renumber = command->add_flag("--renumber", m_renumber, "Number the elements anew");
        command->add_flag("--dry-run", m_dryRun, "Tell what --renumber would change, and change nothing")
            ->needs(renumber);
        addJson(*command, m_json);
        return command;
    }

    void run() override {
        Drawing drawing = Drawing::open(m_file);
        const DrawingNumbers numbers = readNumbers(drawing, m_class);
        std::vector<Renumbering> renumberings;
        if (m_renumber)
            renumberings = renumberAll(drawing, numbers.classes);
        m_json ? printAsJson(numbers, renumberings) : print(numbers, renumberings);
    }

private:
    std::vector<Renumbering> renumberAll(Drawing& drawing, const std::vector<ClassNumbers>& classes) const {
        std::vector<Renumbering> done;
        bool isChanged = false;
        for (const ClassNumbers& numbers : classes) {
            Renumbering renumbering = {numbers.className, planRenumbering(numbers)};
            if (!m_dryRun)
                renumber(drawing, renumbering.changes);
            isChanged = isChanged || !renumbering.changes.empty();
            std::sort(renumbering.changes.begin(), renumbering.changes.end(),
                      [](const NumberChange& a, const NumberChange& b) { return a.to < b.to; });
            done.push_back(std::move(renumbering));
        }
        if (isChanged && !m_dryRun)
            drawing.save();
        return done;
    }

    void print(const DrawingNumbers& numbers, const std::vector<Renumbering>& renumberings) const {
        std::string text;
        for (const ClassNumbers& one : numbers.classes)
            text += cli::describe(one);
        if (numbers.classes.empty())
            text = "no elements with numbers\n";
        if (numbers.unknown != 0)
            text += counted(numbers.unknown, "element") +
                    " without the code of a class, whose numbers are not known\n";
        if (m_renumber) {
            std::size_t changes = 0;
            for (const Renumbering& renumbering : renumberings)
                changes += renumbering.changes.size();
            text += cli::describe(renumberings) + counted(changes, "element") +
                    (m_dryRun ? " to be renumbered, nothing is changed\n" : " renumbered\n");
        }
        printText(text);
    }

    void printAsJson(const DrawingNumbers& numbers, const std::vector<Renumbering>& renumberings) const {
        Json rows = Json::array();
        for (const ClassNumbers& one : numbers.classes)
            rows.push_back(jsonOf(one));
        Json document = {{"file", m_file}, {"classes", std::move(rows)}, {"unknown", numbers.unknown}};
        if (m_renumber)
            document.update({{"renumbered", jsonOf(renumberings)}, {"dryRun", m_dryRun}});
        printJson(document);
    }

    std::string m_file, m_class;
    bool m_renumber = false, m_dryRun = false, m_json = false;
};

} // namespace

std::unique_ptr<Command> makeElementsNumber() { return std::make_unique<ElementsNumber>(); }

} // namespace taldork::cli
