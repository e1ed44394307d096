#include "dbx/cdb/read_blob.h"

#include "base/assert.h"

#include <algorithm>

namespace orv::cdb {

namespace {

// Most records fit, and are read with one call.
constexpr std::size_t kFirstTry = 512;

} // namespace

Blob readBlob(const ICdb& cdb, int kwh, int kwl, CdbReadWriteMode mode) {
    ORV_ASSERT(cdb.isOpen());
    unsigned char buffer[kFirstTry];
    std::size_t len = kFirstTry;
    const cd_error_t err = cdb.read(kwh, kwl, buffer, len, mode);
    if (err != CD_ERR_NONE && err != CD_ERR_TRUNCATED)
        return Blob();
    if (len <= kFirstTry)
        return Blob(len > 0 ? buffer : nullptr, len);
    Blob blob(buffer, kFirstTry);
    blob.resize(len);
    // The position was stepped by the first call.
    cdb.read(kwh, kwl, blob.data(), len, kSameRecord);
    if (len < kFirstTry)
        blob.resize(len);
    return blob;
}

Blob readBlob(const ICdb& cdb, int kwh, int kwl, CdbReadWriteMode mode, std::size_t minSize,
              std::size_t* actualSize) {
    Blob blob = readBlob(cdb, kwh, kwl, mode);
    if (actualSize != nullptr)
        *actualSize = blob.size();
    if (!blob.is_empty())
        blob.resize(std::max(blob.size(), minSize));
    return blob;
}

} // namespace orv::cdb
