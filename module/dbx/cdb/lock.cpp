#include "dbx/cdb/lock.h"

#include "base/assert.h"
#include "base/exceptions.h"

#include <string>

namespace orv::cdb {

Lock::Lock(ICdb& cdb, int /*kwh*/, int /*kwl*/) : m_cdb(&cdb) {}

Lock::~Lock() {
    for (const auto& key : m_keys) {
        const cd_error_t err = m_cdb->unlock(key.first, key.second);
        ORV_ASSERT(err == CD_ERR_NONE);
    }
    m_keys.clear();
}

void Lock::doLock() {
    for (const auto& key : m_keys) {
        const cd_error_t err = m_cdb->lock(key.first, key.second);
        ORV_ASSERT(err == CD_ERR_NONE);
        if (err != CD_ERR_NONE)
            throw Exception("cdb::Lock: failed to acquire lock for " + std::to_string(key.first) + "/" +
                            std::to_string(key.second) + ".");
    }
}

} // namespace orv::cdb
