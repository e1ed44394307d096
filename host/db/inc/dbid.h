#pragma once

#include "adesk.h"
#include "dbhandle.h"

class AcDbDatabase;
class AcDbStub;
class AcRxClass;

// Names an object of a database for the time that the process lives. An id stays comparable and testable
// after its database has gone; it is invalid then, and opening it is refused.
class AcDbObjectId {
public:
    static const AcDbObjectId kNull;

    AcDbObjectId() = default;
    AcDbObjectId(AcDbStub* stub) : mId(stub) {}

    bool isNull() const { return mId == nullptr; }
    AcDbObjectId& setNull() {
        mId = nullptr;
        return *this;
    }
    // Not null, and its database is still there.
    bool isValid() const;
    // The object is erased, or gone for good.
    bool isErased() const;
    // The object, or one that owns it, is erased.
    bool isEffectivelyErased() const;
    bool isObjectLeftOnDisk() const { return isErased(); }
    // Bytes of a drawing that have not been made an object yet.
    bool isResident() const;

    // Null handle for a null id. Stays known when the database has gone.
    AcDbHandle handle() const;
    AcDbHandle nonForwardedHandle() const { return handle(); }
    // The database, or null for a null id or when the database has gone.
    AcDbDatabase* database() const;
    AcDbDatabase* originalDatabase() const { return database(); }
    // The class of the object, without opening it. Null for a null or invalid id.
    AcRxClass* objectClass() const;

    Adesk::IntPtr asOldId() const { return reinterpret_cast<Adesk::IntPtr>(mId); }
    AcDbObjectId& setFromOldId(Adesk::IntPtr oldId) {
        mId = reinterpret_cast<AcDbStub*>(oldId);
        return *this;
    }
    operator AcDbStub*() const { return mId; }

    bool operator==(const AcDbObjectId& other) const { return mId == other.mId; }
    bool operator!=(const AcDbObjectId& other) const { return mId != other.mId; }
    // By database in the order of their making, then by handle: a set of ids has the same order in every run.
    bool operator<(const AcDbObjectId& other) const;
    bool operator>(const AcDbObjectId& other) const { return other < *this; }
    bool operator<=(const AcDbObjectId& other) const { return !(other < *this); }
    bool operator>=(const AcDbObjectId& other) const { return !(*this < other); }

protected:
    AcDbStub* mId = nullptr;
};

// Ids with the strength with which they are filed.
class AcDbHardOwnershipId : public AcDbObjectId {
public:
    using AcDbObjectId::AcDbObjectId;
    AcDbHardOwnershipId() = default;
    AcDbHardOwnershipId(const AcDbObjectId& id) : AcDbObjectId(id) {}
};

class AcDbSoftOwnershipId : public AcDbObjectId {
public:
    using AcDbObjectId::AcDbObjectId;
    AcDbSoftOwnershipId() = default;
    AcDbSoftOwnershipId(const AcDbObjectId& id) : AcDbObjectId(id) {}
};

class AcDbHardPointerId : public AcDbObjectId {
public:
    using AcDbObjectId::AcDbObjectId;
    AcDbHardPointerId() = default;
    AcDbHardPointerId(const AcDbObjectId& id) : AcDbObjectId(id) {}
};

class AcDbSoftPointerId : public AcDbObjectId {
public:
    using AcDbObjectId::AcDbObjectId;
    AcDbSoftPointerId() = default;
    AcDbSoftPointerId(const AcDbObjectId& id) : AcDbObjectId(id) {}
};

// For containers of ids: the order and the equality of AcDbObjectId itself. By handle inside one database,
// and databases in the order of their making; null comes first.
Adesk::Boolean c5ObjIdIsLessThan(const AcDbObjectId& a, const AcDbObjectId& b);
Adesk::Boolean c5ObjIdIsEqualTo(const AcDbObjectId& a, const AcDbObjectId& b);
