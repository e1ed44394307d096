#include "dbx/cdb/icdb.h"

#include <algorithm>
#include <cstring>

namespace orv::cdb {

ICdb::~ICdb() = default;

int ICdb::getIndex() const { return -1; }

int ICdb::getUpdateNo(int, int) const { return -1; }

int ICdb::getUpdateNo() const { return -1; }

namespace detail {

cd_error_t stepKey(const std::set<int>& keys, int& kwl) {
    if (keys.empty())
        return CD_ERR_NOTFOUND;
    auto found = keys.find(kwl);
    if (found != keys.end()) {
        if (++found == keys.end())
            return CD_ERR_NOTFOUND;
        kwl = *found;
        return CD_ERR_NONE;
    }
    // Behind the first key a value that is no key ends the walk, also where a following key exists: a walk
    // whose present key was deleted stops.
    if (kwl >= *keys.begin())
        return CD_ERR_NOTFOUND;
    kwl = *keys.begin();
    return CD_ERR_NONE;
}

cd_error_t deliverRecord(const void* record, std::size_t size, void* data, std::size_t& len) {
    const std::size_t asked = len;
    const std::size_t amount = asked == 0 ? size : std::min(asked, size);
    if (amount == 0)
        return CD_ERR_EMPTY;
    if (data != nullptr)
        std::memcpy(data, record, amount);
    len = size;
    return asked < size ? CD_ERR_TRUNCATED : CD_ERR_NONE;
}

} // namespace detail
} // namespace orv::cdb
