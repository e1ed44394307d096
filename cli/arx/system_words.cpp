#include "cli/arx/system_words.h"

#include <cmath>

namespace taldork::cli {

namespace {

template <class Value>
struct Word {
    Value value;
    const char* text;
};

// What a kind is called, and the number of its records.
constexpr struct {
    orv::SYSTEM value;
    const char* text;
    std::int32_t number;
} kKinds[] = {{orv::RAUM, "space", 0}, {orv::EBENE, "plane", 10}, {orv::PLATTE, "plate", 30}};

constexpr Word<orv::GravityOrientation> kAxes[] = {{orv::kGravityPlusX, "+x"}, {orv::kGravityMinusX, "-x"},
                                                   {orv::kGravityPlusY, "+y"}, {orv::kGravityMinusY, "-y"},
                                                   {orv::kGravityPlusZ, "+z"}, {orv::kGravityMinusZ, "-z"}};

constexpr Word<orv::DrawingUnit> kUnits[] = {
    {orv::kUnitMetre, "m"}, {orv::kUnitCentimetre, "cm"}, {orv::kUnitMillimetre, "mm"}};

// A scale that was measured has gone through a float.
constexpr double kScaleTolerance = 1e-6;

template <class Table>
const char* textOf(const Table& table, int value, const char* otherwise) {
    for (const auto& row : table)
        if (row.value == value)
            return row.text;
    return otherwise;
}

template <class Value, class Table>
std::optional<Value> valueOf(const Table& table, const std::string& text) {
    for (const auto& row : table)
        if (row.text == text)
            return row.value;
    return std::nullopt;
}

template <class Table>
std::string check(const Table& table, const std::string& text, const char* what) {
    std::string words;
    for (const auto& row : table) {
        if (row.text == text)
            return "";
        words += (words.empty() ? "" : ", ") + std::string(row.text);
    }
    return "'" + text + "' is no " + what + ": write one of " + words;
}

} // namespace

const char* kindWord(orv::SYSTEM kind) { return textOf(kKinds, kind, "other"); }

std::optional<orv::SYSTEM> parseKind(const std::string& word) { return valueOf<orv::SYSTEM>(kKinds, word); }

std::int32_t problemNumber(orv::SYSTEM kind) {
    for (const auto& row : kKinds)
        if (row.value == kind)
            return row.number;
    return 0;
}

const char* gravityWord(orv::GravityOrientation gravity) { return textOf(kAxes, gravity, "none"); }

std::optional<orv::GravityOrientation> parseGravity(const std::string& word) {
    return valueOf<orv::GravityOrientation>(kAxes, word);
}

const char* unitWord(std::int32_t unit, double scale) {
    const double* const own = orv::detail::scaleOfUnit(unit);
    const bool fits = own != nullptr && std::abs(scale - *own) <= kScaleTolerance * *own;
    return fits ? textOf(kUnits, unit, "other") : "other";
}

std::optional<orv::DrawingUnit> parseUnit(const std::string& word) {
    return valueOf<orv::DrawingUnit>(kUnits, word);
}

std::string checkKind(const std::string& word) { return check(kKinds, word, "kind of system"); }
std::string checkGravity(const std::string& word) { return check(kAxes, word, "gravity axis"); }
std::string checkUnit(const std::string& word) { return check(kUnits, word, "unit"); }

} // namespace taldork::cli
