#include "db/entities/owned_chain.h"

#include "db/database_core.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"
#include "db/object_access.h"
#include "db/open_close.h"
#include "db/reactors/notices.h"
#include "db/symbol_index.h"
#include "dbents.h"

#include <algorithm>

namespace embedded {

const std::vector<AcDbObjectId>& OwnedChain::ids() const {
    if (!m_firstFiled.isNull()) {
        const DatabaseCore* core = coreOf(m_firstFiled);
        if (core != nullptr && core->source != nullptr)
            m_ids = core->source->entitiesOf(m_firstFiled, m_lastFiled);
        m_firstFiled.setNull();
        m_lastFiled.setNull();
    }
    return m_ids;
}

std::vector<AcDbObjectId> OwnedChain::live() const {
    std::vector<AcDbObjectId> found;
    for (const AcDbObjectId& id : ids())
        if (objectIsLive(id))
            found.push_back(id);
    return found;
}

std::size_t OwnedChain::placeOf(AcDbObjectId id) const {
    const auto found = std::find(ids().begin(), ids().end(), id);
    return found == m_ids.end() ? kAtEnd : static_cast<std::size_t>(found - m_ids.begin());
}

bool OwnedChain::holds(AcDbObjectId id) const { return placeOf(id) != kAtEnd; }

AcDbObjectId OwnedChain::insert(AcDbEntity& owner, AcDbEntity& part, std::size_t place) {
    ids();
    DatabaseCore& core = *coreOf(owner.objectId());
    const AcDbObjectId id = core.add(&part);
    ObjectAccess::setOwner(part, owner.objectId());
    if (part.layerId().isNull())
        takeSettings(owner, part);
    m_ids.insert(m_ids.begin() + static_cast<std::ptrdiff_t>(std::min(place, m_ids.size())), id);
    if (m_end.isNull() || m_end.isErased()) {
        auto* end = new AcDbSequenceEnd;
        m_end = core.add(end);
        ObjectAccess::setOwner(*end, owner.objectId());
        takeSettings(owner, *end);
        notices::appended(*end);
        end->close();
    }
    notices::appended(part);
    return id;
}

void OwnedChain::store(AcDbEntity& owner) {
    std::vector<std::unique_ptr<AcDbEntity>> parts;
    parts.swap(m_loose);
    for (std::unique_ptr<AcDbEntity>& part : parts) {
        AcDbEntity* stored = part.release();
        insert(owner, *stored, kAtEnd);
        stored->close();
    }
}

void OwnedChain::erase(bool erasing) {
    if (erasing) {
        m_erasedWithOwner = live();
        if (objectIsLive(m_end))
            m_erasedWithOwner.push_back(m_end);
    }
    for (const AcDbObjectId& id : m_erasedWithOwner)
        eraseOwned(*static_cast<AcDbStub*>(id), erasing);
}

void OwnedChain::write(AcDbDwgFiler& filer) const {
    FieldWriter out(filer);
    if (!out.toFile()) {
        out.int32(static_cast<Adesk::UInt32>(ids().size()));
        for (const AcDbObjectId& id : ids())
            out.hardOwner(id);
        out.hardOwner(m_end);
        return;
    }
    if (!m_firstFiled.isNull()) {
        out.softPointer(m_firstFiled);
        out.softPointer(m_lastFiled);
    } else {
        const std::vector<AcDbObjectId> parts = live();
        out.softPointer(parts.empty() ? AcDbObjectId() : parts.front());
        out.softPointer(parts.empty() ? AcDbObjectId() : parts.back());
    }
    out.hardOwner(m_end);
}

void OwnedChain::read(AcDbDwgFiler& filer) {
    FieldReader in(filer);
    std::vector<AcDbObjectId> ids;
    AcDbObjectId first, last, end;
    if (in.toFile()) {
        in.softPointer(first);
        in.softPointer(last);
    } else {
        Adesk::UInt32 count = 0;
        in.int32(count);
        for (Adesk::UInt32 i = 0; i < count && in.ok(); ++i) {
            AcDbObjectId id;
            in.hardOwner(id);
            // One that has been left out of a cloning.
            if (!id.isNull())
                ids.push_back(id);
        }
    }
    in.hardOwner(end);
    if (!in.ok() || filer.filerType() == AcDb::kCopyFiler)
        return;
    m_ids = std::move(ids);
    m_firstFiled = first;
    m_lastFiled = last;
    m_end = end;
}

} // namespace embedded
