#include "cli/arx/commands.h"
#include "cli/arx/load_changes.h"
#include "cli/arx/saved_loads.h"
#include "cli/common/messages.h"
#include "cli/common/output.h"
#include "cli/common/terminal.h"

#include <nlohmann/json.hpp>

namespace taldork::cli {

namespace {

class SettingsGet : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command =
            addSubcommand(program.get_subcommand("settings"), "get", "Prints a saved load",
                          "One line for each key of 'settings set'; '-' for what the load does not have.\n"
                          "\n"
                          "Example: taldork settings get wind");
        addSavedLoad(*command, m_name);
        addJson(*command, m_json);
        return command;
    }

    void run() override {
        const orv::elem::LoadData data = readSavedLoad(m_name);
        if (m_json)
            return printJson({{"setting", m_name}, {"load", jsonOfLoad(data)}});
        std::string text = oneLine(m_name) + "\n";
        for (const auto& [key, value] : textsOfLoad(data))
            text += "  " + padRight(key, 14) + oneLine(value) + "\n";
        printText(text);
    }

private:
    std::string m_name;
    bool m_json = false;
};

} // namespace

std::unique_ptr<Command> makeSettingsGet() { return std::make_unique<SettingsGet>(); }

} // namespace taldork::cli
