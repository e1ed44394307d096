#include "db/clone/access_rights.h"
#include "db/clone/clone_events.h"
#include "db/clone/clone_run.h"
#include "db/clone/cloned_body.h"
#include "db/clone/object_filing.h"
#include "db/clone/raw_references.h"
#include "db/database_core.h"
#include "db/object_access.h"
#include "db/symbol_index.h"

#include <algorithm>

namespace embedded {

namespace {

AcDbObjectId ownerOf(const AcDbObjectId& id) {
    AcDbStub* stub = id;
    AcDbObject* object = nullptr;
    return coreOf(stub) != nullptr && coreOf(stub)->resident(*stub, object) == Acad::eOk ? object->ownerId()
                                                                                         : AcDbObjectId();
}

// A reactor that stayed behind in the other drawing hears of nothing here.
void dropNullReactors(AcDbObject& object) {
    if (ObjectAccess::extras(object) == nullptr)
        return;
    std::vector<AcDbObjectId> reactors = ObjectAccess::reactors(object);
    const auto end =
        std::remove_if(reactors.begin(), reactors.end(), [](const AcDbObjectId& id) { return id.isNull(); });
    if (end == reactors.end())
        return;
    reactors.erase(end, reactors.end());
    ObjectAccess::setReactors(object, std::move(reactors));
}

// Data of an application that is not in the target: nothing there could say whose they are.
void dropOrphanedData(AcDbObject& object) {
    ObjectExtras* extras = ObjectAccess::extras(object);
    if (extras == nullptr)
        return;
    auto& data = extras->extendedData;
    data.erase(std::remove_if(data.begin(), data.end(),
                              [](const ExtendedData& one) { return one.application.isNull(); }),
               data.end());
}

} // namespace

// What was cloned is replaced by its clone. The rest of the target's own stays; of another drawing nothing
// does, and nothing is owned twice.
AcDbObjectId CloneRun::translateId(const AcDbObjectId& id, Strength strength,
                                   const AcDbObjectId& clone) const {
    const AcDbIdPair* pair = find(id);
    if (pair != nullptr && !pair->value().isNull())
        return pair->value();
    if (id.database() != destination)
        return AcDbObjectId();
    if (owns(strength) && destination == original && ownerOf(id) != clone)
        return AcDbObjectId();
    return id;
}

namespace {

// Gives an entity that has filed no ids of its class's own the translated ones of the common part, which is
// all that reading its fields would do. False, with nothing changed, for any other object.
bool translateCommonPart(AcDbObject& clone, const std::vector<FiledReference>& filed,
                         const Translate& translate) {
    auto* entity = AcDbEntity::cast(&clone);
    if (entity == nullptr || ObjectAccess::extras(clone) != nullptr ||
        (ObjectAccess::bits(clone) & kOwnerIsReactor) != 0)
        return false;
    ObjectAccess::EntitySettings settings = ObjectAccess::settings(*entity);
    std::size_t common = clone.ownerId().isNull() ? 0 : 1;
    for (AcDbObjectId* id : {&settings.layer, &settings.linetype, &settings.plotStyle})
        common += id->isNull() ? 0 : 1;
    if (filed.size() != common)
        return false;
    for (AcDbObjectId* id : {&settings.layer, &settings.linetype, &settings.plotStyle})
        if (!id->isNull())
            *id = translate(*id, Strength::kHardPointer);
    ObjectAccess::setSettings(*entity, settings);
    if (!clone.ownerId().isNull())
        ObjectAccess::setOwner(clone, translate(clone.ownerId(), Strength::kSoftPointer));
    return true;
}

} // namespace

Acad::ErrorStatus CloneRun::translateFields(AcDbObject& clone, const FilingRoom& filed,
                                            const Translate& translate) {
    if (translateCommonPart(clone, filed.references, translate))
        return Acad::eOk;
    TranslatingFiler filer(filed.bytes, translate);
    const Acad::ErrorStatus es = fileIn(clone, filer);
    if (es == Acad::eOk) {
        dropNullReactors(clone);
        dropOrphanedData(clone);
    }
    return es;
}

Acad::ErrorStatus CloneRun::translateClone(const AcDbIdPair& pair) {
    AcDbStub* stub = pair.value();
    AcDbObject* object = nullptr;
    if (!objectIsLive(stub) || coreOf(stub)->resident(*stub, object) != Acad::eOk)
        return Acad::eOk;
    const WriteRight writing(*stub);
    object->assertWriteEnabled();
    LentRoom room(m_room);
    Acad::ErrorStatus es = fileOut(*object, AcDb::kIdXlateFiler, *room);
    if (es != Acad::eOk)
        return es;
    const Translate translate = [&](const AcDbObjectId& id, Strength strength) {
        return translateId(id, strength, pair.value());
    };
    const AcDbObjectId owner = object->ownerId();
    es = translateFields(*object, *room, translate);
    if (es != Acad::eOk)
        return es;
    if (pair.isOwnerXlated())
        ObjectAccess::setOwner(*object, owner);
    else if (object->ownerId().isNull())
        return Acad::eOwnerNotSet;
    translateRawReferences(*object, pair.key(), translate);
    translateBody(*object, pair.key(), intoOther(), translate);
    return Acad::eOk;
}

Acad::ErrorStatus CloneRun::finish() {
    Acad::ErrorStatus es = Acad::eOk;
    events::beginDeepCloneXlation(m_mapping, &es);
    if (es == Acad::eOk)
        es = follow();
    for (std::size_t i = 0; i < pairs.size() && es == Acad::eOk; ++i) {
        const AcDbIdPair pair = pairs[i];
        if (pair.isCloned())
            es = translateClone(pair);
    }
    if (es != Acad::eOk)
        return es;
    events::endDeepClone(m_mapping);
    stop();
    return Acad::eOk;
}

void CloneRun::abort() {
    if (!m_active)
        return;
    if (m_destinationTag->core == nullptr)
        destination = nullptr;
    if (m_originalTag->core == nullptr)
        original = nullptr;
    events::abortDeepClone(m_mapping);
    if (destination != nullptr)
        takeBack();
    pairs.clear();
    m_index.clear();
    stop();
}

void CloneRun::takeBack() {
    UndoLog& undo = destination->core().undo();
    // Such a walk has the objects in its hands.
    if (undo.active())
        return;
    undo.rollBack(m_mark);
    for (AcDbStub* stub : m_made) {
        AcDbObject* object = stub->object;
        stub->object = nullptr;
        stub->clear(kReadersMask | kOpenForWrite | kOpenForNotify | kNewSinceOpen | kWrittenSinceOpen);
        stub->set(kErased | kPermanentlyErased);
        delete object;
    }
}

void CloneRun::stop() {
    if (!m_recordingBefore && destination != nullptr)
        destination->core().undo().setRecording(false);
    m_pending.clear();
    m_bringing.clear();
    m_made.clear();
    m_active = false;
}

} // namespace embedded
