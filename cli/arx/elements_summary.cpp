#include "cli/arx/elements_summary.h"

#include "cli/arx/elements_plugins.h"
#include "cli/arx/elements_values.h"
#include "cli/common/handles.h"
#include "cli/common/open_object.h"

#include "AcString.h"
#include "acutmem.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "dbx/elem/element_log.h"
#include "dbx/elem/element_log_access.h"
#include "dbx/elem/plugin_connected_elements.h"
#include "dbx/elem/plugin_general.h"
#include "dbx/elem/proxy_plugin.h"
#include "orvshape/element_contexts.h"
#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;
using orv::elem::Plugin_ConnectedElements;
using orv::elem::Plugin_General;
using platform::toUtf8;

const char* stateOf(const FoundElement& found) {
    return found.element != nullptr ? "live" : found.entity != nullptr ? "proxy" : "unreadable";
}

Json connectedHandles(const Element& element) {
    Json handles = Json::array();
    for (const Plugin_ConnectedElements* connections : connectionsOf(element))
        for (const AcDbObjectId& id : *connections)
            handles.push_back(handleText(id));
    return handles;
}

Json textOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

/// What the general plugin tells; null where there is none.
Json generalPart(const Element& element) {
    const Plugin_General* const general = generalOf(element);
    if (general == nullptr)
        return {{"number", nullptr}, {"name", nullptr}, {"bimId", nullptr}};
    return {{"number", general->getNumber()},
            {"name", toUtf8(general->getName())},
            {"bimId", textOrNull(general->getBIMID())}};
}

Json pluginIds(const Element& element) {
    Json ids = Json::array();
    for (const auto& plugin : element.getConstPluginIterator())
        ids.push_back(plugin->pluginId());
    return ids;
}

Json keptPluginIds(const Element& element) {
    Json ids = Json::array();
    for (const auto& [id, plugin] : element.unknownPlugins())
        ids.push_back(id);
    return ids;
}

std::string spaceOf(const Drawing& drawing, const AcDbEntity& entity) {
    const auto block =
        openNeeded<AcDbBlockTableRecord>(entity.ownerId(), AcDb::kForRead, drawing.path(), "a block");
    AcString name;
    requireOpen(block->getName(name), AcDb::kForRead, drawing.path(), "the name of a block");
    return toUtf8(name.kACharPtr());
}

Json layerOf(const AcDbEntity& entity) {
    ACHAR* name = entity.layer();
    Json layer = name != nullptr ? Json(toUtf8(name)) : Json();
    acutDelString(name);
    return layer;
}

Json pointJson(const AcGePoint3d& point) { return {point.x + 0.0, point.y + 0.0, point.z + 0.0}; }

Json extentsOf(const AcDbEntity& entity) {
    AcDbExtents box;
    if (entity.getGeomExtents(box) != Acad::eOk || box.isEmpty())
        return nullptr;
    return {{"min", pointJson(box.minPoint())}, {"max", pointJson(box.maxPoint())}};
}

Json linkOf(Element& element) {
    const AcDbObjectId store = element.getNodDatabaseId();
    return {{"name", toUtf8(element.getNodDatabaseName())},
            {"store", store.isNull() ? Json() : Json(handleText(store))}};
}

Json textOffsetOf(const Element& element) {
    const Plugin_General* const general = generalOf(element);
    if (general == nullptr)
        return nullptr;
    const AcGeVector3d& offset = general->getTextAttachmentOffset();
    return {offset.x + 0.0, offset.y + 0.0, offset.z + 0.0};
}

/// What the front end tells of the element.
Json infoOf(const Element& element) {
    orv::ElementInfoContext info;
    element.appendElementInfo(info);
    Json sections = Json::array();
    for (const auto& section : info.sections()) {
        Json values = Json::array();
        for (const auto& value : section.values)
            values.push_back({{"title", toUtf8(value.title)}, {"text", toUtf8(value.text)}});
        sections.push_back({{"heading", toUtf8(section.heading)}, {"values", std::move(values)}});
    }
    return sections;
}

Json logRows(const Element& element) {
    const orv::ElementLog* const log = orv::elem::logOf(element);
    if (log == nullptr)
        return nullptr;
    Json entries = Json::array();
    for (const auto& entry : *log) {
        Json arguments = Json::array();
        for (const boost::any& argument : entry.arguments)
            arguments.push_back(describeValue(argument));
        entries.push_back({{"level", toUtf8(orv::to_string(entry.level))},
                           {"message", entry.msgId},
                           {"extra", entry.extra},
                           {"arguments", std::move(arguments)}});
    }
    return entries;
}

} // namespace

Json describeElement(const FoundElement& found) {
    Json row = {{"handle", handleText(found.id)}, {"class", found.className()},
                {"dxfName", found.dxfName()},     {"application", found.application()},
                {"state", stateOf(found)},        {"remark", textOrNull(found.remark)}};
    if (found.element == nullptr) {
        for (const char* key : {"number", "name", "bimId", "system", "connections", "plugins", "keptPlugins"})
            row[key] = nullptr;
        return row;
    }
    row.update(generalPart(*found.element));
    row["system"] = textOrNull(toUtf8(found.element->getNodDatabaseName()));
    row["connections"] = connectedHandles(*found.element);
    row["plugins"] = pluginIds(*found.element);
    row["keptPlugins"] = keptPluginIds(*found.element);
    return row;
}

Json describeWholeElement(const Drawing& drawing, const FoundElement& found) {
    Json element = describeElement(found);
    if (found.entity == nullptr)
        return element;
    element["space"] = spaceOf(drawing, *found.entity);
    element["layer"] = layerOf(*found.entity);
    if (const auto* const proxy = AcDbProxyEntity::cast(found.entity))
        element["proxyFlags"] = proxy->proxyFlags();
    if (found.element == nullptr)
        return element;
    element["extents"] = extentsOf(*found.entity);
    element["link"] = linkOf(*found.element);
    element["textOffset"] = textOffsetOf(*found.element);
    element["info"] = infoOf(*found.element);
    element["properties"] = describeProperties(found.element->getProperties());
    element["tree"] = describeTree(std::as_const(*found.element).properties());
    element["log"] = logRows(*found.element);
    element["plugins"] = describePlugins(*found.element);
    element.erase("keptPlugins");
    return element;
}

} // namespace taldork::cli
