#pragma once

#include "cli/command.h"

#include <string>

namespace taldork::cli {

/// Loads the module and its command module from beside the host. Null when they are not there: drawings open
/// and save without them.
CommandModule* loadCommandModule();

/// Why something cannot be done that needs the module, when loadCommandModule gave null.
std::string moduleAwayText();

/// The same for the command module of the example front end, which needs the module.
CommandSet* loadExampleCommands();
std::string exampleAwayText();

} // namespace taldork::cli
