#include "db/database_core.h"
#include "db/object_access.h"
#include "dbhandle.h"
#include "dbid.h"
#include "dbmain.h"

#include <string>

using namespace embedded;

const AcDbObjectId AcDbObjectId::kNull;

bool AcDbHandle::getIntoAsciiBuffer(wchar_t* buffer, std::size_t length) const {
    std::wstring digits;
    for (Adesk::UInt64 rest = m_value; rest != 0 || digits.empty(); rest >>= 4)
        digits.insert(digits.begin(), L"0123456789ABCDEF"[rest & 0xF]);
    if (digits.size() + 1 > length)
        return false;
    digits.copy(buffer, digits.size());
    buffer[digits.size()] = 0;
    return true;
}

bool AcDbObjectId::isValid() const { return mId != nullptr && mId->tag->core != nullptr; }

bool AcDbObjectId::isErased() const { return mId != nullptr && mId->has(kErased | kPermanentlyErased); }

namespace {

// Without making an object of what is still bytes.
AcDbObjectId ownerOf(const AcDbStub& stub) {
    if (stub.object != nullptr)
        return stub.object->ownerId();
    const DatabaseCore& core = *stub.tag->core;
    return stub.fileIndex != kNoFileIndex && core.source != nullptr ? core.source->ownerOf(stub)
                                                                    : AcDbObjectId();
}

} // namespace

bool AcDbObjectId::isEffectivelyErased() const {
    AcDbObjectId id = *this;
    // A drawing may name owners in a ring; a chain of owners is never this long.
    for (int depth = 0; depth < 64 && id.isValid(); ++depth) {
        if (id.isErased())
            return true;
        id = ownerOf(*id.mId);
    }
    return false;
}

bool AcDbObjectId::isResident() const { return mId != nullptr && mId->object != nullptr; }

AcDbHandle AcDbObjectId::handle() const { return mId != nullptr ? AcDbHandle(mId->handle) : AcDbHandle(); }

AcDbDatabase* AcDbObjectId::database() const {
    DatabaseCore* core = coreOf(mId);
    return core != nullptr ? &core->owner() : nullptr;
}

AcRxClass* AcDbObjectId::objectClass() const {
    DatabaseCore* core = coreOf(mId);
    if (core == nullptr)
        return nullptr;
    if (mId->object != nullptr)
        return mId->object->isA();
    if (mId->fileIndex != kNoFileIndex && core->source != nullptr)
        return core->source->classOf(*mId);
    return nullptr;
}

bool AcDbObjectId::operator<(const AcDbObjectId& other) const {
    if (mId == other.mId || other.mId == nullptr)
        return false;
    if (mId == nullptr)
        return true;
    if (mId->tag != other.mId->tag)
        return mId->tag->serial < other.mId->tag->serial;
    return mId->handle < other.mId->handle;
}

Adesk::Boolean c5ObjIdIsLessThan(const AcDbObjectId& a, const AcDbObjectId& b) { return a < b; }
Adesk::Boolean c5ObjIdIsEqualTo(const AcDbObjectId& a, const AcDbObjectId& b) { return a == b; }

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
    id.setNull();
    // Whoever hands names around may have made them up: only an address that is known is looked at.
    if (name == nullptr || name[1] != 0 || !StubTable::isStub(name[0]))
        return Acad::eInvalidAdsName;
    id.setFromOldId(name[0]);
    if (id.isValid())
        return Acad::eOk;
    id.setNull();
    return Acad::eInvalidAdsName;
}

Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id) {
    name[0] = id.asOldId();
    name[1] = 0;
    return id.isNull() ? Acad::eNullObjectId : Acad::eOk;
}
