#include "dbx/doc/database_element_base.h"

#include "arx/types.h"
#include "base/assert.h"
#include "base/product_name.h"
#include "orvcore/warn_on_new_version.h"

#include "AcString.h"
#include "dbfiler.h"

// One call of a filer, reported under its own text if it fails.
#define CHECKED(call, text) checkErrorStatus(call, Acad::eOk, text, __FILE__, __LINE__)

namespace orv::doc {

DatabaseElementBase::~DatabaseElementBase() = default;

void DatabaseElementBase::appendElementInfo(ElementInfoContext&) const {}

Acad::ErrorStatus DatabaseElementBase::dwgOutFields(const DatabaseElementBase& elem, AcDbDwgFiler& filer) {
    // The dictionary is asked for by an operation that is not const.
    auto& link = const_cast<DatabaseElementBase&>(elem);
    CHECKED(filer.writeUInt32(DatabaseElementBase_kVersion),
            "filer.writeUInt32(DatabaseElementBase_kVersion)");
    CHECKED(filer.writeSoftPointerId(link.getNodDatabaseId()),
            "filer.writeSoftPointerId(elem.getNodDatabaseId())");
    CHECKED(filer.writeString(AcString(elem.getNodDatabaseName().c_str())),
            "filer.writeString(AcString(elem.getNodDatabaseName().c_str()))");
    CHECKED(filer.writeUInt32(DatabaseElementBase_kMagic), "filer.writeUInt32(DatabaseElementBase_kMagic)");
    return Acad::eOk;
}

Acad::ErrorStatus DatabaseElementBase::dwgInFields(DatabaseElementBase& elem, AcDbDwgFiler& filer) {
    Adesk::UInt32 version = 0;
    CHECKED(filer.readUInt32(&version), "filer.readUInt32(&version)");
    if (version > DatabaseElementBase_kVersion)
        return status::kMakeProxy;
    orv_warnOnNewVersion(version, DatabaseElementBase_kVersion, productName());
    AcDbSoftPointerId id;
    CHECKED(filer.readSoftPointerId(&id), "filer.readSoftPointerId(&id)");
    AcString name;
    CHECKED(filer.readString(name), "filer.readString(name)");
    elem.setNodDatabaseId(id, name.kACharPtr());
    Adesk::UInt32 magic = 0;
    CHECKED(filer.readUInt32(&magic), "filer.readUInt32(&magic)");
    ORV_ASSERT(magic == DatabaseElementBase_kMagic)(magic)(DatabaseElementBase_kMagic).debug("filer error");
    return Acad::eOk;
}

} // namespace orv::doc

#undef CHECKED
