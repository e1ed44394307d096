#include "db/clone/clone_run.h"

#include "db/clone/access_rights.h"
#include "db/clone/clone_events.h"
#include "db/clone/cloned_body.h"
#include "db/clone/object_filing.h"
#include "db/clone/raw_references.h"
#include "db/database_core.h"
#include "db/entity_list.h"
#include "db/name_table.h"
#include "db/object_access.h"
#include "db/reactors/notices.h"
#include "db/symbol_index.h"
#include "dbsymtb.h"
#include "rxclass.h"

namespace embedded {

AcDbIdPair* CloneRun::find(const AcDbObjectId& key) {
    const std::uint32_t at = m_index.find(static_cast<AcDbStub*>(key));
    return at == PairIndex::kNone ? nullptr : &pairs[at];
}

bool CloneRun::enter(const AcDbIdPair& pair) {
    if (pair.key().isNull() ||
        !m_index.add(static_cast<AcDbStub*>(pair.key()), static_cast<std::uint32_t>(pairs.size())))
        return false;
    pairs.push_back(pair);
    return true;
}

void CloneRun::settle(const AcDbIdPair& pair) {
    AcDbIdPair* entered = find(pair.key());
    if (entered == nullptr)
        enter(pair);
    else if (entered->value().isNull())
        *entered = pair;
}

bool CloneRun::takeOut(const AcDbObjectId& key) {
    AcDbIdPair* pair = find(key);
    if (pair == nullptr)
        return false;
    m_index.remove(static_cast<AcDbStub*>(key));
    *pair = AcDbIdPair();
    return true;
}

Acad::ErrorStatus CloneRun::begin(AcDbDatabase& to, AcDbDatabase& from, AcDb::DeepCloneType kind,
                                  AcDb::DuplicateRecordCloning drc) {
    if (m_active)
        return m_destinationTag == to.core().tag() && m_originalTag == from.core().tag() && context == kind &&
                       duplicates == drc
                   ? Acad::eOk
                   : Acad::eInvalidContext;
    UndoLog& undo = to.core().undo();
    if (undo.active())
        return Acad::eInvalidContext;
    destination = &to;
    original = &from;
    context = kind;
    duplicates = drc;
    m_destinationTag = to.core().tag();
    m_originalTag = from.core().tag();
    m_active = true;
    // What fails is taken back by the history, also in a drawing that keeps none.
    m_recordingBefore = undo.recording();
    if (!m_recordingBefore)
        undo.setRecording(true);
    m_mark = undo.beginScope();
    events::beginDeepClone(&to, m_mapping);
    return Acad::eOk;
}

Acad::ErrorStatus CloneRun::clonePrimaries(const AcDbObjectIdArray& ids, AcDbObject& owner) {
    for (const AcDbObjectId& id : ids) {
        const ReadRight reading(id);
        Acad::ErrorStatus es = reading.status();
        AcDbObject* clone = nullptr;
        if (es == Acad::eOk)
            es = intoOther() ? reading.object()->wblockClone(&owner, clone, m_mapping, true)
                             : reading.object()->deepClone(&owner, clone, m_mapping, true);
        if (clone != nullptr)
            clone->close();
        if (es != Acad::eOk && es != Acad::eNotApplicable)
            return es;
    }
    return follow();
}

Acad::ErrorStatus CloneRun::follow() {
    while (!m_pending.empty()) {
        const Pending pending = m_pending.front();
        m_pending.pop_front();
        const AcDbIdPair* pair = find(pending.source);
        if (pair != nullptr && !pair->value().isNull())
            continue;
        const Acad::ErrorStatus es = clonePending(pending);
        if (es != Acad::eOk && es != Acad::eNotApplicable)
            return es;
    }
    return Acad::eOk;
}

Acad::ErrorStatus CloneRun::clonePending(const Pending& pending) {
    const ReadRight reading(pending.source);
    // What has gone is led to by nobody any more.
    if (reading.status() == Acad::eWasErased || reading.status() == Acad::ePermanentlyErased)
        return Acad::eOk;
    if (reading.status() != Acad::eOk)
        return reading.status();
    AcDbStub* ownerStub = pending.owner;
    AcDbObject* owner = nullptr;
    if (ownerStub != nullptr && coreOf(ownerStub)->resident(*ownerStub, owner) != Acad::eOk)
        return Acad::eInvalidOwnerObject;
    AcDbObject* clone = nullptr;
    Acad::ErrorStatus es = Acad::eOk;
    if (!intoOther())
        es = reading.object()->deepClone(owner, clone, m_mapping, false);
    else if (owner != nullptr)
        es = reading.object()->wblockClone(owner, clone, m_mapping, false);
    else
        es = reading.object()->wblockClone(destination, clone, m_mapping, false);
    if (clone != nullptr)
        clone->close();
    return es;
}

Acad::ErrorStatus CloneRun::cloneObject(const AcDbObject& source, AcDbObject* owner, AcDbObject*& clone,
                                        bool isPrimary) {
    clone = nullptr;
    if (!m_active)
        return Acad::eInvalidContext;
    if (source.database() != original)
        return Acad::eWrongDatabase;
    const AcDbIdPair* pair = find(source.objectId());
    if (pair != nullptr && !pair->value().isNull())
        return Acad::eOk;
    if (!mayBeCloned(source))
        return Acad::eNotApplicable;
    if (chainsOthers(source))
        return Acad::eNotImplementedYet;
    ClonePlace place;
    Acad::ErrorStatus es = placeOf(source, owner, isPrimary, place);
    if (es != Acad::eOk)
        return es;
    LentRoom room(m_room);
    if (place.existing.isNull())
        return copyTo(source, place, isPrimary, *room, clone);
    if (place.fillExisting)
        return fillFrom(source, place, isPrimary, *room);
    settle(AcDbIdPair(source.objectId(), place.existing, false, isPrimary, true));
    return Acad::eOk;
}

Acad::ErrorStatus CloneRun::copyTo(const AcDbObject& source, const ClonePlace& place, bool isPrimary,
                                   FilingRoom& room, AcDbObject*& clone) {
    std::unique_ptr<AcDbObject> made;
    Acad::ErrorStatus es =
        copyOf(source, intoOther() ? AcDb::kWblockCloneFiler : AcDb::kDeepCloneFiler, made, room);
    if (es == Acad::eOk)
        es = attach(made.get(), source, place);
    if (es != Acad::eOk)
        return es;
    clone = made.release();
    settle(AcDbIdPair(source.objectId(), clone->objectId(), true, isPrimary, true));
    gatherBodyReferences(source, room.references);
    gatherRawReferences(source, room.references);
    queueReferences(source, clone->objectId(), room.references);
    notices::copied(source, *clone);
    return Acad::eOk;
}

Acad::ErrorStatus CloneRun::fillFrom(const AcDbObject& source, const ClonePlace& place, bool isPrimary,
                                     FilingRoom& room) {
    Acad::ErrorStatus es =
        fileOut(source, intoOther() ? AcDb::kWblockCloneFiler : AcDb::kDeepCloneFiler, room);
    if (es == Acad::eOk)
        es = fill(source, place, room.bytes);
    if (es != Acad::eOk)
        return es;
    gatherRawReferences(source, room.references);
    settle(AcDbIdPair(source.objectId(), place.existing, true, isPrimary, true));
    queueReferences(source, place.existing, room.references);
    return Acad::eOk;
}

// Puts the original's content into a record that the target has: it keeps its id, and what refers to it.
Acad::ErrorStatus CloneRun::fill(const AcDbObject& source, const ClonePlace& place,
                                 const std::vector<std::uint8_t>& bytes) {
    AcDbStub& stub = *static_cast<AcDbStub*>(place.existing);
    AcDbObject* existing = nullptr;
    Acad::ErrorStatus es = coreOf(&stub)->resident(stub, existing);
    if (es != Acad::eOk)
        return es;
    if (existing->isA() != source.isA() || ObjectAccess::body(*existing) != nullptr)
        return Acad::eNotThatKindOfClass;
    const WriteRight writing(stub);
    existing->assertWriteEnabled();
    const AcDbObjectId owner = existing->ownerId();
    const AcDbObjectId extension = existing->extensionDictionary();
    auto* block = AcDbBlockTableRecord::cast(existing);
    if (block != nullptr) {
        for (AcDbStub* entity : BlockAccess::entities(*block).live())
            eraseOwned(*entity, true);
    }
    const BlockAccess::Frame frame = block != nullptr ? BlockAccess::frameOf(*block) : BlockAccess::Frame();
    MemoryFiler filer(intoOther() ? AcDb::kWblockCloneFiler : AcDb::kDeepCloneFiler, bytes.data(),
                      bytes.size());
    es = fileIn(*existing, filer);
    if (es != Acad::eOk)
        return es;
    ObjectAccess::setOwner(*existing, owner);
    if (ObjectAccess::extras(*existing) != nullptr)
        ObjectAccess::makeExtras(*existing).extensionDictionary = extension;
    if (block != nullptr)
        BlockAccess::setFrame(*block, frame);
    return Acad::eOk;
}

void CloneRun::queueEntries(const AcDbObject& source, const AcDbObjectId& clone) {
    if (const auto* block = AcDbBlockTableRecord::cast(&source)) {
        for (AcDbStub* entity : BlockAccess::entities(*block).live())
            m_pending.push_back({AcDbObjectId(entity), clone});
        return;
    }
    auto* dictionary = const_cast<AcDbDictionary*>(AcDbDictionary::cast(&source));
    if (dictionary == nullptr)
        return;
    // Into another drawing go the entries that are hard owned, and all of what hangs at an object.
    const AcDbStub* owner = source.ownerId();
    const ObjectExtras* extras =
        owner != nullptr && owner->object != nullptr ? ObjectAccess::extras(*owner->object) : nullptr;
    const bool hangsAtObject = extras != nullptr && extras->extensionDictionary == source.objectId();
    if (intoOther() && !hangsAtObject && !dictionary->isTreatElementsAsHard())
        return;
    const NameTable& names = ObjectAccess::names(*dictionary);
    for (std::size_t slot = 0; slot < names.slots(); ++slot)
        if (names.at(slot).live && objectIsLive(names.at(slot).stub))
            m_pending.push_back({AcDbObjectId(names.at(slot).stub), clone});
}

void CloneRun::queueReferences(const AcDbObject& source, const AcDbObjectId& clone,
                               const std::vector<FiledReference>& references) {
    const bool isEntity = AcDbEntity::cast(&source) != nullptr;
    if (!isEntity)
        queueEntries(source, clone);
    const auto* block = isEntity ? nullptr : AcDbBlockTableRecord::cast(&source);
    if (block != nullptr) {
        // The clone has its own framing entities.
        const auto* made = static_cast<AcDbBlockTableRecord*>(static_cast<AcDbStub*>(clone)->object);
        settle(AcDbIdPair(BlockAccess::begin(*block), BlockAccess::begin(*made), false));
        settle(AcDbIdPair(BlockAccess::end(*block), BlockAccess::end(*made), false));
    }
    const bool isDictionary = !isEntity && AcDbDictionary::cast(&source) != nullptr;
    const AcDbObjectId extension = source.extensionDictionary();
    for (const FiledReference& reference : references) {
        const bool followed = intoOther() ? isHard(reference.strength) : owns(reference.strength);
        if (!followed || reference.id.database() != original)
            continue;
        // A dictionary's entries are in the queue, as far as they go along.
        if (isDictionary && owns(reference.strength) && reference.id != extension)
            continue;
        AcDbStub* stub = reference.id;
        // A layer that a thousand others have led to.
        if (const AcDbIdPair* pair = find(reference.id); pair != nullptr && !pair->value().isNull())
            continue;
        AcDbObject* object = nullptr;
        if (!objectIsLive(stub) || coreOf(stub)->resident(*stub, object) != Acad::eOk)
            continue;
        const bool owned = object->ownerId() == source.objectId();
        if (!intoOther() && !owned)
            continue;
        m_pending.push_back({reference.id, owned ? clone : AcDbObjectId()});
    }
}

} // namespace embedded
