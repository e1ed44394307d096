#include "cli/arx/commands.h"
#include "cli/arx/saved_loads.h"
#include "cli/common/messages.h"
#include "cli/common/output.h"

namespace taldork::cli {

namespace {

class SettingsDelete : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command =
            addSubcommand(program.get_subcommand("settings"), "delete", "Deletes a saved load",
                          "Drawings that were made with it stay as they are.\n"
                          "\n"
                          "Example: taldork settings delete wind");
        addSavedLoad(*command, m_name);
        return command;
    }

    void run() override {
        deleteSavedLoad(m_name);
        printText("deleted the load '" + oneLine(m_name) + "'\n");
    }

private:
    std::string m_name;
};

} // namespace

std::unique_ptr<Command> makeSettingsDelete() { return std::make_unique<SettingsDelete>(); }

} // namespace taldork::cli
