#include "cli/arx/elements.h"

#include "cli/common/failure.h"
#include "cli/common/handles.h"
#include "cli/common/open_object.h"

#include "dbproxy.h"
#include "dbsymtb.h"
#include "dbx/elem/plugin_connected_elements.h"
#include "dbx/elem/plugin_general.h"
#include "embedded/inventory.h"
#include "embedded/kept_data.h"
#include "platform/text.h"
#include "rxclass.h"
#include "rxdict.h"

#include <map>
#include <memory>

namespace taldork::cli {

using orv::elem::Plugin_ConnectedElements;
using orv::elem::Plugin_General;

namespace {

std::string utf8(const ACHAR* text) { return text != nullptr ? platform::toUtf8(text) : std::string(); }

/// Which classes make elements; found out by making one object of each class.
class ElementClasses {
public:
    bool has(const AcRxClass* kind) {
        const auto [entry, isNew] = m_known.emplace(kind, false);
        if (isNew && kind->constructor() != nullptr) {
            const std::unique_ptr<AcRxObject> made(kind->create());
            entry->second = dynamic_cast<const Element*>(made.get()) != nullptr;
        }
        return entry->second;
    }

private:
    std::map<const AcRxClass*, bool> m_known;
};

bool isLoaded(const ACHAR* className) { return acrxClassDictionary->at(className) != nullptr; }

/// What stands for an element in a drawing without its code.
bool isKeptElement(const AcDbEntity& entity) { return embedded::keepsNumber(entity, Element::kMagic); }

std::string remarkOn(const AcDbProxyEntity& proxy) {
    return isLoaded(proxy.originalClassName()) ? "its class could not read it" : "its class is not loaded";
}

/// Fills in what an entity is; false if it is no element.
bool look(FoundElement& found) {
    found.element = dynamic_cast<Element*>(found.entity);
    if (found.element != nullptr)
        return true;
    const auto* const proxy = AcDbProxyEntity::cast(found.entity);
    if (proxy == nullptr || !isKeptElement(*proxy))
        return false;
    found.remark = remarkOn(*proxy);
    return true;
}

bool visitEntity(AcDbObjectId id, const std::function<void(const FoundElement&)>& visit) {
    Acad::ErrorStatus status = Acad::eOk;
    const auto entity = openObject<AcDbEntity>(id, AcDb::kForRead, status);
    FoundElement found;
    found.id = id;
    found.entity = entity.get();
    if (entity == nullptr)
        found.remark = "cannot be read: " + statusText(status);
    else if (!look(found))
        return false;
    visit(found);
    return true;
}

bool mayBeElement(AcDbObjectId id, ElementClasses& classes) {
    const AcRxClass* const kind = id.objectClass();
    return kind != nullptr && (kind->isDerivedFrom(AcDbProxyEntity::desc()) ||
                               (kind->isDerivedFrom(AcDbEntity::desc()) && classes.has(kind)));
}

/// A class by its descriptor where there is no entity to ask.
const AcRxClass* classOf(const FoundElement& found) {
    return found.entity != nullptr ? found.entity->isA() : found.id.objectClass();
}

} // namespace

std::string FoundElement::className() const {
    const auto* const proxy = AcDbProxyEntity::cast(entity);
    return utf8(proxy != nullptr ? proxy->originalClassName() : classOf(*this)->name());
}

std::string FoundElement::dxfName() const {
    const auto* const proxy = AcDbProxyEntity::cast(entity);
    return utf8(proxy != nullptr ? proxy->originalDxfName() : classOf(*this)->dxfName());
}

std::string FoundElement::application() const {
    const auto* const proxy = AcDbProxyEntity::cast(entity);
    return utf8(proxy != nullptr ? proxy->applicationDescription() : classOf(*this)->appName());
}

std::vector<AcDbObjectId> possibleElements(const Drawing& drawing) {
    ElementClasses classes;
    std::vector<AcDbObjectId> ids;
    embedded::forEachObject(drawing.database(), [&](AcDbObjectId id) {
        if (mayBeElement(id, classes))
            ids.push_back(id);
    });
    return ids;
}

void forEachElement(const Drawing& drawing, const std::function<void(const FoundElement&)>& visit) {
    for (const AcDbObjectId& id : possibleElements(drawing))
        visitEntity(id, visit);
}

void visitElement(const Drawing& drawing, AcDbObjectId id,
                  const std::function<void(const FoundElement&)>& visit) {
    ElementClasses classes;
    if (!mayBeElement(id, classes) || !visitEntity(id, visit))
        throw Failure(drawing.path(), handleText(id) + " is no element: it is of the kind " +
                                          platform::toUtf8(embedded::kindOf(id)));
}

bool isOfClass(const FoundElement& found, const std::string& name) {
    return found.className() == name || found.dxfName() == name;
}

Plugin_General* generalOf(const Element& element) {
    for (const auto& plugin : element.getConstPluginIterator())
        if (auto* const general = dynamic_cast<Plugin_General*>(plugin.get()))
            return general;
    return nullptr;
}

std::vector<Plugin_ConnectedElements*> connectionsOf(const Element& element) {
    std::vector<Plugin_ConnectedElements*> all;
    for (const auto& plugin : element.getConstPluginIterator())
        if (auto* const connections = dynamic_cast<Plugin_ConnectedElements*>(plugin.get()))
            all.push_back(connections);
    return all;
}

std::string titleOf(const FoundElement& found) {
    const Plugin_General* const general = found.element != nullptr ? generalOf(*found.element) : nullptr;
    std::string title = found.className();
    if (general == nullptr)
        return title;
    if (general->getNumber() != 0)
        title += " " + std::to_string(general->getNumber());
    if (!general->getName().empty())
        title += " '" + platform::toUtf8(general->getName()) + "'";
    return title;
}

AcDbObjectId modelSpaceOf(const Drawing& drawing) {
    const auto blocks = openNeeded<AcDbBlockTable>(drawing.database().blockTableId(), AcDb::kForRead,
                                                   drawing.path(), "the block table");
    AcDbObjectId id;
    requireOpen(blocks->getAt(ACDB_MODEL_SPACE, id), AcDb::kForRead, drawing.path(), "model space");
    return id;
}

} // namespace taldork::cli
