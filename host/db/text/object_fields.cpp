#include "acutmem.h"
#include "db/object_access.h"
#include "dbmain.h"

#include <string>
#include <utility>
#include <vector>

using namespace embedded;

namespace {

constexpr wchar_t kReactors[] = L"{ACAD_REACTORS";
constexpr wchar_t kExtensionDictionary[] = L"{ACAD_XDICTIONARY";
constexpr wchar_t kGroupEnd[] = L"}";

// The text of a value, which is given back here.
std::wstring takeText(resbuf& value) {
    std::wstring text = value.resval.rstring != nullptr ? value.resval.rstring : L"";
    acutDelString(value.resval.rstring);
    return text;
}

// One value inside a group that an application defines; what it has on the heap is given back.
void dropValue(const resbuf& value) {
    auto* const copy = new resbuf(value);
    copy->rbnext = nullptr;
    acutRelRb(copy);
}

// Reads up to the end of a group; the objects in it that are found, by the code that stands before them.
std::vector<AcDbObjectId> readGroup(AcDbDxfFiler& filer, AcDb::DxfCode code) {
    std::vector<AcDbObjectId> ids;
    resbuf value;
    while (filer.readResBuf(&value) == Acad::eOk) {
        if (value.restype == AcDb::kDxfControlString && takeText(value) == kGroupEnd)
            return ids;
        AcDbObjectId id;
        if (value.restype == code && !id.setFromOldId(value.resval.rlname[0]).isNull())
            ids.push_back(id);
        if (value.restype != AcDb::kDxfControlString)
            dropValue(value);
    }
    filer.setError(Acad::eBadDxfSequence, L"a group of code 102 has no end");
    return ids;
}

} // namespace

Acad::ErrorStatus AcDbObject::dxfIn(AcDbDxfFiler* filer) { return dxfInFields(filer); }

Acad::ErrorStatus AcDbObject::dxfOut(AcDbDxfFiler* filer, Adesk::Boolean, unsigned char*) const {
    return dxfOutFields(filer);
}

Acad::ErrorStatus AcDbObject::dxfOutFields(AcDbDxfFiler* filer) const {
    assertReadEnabled();
    if (filer->filerType() != AcDb::kFileFiler)
        return filer->filerStatus();
    filer->writeAcDbHandle(AcDb::kDxfHandle, mId.handle());
    const std::vector<AcDbObjectId> ids = ObjectAccess::reactors(*this);
    if (!ids.empty()) {
        filer->writeString(AcDb::kDxfControlString, kReactors);
        for (const AcDbObjectId& id : ids)
            filer->writeObjectId(AcDb::kDxfSoftPointerId, id);
        filer->writeString(AcDb::kDxfControlString, kGroupEnd);
    }
    if (!extensionDictionary().isNull()) {
        filer->writeString(AcDb::kDxfControlString, kExtensionDictionary);
        filer->writeObjectId(AcDb::kDxfHardOwnershipId, extensionDictionary());
        filer->writeString(AcDb::kDxfControlString, kGroupEnd);
    }
    filer->writeObjectId(AcDb::kDxfSoftPointerId, mOwner);
    return filer->filerStatus();
}

// An extension dictionary is read and left aside: it has one owner, the object that was written.
Acad::ErrorStatus AcDbObject::dxfInFields(AcDbDxfFiler* filer) {
    assertWriteEnabled();
    if (filer->filerType() != AcDb::kFileFiler)
        return filer->filerStatus();
    AcDbObjectId owner;
    std::vector<AcDbObjectId> ids;
    resbuf value;
    bool more = true;
    while (more && !filer->atEndOfObject() && filer->readResBuf(&value) == Acad::eOk) {
        if (value.restype == AcDb::kDxfControlString) {
            const bool reactors = takeText(value) == kReactors;
            std::vector<AcDbObjectId> found = readGroup(*filer, AcDb::kDxfSoftPointerId);
            if (reactors)
                ids = std::move(found);
            continue;
        }
        // The owner is the last one. Anything else than a handle before it is a class's own already.
        more = value.restype == AcDb::kDxfHandle;
        if (value.restype == AcDb::kDxfSoftPointerId)
            owner.setFromOldId(value.resval.rlname[0]);
        else if (!more)
            filer->pushBackItem();
        dropValue(value);
    }
    if (filer->filerStatus() == Acad::eOk && mId.isNull()) {
        mOwner = owner;
        ObjectAccess::setReactors(*this, std::move(ids));
    }
    return filer->filerStatus();
}
