#include "cli/arx/commands.h"
#include "cli/arx/load_changes.h"
#include "cli/arx/saved_loads.h"
#include "cli/common/output.h"
#include "cli/common/table.h"
#include "cli/common/terminal.h"

#include <nlohmann/json.hpp>

namespace taldork::cli {

namespace {

class SettingsList : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(program.get_subcommand("settings"), "list", "Lists the saved loads",
                                          "They are the user's own and belong to no drawing.\n"
                                          "\n"
                                          "Example: taldork settings list");
        addJson(*command, m_json);
        return command;
    }

    void run() override {
        const std::vector<std::string> names = savedLoadNames();
        m_json ? printAsJson(names) : print(names);
    }

private:
    static void printAsJson(const std::vector<std::string>& names) {
        nlohmann::ordered_json settings = nlohmann::ordered_json::array();
        for (const std::string& name : names)
            settings.push_back({{"setting", name}, {"load", jsonOfLoad(readSavedLoad(name))}});
        printJson({{"settings", std::move(settings)}});
    }

    static void print(const std::vector<std::string>& names) {
        std::vector<std::string> titles = {"setting"};
        for (const auto& [key, value] : textsOfLoad({}))
            titles.push_back(key);
        Table table(std::move(titles));
        for (const std::string& name : names) {
            std::vector<std::string> cells = {name};
            for (const auto& [key, value] : textsOfLoad(readSavedLoad(name)))
                cells.push_back(value);
            table.add(std::move(cells));
        }
        printText(table.text() + counted(names.size(), "saved load") + "\n");
    }

    bool m_json = false;
};

} // namespace

std::unique_ptr<Command> makeSettingsList() { return std::make_unique<SettingsList>(); }

} // namespace taldork::cli
