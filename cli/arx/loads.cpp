#include "cli/arx/loads.h"

#include "cli/common/handles.h"
#include "cli/common/terminal.h"
#include "dbx/elem/element_load.h"
#include "dbx/elem/free_load_base.h"
#include "dbx/elem/load_base.h"
#include "dbx/elem/plugin_general.h"
#include "orvshape/element_contexts.h"
#include "platform/text.h"

#include <nlohmann/json.hpp>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;
using orv::elem::ElementLoad;
using orv::elem::FreeLoadBase;
using orv::elem::GenericLoad;
using orv::elem::LoadBase;
using orv::elem::LoadVertex;
using platform::toUtf8;

/// The property of an element that has the name which is drawn with its values.
constexpr unsigned int kLabelProperty = 30001;

Json labelOf(const Element& element) {
    const auto label = element.getProperties().getValueNotThrow<std::wstring>(kLabelProperty);
    return label && !label->empty() ? Json(toUtf8(*label)) : Json();
}

const char* wordFor(LoadForm form) {
    switch (form) {
    case LoadForm::kFree:
        return "free";
    case LoadForm::kElement:
        return "element";
    case LoadForm::kPlugin:
        return "plugin";
    case LoadForm::kEntity:
        break;
    }
    return "entity";
}

bool runsBetweenVertices(const FoundLoad& load) {
    return load.distribution() == orv::elem::kLineLoad || load.distribution() == orv::elem::kAreaLoad;
}

/// How the values run is the front end's to say: the line with this title of what it tells of an element. Of
/// an element with several loads it does not say which of them it means, so the line counts only where all
/// say the same.
Json shapeOf(const FoundLoad& load) {
    if (!runsBetweenVertices(load))
        return nullptr;
    orv::ElementInfoContext info;
    load.found.element->appendElementInfo(info);
    std::set<std::wstring> shapes;
    for (const auto& section : info.sections())
        for (const auto& value : section.values)
            if (value.title == L"Shape")
                shapes.insert(value.text);
    return shapes.size() == 1 ? Json(toUtf8(*shapes.begin())) : Json();
}

std::string directionText(int type) {
    std::string text;
    if (orv::elem::isThermal(type))
        text = "temperature";
    else if (orv::elem::isMoment(type))
        text = "moment";
    else if (type == orv::elem::kLoadTypeGravity)
        text = "gravity";
    else
        text = "force";
    if (orv::elem::isLocal(type))
        text += ", local";
    if (orv::elem::isProjected(type))
        text += ", projected";
    return text;
}

AcDbObjectId elementOf(const FoundLoad& load) {
    if (load.plugin == nullptr)
        return load.entity->getElement();
    // Data of the first release have the element only in the base's part.
    const auto* const onElement = dynamic_cast<const ElementLoad*>(load.plugin);
    const AcDbObjectId own = onElement != nullptr ? onElement->getElement() : AcDbObjectId();
    return own.isNull() ? load.plugin->getElement() : own;
}

Json referenceOf(const FoundLoad& load) {
    const auto* const free = dynamic_cast<const FreeLoadBase*>(load.plugin);
    if (free == nullptr)
        return nullptr;
    Json numbers = Json::array();
    for (const unsigned int number : free->getAffectedNos())
        numbers.push_back(number == FreeLoadBase::REFERENCE_ANY ? Json("any") : Json(number));
    return {{"type", static_cast<int>(free->getReferenceType())},
            {"numbers", std::move(numbers)},
            {"projection", static_cast<int>(free->getProjectionType())},
            {"depth", free->getDepth()},
            {"nature", static_cast<int>(free->getFreeLoadType())}};
}

} // namespace

const std::set<unsigned int>& FoundLoad::cases() const {
    return plugin != nullptr ? plugin->getLoadCases() : entity->getLoadCases();
}

const std::deque<LoadVertex>& FoundLoad::vertices() const {
    return plugin != nullptr ? plugin->getVertices() : entity->getVertices();
}

int FoundLoad::distribution() const {
    return plugin != nullptr ? plugin->getDistribution() : entity->getDistribution();
}

int FoundLoad::type() const { return plugin != nullptr ? plugin->getType() : entity->getType(); }

LoadForm FoundLoad::form() const {
    if (plugin == nullptr)
        return LoadForm::kEntity;
    if (dynamic_cast<const FreeLoadBase*>(plugin) != nullptr)
        return LoadForm::kFree;
    return dynamic_cast<const ElementLoad*>(plugin) != nullptr ? LoadForm::kElement : LoadForm::kPlugin;
}

std::deque<LoadVertex> FoundLoad::points() const {
    return plugin != nullptr && runsBetweenVertices(*this) ? plugin->getVerticesForExport() : vertices();
}

std::size_t forEachLoad(const Drawing& drawing, std::optional<unsigned int> loadCase,
                        const std::function<void(const FoundLoad&)>& visit) {
    std::size_t unknown = 0;
    const auto visitIfOfCase = [&](const FoundLoad& load) {
        if (!loadCase || load.cases().count(*loadCase) != 0)
            visit(load);
    };
    forEachElement(drawing, [&](const FoundElement& found) {
        if (found.element == nullptr) {
            ++unknown;
            return;
        }
        bool hasPlugin = false;
        for (const auto& plugin : found.element->getConstPluginIterator())
            if (auto* const load = dynamic_cast<GenericLoad*>(plugin.get())) {
                hasPlugin = true;
                visitIfOfCase({found, load, nullptr});
            }
        if (const auto* const entity = dynamic_cast<const LoadBase*>(found.element);
            entity != nullptr && !hasPlugin)
            visitIfOfCase({found, nullptr, entity});
    });
    return unknown;
}

Json describeLoad(const FoundLoad& load) {
    const orv::elem::Plugin_General* const general = generalOf(*load.found.element);
    Json cases = Json::array(), values = Json::array();
    for (const unsigned int loadCase : load.cases())
        cases.push_back(loadCase);
    for (const LoadVertex& vertex : load.vertices())
        values.push_back(vertex.value);
    const AcDbObjectId element = elementOf(load);
    const auto kind = load.plugin != nullptr ? load.plugin->getClass() : load.entity->getClass();
    const auto category = load.plugin != nullptr ? load.plugin->getCategory() : load.entity->getCategory();
    return {{"handle", handleText(load.found.id)},
            {"class", load.found.className()},
            {"number", general != nullptr ? Json(general->getNumber()) : Json()},
            {"name", general != nullptr ? Json(toUtf8(general->getName())) : Json()},
            {"label", labelOf(*load.found.element)},
            {"form", wordFor(load.form())},
            {"type", load.type()},
            {"direction", directionText(load.type())},
            {"kind", static_cast<int>(kind)},
            {"category", static_cast<int>(category)},
            {"distribution", distributionText(load.distribution())},
            {"shape", shapeOf(load)},
            {"cases", std::move(cases)},
            {"values", std::move(values)},
            {"element", element.isNull() ? Json() : Json(handleText(element))},
            {"reference", referenceOf(load)}};
}

std::string distributionText(int distribution) {
    switch (distribution) {
    case orv::elem::kPointLoad:
        return "point";
    case orv::elem::kLineLoad:
        return "line";
    case orv::elem::kAreaLoad:
        return "area";
    case orv::elem::kVolumeLoad:
        return "volume";
    default:
        return std::to_string(distribution);
    }
}

std::string unknownText(std::size_t count) {
    return counted(count, "element") + " without the code of a class, which may be loads";
}

std::string casesText(const std::set<unsigned int>& cases, const char* separator) {
    std::string text;
    for (const unsigned int loadCase : cases)
        text += (text.empty() ? "" : separator) + std::to_string(loadCase);
    return text;
}

} // namespace taldork::cli
