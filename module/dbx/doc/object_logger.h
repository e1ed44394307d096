#pragma once

#include "base/export.h"
#include "dbx/doc/doc_data.h"

#include "acdb.h"
#include "dbid.h"

#include <cstdint>
#include <map>

class AcRxClass;

namespace orv {

// Counts how often objects are opened and closed, in each drawing by itself, to find those that are left open
// or opened too often. Custom objects call it from their subOpen and subClose. All operations are about the
// host's working drawing.
struct TALDORK_API ObjectLogger {
    struct counters_t {
        std::uint64_t opened = 0;
        std::uint64_t closed = 0;
        AcRxClass* cls = nullptr; // the first that was told
        int write = 0;            // 1 once the object was opened for write
    };

    ObjectLogger(const ObjectLogger&) = delete;
    ObjectLogger& operator=(const ObjectLogger&) = delete;

    static ObjectLogger& instance() { return ms_instance; }

    // `cls` may be null where it is not known.
    void subOpen(const AcDbObjectId& id, AcDb::OpenMode mode, AcRxClass* cls);
    void subClose(const AcDbObjectId& id, AcRxClass* cls);

    // What was counted for an object; null if nothing was. Valid until `clear` or the drawing's end.
    const counters_t* find(const AcDbObjectId& id) const;
    // Prints the counters on the command line, by object id.
    void dump() const;
    // Forgets the working drawing's counters.
    void clear();

private:
    using Counters = std::map<AcDbObjectId, counters_t>;

    ObjectLogger() = default;
    static counters_t& countersOf(const AcDbObjectId& id, AcRxClass* cls);

    static ObjectLogger ms_instance;
    static ORV_CDocData<Counters> ms_data;
};

} // namespace orv
