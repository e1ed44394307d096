#include "cli/arx/commands.h"
#include "cli/arx/elements_editing.h"
#include "cli/common/failure.h"
#include "cli/common/messages.h"
#include "cli/common/output.h"
#include "cli/common/terminal.h"

#include <iostream>

namespace taldork::cli {

namespace {

/// A step with the place where it was read.
struct PlacedStep {
    std::size_t line;
    EditStep step;
};

std::string changesText(const ElementEditing::Change& change) {
    std::string text;
    for (const std::string& title : change.went)
        text += "  - " + oneLine(title) + "\n";
    for (const std::string& title : change.came)
        text += "  + " + oneLine(title) + "\n";
    return text;
}

class ElementsEdit : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("elements"), "edit",
            "Moves, copies and erases elements, with undo and redo",
            "Reads steps from standard input, one on each line, does one after the other as commands of an\n"
            "editor, and saves the drawing. A step that cannot be done ends the call, and the file stays as\n"
            "it was. Blank lines, and those that begin with #, are left out.\n"
            "\n"
            "  move HANDLE... X,Y,Z    by that vector\n"
            "  copy HANDLE... X,Y,Z    the copies stand by that vector from their originals\n"
            "  erase HANDLE...\n"
            "  undo                    takes the last step back\n"
            "  redo                    does again what was undone last\n"
            "\n"
            "Each step is printed with the elements that came with it (+) and went (-).\n"
            "\n"
            "Example: echo 'move 2A 0,0,3' | taldork elements edit hall.dwg");
        addDrawing(*command, m_file);
        command->add_flag("--dry-run", m_dryRun, "Save nothing");
        return command;
    }

    void run() override {
        const std::vector<PlacedStep> steps = readSteps();
        Drawing drawing = Drawing::open(m_file);
        ElementEditing editing(drawing);
        std::string text;
        for (const PlacedStep& placed : steps)
            text += runStep(editing, placed);
        const bool saves = editing.isChanged() && !m_dryRun;
        if (saves)
            drawing.save();
        printText(text + counted(steps.size(), "step") + (saves ? ", saved\n" : ", nothing saved\n"));
    }

private:
    static std::vector<PlacedStep> readSteps() {
        std::vector<PlacedStep> steps;
        std::string line;
        for (std::size_t number = 1; std::getline(std::cin, line); ++number) {
            const auto first = line.find_first_not_of(" \t\r");
            if (first == std::string::npos || line[first] == '#')
                continue;
            const auto step = parseEditStep(line);
            if (!step)
                throw Failure("standard input", "line " + std::to_string(number) + ": '" + oneLine(line) +
                                                    "' is no step ('taldork elements edit --help' has them)");
            steps.push_back({number, *step});
        }
        return steps;
    }

    static std::string runStep(ElementEditing& editing, const PlacedStep& placed) {
        try {
            const ElementEditing::Change change = editing.run(placed.step);
            return placed.step.text() + (change.undone.empty() ? "" : ": " + change.undone) + "\n" +
                   changesText(change);
        } catch (const Failure& failure) {
            throw Failure(failure.subject(), "line " + std::to_string(placed.line) + ", '" +
                                                 placed.step.text() + "': " + failure.what());
        }
    }

    std::string m_file;
    bool m_dryRun = false;
};

} // namespace

std::unique_ptr<Command> makeElementsEdit() { return std::make_unique<ElementsEdit>(); }

} // namespace taldork::cli
