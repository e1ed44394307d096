#include "cli/arx/commands.h"
#include "cli/arx/selections.h"
#include "cli/common/messages.h"
#include "cli/common/output.h"

namespace taldork::cli {

namespace {

class SelectDel : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command =
            addSubcommand(program.get_subcommand("select"), "del", "Deletes a named selection",
                          "The selection goes, its objects stay. Saves the drawing.\n"
                          "\n"
                          "Example: taldork select del hall.dwg 'upper floor'");
        addDrawing(*command, m_file);
        addSelection(*command, m_name);
        return command;
    }

    void run() override {
        Drawing drawing = Drawing::open(m_file);
        deleteSelection(drawing, m_name);
        drawing.save();
        printText("deleted the selection '" + oneLine(m_name) + "'\n");
    }

private:
    std::string m_file, m_name;
};

} // namespace

std::unique_ptr<Command> makeSelectDel() { return std::make_unique<SelectDel>(); }

} // namespace taldork::cli
