#include "dwg/block_chains.h"

#include "db/entities/owned_chain.h"
#include "db/entity_list.h"
#include "dbsymtb.h"

namespace embedded::dwg {
namespace {

// Of an object that is still bytes: its kind's envelope, false for what cannot be read.
bool envelopeOf(FileFrame& frame, const AcDbStub& stub, ObjectParts& parts) {
    if (stub.fileIndex == kNoFileIndex)
        return false;
    const ByteSpan body = frame.parts.objects[stub.fileIndex].body;
    const ObjectKind* kind = frame.kinds.find(typeOf(body));
    std::string why;
    return kind != nullptr && kind->isEntity && readEnvelope(body, true, parts, why);
}

// A block's record owns entities in a chain, and so do references to a block and polylines with vertices.
bool ownsAChain(const AcDbObject& object) {
    return object.isKindOf(AcDbBlockTableRecord::desc()) || ownedChainOf(object) != nullptr;
}

std::vector<AcDbStub*> chainOf(const AcDbObject& owner) {
    const OwnedChain* chain = ownedChainOf(owner);
    if (chain == nullptr)
        return BlockAccess::entities(static_cast<const AcDbBlockTableRecord&>(owner)).live();
    std::vector<AcDbStub*> stubs;
    for (const AcDbObjectId& id : chain->live())
        stubs.push_back(id);
    return stubs;
}

} // namespace

BlockChains::BlockChains(DatabaseCore& core, FileFrame& frame) : m_core(core), m_frame(frame) {
    std::unordered_set<AcDbStub*> records;
    collectRecords(records);
    for (AcDbStub* record : records)
        chain(*record);
}

const EntityLinks* BlockChains::find(const AcDbStub& entity) const {
    const auto found = m_links.find(&entity);
    return found != m_links.end() ? &found->second : nullptr;
}

void BlockChains::collectRecords(std::unordered_set<AcDbStub*>& records) {
    std::unordered_set<AcDbStub*> bereft;
    m_core.stubs().forEach([&](AcDbStub& stub) {
        const bool gone = stub.has(kErased | kPermanentlyErased);
        if (!gone && stub.has(kDirty) && stub.object != nullptr && ownsAChain(*stub.object))
            records.insert(&stub);
        ObjectParts parts;
        if (!gone || !envelopeOf(m_frame, stub, parts))
            return;
        const EntityPart& entity = parts.envelope.entity;
        const std::uint64_t owner = parts.envelope.owner.absolute(stub.handle);
        if (entity.mode == EntityPart::kInModelSpace)
            bereft.insert(m_core.roots.modelSpace);
        else if (entity.mode == EntityPart::kInPaperSpace)
            bereft.insert(m_core.roots.paperSpace);
        else if (AcDbStub* found = m_core.stubs().find(owner))
            bereft.insert(found);
    });
    for (AcDbStub* record : bereft) {
        AcDbObject* object = nullptr;
        if (record != nullptr && !record->has(kErased | kPermanentlyErased) &&
            m_core.resident(*record, object) == Acad::eOk && ownsAChain(*object))
            records.insert(record);
    }
}

void BlockChains::chain(AcDbStub& record) {
    const std::vector<AcDbStub*> entities = chainOf(*record.object);
    for (std::size_t i = 0; i < entities.size(); ++i) {
        EntityLinks links;
        links.previous = i > 0 ? entities[i - 1]->handle : 0;
        links.next = i + 1 < entities.size() ? entities[i + 1]->handle : 0;
        m_links[entities[i]] = links;
        ObjectParts parts;
        const bool first = i == 0;
        const bool last = i + 1 == entities.size();
        if ((first || last) &&
            (!envelopeOf(m_frame, *entities[i], parts) || (first && linksOf(parts.envelope).previous != 0) ||
             (last && linksOf(parts.envelope).next != 0)))
            m_newEnds.insert(&record);
    }
    if (entities.empty())
        m_newEnds.insert(&record);
}

} // namespace embedded::dwg
