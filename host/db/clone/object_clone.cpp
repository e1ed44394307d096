#include "db/clone/clone_run.h"
#include "db/clone/object_filing.h"
#include "db/object_access.h"
#include "db/reactors/notices.h"
#include "rxclass.h"

using namespace embedded;

AcRxObject* AcDbObject::clone() const {
    assertReadEnabled();
    std::unique_ptr<AcDbObject> copy;
    FilingRoom room;
    if (copyOf(*this, AcDb::kCopyFiler, copy, room) != Acad::eOk)
        return nullptr;
    notices::copied(*this, *copy);
    return copy.release();
}

Acad::ErrorStatus AcDbObject::copyFrom(const AcRxObject* other) {
    const AcDbObject* source = AcDbObject::cast(other);
    if (source == nullptr || source->isA() != isA() || ObjectAccess::body(*source) != nullptr)
        return Acad::eNotThatKindOfClass;
    if (source == this)
        return Acad::eOk;
    // Into another object first: what cannot be read leaves this one alone.
    std::unique_ptr<AcDbObject> copy;
    FilingRoom room;
    Acad::ErrorStatus es = copyOf(*source, AcDb::kCopyFiler, copy, room);
    room.bytes.clear();
    if (es == Acad::eOk)
        es = fileOut(*copy, AcDb::kCopyFiler, room);
    if (es != Acad::eOk)
        return es;
    assertWriteEnabled();
    const AcDbObjectId owner = mOwner;
    const AcDbObjectId extension = extensionDictionary();
    MemoryFiler filer(AcDb::kCopyFiler, room.bytes.data(), room.bytes.size());
    es = fileIn(*this, filer);
    mOwner = owner;
    if (!extension.isNull())
        ObjectAccess::makeExtras(*this).extensionDictionary = extension;
    if (es == Acad::eOk)
        notices::copied(*source, *this);
    return es;
}

Acad::ErrorStatus AcDbObject::deepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                        Adesk::Boolean isPrimary) const {
    clone = nullptr;
    assertReadEnabled();
    return subDeepClone(owner, clone, idMap, isPrimary);
}

Acad::ErrorStatus AcDbObject::wblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                          Adesk::Boolean isPrimary) const {
    clone = nullptr;
    assertReadEnabled();
    return subWblockClone(owner, clone, idMap, isPrimary);
}

Acad::ErrorStatus AcDbObject::subDeepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                           Adesk::Boolean isPrimary) const {
    return idMap.run().cloneObject(*this, owner, clone, isPrimary != 0);
}

Acad::ErrorStatus AcDbObject::subWblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                             Adesk::Boolean isPrimary) const {
    // The database as owner says that the place follows from where the original stands.
    return idMap.run().cloneObject(*this, AcDbObject::cast(owner), clone, isPrimary != 0);
}
