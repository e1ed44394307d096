#pragma once

#include "cli/command.h"

#include <memory>

namespace taldork::cli {

// The subcommands that need the host alone. `module` is null when the command module is away; what of a
// subcommand needs it then fails with a clear line, or is left out.
std::unique_ptr<Command> makeNew(CommandModule* module);
std::unique_ptr<Command> makeSave();
std::unique_ptr<Command> makeInfo(CommandModule* module);

} // namespace taldork::cli
