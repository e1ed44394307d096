#include "dbx/doc/object_logger.h"

#include "acutads.h"
#include "rxclass.h"

namespace orv {

ORV_CDocData<ObjectLogger::Counters> ObjectLogger::ms_data;
ObjectLogger ObjectLogger::ms_instance;

ObjectLogger::counters_t& ObjectLogger::countersOf(const AcDbObjectId& id, AcRxClass* cls) {
    counters_t& counters = ms_data(nullptr)[id];
    if (counters.cls == nullptr)
        counters.cls = cls;
    return counters;
}

void ObjectLogger::subOpen(const AcDbObjectId& id, AcDb::OpenMode mode, AcRxClass* cls) {
    counters_t& counters = countersOf(id, cls);
    ++counters.opened;
    if (mode == AcDb::kForWrite)
        counters.write = 1;
}

void ObjectLogger::subClose(const AcDbObjectId& id, AcRxClass* cls) { ++countersOf(id, cls).closed; }

const ObjectLogger::counters_t* ObjectLogger::find(const AcDbObjectId& id) const {
    const Counters& objects = ms_data(nullptr);
    const auto found = objects.find(id);
    return found != objects.end() ? &found->second : nullptr;
}

void ObjectLogger::dump() const {
    const Counters& objects = ms_data(nullptr);
    acutPrintf(L"orv::ObjectLogger: %d entries\n", static_cast<int>(objects.size()));
    for (const auto& [id, counters] : objects)
        acutPrintf(L"  %d opened    %d closed    class '%s'\n", static_cast<int>(counters.opened),
                   static_cast<int>(counters.closed),
                   counters.cls != nullptr ? counters.cls->name() : L"unknown");
}

void ObjectLogger::clear() { ms_data(nullptr).clear(); }

} // namespace orv
