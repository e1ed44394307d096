#include "clone_node.h"

#include "AcString.h"
#include "embedded/host_start.h"
#include "gemat3d.h"
#include "rxclass.h"

#include <stdexcept>

ACRX_DXF_DEFINE_MEMBERS(CloneNode, AcDbObject, AcDb::kDHL_1015, 0, 0xFFF, CLONENODE, CLONES_191)
ACRX_DXF_DEFINE_MEMBERS(CloneEntity, AcDbEntity, AcDb::kDHL_1015, 0, 0xFFF, CLONEENTITY, CLONES_191)
ACRX_NO_CONS_DEFINE_MEMBERS(UnmadeNode, AcDbObject)

NodeFaults& nodeFaults() {
    static NodeFaults faults;
    return faults;
}

std::vector<std::wstring>& CloneNode::heard() {
    static std::vector<std::wstring> all;
    return all;
}

namespace {

bool meant(const std::wstring& text) { return !nodeFaults().text.empty() && nodeFaults().text == text; }

template <class Id>
void writeIds(AcDbDwgFiler* filer, const std::vector<AcDbObjectId>& ids,
              Acad::ErrorStatus (AcDbDwgFiler::*write)(const Id&)) {
    filer->writeUInt32(static_cast<Adesk::UInt32>(ids.size()));
    for (const AcDbObjectId& id : ids)
        (filer->*write)(Id(id));
}

template <class Id>
void readIds(AcDbDwgFiler* filer, std::vector<AcDbObjectId>& ids,
             Acad::ErrorStatus (AcDbDwgFiler::*read)(Id*)) {
    Adesk::UInt32 count = 0;
    filer->readUInt32(&count);
    ids.clear();
    for (Adesk::UInt32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
        Id id;
        (filer->*read)(&id);
        ids.push_back(id);
    }
}

} // namespace

Acad::ErrorStatus NodeFields::out(AcDbDwgFiler* filer) const {
    filer->writeString(text.c_str());
    if (meant(text) && filer->filerType() != AcDb::kUndoFiler) {
        if (nodeFaults().throwsOnWrite)
            throw std::runtime_error("thrown by a writer");
        if (nodeFaults().write != Acad::eOk)
            return nodeFaults().write;
    }
    writeIds(filer, softPointers, &AcDbDwgFiler::writeSoftPointerId);
    writeIds(filer, hardPointers, &AcDbDwgFiler::writeHardPointerId);
    writeIds(filer, softOwned, &AcDbDwgFiler::writeSoftOwnershipId);
    writeIds(filer, hardOwned, &AcDbDwgFiler::writeHardOwnershipId);
    return filer->filerStatus();
}

Acad::ErrorStatus NodeFields::in(AcDbDwgFiler* filer) {
    AcString read;
    filer->readString(read);
    text = read.kACharPtr();
    if (meant(text) && nodeFaults().thrownOnRead != Acad::eOk)
        throw nodeFaults().thrownOnRead;
    if (meant(text) && nodeFaults().read != Acad::eOk && filer->filerType() != AcDb::kUndoFiler)
        return nodeFaults().read;
    readIds(filer, softPointers, &AcDbDwgFiler::readSoftPointerId);
    readIds(filer, hardPointers, &AcDbDwgFiler::readHardPointerId);
    readIds(filer, softOwned, &AcDbDwgFiler::readSoftOwnershipId);
    readIds(filer, hardOwned, &AcDbDwgFiler::readHardOwnershipId);
    return filer->filerStatus();
}

#define CLONE_FRAME(CLASS, BASE)                                                                             \
    Acad::ErrorStatus CLASS::subDeepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,       \
                                          Adesk::Boolean isPrimary) const {                                  \
        if (meant(fields.text) && nodeFaults().throwsOnClone)                                                \
            throw std::runtime_error("thrown by a clone");                                                   \
        if (meant(fields.text) && nodeFaults().deepClone != Acad::eOk)                                       \
            return nodeFaults().deepClone;                                                                   \
        return BASE::subDeepClone(owner, clone, idMap, isPrimary);                                           \
    }                                                                                                        \
    Acad::ErrorStatus CLASS::subWblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,     \
                                            Adesk::Boolean isPrimary) const {                                \
        if (meant(fields.text) && nodeFaults().throwsOnClone)                                                \
            throw std::runtime_error("thrown by a clone");                                                   \
        if (meant(fields.text) && nodeFaults().wblockClone != Acad::eOk)                                     \
            return nodeFaults().wblockClone;                                                                 \
        return BASE::subWblockClone(owner, clone, idMap, isPrimary);                                         \
    }

CLONE_FRAME(CloneNode, AcDbObject)
CLONE_FRAME(CloneEntity, AcDbEntity)

Acad::ErrorStatus CloneNode::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    const Acad::ErrorStatus es = AcDbObject::dwgInFields(filer);
    return es != Acad::eOk ? es : fields.in(filer);
}

Acad::ErrorStatus CloneNode::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    const Acad::ErrorStatus es = AcDbObject::dwgOutFields(filer);
    return es != Acad::eOk ? es : fields.out(filer);
}

void CloneNode::modified(const AcDbObject*) { heard().push_back(fields.text + L" modified"); }
void CloneNode::erased(const AcDbObject*, Adesk::Boolean erasing) {
    heard().push_back(fields.text + (erasing ? L" erased" : L" unerased"));
}
void CloneNode::copied(const AcDbObject*, const AcDbObject*) { heard().push_back(fields.text + L" copied"); }

Acad::ErrorStatus CloneEntity::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    const Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
    if (es != Acad::eOk)
        return es;
    filer->readPoint3d(&place);
    return fields.in(filer);
}

Acad::ErrorStatus CloneEntity::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
    if (es != Acad::eOk)
        return es;
    filer->writePoint3d(place);
    return fields.out(filer);
}

Acad::ErrorStatus CloneEntity::subTransformBy(const AcGeMatrix3d& xform) {
    assertWriteEnabled();
    if (meant(fields.text) && nodeFaults().thrownOnTransform != Acad::eOk)
        throw nodeFaults().thrownOnTransform;
    if (fields.text == L"FIXED")
        return Acad::eCannotScaleNonUniformly;
    place.transformBy(xform);
    return Acad::eOk;
}

void registerCloneNodes() {
    embedded::startHost();
    CloneNode::rxInit();
    CloneEntity::rxInit();
    UnmadeNode::rxInit();
    acrxBuildClassHierarchy();
}

void unregisterCloneNodes() {
    for (AcRxClass** desc : {&CloneNode::gpDesc, &CloneEntity::gpDesc, &UnmadeNode::gpDesc}) {
        if (*desc != nullptr)
            deleteAcRxClass(*desc);
        *desc = nullptr;
    }
}
