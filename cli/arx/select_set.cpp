#include "cli/arx/commands.h"
#include "cli/arx/selections.h"
#include "cli/common/handles.h"
#include "cli/common/messages.h"
#include "cli/common/output.h"
#include "cli/common/terminal.h"

namespace taldork::cli {

namespace {

class SelectSet : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command =
            addSubcommand(program.get_subcommand("select"), "set", "Keeps objects of a drawing under a name",
                          "Makes the selection, or gives one that is there other objects, and saves the "
                          "drawing. A selection\n"
                          "owns none of its objects.\n"
                          "\n"
                          "Example: taldork select set hall.dwg 'upper floor' 2A 2B 31");
        addDrawing(*command, m_file);
        addSelection(*command, m_name);
        addHandles(*command, m_handles);
        return command;
    }

    void run() override {
        Drawing drawing = Drawing::open(m_file);
        const auto ids = findObjects(drawing, m_handles);
        const bool isMade = setSelection(drawing, m_name, ids);
        drawing.save();
        printText((isMade ? "made the selection '" : "changed the selection '") + oneLine(m_name) +
                  "': " + counted(ids.size(), "object") + "\n");
    }

private:
    std::string m_file, m_name;
    std::vector<std::string> m_handles;
};

} // namespace

std::unique_ptr<Command> makeSelectSet() { return std::make_unique<SelectSet>(); }

} // namespace taldork::cli
