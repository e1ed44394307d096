#include "db/clone/object_filing.h"

#include "db/clone/cloned_body.h"
#include "db/entity_list.h"
#include "db/name_table.h"
#include "db/object_access.h"
#include "db/opaque.h"
#include "dbsymtb.h"
#include "rxclass.h"

namespace embedded {

Acad::ErrorStatus fileOut(const AcDbObject& object, AcDb::FilerType type, FilingRoom& room) {
    // Most objects fit; growing from nothing costs more than the rest of a small object's filing.
    if (room.bytes.capacity() == 0)
        room.bytes.reserve(512);
    if (room.references.capacity() == 0)
        room.references.reserve(16);
    GatheringFiler filer(type, room.bytes, room.references);
    try {
        const Acad::ErrorStatus es = object.dwgOutFields(&filer);
        return es == Acad::eOk ? filer.filerStatus() : es;
    } catch (...) {
        return Acad::eFilerError;
    }
}

Acad::ErrorStatus fileIn(AcDbObject& object, AcDbDwgFiler& filer) {
    try {
        const Acad::ErrorStatus es = object.dwgInFields(&filer);
        return es == Acad::eOk ? filer.filerStatus() : es;
    } catch (...) {
        return Acad::eFilerError;
    }
}

std::unique_ptr<AcDbObject> makeLike(const AcDbObject& object) {
    if (holdsBytes(object))
        return makeBodyHolder(object);
    std::unique_ptr<AcRxObject> made(object.isA()->create());
    AcDbObject* fresh = AcDbObject::cast(made.get());
    if (fresh == nullptr)
        return nullptr;
    static_cast<void>(made.release()); // the same object
    return std::unique_ptr<AcDbObject>(fresh);
}

void disown(AcDbObject& copy) {
    if (ObjectExtras* extras = ObjectAccess::extras(copy))
        extras->extensionDictionary.setNull();
    if (AcDbEntity::cast(&copy) != nullptr)
        return;
    if (auto* dictionary = AcDbDictionary::cast(&copy))
        ObjectAccess::names(*dictionary).clear();
    if (auto* block = AcDbBlockTableRecord::cast(&copy))
        BlockAccess::disown(*block);
}

Acad::ErrorStatus copyOf(const AcDbObject& object, AcDb::FilerType type, std::unique_ptr<AcDbObject>& copy,
                         FilingRoom& room) {
    copy.reset();
    Acad::ErrorStatus es = fileOut(object, type, room);
    if (es != Acad::eOk)
        return es;
    std::unique_ptr<AcDbObject> made = makeLike(object);
    if (made == nullptr)
        return Acad::eOutOfMemory;
    MemoryFiler filer(type, room.bytes.data(), room.bytes.size());
    es = fileIn(*made, filer);
    if (es != Acad::eOk)
        return es;
    disown(*made);
    // The picture that readers without the class are shown is no field.
    const ObjectExtras* extras = ObjectAccess::extras(object);
    if (extras != nullptr && extras->hasGraphics) {
        ObjectAccess::makeExtras(*made).hasGraphics = true;
        ObjectAccess::makeExtras(*made).graphics = extras->graphics;
    }
    copy = std::move(made);
    return Acad::eOk;
}

} // namespace embedded
