// The bytes of one object, under a right check sum, in a drawing that is whole otherwise. The first byte says
// whose place they take.

#include "db/database_core.h"
#include "dbmain.h"
#include "dwg/container_r2000.h"
#include "dwg/drawing_reader.h"
#include "dwg/drawing_writer.h"
#include "dwg/file_error.h"
#include "dwg/object_map.h"
#include "dwg/root_variables.h"

#include <cstdlib>
#include <numeric>

using namespace embedded::dwg;

namespace {

struct Whole {
    DrawingParts parts;
    RootHandles roots;
    std::vector<std::size_t> order;

    Whole() {
        AcDbDatabase database(true);
        FileFrame frame;
        Bytes file;
        std::string error;
        if (writeDrawing(database.core(), frame, file, error) != Acad::eOk)
            std::abort();
        parts = readContainerR2000(std::make_shared<const Bytes>(std::move(file)));
        roots = rootHandles(HeaderVariables::read(parts.headerVariables));
        order.resize(parts.objects.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Whole whole;
    if (size < 2)
        return 0;
    DrawingParts parts = whole.parts;
    ObjectSlot& slot = parts.objects[data[0] % parts.objects.size()];
    slot.body = ByteSpan(data + 1, size - 1);
    slot.sum = objectSum(slot.body);
    AcDbDatabase database(false);
    try {
        readDrawing(database.core(),
                    std::make_shared<const Bytes>(writeContainerR2000(parts, whole.order, whole.roots)));
    } catch (const FileError&) {
        return 0;
    }
    AcDbObjectId id;
    AcDbObject* object = nullptr;
    database.getAcDbObjectId(id, false, AcDbHandle(static_cast<Adesk::UInt64>(slot.handle)));
    if (acdbOpenAcDbObject(object, id, AcDb::kForRead) == Acad::eOk)
        object->close();
    return 0;
}
