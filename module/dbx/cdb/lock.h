#pragma once

#include "base/export.h"
#include "dbx/cdb/icdb.h"

#include <set>
#include <utility>

namespace orv::cdb {

// Guard over record locks: gives back at its end the locks of the keys it has gathered.
class TALDORK_API Lock {
public:
    // Gathers nothing and takes no lock, whatever key it is given.
    Lock(ICdb& cdb, int kwh, int kwl);
    ~Lock();

    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    // Whoever gathers keys and takes their locks.
    friend struct LockAccess;

    // Takes the lock of each key in ascending order. Throws orv::Exception at the first that is refused;
    // those taken before it are given back by the destructor alone.
    void doLock();

    std::set<std::pair<int, int>> m_keys;
    ICdb* m_cdb;
};

} // namespace orv::cdb
