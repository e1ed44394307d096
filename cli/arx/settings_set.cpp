#include "cli/arx/commands.h"
#include "cli/arx/load_changes.h"
#include "cli/arx/saved_loads.h"
#include "cli/common/messages.h"
#include "cli/common/output.h"

#include "platform/text.h"

#include <set>

namespace taldork::cli {

namespace {

class SettingsSet : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command =
            addSubcommand(program.get_subcommand("settings"), "set", "Saves a load, or changes a saved one",
                          "Keys:\n" + loadKeysHelp() +
                              "A key that is not given stays as it was. A new load is called NAME.\n"
                              "\n"
                              "Example: taldork settings set wind cases=1,2 distribution=line value1=2.5");
        addSavedLoad(*command, m_name);
        command->add_option("KEY=VALUE", m_texts, "what to set")
            ->required()
            ->option_text("...")
            ->check(CLI::Validator(checkLoadChange, ""));
        command->callback([this] { gather(); });
        return command;
    }

    void run() override {
        const bool isThere = isSavedLoad(m_name);
        orv::elem::LoadData data;
        if (isThere)
            data = readSavedLoad(m_name);
        else
            data.m_name = platform::fromUtf8(m_name);
        for (const LoadChange& change : m_changes)
            change.apply(data);
        writeSavedLoad(m_name, data);
        printText((isThere ? "changed the load '" : "saved the load '") + oneLine(m_name) + "'\n");
    }

private:
    void gather() {
        std::set<std::string> keys;
        for (const std::string& text : m_texts) {
            m_changes.push_back(parseLoadChange(text));
            if (!keys.insert(m_changes.back().key).second)
                throw CLI::ValidationError("KEY=VALUE", "'" + m_changes.back().key + "' is given twice");
        }
    }

    std::string m_name;
    std::vector<std::string> m_texts;
    std::vector<LoadChange> m_changes;
};

} // namespace

std::unique_ptr<Command> makeSettingsSet() { return std::make_unique<SettingsSet>(); }

} // namespace taldork::cli
