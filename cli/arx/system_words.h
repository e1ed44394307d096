#pragma once

#include "dbx/doc/drawing_unit.h"
#include "dbx/doc/system_enums.h"

#include <cstdint>
#include <optional>
#include <string>

namespace taldork::cli {

// The words by which people name what a system has as numbers.

/// "space", "plane", "plate".
const char* kindWord(orv::SYSTEM kind);
std::optional<orv::SYSTEM> parseKind(const std::string& word);
/// The number that a record of this kind bears.
std::int32_t problemNumber(orv::SYSTEM kind);

/// "-z", "+x", …; "none" for no axis.
const char* gravityWord(orv::GravityOrientation gravity);
/// Nothing for "none": who makes a system says an axis.
std::optional<orv::GravityOrientation> parseGravity(const std::string& word);

/// "m", "cm", "mm", or "other" for a number that is no unit, or a scale that is not the unit's own.
const char* unitWord(std::int32_t unit, double scale);
std::optional<orv::DrawingUnit> parseUnit(const std::string& word);

/// Checks for CLI11.
std::string checkKind(const std::string& word);
std::string checkGravity(const std::string& word);
std::string checkUnit(const std::string& word);

} // namespace taldork::cli
