#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace taldork::cli {

using Bytes = std::vector<std::uint8_t>;

/// Bytes from pairs of hexadecimal digits; blanks, colons and a leading "0x" are skipped. Nothing when other
/// characters stand in the text or a digit is left over.
std::optional<Bytes> parseHex(const std::string& text);

/// Two lower-case digits a byte, nothing between them.
std::string hexDigits(const Bytes& bytes);

/// For people: sixteen bytes a line, with their offset before and their printable characters behind.
std::string hexDump(const Bytes& bytes);

/// Check for CLI11.
std::string checkHex(const std::string& text);

} // namespace taldork::cli
