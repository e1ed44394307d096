#include "dbx/cdb/copy_sync.h"

#include "base/assert.h"
#include "base/exceptions.h"
#include "dbx/cdb/nod_cdb.h"
#include "dbx/cdb/read_blob.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <typeinfo>
#include <vector>

namespace orv::cdb {

namespace {

// Ascending, each once.
using Keys = std::vector<int>;

// A group's keys. The status is not looked at: a group that is missing has none.
Keys keysOf(const ICdb& store, int kwh) {
    Keys keys;
    if (typeid(store) == typeid(NodCdb)) {
        static_cast<const NodCdb&>(store).listKeysForKwh(kwh, keys);
        return keys;
    }
    std::set<int> listed;
    store.getKeysForKwh(kwh, listed);
    keys.assign(listed.begin(), listed.end());
    return keys;
}

Keys keysOf(const ICdb& store, int kwh, int kwlFrom, int kwlTo) {
    std::set<int> listed;
    store.getKeysForKwhAndRange(kwh, listed, kwlFrom, kwlTo);
    return Keys(listed.begin(), listed.end());
}

void writeOrThrow(ICdb& dst, int kwh, int kwl, const Blob& blob, CdbReadWriteMode mode) {
    if (dst.write(kwh, kwl, blob.data(), blob.size(), mode) != CD_ERR_NONE)
        throw Exception("cdb::copy(): failed to write.\n");
}

using FreshNos = std::vector<UpdateNos::value_type>;

void remember(const FreshNos& fresh, UpdateNos& updateNos) {
    UpdateNos::iterator hint = updateNos.end();
    for (auto entry = fresh.rbegin(); entry != fresh.rend(); ++entry)
        hint = updateNos.insert(hint, *entry);
}

// Copies the keys of a group, given in ascending order, whose update number is not the one in the memory. The
// memory is walked along with the keys. Keys that it lacks are entered at the end, one behind the other,
// which keeps them close together for the next walk.
template <class KeyIterator>
void copyChanged(const ICdb& src, ICdb& dst, int kwh, KeyIterator kwl, KeyIterator end, UpdateNos& updateNos,
                 FreshNos& fresh) {
    if (kwl == end)
        return;
    UpdateNos::iterator entry = updateNos.lower_bound(std::make_pair(kwh, *kwl));
    for (; kwl != end; ++kwl) {
        const std::pair<int, int> key(kwh, *kwl);
        if (entry != updateNos.end() && entry->first < key)
            entry = updateNos.lower_bound(key);
        const bool known = entry != updateNos.end() && entry->first == key;
        const int no = src.getUpdateNo(kwh, *kwl);
        if (!known || entry->second != no)
            copy(src, dst, kwh, *kwl);
        // Only now: a key whose copy failed is tried again next time.
        if (known)
            (entry++)->second = no;
        else
            fresh.emplace_back(key, no);
    }
}

template <class KeyIterator>
void copyChanged(const ICdb& src, ICdb& dst, int kwh, KeyIterator begin, KeyIterator end,
                 UpdateNos& updateNos) {
    FreshNos fresh;
    try {
        copyChanged(src, dst, kwh, begin, end, updateNos, fresh);
    } catch (...) {
        remember(fresh, updateNos); // what was copied before the failure is copied
        throw;
    }
    remember(fresh, updateNos);
}

void copyChanged(const ICdb& src, ICdb& dst, int kwh, const Keys& keys, UpdateNos& updateNos) {
    copyChanged(src, dst, kwh, keys.begin(), keys.end(), updateNos);
}

void keepRange(Keys& keys, int kwlFrom, int kwlTo) {
    if (kwlFrom > kwlTo) {
        keys.clear();
        return;
    }
    keys.erase(std::upper_bound(keys.begin(), keys.end(), kwlTo), keys.end());
    keys.erase(keys.begin(), std::lower_bound(keys.begin(), keys.end(), kwlFrom));
}

Keys staleKeys(const Keys& srcKeys, const Keys& dstKeys) {
    Keys stale;
    std::set_difference(dstKeys.begin(), dstKeys.end(), srcKeys.begin(), srcKeys.end(),
                        std::back_inserter(stale));
    return stale;
}

void deleteStale(ICdb& dst, int kwh, const Keys& srcKeys, const Keys& dstKeys) {
    const Keys stale = staleKeys(srcKeys, dstKeys);
    if (stale.empty())
        return;
    if (stale.size() == dstKeys.size()) {
        dst.del(kwh, -1);
        return;
    }
    for (const int kwl : stale)
        dst.del(kwh, kwl);
}

// The body of the two range syncs, which differ in what is carried for a key.
template <class CopyKey>
void syncRangeWith(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo, CopyKey copyKey) {
    ORV_ASSERT(kwlFrom <= kwlTo);
    const Keys srcKeys = keysOf(src, kwh, kwlFrom, kwlTo);
    const Keys dstKeys = keysOf(dst, kwh, kwlFrom, kwlTo);
    const Keys stale = staleKeys(srcKeys, dstKeys);
    for (auto it = stale.begin(); it != stale.end(); ++it) {
        ORV_ASSERT(*it >= kwlFrom && *it <= kwlTo);
        dst.del(kwh, *it);
    }
    for (auto it = srcKeys.begin(); it != srcKeys.end(); ++it) {
        ORV_ASSERT(*it >= kwlFrom && *it <= kwlTo);
        copyKey(*it);
    }
}

} // namespace

void copy(const ICdb& src, ICdb& dst, int kwh, int kwl) { copy(src, dst, kwh, kwl, kwl); }

void copy(const ICdb& src, ICdb& dst, int kwh, int kwlSrc, int kwlDst) {
    CdbReadWriteMode mode = kFirstRecord;
    for (Blob blob = readBlob(src, kwh, kwlSrc, kFirstRecord); !blob.is_empty();
         blob = readBlob(src, kwh, kwlSrc, kNextRecord)) {
        writeOrThrow(dst, kwh, kwlDst, blob, mode);
        mode = kNextRecord;
    }
}

void copy(const ICdb& src, ICdb& dst, int kwh) {
    for (const int kwl : keysOf(src, kwh))
        copy(src, dst, kwh, kwl);
}

void copy(const ICdb& src, ICdb& dst, int kwh, int kwl, UpdateNos& updateNos) {
    copyChanged(src, dst, kwh, &kwl, &kwl + 1, updateNos);
}

void copy(const ICdb& src, ICdb& dst, int kwh, UpdateNos& updateNos) {
    copyChanged(src, dst, kwh, keysOf(src, kwh), updateNos);
}

void copyRange(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo) {
    ORV_ASSERT(kwlFrom <= kwlTo)(kwlFrom)(kwlTo);
    const Keys keys = keysOf(src, kwh, kwlFrom, kwlTo);
    for (auto it = keys.begin(); it != keys.end(); ++it) {
        ORV_ASSERT (*it >= kwlFrom && *it <= kwlTo) (*it)(kwlFrom)(kwlTo);
        copy(src, dst, kwh, *it);
    }
}

void copyHeader(const ICdb& src, ICdb& dst, const std::pair<int, int>& keySrc,
                const std::pair<int, int>& keyDst) {
    const Blob blob = readBlob(src, keySrc.first, keySrc.second, kFirstRecord);
    if (blob.is_empty())
        return;
    if (dst.exists(keyDst.first, keyDst.second))
        readBlob(dst, keyDst.first, keyDst.second, kFirstRecord); // for the target's position alone
    writeOrThrow(dst, keyDst.first, keyDst.second, blob, kFirstRecord);
}

void copyHeader(const ICdb& src, ICdb& dst, int kwh, int kwl) {
    copyHeader(src, dst, std::make_pair(kwh, kwl), std::make_pair(kwh, kwl));
}

void sync(const ICdb& src, ICdb& dst, int kwh) {
    const Keys srcKeys = keysOf(src, kwh);
    const Keys dstKeys = keysOf(dst, kwh);
    deleteStale(dst, kwh, srcKeys, dstKeys);
    for (const int kwl : srcKeys)
        copy(src, dst, kwh, kwl);
}

void sync(const ICdb& src, ICdb& dst, int kwh, UpdateNos& updateNos) {
    const Keys srcKeys = keysOf(src, kwh);
    const Keys dstKeys = keysOf(dst, kwh);
    deleteStale(dst, kwh, srcKeys, dstKeys);
    copyChanged(src, dst, kwh, srcKeys, updateNos);
}

void sync(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo, UpdateNos& updateNos) {
    Keys srcKeys = keysOf(src, kwh);
    Keys dstKeys = keysOf(dst, kwh);
    keepRange(srcKeys, kwlFrom, kwlTo);
    keepRange(dstKeys, kwlFrom, kwlTo);
    // Judged inside the range, with the whole group at risk.
    deleteStale(dst, kwh, srcKeys, dstKeys);
    copyChanged(src, dst, kwh, srcKeys, updateNos);
}

void syncRange(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo) {
    syncRangeWith(src, dst, kwh, kwlFrom, kwlTo, [&](int kwl) { copy(src, dst, kwh, kwl); });
}

void syncHeader(const ICdb& src, ICdb& dst, int kwh) {
    const Keys srcKeys = keysOf(src, kwh);
    const Keys dstKeys = keysOf(dst, kwh);
    deleteStale(dst, kwh, srcKeys, dstKeys);
    for (const int kwl : srcKeys)
        copyHeader(src, dst, kwh, kwl);
}

void syncHeaderRange(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo) {
    syncRangeWith(src, dst, kwh, kwlFrom, kwlTo, [&](int kwl) { copyHeader(src, dst, kwh, kwl); });
}

void delRange(ICdb& cdb, int kwh, int kwlFrom, int kwlTo) {
    ORV_ASSERT(kwlFrom <= kwlTo)(kwlFrom)(kwlTo);
    const Keys keys = keysOf(cdb, kwh, kwlFrom, kwlTo);
    for (auto it = keys.begin(); it != keys.end(); ++it) {
        ORV_ASSERT(*it >= kwlFrom && *it <= kwlTo).debug("out of range");
        cdb.del(kwh, *it);
    }
}

} // namespace orv::cdb
