#include "cli/arx/commands.h"

namespace taldork::cli {

void addDrawing(CLI::App& command, std::string& file, const std::string& name, const std::string& meaning) {
    command.add_option(name, file, meaning)->required()->option_text(noRemark);
}

void addStore(CLI::App& command, std::string& store) {
    store = defaultStore;
    command.add_option("--store", store, "Name of the record store")->option_text("NAME [" + store + "]");
}

void addJson(CLI::App& command, bool& json) {
    command.add_flag("--json", json, "Print machine-readable JSON");
}

} // namespace taldork::cli
