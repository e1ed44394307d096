#pragma once

#include "base/blob.h"
#include "base/export.h"

#include <boost/function.hpp>

#include <cstddef>
#include <cstdint>

namespace orv {

// One range of record keys, and how it is kept in step between the drawing's store and the store file.
struct SyncEntry {
    std::int32_t kwh;
    std::int32_t kwlFrom;
    std::int32_t kwlTo; // from -1 to -2 is the mark for all records of the group
    std::uint32_t flags;
    boost::function<bool(const Blob&)> headerAnalyzer; // empty unless a module installs one
};

// The table. The questions answer false, with a report, for a null row.
struct TALDORK_API SyncInfo {
    static std::size_t count();
    static const SyncEntry* begin();
    static const SyncEntry* end();
    // Throws std::out_of_range for an index past the last row.
    static SyncEntry& at(std::size_t index);

    // A copy; empty for a null row.
    static boost::function<bool(const Blob&)> analyzeHeader(const SyncEntry* it);

    static bool headersOnly(const SyncEntry* it);         // only headers are taken
    static bool isNodMaster(const SyncEntry* it);         // the drawing's store is the master
    static bool syncFromSdbOnUpdate(const SyncEntry* it); // taken from the store file on an update
    static bool isSystemDialogData(const SyncEntry* it);
    static bool saveToNOD(const SyncEntry* it);
    static bool saveToCDB(const SyncEntry* it);
    static bool onExport(const SyncEntry* it); // handed over on export
    static bool copyAll(const SyncEntry* it);  // the mark for all records of the group
};

// SyncInfo::count under its older name.
TALDORK_API std::size_t synchroSize();

} // namespace orv
