// Whole files: read, each object opened one by one.

#include "db/database_core.h"
#include "dbmain.h"
#include "dwg/drawing_reader.h"
#include "dwg/file_error.h"
#include "embedded/inventory.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    AcDbDatabase database(false);
    try {
        embedded::dwg::readDrawing(database.core(),
                                   std::make_shared<const embedded::dwg::Bytes>(data, data + size));
    } catch (const embedded::dwg::FileError&) {
        return 0;
    }
    embedded::forEachObject(database, [](AcDbObjectId id) {
        AcDbObject* object = nullptr;
        if (acdbOpenAcDbObject(object, id, AcDb::kForRead) == Acad::eOk)
            object->close();
    });
    return 0;
}
