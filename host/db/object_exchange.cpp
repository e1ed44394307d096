#include "db/object_exchange.h"

#include "db/clone/access_rights.h"
#include "db/clone/clone_filers.h"
#include "db/clone/cloned_body.h"
#include "db/database_core.h"
#include "db/object_access.h"
#include "db/open_close.h"
#include "db/reactors/notices.h"
#include "db/symbol_index.h"
#include "db/transactions.h"
#include "dbents.h"
#include "dbsymtb.h"

#include <utility>

namespace embedded {
namespace {

// Of a stub, but the object's own.
constexpr std::uint32_t kBitsOfTheObject =
    kReadersMask | kOpenForWrite | kOpenForNotify | kStandIn | kNewSinceOpen | kWrittenSinceOpen;

std::vector<AcDbStub*> ownedBy(AcDbStub& stub) {
    std::vector<std::uint8_t> bytes;
    std::vector<FiledReference> references;
    GatheringFiler filer(AcDb::kDeepCloneFiler, bytes, references);
    {
        const WriteRight right(stub);
        stub.object->dwgOutFields(&filer);
    }
    std::vector<AcDbStub*> owned;
    for (const FiledReference& reference : references) {
        AcDbStub* part = reference.id;
        AcDbObject* object = nullptr;
        if (owns(reference.strength) && !part->has(kPermanentlyErased) && coreOf(part) == coreOf(&stub) &&
            coreOf(part)->resident(*part, object) == Acad::eOk && object->ownerId() == AcDbObjectId(&stub))
            owned.push_back(part);
    }
    return owned;
}

void giveTo(const std::vector<AcDbStub*>& owned, AcDbStub& owner, const AcDbObjectId& staying) {
    for (AcDbStub* part : owned) {
        if (AcDbObjectId(part) == staying)
            continue;
        ObjectAccess::setOwner(*part->object, AcDbObjectId(&owner));
        part->set(kDirty);
    }
}

AcDbObjectId extensionOf(const AcDbObject& object) {
    const ObjectExtras* extras = ObjectAccess::extras(object);
    return extras != nullptr ? extras->extensionDictionary : AcDbObjectId();
}

void swapExtras(AcDbObject& first, AcDbObject& second, ExchangeKeeps keeps) {
    const AcDbObjectId owner = first.ownerId();
    ObjectAccess::setOwner(first, second.ownerId());
    ObjectAccess::setOwner(second, owner);
    std::vector<AcDbObjectId> reactors = ObjectAccess::reactors(first);
    ObjectAccess::setReactors(first, ObjectAccess::reactors(second));
    ObjectAccess::setReactors(second, std::move(reactors));
    if (ObjectAccess::extras(first) == nullptr && ObjectAccess::extras(second) == nullptr)
        return;
    ObjectExtras& a = ObjectAccess::makeExtras(first);
    ObjectExtras& b = ObjectAccess::makeExtras(second);
    if (keeps.extendedData)
        std::swap(a.extendedData, b.extendedData);
    if (keeps.extensionDictionary)
        std::swap(a.extensionDictionary, b.extensionDictionary);
}

} // namespace

void exchangeObjects(AcDbStub& first, AcDbStub& second, ExchangeKeeps keeps) {
    const std::vector<AcDbStub*> ofFirst = ownedBy(first);
    const std::vector<AcDbStub*> ofSecond = ownedBy(second);
    const bool stays = keeps.extensionDictionary;
    giveTo(ofFirst, second, stays ? extensionOf(*first.object) : AcDbObjectId());
    giveTo(ofSecond, first, stays ? extensionOf(*second.object) : AcDbObjectId());
    swapExtras(*first.object, *second.object, keeps);
    std::swap(first.object, second.object);
    ObjectAccess::setId(*first.object, AcDbObjectId(&first));
    ObjectAccess::setId(*second.object, AcDbObjectId(&second));
    const std::uint32_t differing = (first.bits ^ second.bits) & kBitsOfTheObject;
    first.bits ^= differing;
    second.bits ^= differing;
    // What was taken down of the one is not the other's: there is nothing to cancel to.
    first.clear(kStateSinceOpen);
    second.clear(kStateSinceOpen);
    first.set(kDirty);
    second.set(kDirty);
}

namespace {

// Tables find their records by names and places that an exchange would not tell them of.
bool standsInATable(const AcDbObject& object) {
    return object.isKindOf(AcDbSymbolTable::desc()) || object.isKindOf(AcDbSymbolTableRecord::desc());
}

bool maySwap(const AcDbObject& first, const AcDbObject& second) {
    const bool entity = AcDbEntity::cast(&first) != nullptr;
    return entity == (AcDbEntity::cast(&second) != nullptr) && !standsInATable(first) &&
           !standsInATable(second);
}

// In the history, and as a change of both.
void exchangeForUser(AcDbStub& first, AcDbStub& second, ExchangeKeeps keeps) {
    DatabaseCore& core = *coreOf(&first);
    exchangeObjects(first, second, keeps);
    core.undo().recordExchange(first, second, keeps);
    core.modified = true;
}

} // namespace
} // namespace embedded

using namespace embedded;

Acad::ErrorStatus AcDbObject::swapIdWith(AcDbObjectId otherId, Adesk::Boolean swapXdata,
                                         Adesk::Boolean swapExtDict) {
    AcDbStub* stub = mId;
    AcDbStub* otherStub = otherId;
    if (coreOf(stub) == nullptr || coreOf(otherStub) == nullptr)
        return Acad::eNoDatabase;
    if (coreOf(stub) != coreOf(otherStub))
        return Acad::eWrongDatabase;
    if (stub == otherStub)
        return Acad::eOk;
    assertWriteEnabled(false, false);
    if (otherStub->has(kErased | kPermanentlyErased))
        return otherStub->has(kErased) ? Acad::eWasErased : Acad::ePermanentlyErased;
    AcDbObject* other = nullptr;
    const Acad::ErrorStatus es = coreOf(stub)->resident(*otherStub, other);
    if (es != Acad::eOk)
        return es;
    if (otherStub->has(kOpenForNotify))
        return Acad::eWasOpenForNotify;
    if (otherStub->readers() != 0)
        return Acad::eWasOpenForRead;
    if (!maySwap(*this, *other) || holdsBytes(*this) || holdsBytes(*other))
        return Acad::eNotApplicable;
    assertWriteEnabled(false);
    {
        const WriteRight right(*otherStub);
        other->assertWriteEnabled(false);
    }
    // A transaction closes what it holds by the ids.
    if (stub->has(kInTransaction) != otherStub->has(kInTransaction))
        coreOf(stub)->transactions().addNewlyCreatedDBRObject(stub->has(kInTransaction) ? other : this, true);
    exchangeForUser(*stub, *otherStub, {swapXdata != 0, swapExtDict != 0});
    if (!stub->has(kOpenForWrite)) {
        notices::modified(*other);
        stub->clear(kOpenMarks);
    }
    return Acad::eOk;
}

// The object that goes gets an id of its own, erased, where the history finds it. Without a history it is
// taken out of there again.
Acad::ErrorStatus AcDbObject::handOverTo(AcDbObject* newObject, Adesk::Boolean keepXData,
                                         Adesk::Boolean keepExtDict) {
    if (newObject == nullptr)
        return Acad::eNullObjectPointer;
    AcDbStub* stub = mId;
    if (coreOf(stub) == nullptr || !newObject->objectId().isNull() || !maySwap(*this, *newObject))
        return Acad::eIllegalReplacement;
    assertWriteEnabled(false);
    DatabaseCore& core = *coreOf(stub);
    auto* entity = AcDbEntity::cast(newObject);
    if (entity != nullptr && entity->layerId().isNull())
        ObjectAccess::setSettings(*entity, ObjectAccess::settings(static_cast<AcDbEntity&>(*this)));
    AcDbStub& aside = *static_cast<AcDbStub*>(core.add(newObject));
    exchangeForUser(*stub, aside, {keepXData != 0, keepExtDict != 0});
    // The replacement is new, but its id is not.
    stub->clear(kNewSinceOpen);
    if (mExtras != nullptr)
        std::swap(mExtras->transientReactors, ObjectAccess::makeExtras(*newObject).transientReactors);
    for (AcDbStub* part : ownedBy(aside))
        eraseOwned(*part, true);
    core.undo().recordErasedBit(aside, false);
    aside.clear(kReadersMask | kOpenForWrite | kOpenForNotify | kOpenMarks);
    aside.set(kErased);
    if (core.undo().recording())
        return Acad::eOk;
    aside.set(kPermanentlyErased);
    aside.object = nullptr;
    mId.setNull();
    return Acad::eObjectToBeDeleted;
}
