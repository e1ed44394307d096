#include "db/clone/clone_run.h"
#include "db/clone/object_filing.h"
#include "db/object_access.h"
#include "db/reactors/notices.h"
#include "rxclass.h"

using namespace embedded;

AcRxObject* AcDbObject::clone() const {
    assertReadEnabled();
    std::unique_ptr<AcDbObject> copy;
    std::vector<FiledReference> references;
    if (copyOf(*this, AcDb::kCopyFiler, copy, references) != Acad::eOk)
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
    std::vector<FiledReference> references;
    Acad::ErrorStatus es = copyOf(*source, AcDb::kCopyFiler, copy, references);
    std::vector<std::uint8_t> bytes;
    if (es == Acad::eOk)
        es = fileOut(*copy, AcDb::kCopyFiler, bytes, references);
    if (es != Acad::eOk)
        return es;
    assertWriteEnabled();
    const AcDbObjectId owner = mOwner;
    const AcDbObjectId extension = extensionDictionary();
    MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
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
