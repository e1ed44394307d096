// The stores of a drawing as a whole: making and listing them.

#include "cli/arx/store.h"
#include "cli/common/failure.h"
#include "cli/common/terminal.h"

#include "arx/dictionary_utils.h"
#include "dbdict.h"
#include "dbx/dictionary.h"
#include "platform/text.h"

#include <memory>

namespace taldork::cli {

namespace {

/// Entries with such names are the system's own and no stores.
constexpr char reservedMark = '$';

/// Groups with their keys and records counted.
std::vector<GroupSummary> countGroups(const orv::cdb::NodCdb& cdb, AcDbDatabase& database) {
    std::vector<GroupSummary> groups;
    Progress progress("counting keys");
    for (const int kwh : groupsOf(cdb, database)) {
        GroupSummary group;
        group.kwh = kwh;
        std::set<int> keys;
        cdb.getKeysForKwh(kwh, keys);
        group.keys = keys.size();
        for (const int kwl : keys) {
            group.records += recordSizes(cdb, kwh, kwl).size();
            progress.step();
        }
        groups.push_back(group);
    }
    return groups;
}

/// The names below the drawing's top dictionary, without the reserved ones, in their order there.
std::vector<std::wstring> storeNames(AcDbDatabase& database) {
    std::vector<std::wstring> names;
    AcDbDictionary* kelmoran = nullptr;
    if (acdbOpenObject(kelmoran, orv::dictionary::getKelmoran(&database), AcDb::kForRead) != Acad::eOk)
        return names;
    const std::unique_ptr<AcDbDictionaryIterator> entry(kelmoran->newIterator());
    for (; !entry->done(); entry->next()) {
        const std::wstring name = entry->name();
        if (!name.empty() && name[0] != reservedMark)
            names.push_back(name);
    }
    kelmoran->close();
    return names;
}

} // namespace

bool createStore(AcDbDatabase& database, const std::string& name) {
    if (name.empty() || name[0] == reservedMark)
        throw Failure("'" + name + "'",
                      "no name for a record store: it must have a letter and must not begin with $");
    {
        orv::cdb::NodCdb present(&database);
        if (present.open(platform::fromUtf8(name), orv::cdb::kSharedLocking) == orv::cdb::CD_ERR_NONE)
            return false;
    }
    AcDbObjectId id = orv::dictionary::getOrCreateKelmoran(&database);
    id = orv::acad::get_subDict_id(id, platform::fromUtf8(name).c_str(), true, &database);
    id = orv::acad::get_subDict_id(id, L"CDBASE", true, &database);
    orv::cdb::NodCdb made(&database);
    if (id.isNull() || made.open(platform::fromUtf8(name), orv::cdb::kSharedLocking) != orv::cdb::CD_ERR_NONE)
        throw Failure("'" + name + "'", "the dictionaries of the store could not be made in the drawing");
    return true;
}

std::vector<StoreSummary> listStores(AcDbDatabase& database) {
    std::vector<StoreSummary> stores;
    for (const std::wstring& name : storeNames(database)) {
        StoreSummary summary;
        summary.name = platform::toUtf8(name);
        orv::cdb::NodCdb cdb(&database);
        summary.hasRecords = cdb.open(name, orv::cdb::kSharedLocking) == orv::cdb::CD_ERR_NONE;
        if (summary.hasRecords)
            summary.groups = countGroups(cdb, database);
        stores.push_back(std::move(summary));
    }
    return stores;
}

} // namespace taldork::cli
