#pragma once

#include <string>

namespace taldork::cli {

/// Text (UTF-8) as part of one line on a terminal: each control character, line ends among them, is a blank.
std::string oneLine(const std::string& text);

/// What the exception says that is being handled, UTF-8. Only inside a handler.
std::string caughtMessage();

} // namespace taldork::cli
