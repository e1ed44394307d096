#include "embedded/inventory.h"

#include "db/database_core.h"
#include "db/object_access.h"
#include "dwg/object_types.h"
#include "platform/text.h"
#include "rxclass.h"

namespace embedded {

void forEachObject(const AcDbDatabase& database, const std::function<void(AcDbObjectId)>& visit) {
    database.core().stubs().forEach([&](AcDbStub& stub) {
        // A handle that is only named by something has a stub and no object.
        const bool exists = stub.object != nullptr || stub.fileIndex != kNoFileIndex;
        if (exists && !stub.has(kErased | kPermanentlyErased))
            visit(AcDbObjectId(&stub));
    });
}

std::wstring kindOf(AcDbObjectId id) {
    const AcDbStub* stub = id;
    DatabaseCore* core = coreOf(stub);
    if (core == nullptr)
        return {};
    if (stub->fileIndex != kNoFileIndex && core->source != nullptr)
        return core->source->dxfNameOf(*stub);
    if (stub->object == nullptr)
        return {};
    const AcRxClass* kind = stub->object->isA();
    const dwg::FixedType* fixed = dwg::fixedType(dwg::fixedNumber(kind->name()));
    if (fixed != nullptr && fixed->number < dwg::kFirstNamedType)
        return platform::fromUtf8(fixed->name);
    return kind->dxfName() != nullptr ? kind->dxfName() : kind->name();
}

std::map<std::wstring, std::size_t> countByKind(const AcDbDatabase& database) {
    std::map<std::wstring, std::size_t> counts;
    forEachObject(database, [&](AcDbObjectId id) { ++counts[kindOf(id)]; });
    return counts;
}

std::vector<ClassTableRow> classTable(const AcDbDatabase& database) {
    const auto& frame = database.core().frame;
    return frame != nullptr ? frame->classTable() : std::vector<ClassTableRow>();
}

std::string fileVersion(const AcDbDatabase& database) {
    const auto& frame = database.core().frame;
    return frame != nullptr ? frame->version() : std::string();
}

} // namespace embedded
