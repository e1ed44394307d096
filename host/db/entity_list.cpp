#include "db/entity_list.h"

#include "db/database_core.h"
#include "db/object_access.h"
#include "db/symbol_index.h"

#include <algorithm>

namespace embedded {

void EntityList::setRead(std::vector<AcDbStub*> stubs) {
    m_stubs = std::move(stubs);
    m_read = true;
}

void EntityList::forget() {
    m_stubs.clear();
    m_read = false;
}

void EntityList::append(AcDbStub* stub) { m_stubs.push_back(stub); }

AcDbStub* EntityList::firstLive() const {
    const auto it = std::find_if(m_stubs.begin(), m_stubs.end(), objectIsLive);
    return it == m_stubs.end() ? nullptr : *it;
}

AcDbStub* EntityList::lastLive() const {
    const auto it = std::find_if(m_stubs.rbegin(), m_stubs.rend(), objectIsLive);
    return it == m_stubs.rend() ? nullptr : *it;
}

std::vector<AcDbStub*> EntityList::live() const {
    std::vector<AcDbStub*> stubs;
    std::copy_if(m_stubs.begin(), m_stubs.end(), std::back_inserter(stubs), objectIsLive);
    return stubs;
}

EntityList& BlockAccess::entities(const AcDbBlockTableRecord& block) {
    EntityList& list = *block.m_entities;
    if (!list.isRead()) {
        const DatabaseCore* core = coreOf(block.objectId());
        std::vector<AcDbStub*> stubs;
        if (core != nullptr && core->source != nullptr)
            for (const AcDbObjectId& id :
                 core->source->entitiesOf(block.m_fields.firstEntity, block.m_fields.lastEntity))
                stubs.push_back(id);
        list.setRead(std::move(stubs));
    }
    return list;
}

namespace {

AcDbObjectId addFrame(AcDbBlockTableRecord& block, AcDbEntity* entity, std::uint64_t handle) {
    DatabaseCore& core = *coreOf(block.objectId());
    const AcDbObjectId id = handle != 0 ? core.addWithHandle(entity, handle) : core.add(entity);
    ObjectAccess::setOwner(*entity, block.objectId());
    ObjectAccess::EntitySettings settings = ObjectAccess::settings(*entity);
    settings.layer = core.roots.layerZero;
    ObjectAccess::setSettings(*entity, settings);
    entity->close();
    return id;
}

} // namespace

void BlockAccess::frame(AcDbBlockTableRecord& block, std::uint64_t beginHandle, std::uint64_t endHandle) {
    auto* begin = new AcDbBlockBegin;
    begin->setName(SymbolAccess::name(block).kACharPtr());
    block.m_fields.begin = addFrame(block, begin, beginHandle);
    block.m_fields.end = addFrame(block, new AcDbBlockEnd, endHandle);
}

BlockAccess::Frame BlockAccess::frameOf(const AcDbBlockTableRecord& block) {
    return {block.m_fields.begin, block.m_fields.end, block.m_fields.inserts, block.m_fields.layout};
}

void BlockAccess::setFrame(AcDbBlockTableRecord& block, const Frame& frame) {
    block.m_fields.begin = frame.begin;
    block.m_fields.end = frame.end;
    block.m_fields.inserts = frame.inserts;
    block.m_fields.layout = frame.layout;
}

void BlockAccess::disown(AcDbBlockTableRecord& block) {
    setFrame(block, {AcDbObjectId(), AcDbObjectId(), {}, block.m_fields.layout});
    block.m_fields.firstEntity.setNull();
    block.m_fields.lastEntity.setNull();
    block.m_entities->setRead({});
}

} // namespace embedded
