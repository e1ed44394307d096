#include "cli/arx/commands.h"

namespace taldork::cli {

void addDrawing(CLI::App& command, std::string& file, const std::string& name, const std::string& meaning) {
    command.add_option(name, file, meaning)->required()->option_text(noRemark);
}

void addStore(CLI::App& command, std::string& store) {
    store = defaultStore;
    command.add_option("--store", store, "Name of the record store")->option_text("NAME [" + store + "]");
}

CLI::Option* addJson(CLI::App& command, bool& json) {
    return command.add_flag("--json", json, "Print machine-readable JSON");
}

void addSystem(CLI::App& command, std::string& name) {
    command.add_option("NAME", name, "the store of the system, as in ASDWG; upper and lower case count")
        ->required()
        ->option_text(noRemark);
}

} // namespace taldork::cli
