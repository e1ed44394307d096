#include "db/database_core.h"
#include "db/object_access.h"
#include "dbhandle.h"
#include "dbid.h"

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

bool AcDbObjectId::isEffectivelyErased() const {
    AcDbObjectId id = *this;
    // A drawing may name owners in a ring; a chain of owners is never this long.
    for (int depth = 0; depth < 64 && id.isValid(); ++depth) {
        if (id.isErased())
            return true;
        AcDbObject* object = nullptr;
        if (coreOf(id)->resident(*static_cast<AcDbStub*>(id), object) != Acad::eOk)
            return false;
        id = object->ownerId();
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
