#pragma once

#include "dbx/doc/drawing_unit.h"

#include <cstddef>
#include <cstdint>

namespace orv {

// The record 10/102 of a store: the drawing's unit against the store's.
struct PersistentSystemInfo {
    // From this version on the scale stands in the record; an older one tells it by the unit.
    static constexpr std::int32_t kVersion = 2;

    std::int32_t version = kVersion;
    std::int32_t drawingUnit = kUnitMetre; // a DrawingUnit
    double drawing_unit_wcs2cdb = 1.0;     // a length of the drawing times this is the length in the store
};

static_assert(sizeof(PersistentSystemInfo) == 16, "size of the record");
static_assert(offsetof(PersistentSystemInfo, drawingUnit) == 4, "");
static_assert(offsetof(PersistentSystemInfo, drawing_unit_wcs2cdb) == 8, "");

} // namespace orv
