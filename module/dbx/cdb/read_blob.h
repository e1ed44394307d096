#pragma once

#include "base/blob.h"
#include "base/export.h"
#include "dbx/cdb/icdb.h"

namespace orv::cdb {

// One record. An empty Blob for a missing key, an empty record and a store that failed alike; a closed store
// is reported.
TALDORK_API Blob readBlob(const ICdb& cdb, int kwh, int kwl, CdbReadWriteMode mode);

// For records that have grown over the versions: a shorter one is lengthened with zeros to `minSize`, an
// empty one stays empty. `actualSize`, if not null, gets the size that was stored.
TALDORK_API Blob readBlob(const ICdb& cdb, int kwh, int kwl, CdbReadWriteMode mode, std::size_t minSize,
                          std::size_t* actualSize);

} // namespace orv::cdb
