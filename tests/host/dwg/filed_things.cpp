#include "filed_things.h"

#include "AcString.h"
#include "rxclass.h"

#include <stdexcept>

ACRX_DXF_DEFINE_MEMBERS(FiledThing, AcDbObject, AcDb::kDHL_1015, 0, 0x481, FILEDTHING, THINGS_191)
ACRX_DXF_DEFINE_MEMBERS(FiledTwin, AcDbObject, AcDb::kDHL_1015, 0, 0, FILEDTHING, THINGS_191)
ACRX_DXF_DEFINE_MEMBERS(FiledEntity, AcDbEntity, AcDb::kDHL_1015, 0, 0x37F, FILEDENTITY, THINGS_191)
ACRX_CONS_DEFINE_MEMBERS(UnfiledThing, AcDbObject, 0)

FilingFaults& filingFaults() {
    static FilingFaults faults;
    return faults;
}

Acad::ErrorStatus ThingFields::in(AcDbDwgFiler* filer) {
    const FilingFaults& faults = filingFaults();
    if (faults.throws)
        throw std::runtime_error("thrown by a reader");
    AcString read;
    filer->readString(read);
    text = read.kACharPtr();
    Adesk::UInt32 size = 0;
    filer->readUInt32(&size);
    if (faults.readsTooMuch)
        size += 100000;
    bytes.resize(size);
    filer->readBytes(bytes.data(), size);
    AcDbSoftPointerId pointer;
    filer->readSoftPointerId(&pointer);
    id = pointer;
    filer->readPoint3d(&point);
    return faults.read != Acad::eOk ? faults.read : filer->filerStatus();
}

Acad::ErrorStatus ThingFields::out(AcDbDwgFiler* filer) const {
    filer->writeString(text.c_str());
    filer->writeUInt32(static_cast<Adesk::UInt32>(bytes.size()));
    filer->writeBytes(bytes.data(), bytes.size());
    filer->writeSoftPointerId(id);
    filer->writePoint3d(point);
    const FilingFaults& faults = filingFaults();
    return faults.write != Acad::eOk ? faults.write : filer->filerStatus();
}

#define FILE_FIELDS(CLASS, BASE)                                                                             \
    Acad::ErrorStatus CLASS::dwgInFields(AcDbDwgFiler* filer) {                                              \
        const Acad::ErrorStatus es = BASE::dwgInFields(filer);                                               \
        return es != Acad::eOk ? es : fields.in(filer);                                                      \
    }                                                                                                        \
    Acad::ErrorStatus CLASS::dwgOutFields(AcDbDwgFiler* filer) const {                                       \
        const Acad::ErrorStatus es = BASE::dwgOutFields(filer);                                              \
        return es != Acad::eOk ? es : fields.out(filer);                                                     \
    }

FILE_FIELDS(FiledThing, AcDbObject)
FILE_FIELDS(FiledTwin, AcDbObject)
FILE_FIELDS(FiledEntity, AcDbEntity)

void registerThings() {
    FiledThing::rxInit();
    FiledTwin::rxInit();
    FiledEntity::rxInit();
    UnfiledThing::rxInit();
    acrxBuildClassHierarchy();
}

void unregisterThings() {
    for (AcRxClass** desc :
         {&FiledThing::gpDesc, &FiledTwin::gpDesc, &FiledEntity::gpDesc, &UnfiledThing::gpDesc}) {
        if (*desc != nullptr)
            deleteAcRxClass(*desc);
        *desc = nullptr;
    }
}
