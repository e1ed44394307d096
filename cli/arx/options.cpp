#include "cli/arx/commands.h"

#include "cli/arx/saved_loads.h"
#include "cli/common/handles.h"

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

void addLoadCase(CLI::App& command, std::optional<unsigned int>& loadCase) {
    command.add_option("--case", loadCase, "Only the loads of this load case")->option_text("NUMBER");
}

void addSystem(CLI::App& command, std::string& name) {
    command.add_option("NAME", name, "the store of the system, as in ASDWG; upper and lower case count")
        ->required()
        ->option_text(noRemark);
}

void addSelection(CLI::App& command, std::string& name) {
    command.add_option("NAME", name, "the selection; upper and lower case do not count")
        ->required()
        ->option_text(noRemark)
        ->check(CLI::Validator(
            [](const std::string& text) { return text.empty() ? "a selection needs a name" : std::string(); },
            ""));
}

void addSavedLoad(CLI::App& command, std::string& name) {
    command.add_option("NAME", name, "the saved load; upper and lower case do not count")
        ->required()
        ->option_text(noRemark)
        ->check(CLI::Validator(checkLoadName, ""));
}

void addHandle(CLI::App& command, std::string& handle) {
    command.add_option("HANDLE", handle, "the element, as 'list' tells it, as in 2A")
        ->required()
        ->option_text(noRemark)
        ->check(CLI::Validator(checkHandle, ""));
}

void addHandles(CLI::App& command, std::vector<std::string>& handles) {
    command.add_option("HANDLE", handles, "handles of objects, as in 2A")
        ->required()
        ->option_text("...")
        ->check(CLI::Validator(checkHandle, ""));
}

} // namespace taldork::cli
