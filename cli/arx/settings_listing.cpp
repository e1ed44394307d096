#include "cli/arx/settings_listing.h"

#include "cli/common/numbers.h"

#include "dbx/doc/visual_settings.h"
#include "dbx/serArchives.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>

namespace taldork::cli {

namespace {

using orv::settings::Settings;
using Json = nlohmann::ordered_json;

/// The defaults as they are set, and as they come back from a record.
class Defaults {
public:
    Defaults() : m_set(orv::settings::applyVisDefaults, orv::settings::kVisVersion, true), m_filed(m_set) {
        orv::serialization::BinaryOutArchive out;
        orv::settings::writeVis(out, m_set);
        orv::serialization::BinaryInArchive in(out.buffer().data(), static_cast<std::size_t>(out.offset()));
        orv::settings::readVis(in, m_filed);
    }

    bool isColour(const Settings& settings, int index) const {
        const orv::ColourRGBA colour = settings.getColour(index);
        return colour == m_set.getColour(index) || colour == m_filed.getColour(index);
    }
    bool isSize(const Settings& settings, int index) const {
        const orv::settings::size size = settings.getRawSize(index);
        const auto equal = [&](const orv::settings::size& other) {
            return size.flags == other.flags && size.value == other.value;
        };
        return equal(m_set.getRawSize(index)) || equal(m_filed.getRawSize(index));
    }
    std::uint32_t sizeFlags(int index) const { return m_set.getRawSize(index).flags; }
    bool isSwitch(const Settings& settings, int index) const {
        return settings.getSwitch(index) == m_set.getSwitch(index);
    }

private:
    Settings m_set, m_filed;
};

const Defaults& defaults() {
    static const Defaults defaults;
    return defaults;
}

// A size that differs in its flags alone would look like the default.
std::string sizeText(const Json& size) {
    const int number = size["number"];
    const std::uint32_t flags = size["flags"];
    const std::string text = "size " + std::to_string(number) + " = " + roundedText(size["value"]);
    return flags == defaults().sizeFlags(number) ? text : text + ", flags " + std::to_string(flags);
}

// A number that is neither of the two is on as well.
std::string switchText(const Json& position) {
    const int number = position["number"], value = position["value"];
    const std::string text = "switch " + std::to_string(number) + (position["on"] ? " on" : " off");
    return value == 0 || value == 1 ? text : text + ", value " + std::to_string(value);
}

int byteOf(double part) { return static_cast<int>(std::clamp(part, 0.0, 1.0) * 255.0); }

} // namespace

std::string colourText(const orv::ColourRGBA& colour) {
    char text[16];
    std::snprintf(text, sizeof text, "#%02X%02X%02X%02X", byteOf(colour.red), byteOf(colour.green),
                  byteOf(colour.blue), byteOf(colour.alpha));
    return text;
}

Json describeSettings(const Settings& settings, bool all) {
    Json sizes = Json::array(), switches = Json::array(), colours = Json::array();
    for (int index = 0; index < settings.numSizes(); ++index) {
        const orv::settings::size raw = settings.getRawSize(index);
        if (all || !defaults().isSize(settings, index))
            sizes.push_back({{"number", index},
                             {"value", raw.value},
                             {"flags", raw.flags},
                             {"scaled", settings.getSize(index)}});
    }
    for (int index = 0; index < settings.numSwitches(); ++index)
        if (all || !defaults().isSwitch(settings, index))
            switches.push_back(
                {{"number", index}, {"on", settings.isOn(index)}, {"value", settings.getSwitch(index)}});
    for (int index = 0; index < settings.numColours(); ++index)
        if (all || !defaults().isColour(settings, index))
            colours.push_back({{"number", index}, {"colour", colourText(settings.getColour(index))}});
    return {{"sizes", std::move(sizes)}, {"switches", std::move(switches)}, {"colours", std::move(colours)}};
}

std::vector<std::string> differenceTexts(const Settings& settings) {
    const Json differences = describeSettings(settings, false);
    std::vector<std::string> texts;
    for (const Json& size : differences["sizes"])
        texts.push_back(sizeText(size));
    for (const Json& position : differences["switches"])
        texts.push_back(switchText(position));
    for (const Json& colour : differences["colours"])
        texts.push_back("colour " + std::to_string(colour["number"].get<int>()) + " " +
                        colour["colour"].get<std::string>());
    return texts;
}

std::size_t countDifferences(const Settings& settings) {
    std::size_t differences = 0;
    for (const auto& table : describeSettings(settings, false))
        differences += table.size();
    return differences;
}

} // namespace taldork::cli
