#pragma once

#include "cli/command.h"

#include <memory>

namespace structure {

// "taldork example FILE".
std::unique_ptr<taldork::cli::Command> makeExampleCommand();

} // namespace structure
