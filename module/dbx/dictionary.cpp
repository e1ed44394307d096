#include "dbx/dictionary.h"

#include "arx/dictionary_utils.h"
#include "base/dbx/inc/orvrxuti_dbx.h"
#include "dbdict.h"
#include "orvcore/transaction_manager.h"

namespace orv::dictionary {

namespace {

constexpr const wchar_t* kKelmoran = L"KELMORAN";
constexpr const wchar_t* kKelmoranData = L"KELMORAN_DATA";

AcDbObjectId getX(AcDbDatabase* db, const wchar_t* name, bool create) {
    ORV_ASSERT(db);
    if (db == nullptr)
        return AcDbObjectId();
    ORV_CDBTransactionManager manager(db, false);
    AcDbDictionary* const namedDict =
        acad::openDictionary(db->namedObjectsDictionaryId(), AcDb::kForRead, db);
    ORV_ASSERT(namedDict);
    return namedDict != nullptr ? acad::get_subDict_id(*namedDict, name, create, db) : AcDbObjectId();
}

} // namespace

AcDbObjectId getOrCreateX(AcDbDatabase* db, const AcString& name) { return getX(db, name.kACharPtr(), true); }

AcDbObjectId getOrCreateKelmoran(AcDbDatabase* db) { return getX(db, kKelmoran, true); }

AcDbObjectId getOrCreateKelmoranDATA(AcDbDatabase* db) { return getX(db, kKelmoranData, true); }

AcDbObjectId getKelmoran(AcDbDatabase* db) { return getX(db, kKelmoran, false); }

AcDbObjectId getKelmoranDATA(AcDbDatabase* db) { return getX(db, kKelmoranData, false); }

void eraseKelmoran(AcDbDatabase* db) {
    ORV_ASSERT(db);
    if (db == nullptr)
        return;
    ORV_CDBTransactionManager manager(db, false);
    for (const wchar_t* const name : {kKelmoran, kKelmoranData}) {
        const AcDbObjectId id = getX(db, name, false);
        if (id.isNull())
            continue;
        AcDbObject* obj = nullptr;
        ORV_NOTE_STATUS(manager.getObject(obj, id, AcDb::kForWrite, false, true));
        ORV_ASSERT(obj);
        if (obj != nullptr)
            ORV_NOTE_STATUS(obj->erase());
    }
}

} // namespace orv::dictionary
