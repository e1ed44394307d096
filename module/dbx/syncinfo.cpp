#include "dbx/syncinfo.h"

#include "base/assert.h"

#include <climits>
#include <iterator>
#include <stdexcept>

namespace orv {

namespace {

enum Flag : std::uint32_t {
    kHeadersOnly = 1,
    kIsNodMaster = 2,
    kSyncFromSdbOnUpdate = 4,
    kIsSystemDialogData = 8,
    kSaveToNOD = 16,
    kSaveToCDB = 32,
    kOnExport = 64
};

// What most ranges are: taken from the store file on an update, kept in both, handed over on export.
constexpr std::uint32_t kShared = kSyncFromSdbOnUpdate | kSaveToNOD | kSaveToCDB | kOnExport;
constexpr std::uint32_t kSharedDialog = kShared | kIsSystemDialogData;
// What the drawing alone is master of and the store file does not get.
constexpr std::uint32_t kOwn = kIsNodMaster | kSaveToNOD;

constexpr std::int32_t kAllFrom = -1;
constexpr std::int32_t kAllTo = -2;

// Writable, since a header analyser may be installed in a row. A function, since static objects of other
// files may ask for the rows.
auto& allRows() {
    static SyncEntry s_rows[] = {
        {10, 0, 0, kSharedDialog, {}},
        {10, 1, 1, kSharedDialog, {}},
        {0, 96, 96, kSharedDialog, {}},
        {0, 97, 97, kShared, {}},
        {0, 98, 98, kShared, {}},
        {0, 99, 99, kSharedDialog, {}},
        {0, 100, 100, kShared, {}},
        {1, kAllFrom, kAllTo, kShared, {}},
        {2, kAllFrom, kAllTo, kShared, {}},
        {4, kAllFrom, kAllTo, kShared, {}},
        {9, kAllFrom, kAllTo, kShared, {}},
        {173, kAllFrom, kAllTo, kShared, {}},
        {12, kAllFrom, kAllTo, kOwn | kHeadersOnly | kSyncFromSdbOnUpdate | kOnExport, {}},
        {14, 1000000, INT_MAX, kOwn | kSyncFromSdbOnUpdate | kOnExport, {}},
        {10, 100, 999, kOwn | kIsSystemDialogData, {}},
    };
    return s_rows;
}

bool hasFlag(const SyncEntry* it, Flag flag) {
    ORV_ASSERT(it);
    return it != nullptr && (it->flags & flag) != 0;
}

} // namespace

std::size_t SyncInfo::count() { return std::size(allRows()); }

std::size_t synchroSize() { return SyncInfo::count(); }

const SyncEntry* SyncInfo::begin() { return std::begin(allRows()); }

const SyncEntry* SyncInfo::end() { return std::end(allRows()); }

SyncEntry& SyncInfo::at(std::size_t index) {
    if (index >= count())
        throw std::out_of_range("SyncInfo::at(): index out of range");
    return allRows()[index];
}

boost::function<bool(const Blob&)> SyncInfo::analyzeHeader(const SyncEntry* it) {
    ORV_ASSERT(it);
    return it != nullptr ? it->headerAnalyzer : boost::function<bool(const Blob&)>();
}

bool SyncInfo::headersOnly(const SyncEntry* it) { return hasFlag(it, kHeadersOnly); }

bool SyncInfo::isNodMaster(const SyncEntry* it) { return hasFlag(it, kIsNodMaster); }

bool SyncInfo::syncFromSdbOnUpdate(const SyncEntry* it) { return hasFlag(it, kSyncFromSdbOnUpdate); }

bool SyncInfo::isSystemDialogData(const SyncEntry* it) { return hasFlag(it, kIsSystemDialogData); }

bool SyncInfo::saveToNOD(const SyncEntry* it) { return hasFlag(it, kSaveToNOD); }

bool SyncInfo::saveToCDB(const SyncEntry* it) { return hasFlag(it, kSaveToCDB); }

bool SyncInfo::onExport(const SyncEntry* it) { return hasFlag(it, kOnExport); }

bool SyncInfo::copyAll(const SyncEntry* it) {
    ORV_ASSERT(it);
    return it != nullptr && it->kwlFrom == kAllFrom && it->kwlTo == kAllTo;
}

} // namespace orv
