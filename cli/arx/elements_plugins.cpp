#include "cli/arx/elements_plugins.h"

#include "cli/arx/elements_values.h"
#include "cli/common/handles.h"
#include "cli/common/messages.h"

#include "base/blob.h"
#include "dbx/binary_out_archive.h"
#include "dbx/elem/plugin.h"
#include "dbx/elem/proxy_plugin.h"

#include <nlohmann/json.hpp>

#include <deque>
#include <utility>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;

Json idsJson(const std::deque<AcDbObjectId>& ids) {
    Json handles = Json::array();
    for (const AcDbObjectId& id : ids)
        handles.push_back(handleText(id));
    return handles;
}

/// What stands in the way of saving the plugin's data; empty if nothing does.
std::string save(const Element::IPlugin& plugin, orv::serialization::BinaryOutArchive& archive) {
    try {
        return plugin.save(archive) ? "" : "it does not save its data whole";
    } catch (...) {
        return "saving it fails: " + caughtMessage();
    }
}

Json describe(const Element::IPlugin& plugin) {
    orv::serialization::BinaryOutArchive archive;
    const std::string remark = save(plugin, archive);
    return {{"id", plugin.pluginId()},
            {"state", "live"},
            {"remark", remark.empty() ? Json() : Json(remark)},
            {"bytes", archive.offset()},
            {"softIds", idsJson(archive.softPointers())},
            {"hardIds", idsJson(archive.hardPointers())},
            {"properties", describeProperties(plugin.getProperties())},
            {"tree", describeTree(plugin.properties())}};
}

Json describe(const std::string& id, const Element::ProxyPlugin& plugin) {
    return {{"id", id},
            {"state", "kept"},
            {"remark", "its module is not loaded"},
            {"bytes", plugin.m_data ? plugin.m_data->size() : 0},
            {"softIds", idsJson(plugin.m_softIds)},
            {"hardIds", idsJson(plugin.m_hardIds)},
            {"properties", describeProperties(plugin.m_properties)},
            {"tree", describeTree(plugin.m_tree)}};
}

} // namespace

Json describePlugins(const Element& element) {
    Json plugins = Json::array();
    for (const auto& plugin : element.getConstPluginIterator())
        plugins.push_back(describe(std::as_const(*plugin)));
    for (const auto& [id, plugin] : element.unknownPlugins())
        plugins.push_back(describe(id, *plugin));
    return plugins;
}

} // namespace taldork::cli
