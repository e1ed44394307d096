#include "cli/arx/system_changes.h"

#include "cli/arx/system_box.h"
#include "cli/common/failure.h"
#include "cli/common/hex.h"
#include "cli/common/numbers.h"

#include <cmath>
#include <limits>
#include <stdexcept>

namespace taldork::cli {

namespace {

using orv::System;
using Part = SystemChange::Part;

[[noreturn]] void refuse(const std::string& value, const std::string& what) {
    throw std::invalid_argument("'" + value + "' is no " + what);
}

int parseCount(const std::string& value) {
    if (const auto number = parseIndex(value, std::numeric_limits<int>::max()))
        return *number;
    refuse(value, "number of nodes: write a whole number from 0 on");
}

double parseSize(const std::string& value) {
    const auto number = parseNumber(value);
    if (number && std::abs(*number) <= std::numeric_limits<float>::max())
        return *number;
    refuse(value, "size: write a number, as in 0.25");
}

/// One by one, so that a field which a short record does not reach is noticed.
void setCount(System& system, const std::string& path, const char* key, int number, void (System::*set)(int),
              int (System::*get)() const) {
    (system.*set)(number);
    if ((system.*get)() != number)
        throw Failure(path, std::string("the record 10/0 is too short to hold ") + key);
}

SystemChange boxChange(const std::string& value) {
    if (const std::string wrong = checkBox(value); !wrong.empty())
        throw std::invalid_argument(wrong);
    return {"box", Part::kSystem,
            [box = *parseBox(value)](System& system, const std::string& path) { setBox(system, box, path); }};
}

SystemChange nodesChange(const std::string& value) {
    return {"nodes", Part::kSystem, [n = parseCount(value)](System& system, const std::string& path) {
                setCount(system, path, "nodes", n, &System::set_sys_numkn, &System::get_sys_anzkn);
            }};
}

SystemChange maxNodeChange(const std::string& value) {
    return {"max-node", Part::kSystem, [n = parseCount(value)](System& system, const std::string& path) {
                setCount(system, path, "max-node", n, &System::set_sys_maxkn, &System::get_sys_maxkn);
            }};
}

SystemChange pointSizeChange(const std::string& value) {
    const auto size = parseNumber(value);
    if (!size || *size < 0.0)
        refuse(value, "point size: write a number from 0 on, as in 0.01");
    return {"point-size", Part::kPointSize,
            [size = *size](System& system, const std::string&) { system.setPointSize(size); }};
}

SystemChange sizeChange(int number, const std::string& value) {
    return {"size." + std::to_string(number), Part::kSettings,
            [number, size = parseSize(value)](System& system, const std::string&) {
                system.visSettings().setSize(number, size);
            }};
}

SystemChange switchChange(int number, const std::string& value) {
    if (value != "on" && value != "off")
        refuse(value, "switch position: write on or off");
    return {"switch." + std::to_string(number), Part::kSettings,
            [number, on = value == "on"](System& system, const std::string&) {
                system.visSettings().setSwitch(number, on ? 1 : 0);
            }};
}

SystemChange colourChange(int number, const std::string& value) {
    const auto bytes = parseHex(!value.empty() && value[0] == '#' ? value.substr(1) : "?");
    // The parser of bytes skips blanks and more.
    if (!bytes || value.size() != 1 + 2 * bytes->size() || (bytes->size() != 3 && bytes->size() != 4))
        refuse(value, "colour: write #RRGGBB or #RRGGBBAA, as in #ff8000");
    const auto part = [&](std::size_t i) { return i < bytes->size() ? (*bytes)[i] / 255.0 : 1.0; };
    return {"colour." + std::to_string(number), Part::kSettings,
            [number, colour = orv::ColourRGBA(part(0), part(1), part(2), part(3))](
                System& system, const std::string&) { system.visSettings().setColour(number, colour); }};
}

constexpr struct {
    const char* key;
    SystemChange (*make)(const std::string& value);
} plainKeys[] = {
    {"box", boxChange}, {"nodes", nodesChange}, {"max-node", maxNodeChange}, {"point-size", pointSizeChange}};

constexpr struct {
    const char* key;
    SystemChange (*make)(int number, const std::string& value);
    int (orv::settings::Settings::*count)() const;
} numberedKeys[] = {{"size", sizeChange, &orv::settings::Settings::numSizes},
                    {"switch", switchChange, &orv::settings::Settings::numSwitches},
                    {"colour", colourChange, &orv::settings::Settings::numColours}};

SystemChange numberedChange(const std::string& key, const std::string& number, const std::string& value) {
    static const System fresh;
    for (const auto& row : numberedKeys) {
        if (row.key != key)
            continue;
        const int last = (fresh.visSettings().*row.count)() - 1;
        if (const auto index = parseIndex(number, last))
            return row.make(*index, value);
        std::string message = "'" + key;
        message += "." + number;
        message += "': a " + key;
        message += " has a number from 0 to " + std::to_string(last);
        throw std::invalid_argument(message);
    }
    throw std::invalid_argument("'" + key + "." + number + "' is no key");
}

} // namespace

SystemChange parseSystemChange(const std::string& text) {
    const auto equals = text.find('=');
    if (equals == std::string::npos)
        throw std::invalid_argument("'" + text + "' is no KEY=VALUE");
    const std::string key = text.substr(0, equals), value = text.substr(equals + 1);
    for (const auto& row : plainKeys)
        if (row.key == key)
            return row.make(value);
    if (const auto dot = key.find('.'); dot != std::string::npos)
        return numberedChange(key.substr(0, dot), key.substr(dot + 1), value);
    throw std::invalid_argument("'" + key + "' is no key");
}

std::string checkSystemChange(const std::string& text) {
    try {
        parseSystemChange(text);
        return "";
    } catch (const std::invalid_argument& wrong) {
        return wrong.what();
    }
}

} // namespace taldork::cli
