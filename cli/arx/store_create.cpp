#include "cli/arx/commands.h"
#include "cli/arx/store.h"
#include "cli/common/output.h"

namespace taldork::cli {

namespace {

class StoreCreate : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("store"), "create", "Makes an empty record store in a drawing",
            "Makes the dictionaries of the store and saves the drawing. A store that is there already\n"
            "stays as it is, and so does the file. A name must not be empty or begin with $.\n"
            "\n"
            "Example: taldork store create hall.dwg ASDWG");
        addDrawing(*command, m_file);
        command->add_option("NAME", m_name, "Name of the new store")->required()->option_text(noRemark);
        return command;
    }

    void run() override {
        Drawing drawing = Drawing::open(m_file);
        if (!createStore(drawing.database(), m_name)) {
            printText("the store '" + m_name + "' is there already; nothing was changed\n");
            return;
        }
        drawing.save();
        printText("made the record store '" + m_name + "'\n");
    }

private:
    std::string m_file, m_name;
};

} // namespace

std::unique_ptr<Command> makeStoreCreate() { return std::make_unique<StoreCreate>(); }

} // namespace taldork::cli
