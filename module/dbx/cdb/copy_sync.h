#pragma once

#include "base/export.h"
#include "dbx/cdb/icdb.h"

#include <map>
#include <utility>

// Bring one store up to the state of another. A copy writes what the source has and leaves everything else in
// the target; a sync also deletes from the target what the source lacks. The plain forms carry a key's whole
// sequence, the header forms only its first record. Ranges are closed, keys go in ascending order, and the
// position of both stores is used. All throw orv::Exception("cdb::copy(): failed to write.\n") when the
// target refuses a write, and stop there; what a read or a deletion answers is not looked at.
namespace orv::cdb {

// The update number of each source key at its last copy. Belongs to the caller, who keeps it from one sync to
// the next; entries are never taken out.
using UpdateNos = std::map<std::pair<int, int>, int>;

// One key. A key that the source lacks leaves the target's as it was.
TALDORK_API void copy(const ICdb& src, ICdb& dst, int kwh, int kwl);
// One key to another entry of the same group.
TALDORK_API void copy(const ICdb& src, ICdb& dst, int kwh, int kwlSrc, int kwlDst);
// All keys of a group.
TALDORK_API void copy(const ICdb& src, ICdb& dst, int kwh);
// One key, if its update number differs from the remembered one or none is remembered.
TALDORK_API void copy(const ICdb& src, ICdb& dst, int kwh, int kwl, UpdateNos& updateNos);
// All keys of a group, each under that test.
TALDORK_API void copy(const ICdb& src, ICdb& dst, int kwh, UpdateNos& updateNos);
// The keys of a group in a range.
TALDORK_API void copyRange(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo);

// The first record of one key to any other key, whose sequence a store may give up for it.
TALDORK_API void copyHeader(const ICdb& src, ICdb& dst, const std::pair<int, int>& keySrc,
                            const std::pair<int, int>& keyDst);
TALDORK_API void copyHeader(const ICdb& src, ICdb& dst, int kwh, int kwl);

// A group. When none of the target's keys survive, the group is deleted as a whole.
TALDORK_API void sync(const ICdb& src, ICdb& dst, int kwh);
// The same, copying changed keys only.
TALDORK_API void sync(const ICdb& src, ICdb& dst, int kwh, UpdateNos& updateNos);
// The same in a range. When none of the target's keys in the range survive, the whole group is deleted, keys
// outside the range too.
TALDORK_API void sync(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo, UpdateNos& updateNos);
// A range of a group; keys outside it are never touched.
TALDORK_API void syncRange(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo);
// As sync and syncRange, carrying headers.
TALDORK_API void syncHeader(const ICdb& src, ICdb& dst, int kwh);
TALDORK_API void syncHeaderRange(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo);

// Deletes the keys of a group in a range.
TALDORK_API void delRange(ICdb& cdb, int kwh, int kwlFrom, int kwlTo);

} // namespace orv::cdb
