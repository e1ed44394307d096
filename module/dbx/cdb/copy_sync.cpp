#include "dbx/cdb/copy_sync.h"

#include "base/assert.h"
#include "base/exceptions.h"
#include "dbx/cdb/read_blob.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace orv::cdb {

namespace {

using Keys = std::set<int>;

void writeOrThrow(ICdb& dst, int kwh, int kwl, const Blob& blob, CdbReadWriteMode mode) {
    if (dst.write(kwh, kwl, blob.data(), blob.size(), mode) != CD_ERR_NONE)
        throw Exception("cdb::copy(): failed to write.\n");
}

// Copies a key if its update number is not the one in the memory. `hint` is where the key may stand in it: a walk in
// key order finds each place from the one before.
void copyChanged(const ICdb& src, ICdb& dst, int kwh, int kwl, UpdateNos& updateNos, UpdateNos::iterator& hint) {
    const std::pair<int, int> key(kwh, kwl);
    if (hint == updateNos.end() || hint->first != key)
        hint = updateNos.lower_bound(key);
    const bool known = hint != updateNos.end() && hint->first == key;
    const int no = src.getUpdateNo(kwh, kwl);
    if (!known || hint->second != no)
        copy(src, dst, kwh, kwl);
    // Only now: a key whose copy failed is tried again next time.
    if (known)
        hint->second = no;
    else
        hint = updateNos.emplace_hint(hint, key, no);
    ++hint;
}

void copyChanged(const ICdb& src, ICdb& dst, int kwh, const Keys& keys, UpdateNos& updateNos) {
    UpdateNos::iterator hint = updateNos.end();
    for (const int kwl : keys)
        copyChanged(src, dst, kwh, kwl, updateNos, hint);
}

void keepRange(Keys& keys, int kwlFrom, int kwlTo) {
    if (kwlFrom > kwlTo) {
        keys.clear();
        return;
    }
    keys.erase(keys.begin(), keys.lower_bound(kwlFrom));
    keys.erase(keys.upper_bound(kwlTo), keys.end());
}

std::vector<int> staleKeys(const Keys& srcKeys, const Keys& dstKeys) {
    std::vector<int> stale;
    std::set_difference(dstKeys.begin(), dstKeys.end(), srcKeys.begin(), srcKeys.end(), std::back_inserter(stale));
    return stale;
}

void deleteStale(ICdb& dst, int kwh, const Keys& srcKeys, const Keys& dstKeys) {
    const std::vector<int> stale = staleKeys(srcKeys, dstKeys);
    if (stale.empty())
        return;
    if (stale.size() == dstKeys.size()) {
        dst.del(kwh, -1);
        return;
    }
    for (const int kwl : stale)
        dst.del(kwh, kwl);
}

void listBoth(const ICdb& src, const ICdb& dst, int kwh, Keys& srcKeys, Keys& dstKeys) {
    src.getKeysForKwh(kwh, srcKeys);
    dst.getKeysForKwh(kwh, dstKeys);
}

// The body of the two range syncs, which differ in what is carried for a key.
template <class CopyKey>
void syncRangeWith(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo, CopyKey copyKey) {
    ORV_ASSERT(kwlFrom <= kwlTo);
    Keys srcKeys;
    Keys dstKeys;
    src.getKeysForKwhAndRange(kwh, srcKeys, kwlFrom, kwlTo);
    dst.getKeysForKwhAndRange(kwh, dstKeys, kwlFrom, kwlTo);
    const std::vector<int> stale = staleKeys(srcKeys, dstKeys);
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
    Keys keys;
    src.getKeysForKwh(kwh, keys);
    for (const int kwl : keys)
        copy(src, dst, kwh, kwl);
}

void copy(const ICdb& src, ICdb& dst, int kwh, int kwl, UpdateNos& updateNos) {
    UpdateNos::iterator hint = updateNos.end();
    copyChanged(src, dst, kwh, kwl, updateNos, hint);
}

void copy(const ICdb& src, ICdb& dst, int kwh, UpdateNos& updateNos) {
    Keys keys;
    src.getKeysForKwh(kwh, keys);
    copyChanged(src, dst, kwh, keys, updateNos);
}

void copyRange(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo) {
    ORV_ASSERT(kwlFrom <= kwlTo)(kwlFrom)(kwlTo);
    Keys keys;
    src.getKeysForKwhAndRange(kwh, keys, kwlFrom, kwlTo);
    for (auto it = keys.begin(); it != keys.end(); ++it) {
        ORV_ASSERT(*it >= kwlFrom && *it <= kwlTo)(*it)(kwlFrom)(kwlTo);
        copy(src, dst, kwh, *it);
    }
}

void copyHeader(const ICdb& src, ICdb& dst, const std::pair<int, int>& keySrc, const std::pair<int, int>& keyDst) {
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
    Keys srcKeys;
    Keys dstKeys;
    listBoth(src, dst, kwh, srcKeys, dstKeys);
    deleteStale(dst, kwh, srcKeys, dstKeys);
    for (const int kwl : srcKeys)
        copy(src, dst, kwh, kwl);
}

void sync(const ICdb& src, ICdb& dst, int kwh, UpdateNos& updateNos) {
    Keys srcKeys;
    Keys dstKeys;
    listBoth(src, dst, kwh, srcKeys, dstKeys);
    deleteStale(dst, kwh, srcKeys, dstKeys);
    copyChanged(src, dst, kwh, srcKeys, updateNos);
}

void sync(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo, UpdateNos& updateNos) {
    Keys srcKeys;
    Keys dstKeys;
    listBoth(src, dst, kwh, srcKeys, dstKeys);
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
    Keys srcKeys;
    Keys dstKeys;
    listBoth(src, dst, kwh, srcKeys, dstKeys);
    deleteStale(dst, kwh, srcKeys, dstKeys);
    for (const int kwl : srcKeys)
        copyHeader(src, dst, kwh, kwl);
}

void syncHeaderRange(const ICdb& src, ICdb& dst, int kwh, int kwlFrom, int kwlTo) {
    syncRangeWith(src, dst, kwh, kwlFrom, kwlTo, [&](int kwl) { copyHeader(src, dst, kwh, kwl); });
}

void delRange(ICdb& cdb, int kwh, int kwlFrom, int kwlTo) {
    ORV_ASSERT(kwlFrom <= kwlTo)(kwlFrom)(kwlTo);
    Keys keys;
    cdb.getKeysForKwhAndRange(kwh, keys, kwlFrom, kwlTo);
    for (auto it = keys.begin(); it != keys.end(); ++it) {
        ORV_ASSERT(*it >= kwlFrom && *it <= kwlTo).debug("out of range");
        cdb.del(kwh, *it);
    }
}

} // namespace orv::cdb
