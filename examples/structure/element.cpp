#include "structure/element.h"

#include "dbx/doc/use_system.h"
#include "orvshape/element_contexts.h"
#include "structure/load_connections.h"
#include "structure/soft_connections.h"

#include <boost/make_shared.hpp>

#include <vector>

namespace structure {

namespace {

const std::set<AcDbObjectId>* s_copies = nullptr;

template <class Test>
void removeWhere(Element::Connections& connections, Test isToGo) {
    std::vector<AcDbObjectId> gone;
    for (const AcDbObjectId& id : connections)
        if (isToGo(id))
            gone.push_back(id);
    for (const AcDbObjectId& id : gone)
        connections.remove(id);
}

} // namespace

// By its class: that of a beam has an id of its own.
const Element::General* Element::general() const {
    for (const auto& plugin : getConstPluginIterator())
        if (const auto* const general = dynamic_cast<const General*>(plugin.get()))
            return general;
    return nullptr;
}

Element::General* Element::general() {
    return const_cast<General*>(static_cast<const Element&>(*this).general());
}

const Element::Connections* Element::connections() const {
    for (const auto& plugin : getConstPluginIterator())
        if (const auto* const connections = dynamic_cast<const Connections*>(plugin.get()))
            if (connections->pluginId() != LoadConnections::static_pluginId())
                return connections;
    return nullptr;
}

Element::Connections* Element::connections() {
    return const_cast<Connections*>(static_cast<const Element&>(*this).connections());
}

void Element::addUsualPlugins(orv::elem::Ownership ownership, unsigned int behaviour) {
    addUsualPlugins(ownership, behaviour, boost::make_shared<General>());
}

void Element::addUsualPlugins(orv::elem::Ownership ownership, unsigned int behaviour,
                              const boost::shared_ptr<General>& general) {
    addPlugin(general);
    general->createBIMID();
    boost::shared_ptr<Connections> connections;
    if (ownership == orv::elem::kHardPointer)
        connections = boost::make_shared<Connections>(ownership);
    else
        connections = boost::make_shared<SoftConnections>();
    addPlugin(connections);
    connections->setBehaviour(behaviour);
}

void Element::onPostClone() {
    ElementBase::onPostClone();
    if (General* const mine = general())
        mine->createBIMID();
    for (const auto& plugin : getConstPluginIterator())
        if (auto* const others = dynamic_cast<Connections*>(plugin.get()))
            removeWhere(*others, [](const AcDbObjectId& id) { return !CopiedTogether::has(id); });
}

void Element::dropLostConnections() {
    const AcDbDatabase* const drawing = m_entity.database();
    for (const auto& plugin : getConstPluginIterator())
        if (auto* const others = dynamic_cast<Connections*>(plugin.get()))
            removeWhere(*others, [drawing](const AcDbObjectId& id) {
                return id.isErased() || id.database() != drawing;
            });
}

void Element::appendElementInfo(orv::ElementInfoContext& info) const {
    info.heading(kind());
    if (const General* const known = general()) {
        info.value(L"Number", std::to_wstring(known->getNumber()));
        info.value(L"Name", known->getName());
    }
    ElementBase::appendElementInfo(info);
}

bool Element::takeMoved() const {
    const bool moved = m_moved;
    m_moved = false;
    return moved;
}

bool Element::takeCopied() const {
    const bool copied = m_copied;
    m_copied = false;
    return copied;
}

orv::System* Element::findSystem() const {
    if (getNodDatabaseName().empty())
        return nullptr;
    const orv::UseSystem system(&m_entity);
    return system.empty() ? nullptr : system.operator->();
}

CopiedTogether::CopiedTogether(const std::set<AcDbObjectId>& copies) : m_before(s_copies) {
    s_copies = &copies;
}

CopiedTogether::~CopiedTogether() { s_copies = m_before; }

bool CopiedTogether::has(const AcDbObjectId& id) { return s_copies != nullptr && s_copies->count(id) != 0; }

} // namespace structure
