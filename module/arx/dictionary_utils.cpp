#include "arx/dictionary_utils.h"

#include "base/dbx/inc/orvrxuti_dbx.h"
#include "dbdict.h"
#include "orvcore/transaction_manager.h"

namespace orv::acad {

namespace {

// False if somebody else has the dictionary open: writing to it now would end the process.
bool makeWritable(AcDbDictionary& dict) {
    ORV_NOTE_STATUS(dict.upgradeOpen());
    return dict.isWriteEnabled();
}

// Takes an entry out whose object no longer exists.
void dropStaleEntry(AcDbDictionary& dict, const wchar_t* name) {
    if (!makeWritable(dict))
        return;
    ORV_NOTE_STATUS(dict.remove(name));
    ORV_NOTE_STATUS(dict.downgradeOpen());
}

void addDictionary(AcDbDictionary& dict, const wchar_t* name, AcDbObjectId& id) {
    if (!makeWritable(dict))
        return;
    auto* const added = new AcDbDictionary;
    const Acad::ErrorStatus es = dict.setAt(name, added, id);
    ORV_NOTE_STATUS(es);
    if (es == Acad::eOk)
        ORV_NOTE_STATUS(added->close());
    else
        delete added; // nobody took it over
}

} // namespace

AcDbObjectId get_subDict_id(AcDbDictionary& dict, const wchar_t* name, bool bCreate, AcDbDatabase* db) {
    ORV_CDBTransactionManager manager(db, false);
    AcDbObjectId result;
    Acad::ErrorStatus es = dict.getAt(name, result);
    bool stale = false;
    if (es == Acad::eOk) {
        AcDbObject* object = nullptr;
        es = manager.getObject(object, result, AcDb::kForRead, false, true);
        stale = es == status::kGoneForGood;
    }
    if (stale)
        dropStaleEntry(dict, name);
    else if (es != status::kKeyNotFound)
        return result;
    if (bCreate)
        addDictionary(dict, name, result);
    return result;
}

AcDbObjectId get_subDict_id(AcDbObjectId& dictId, const wchar_t* name, bool bCreate, AcDbDatabase* db) {
    ORV_CDBTransactionManager manager(db, false);
    AcDbObject* object = nullptr;
    manager.getObject(object, dictId, AcDb::kForRead, false, true);
    AcDbDictionary* const pDictFather = AcDbDictionary::cast(object);
    ORV_ASSERT(pDictFather);
    return pDictFather != nullptr ? get_subDict_id(*pDictFather, name, bCreate, db) : AcDbObjectId();
}

AcDbDictionary* openDictionary(AcDbObjectId id, AcDb::OpenMode mode, AcDbDatabase* db) {
    ORV_CDBTransactionManager manager(db, false);
    AcDbObject* object = nullptr;
    ORV_NOTE_STATUS(manager.getObject(object, id, mode, false, true));
    return AcDbDictionary::cast(object);
}

} // namespace orv::acad
