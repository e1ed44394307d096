#pragma once

#include "cli/common/hex.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace taldork::cli {

/// One JSON document on standard output, indented, with a line end behind it. Text that is no UTF-8 is
/// mended.
void printJson(const nlohmann::ordered_json& document);

/// Text on standard output as it stands.
void printText(const std::string& text);

/// A whole input file. Throws Failure.
Bytes readFile(const std::string& path);

/// Writes a file whole or not at all; "-" is standard output. Throws Failure.
void writeFile(const std::string& path, const Bytes& bytes);

} // namespace taldork::cli
