#include "cli/arx/system_summary.h"

#include "cli/arx/report_scope.h"
#include "cli/arx/settings_listing.h"
#include "cli/arx/system_words.h"
#include "cli/common/messages.h"
#include "cli/common/terminal.h"

#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t keyWidth = 13;
constexpr std::size_t mostDifferences = 8;

/// What is so small against the largest number of a box, or against 1, is the dust of a turn.
constexpr double dust = 1e-12;

// Zeros lose their sign, which means nothing.
Point pointOf(const AcGePoint3d& point) { return {point.x + 0.0, point.y + 0.0, point.z + 0.0}; }
Point pointOf(const AcGeVector3d& vector) { return {vector.x + 0.0, vector.y + 0.0, vector.z + 0.0}; }

std::optional<std::string> textProperty(const orv::System& system, const char* key) {
    const auto text = system.properties().getValueNotThrow<std::wstring>(key);
    return text ? std::optional(platform::toUtf8(*text)) : std::nullopt;
}

std::optional<int> numberProperty(const orv::System& system, const char* key) {
    const auto number = system.properties().getValueNotThrow<int>(key);
    return number ? std::optional(*number) : std::nullopt;
}

template <class Value>
Json orNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json();
}

std::string row(const std::string& key, const std::string& text) {
    return "  " + padRight(key, keyWidth) + oneLine(text) + "\n";
}

double largestOf(const Point& point) {
    return std::max({std::abs(point[0]), std::abs(point[1]), std::abs(point[2])});
}

std::string shortText(const Point& point, double largest = 1.0) {
    std::string text;
    for (const double value : point)
        text += (text.empty() ? "" : " ") + roundedText(std::abs(value) < dust * largest ? 0.0 : value);
    return text;
}

std::string boxText(const SystemSummary::Box& box, const char* where) {
    const double largest = std::max(largestOf(box.min), largestOf(box.max));
    return shortText(box.min, largest) + " to " + shortText(box.max, largest) + " in the " + where;
}

std::string codeText(const SystemSummary& summary) {
    return summary.codeName.value_or("-") +
           ", nation: " + (summary.codeNation ? std::to_string(*summary.codeNation) : "-") +
           ", category: " + summary.codeCategory.value_or("-");
}

std::string settingsRows(const orv::System& system, int version) {
    const auto differences = differenceTexts(system.visSettings());
    std::string text = row("settings", "version " + std::to_string(version) + ", " +
                                           counted(differences.size(), "difference") + " from the defaults");
    for (std::size_t i = 0; i < std::min(differences.size(), mostDifferences); ++i)
        text += row("", differences[i]);
    if (differences.size() > mostDifferences)
        text += row("", "… " + std::to_string(differences.size() - mostDifferences) + " more, see --json");
    return text;
}

Json boxJson(const SystemSummary::Box& box) { return {{"min", box.min}, {"max", box.max}}; }

} // namespace

SystemSummary::SystemSummary(const orv::System& system) {
    // What is wrong with a record was told when it was read; asking again would tell it once more each time.
    const ReportScope quiet([](const ReportScope::Report&) {});
    scale = system.scaleWcs2Cdb();
    kind = kindWord(system.get_type());
    gravity = gravityWord(system.gravityDirection());
    unitNumber = system.drawingUnit();
    unit = unitWord(unitNumber, scale);
    for (unsigned int i = 0; i < 4; ++i)
        for (unsigned int j = 0; j < 4; ++j)
            transform[i][j] = system.xformWcs2Cdb()(i, j) + 0.0;
    AcGeVector3d axes[3];
    system.getCoordinateSystem(axes[0], axes[1], axes[2]);
    x = pointOf(axes[0]);
    y = pointOf(axes[1]);
    z = pointOf(axes[2]);
    AcGePoint3d min, max;
    system.getExtents(min, max);
    inStore = {pointOf(min), pointOf(max)};
    system.getExtentsWCS(min, max);
    inDrawing = {pointOf(min), pointOf(max)};
    nodes = system.get_sys_anzkn();
    highestNode = system.get_sys_maxkn();
    project = textProperty(system, "project.name");
    codeName = textProperty(system, "designcode.name");
    codeNation = numberProperty(system, "designcode.nation");
    codeCategory = textProperty(system, "designcode.category");
    pointSize = system.pointSize();
    settingsVersion = system.visSettings().getVersion();
}

std::string systemText(const std::string& name, const orv::System& system) {
    const SystemSummary summary(system);
    return oneLine(name) + "\n" + row("kind", summary.kind) + row("gravity", summary.gravity) +
           row("unit", summary.unit + ", scale " + roundedText(summary.scale)) +
           row("axes",
               "x " + shortText(summary.x) + ", y " + shortText(summary.y) + ", z " + shortText(summary.z)) +
           row("extents", boxText(summary.inStore, "store")) +
           row("", boxText(summary.inDrawing, "drawing")) +
           row("nodes", std::to_string(summary.nodes) + ", highest " + std::to_string(summary.highestNode)) +
           row("project", summary.project.value_or("-")) + row("design code", codeText(summary)) +
           row("point size", roundedText(summary.pointSize)) + settingsRows(system, summary.settingsVersion);
}

Json describeSystem(const orv::System& system, bool allSettings) {
    const SystemSummary summary(system);
    Json settings = {{"version", summary.settingsVersion},
                     {"differences", countDifferences(system.visSettings())}};
    settings.update(describeSettings(system.visSettings(), allSettings));
    return {{"kind", summary.kind},
            {"gravity", summary.gravity},
            {"unit", summary.unit},
            {"unitNumber", summary.unitNumber},
            {"scale", summary.scale},
            {"transform", summary.transform},
            {"axes", {{"x", summary.x}, {"y", summary.y}, {"z", summary.z}}},
            {"extents", {{"store", boxJson(summary.inStore)}, {"drawing", boxJson(summary.inDrawing)}}},
            {"nodes", summary.nodes},
            {"highestNode", summary.highestNode},
            {"project", orNull(summary.project)},
            {"designCode",
             {{"name", orNull(summary.codeName)},
              {"nation", orNull(summary.codeNation)},
              {"category", orNull(summary.codeCategory)}}},
            {"pointSize", summary.pointSize},
            {"settings", std::move(settings)}};
}

} // namespace taldork::cli
