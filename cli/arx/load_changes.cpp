#include "cli/arx/load_changes.h"

#include "cli/arx/saved_loads.h"
#include "cli/common/numbers.h"

#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <optional>
#include <stdexcept>

namespace taldork::cli {

using orv::elem::EditTwoVerticesData;
using orv::elem::LineLoadDistributionCurve;
using orv::elem::LOAD_KIND;
using orv::elem::LoadData;
using orv::elem::LoadDistribution;
using Json = nlohmann::ordered_json;

namespace {

using Apply = std::function<void(LoadData& data)>;

/// What stands for a value that a load does not have.
constexpr const char* none = "none";

constexpr const char* distributions[] = {"point", "line", "area", "volume"};
constexpr int distributionCount = 4;

[[noreturn]] void refuse(const std::string& value, const std::string& what) {
    throw std::invalid_argument("'" + value + "' is no " + what);
}

template <class Number>
std::optional<Number> parseWhole(const std::string& text) {
    Number number = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end ? std::optional<Number>(number) : std::nullopt;
}

int parseInt(const std::string& value, const std::string& what) {
    if (const auto number = parseWhole<int>(value))
        return *number;
    refuse(value, what + ": write a whole number");
}

double parseDouble(const std::string& value) {
    if (const auto number = parseNumber(value))
        return *number;
    refuse(value, "number: write one as in 2.5");
}

std::set<unsigned int> parseCases(const std::string& value) {
    std::set<unsigned int> cases;
    for (std::size_t begin = 0; value != none && begin <= value.size();) {
        const std::size_t comma = std::min(value.find(',', begin), value.size());
        const auto number = parseWhole<unsigned int>(value.substr(begin, comma - begin));
        if (!number)
            refuse(value, "list of load cases: write whole numbers from 0 on, as in 1,2,5, or none");
        cases.insert(*number);
        begin = comma + 1;
    }
    return cases;
}

Apply nameChange(const std::string& value) {
    if (const std::string wrong = checkKeptText(value); !wrong.empty())
        throw std::invalid_argument(wrong);
    return [name = platform::fromUtf8(value)](LoadData& data) { data.m_name = name; };
}

Apply casesChange(const std::string& value) {
    return [cases = parseCases(value)](LoadData& data) { data.m_loadCases = cases; };
}

Apply kindChange(const std::string& value) {
    return [kind = parseInt(value, "kind")](LoadData& data) { data.m_kind = static_cast<LOAD_KIND>(kind); };
}

Apply typeChange(const std::string& value) {
    return [type = parseInt(value, "type")](LoadData& data) { data.m_type = type; };
}

Apply distributionChange(const std::string& value) {
    if (value == none)
        return [](LoadData& data) { data.m_distribution.reset(); };
    std::optional<int> number = parseWhole<int>(value);
    for (int i = 0; i < distributionCount; ++i)
        if (value == distributions[i])
            number = i;
    if (!number)
        refuse(value, "distribution: write point, line, area, volume, a number, or none");
    return [distribution = static_cast<LoadDistribution>(*number)](LoadData& data) {
        data.m_distribution = distribution;
    };
}

Apply curveChange(const std::string& value) {
    if (value == none)
        return [](LoadData& data) { data.m_distributionCurve.reset(); };
    return [curve = static_cast<LineLoadDistributionCurve>(parseInt(value, "curve"))](LoadData& data) {
        data.m_distributionCurve = curve;
    };
}

Apply value1Change(const std::string& value) {
    return [number = parseDouble(value)](LoadData& data) { data.m_value1 = number; };
}

template <boost::optional<double> LoadData::*Field>
Apply optionalValueChange(const std::string& value) {
    if (value == none)
        return [](LoadData& data) { (data.*Field).reset(); };
    return [number = parseDouble(value)](LoadData& data) { data.*Field = number; };
}

/// The first position of a load that had none brings the second with it, at the other end.
template <double EditTwoVerticesData::*Field>
Apply positionChange(const std::string& value) {
    if (value == none)
        return [](LoadData& data) { data.m_geometry.reset(); };
    return [number = parseDouble(value)](LoadData& data) {
        if (!data.m_geometry)
            data.m_geometry = EditTwoVerticesData{0, 0.0, 0, 1.0, AcDbObjectId(), 0.0};
        (*data.m_geometry).*Field = number;
    };
}

constexpr struct {
    const char* key;
    Apply (*make)(const std::string& value);
    const char* help;
} keys[] = {
    {"name", nameChange, "TEXT  the load's own name"},
    {"cases", casesChange, "N,N,… or none  load cases"},
    {"kind", kindChange, "N  kind of the load"},
    {"type", typeChange, "N  analysis code of direction and kind"},
    {"distribution", distributionChange, "point, line, area, volume, N or none"},
    {"curve", curveChange, "N or none  how a line load is distributed"},
    {"value1", value1Change, "D  first value"},
    {"value2", optionalValueChange<&LoadData::m_value2>, "D or none  second value"},
    {"value3", optionalValueChange<&LoadData::m_value3>, "D or none  third value"},
    {"p1", positionChange<&EditTwoVerticesData::m_p1>, "D or none  first position; none takes both away"},
    {"p2", positionChange<&EditTwoVerticesData::m_p2>, "D or none  second position"},
};

template <class Number>
Json jsonOf(const boost::optional<Number>& value) {
    return value ? Json(static_cast<Number>(*value)) : Json();
}

std::string textOf(const std::string& key, const Json& value) {
    if (value.is_null() || (value.is_array() && value.empty()))
        return "-";
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_number_float())
        return numberText(value.get<double>());
    if (key == "distribution" && value >= 0 && value < distributionCount)
        return distributions[value.get<int>()];
    if (!value.is_array())
        return value.dump();
    std::string text;
    for (const Json& number : value)
        text += (text.empty() ? "" : ",") + number.dump();
    return text;
}

} // namespace

LoadChange parseLoadChange(const std::string& text) {
    const auto equals = text.find('=');
    if (equals == std::string::npos)
        throw std::invalid_argument("'" + text + "' is no KEY=VALUE");
    const std::string key = text.substr(0, equals);
    for (const auto& row : keys)
        if (row.key == key)
            return {key, row.make(text.substr(equals + 1))};
    throw std::invalid_argument("'" + key + "' is no key");
}

std::string checkLoadChange(const std::string& text) {
    try {
        parseLoadChange(text);
        return "";
    } catch (const std::invalid_argument& wrong) {
        return wrong.what();
    }
}

std::string loadKeysHelp() {
    std::string help;
    for (const auto& row : keys)
        help += std::string("  ") + row.key + "=" + row.help + "\n";
    return help;
}

Json jsonOfLoad(const LoadData& data) {
    Json cases = Json::array();
    for (const unsigned int loadCase : data.m_loadCases)
        cases.push_back(loadCase);
    const auto& geometry = data.m_geometry;
    return {{"name", platform::toUtf8(data.m_name)},
            {"cases", std::move(cases)},
            {"kind", static_cast<int>(data.m_kind)},
            {"type", data.m_type},
            {"distribution", data.m_distribution ? Json(static_cast<int>(*data.m_distribution)) : Json()},
            {"curve", data.m_distributionCurve ? Json(static_cast<int>(*data.m_distributionCurve)) : Json()},
            {"value1", data.m_value1},
            {"value2", jsonOf(data.m_value2)},
            {"value3", jsonOf(data.m_value3)},
            {"p1", geometry ? Json(geometry->m_p1) : Json()},
            {"p2", geometry ? Json(geometry->m_p2) : Json()}};
}

std::vector<std::pair<std::string, std::string>> textsOfLoad(const LoadData& data) {
    std::vector<std::pair<std::string, std::string>> texts;
    const Json json = jsonOfLoad(data);
    for (const auto& [key, value] : json.items())
        texts.emplace_back(key, textOf(key, value));
    return texts;
}

} // namespace taldork::cli
