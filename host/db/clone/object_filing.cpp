#include "db/clone/object_filing.h"

#include "db/clone/cloned_body.h"
#include "db/entity_list.h"
#include "db/name_table.h"
#include "db/object_access.h"
#include "db/opaque.h"
#include "dbsymtb.h"
#include "rxclass.h"

#include <exception>

namespace embedded {

Acad::ErrorStatus fileOut(const AcDbObject& object, AcDb::FilerType type, std::vector<std::uint8_t>& bytes,
                          std::vector<FiledReference>& references) {
    // Most objects fit; growing from nothing costs more than the rest of a small object's filing.
    if (bytes.capacity() == 0)
        bytes.reserve(512);
    GatheringFiler filer(type, bytes, references);
    try {
        const Acad::ErrorStatus es = object.dwgOutFields(&filer);
        return es == Acad::eOk ? filer.filerStatus() : es;
    } catch (const std::exception&) {
        return Acad::eFilerError;
    }
}

Acad::ErrorStatus fileIn(AcDbObject& object, AcDbDwgFiler& filer) {
    try {
        const Acad::ErrorStatus es = object.dwgInFields(&filer);
        return es == Acad::eOk ? filer.filerStatus() : es;
    } catch (const std::exception&) {
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
    if (auto* dictionary = AcDbDictionary::cast(&copy))
        ObjectAccess::names(*dictionary).clear();
    if (auto* block = AcDbBlockTableRecord::cast(&copy))
        BlockAccess::disown(*block);
}

Acad::ErrorStatus copyOf(const AcDbObject& object, AcDb::FilerType type, std::unique_ptr<AcDbObject>& copy,
                         std::vector<FiledReference>& references) {
    copy.reset();
    std::vector<std::uint8_t> bytes;
    Acad::ErrorStatus es = fileOut(object, type, bytes, references);
    if (es != Acad::eOk)
        return es;
    std::unique_ptr<AcDbObject> made = makeLike(object);
    if (made == nullptr)
        return Acad::eOutOfMemory;
    MemoryFiler filer(type, bytes.data(), bytes.size());
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
