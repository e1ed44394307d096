#include "dbx/doc/enumerate_cdbs.h"

#include "arx/dictionary_utils.h"
#include "base/dbx/inc/orvrxuti_dbx.h"
#include "dbdict.h"
#include "dbmain.h"
#include "orvcore/transaction_manager.h"

#include <memory>

namespace orv::detail {

namespace {

// Null, with a report, if there is none.
AcDbDictionary* openNamedDict(ORV_CDBTransactionManager& manager, AcDbDatabase& db) {
    AcDbObject* obj = nullptr;
    ORV_NOTE_STATUS(manager.getObject(obj, db.namedObjectsDictionaryId(), AcDb::kForRead, false, true));
    AcDbDictionary* const namedDict = AcDbDictionary::cast(obj);
    ORV_ASSERT(namedDict);
    return namedDict;
}

AcDbDictionary* openStores(ORV_CDBTransactionManager& manager, AcDbObjectId id) {
    AcDbObject* obj = nullptr;
    ORV_NOTE_STATUS(manager.getObject(obj, id, AcDb::kForRead, false, true));
    ORV_ASSERT(obj);
    AcDbDictionary* const namedDict = AcDbDictionary::cast(obj);
    ORV_ASSERT(namedDict);
    return namedDict;
}

} // namespace

std::uint64_t enumerateCdbsInNod(AcDbDatabase* db, std::map<std::wstring, AcDbObjectId>& names) {
    ORV_ASSERT(db);
    names.clear();
    if (db == nullptr)
        return 0;
    ORV_CDBTransactionManager manager(db, false);
    AcDbDictionary* const namedDict = openNamedDict(manager, *db);
    if (namedDict == nullptr)
        return 0;
    const AcDbObjectId kelmoranId = acad::get_subDict_id(*namedDict, L"KELMORAN", false, db);
    if (kelmoranId.isNull())
        return 0;
    const AcDbDictionary* const stores = openStores(manager, kelmoranId);
    if (stores == nullptr)
        return 0;
    const std::unique_ptr<AcDbDictionaryIterator> it(stores->newIterator());
    ORV_ASSERT(it);
    for (; it && !it->done(); it->next()) {
        const wchar_t* const name = it->name();
        if (name != nullptr && *name != L'\0' && *name != L'$')
            names[name] = it->objectId();
    }
    return names.size();
}

} // namespace orv::detail
