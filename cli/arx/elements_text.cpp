// An element as `elements show` prints it for people.

#include "cli/arx/elements_summary.h"
#include "cli/arx/elements_values.h"
#include "cli/common/messages.h"
#include "cli/common/numbers.h"
#include "cli/common/terminal.h"

#include <nlohmann/json.hpp>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kKeyWidth = 13;

std::string row(const std::string& key, const std::string& text, std::size_t depth = 1) {
    return std::string(2 * depth, ' ') + padRight(key, kKeyWidth) + oneLine(text.empty() ? "-" : text) + "\n";
}

/// A heading above rows.
std::string heading(const std::string& text, std::size_t depth = 1) {
    return std::string(2 * depth, ' ') + oneLine(text) + "\n";
}

std::string textOf(const Json& value) {
    if (value.is_string())
        return value.get<std::string>();
    return value.is_null() ? "" : value.dump();
}

std::string listText(const Json& texts) {
    std::string text;
    for (const Json& one : texts)
        text += (text.empty() ? "" : " ") + textOf(one);
    return text;
}

std::string pointsText(const Json& point) {
    std::string text;
    for (const Json& part : point)
        text += (text.empty() ? "" : " ") + roundedText(part.get<double>());
    return text;
}

std::string extentsText(const Json& extents) {
    return extents.is_null() ? "" : pointsText(extents["min"]) + " to " + pointsText(extents["max"]);
}

std::string propertyRows(const Json& properties, std::size_t depth) {
    if (properties.empty())
        return "";
    std::string text = heading("properties", depth);
    for (const Json& property : properties)
        text += row(textOf(property["key"]), valueText(property), depth + 1);
    return text;
}

std::string treeRows(const Json& tree, std::size_t depth) {
    std::string text;
    for (const Json& node : tree)
        text += row(textOf(node["key"]), valueText(node), depth) + treeRows(node["children"], depth + 1);
    return text;
}

std::string valueRows(const Json& owner, std::size_t depth) {
    const std::string tree = treeRows(owner["tree"], depth + 1);
    return propertyRows(owner["properties"], depth) + (tree.empty() ? "" : heading("tree", depth) + tree);
}

std::string logRows(const Json& log) {
    if (log.is_null())
        return "";
    std::string text =
        heading("log, " + std::to_string(log.size()) + (log.size() == 1 ? " entry" : " entries"));
    for (const Json& entry : log) {
        std::string arguments;
        for (const Json& argument : entry["arguments"])
            arguments += (arguments.empty() ? ": " : ", ") + valueText(argument);
        text +=
            row(textOf(entry["level"]),
                "message " + textOf(entry["message"]) + ", extra " + textOf(entry["extra"]) + arguments, 2);
    }
    return text;
}

std::string infoRows(const Json& info) {
    std::string text;
    for (const Json& section : info) {
        const std::string title = textOf(section["heading"]);
        text += heading("told by its front end" + (title.empty() ? "" : ": " + title));
        for (const Json& value : section["values"])
            text += row(textOf(value["title"]), textOf(value["text"]), 2);
    }
    return text;
}

std::string pluginRows(const Json& plugin) {
    std::string title = textOf(plugin["state"]) + " plugin " + textOf(plugin["id"]) + ", " +
                        counted(plugin["bytes"].get<std::size_t>(), "byte");
    if (!plugin["remark"].is_null())
        title += "; " + textOf(plugin["remark"]);
    std::string text = heading(title);
    for (const auto& [key, word] : {std::pair("softIds", "soft ids"), std::pair("hardIds", "hard ids")})
        if (!plugin[key].empty())
            text += row(word, listText(plugin[key]), 2);
    return text + valueRows(plugin, 2);
}

std::string liveRows(const Json& element) {
    std::string text =
        row("number", textOf(element["number"])) + row("name", textOf(element["name"])) +
        row("BIM id", textOf(element["bimId"])) + row("text offset", pointsText(element["textOffset"])) +
        row("extents", extentsText(element["extents"])) + row("system", textOf(element["system"]));
    if (!element["link"]["store"].is_null())
        text += row("", "dictionary " + textOf(element["link"]["store"]));
    text += row("connected", listText(element["connections"])) + infoRows(element["info"]) +
            valueRows(element, 1) + logRows(element["log"]);
    for (const Json& plugin : element["plugins"])
        text += pluginRows(plugin);
    return text;
}

} // namespace

std::string elementText(const Json& element) {
    const std::string state = textOf(element["state"]);
    std::string text = oneLine(textOf(element["class"]) + " " + textOf(element["handle"])) + "\n" +
                       row("class", textOf(element["dxfName"]) + " of " + textOf(element["application"]));
    if (!element["remark"].is_null())
        text += row("remark", textOf(element["remark"]));
    if (state == "unreadable")
        return text;
    text += row("space", textOf(element["space"])) + row("layer", textOf(element["layer"]));
    return state == "live" ? text + liveRows(element) : text;
}

} // namespace taldork::cli
