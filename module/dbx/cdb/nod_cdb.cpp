#include "dbx/cdb/nod_cdb.h"

#include "app/log_stream.h"
#include "arx/dictionary_utils.h"
#include "base/dbx/inc/orvrxuti_dbx.h"
#include "base/number_text.h"
#include "dbdict.h"
#include "dbx/cdb/cdbrec.h"
#include "dbx/cdb/cdbrec_old.h"
#include "orvcore/transaction_manager.h"

#include <algorithm>
#include <climits>
#include <memory>
#include <typeinfo>
#include <vector>

namespace orv::cdb {

namespace {

// The name of a record in its key's dictionary.
struct PositionText : IntText {
    explicit PositionText(int position) : IntText(position, 6) {}
};

// Calls `visit` with the key of each entry until it answers false. A name that is no number counts as key 0.
template <class Visit>
void forEachKey(const AcDbDictionary& dict, Visit visit) {
    const std::unique_ptr<AcDbDictionaryIterator> entries(dict.newIterator());
    for (; !entries->done(); entries->next())
        if (!visit(toInt(entries->name())))
            return;
}

// The group's keys within the bounds, sorted. A drawing may list a key twice, under two names.
std::vector<int> listKeys(const AcDbDictionary& dict, int from, int to) {
    std::vector<int> listed;
    bool ascending = true;
    forEachKey(dict, [&](int kwl) {
        if (from <= kwl && kwl <= to) {
            ascending = ascending && (listed.empty() || listed.back() < kwl);
            listed.push_back(kwl);
        }
        return true;
    });
    if (!ascending) {
        std::sort(listed.begin(), listed.end());
        listed.erase(std::unique(listed.begin(), listed.end()), listed.end());
    }
    return listed;
}

// A set takes ascending keys at its end without a search.
void addAll(std::set<int>& keys, const std::vector<int>& listed) {
    for (const int kwl : listed)
        keys.insert(keys.end(), kwl);
}

// Opens what was taken out of its dictionary, in the working drawing, and erases it. That it fails is of no
// matter: nothing refers to the object any more.
void eraseRemoved(AcDbObjectId id) {
    ORV_CDBTransactionManager manager(acdbHostApplicationServices()->workingDatabase(), false);
    AcDbObject* object = nullptr;
    if (manager.getObject(object, id, AcDb::kForWrite, false, true) == Acad::eOk)
        object->erase();
}

// The bytes of a record object of either class. False if it is of neither.
struct RecordView {
    const void* data = nullptr;
    std::size_t size = 0;

    bool takeFrom(AcDbObject* object) {
        if (object == nullptr || object->isAProxy())
            return false;
        if (const auto* record = dynamic_cast<const ORV_CdbRecord*>(object)) {
            data = record->getDataPtr();
            size = record->getDataSize();
            return true;
        }
        auto* const oldrec = dynamic_cast<ORV_CObjCdbRecord*>(object);
        if (oldrec == nullptr)
            return false;
        data = oldrec->getData();
        size = static_cast<std::size_t>(oldrec->getLen());
        return true;
    }
};

// As ORV_ASSERT on "dict" would, but an id whose object is gone for good has no class any more.
void reportNoKeyDictionary(int kwh, int kwl, AcDbObjectId idKwl) {
    const AcRxClass* const found = idKwl.objectClass();
    orv::detail::AssertSite("dict", __FILE__, __LINE__)
        .value("kwh", kwh)
        .value("kwl", kwl)
        .value("idKwl.objectClass()->name()", found != nullptr ? found->name() : nullptr);
}

// Puts a new record under a name that is free. CD_ERR_FAILED if the host refuses it.
cd_error_t addRecord(AcDbDictionary& dict, const PositionText& name, const void* data, std::size_t len) {
    auto* const record = new ORV_CdbRecord(data, len);
    AcDbObjectId recordId;
    const Acad::ErrorStatus es = dict.setAt(name, record, recordId);
    ORV_ASSERT(es == Acad::eOk)(es);
    if (es == Acad::eOk)
        ORV_NOTE_STATUS(record->close());
    else
        delete record; // nobody took it over
    ORV_ASSERT(!recordId.isNull());
    return es == Acad::eOk && !recordId.isNull() ? CD_ERR_NONE : CD_ERR_FAILED;
}

void step(int& position, CdbReadWriteMode mode) {
    if (mode == kFirstRecord)
        position = 0;
    else if (mode == kNextRecord)
        ++position;
}

} // namespace

NodCdb::NodCdb(AcDbDatabase* db) : m_db(db), position(0) {}

NodCdb::~NodCdb() { NodCdb::close(); }

cd_error_t NodCdb::open(const std::wstring& name, CdbLockMode lockMode) {
    ORV_ASSERT(lockMode == kSharedLocking).debug("other locking modes are not supported");
    m_db = drawing();
    cdbDictId.setNull();
    nameDictId.setNull();
    if (m_db == nullptr) {
        ORV_ASSERT(m_db).debug(
            "IMPORTANT: This should never have happened! Something must have gone wrong in a bad way...");
        m_db = acdbHostApplicationServices()->workingDatabase();
        ORV_ASSERT(m_db);
    }
    if (m_db == nullptr)
        return CD_ERR_FAILED;
    ORV_CDBTransactionManager manager(m_db, false);
    AcDbDictionary* const namedDict =
        acad::openDictionary(m_db->namedObjectsDictionaryId(), AcDb::kForRead, m_db);
    ORV_ASSERT(namedDict);
    if (namedDict == nullptr)
        return CD_ERR_FAILED;
    AcDbObjectId kelmoran = acad::get_subDict_id(*namedDict, L"KELMORAN", false, m_db);
    if (kelmoran.isNull())
        return CD_ERR_NOTFOUND;
    nameDictId = acad::get_subDict_id(kelmoran, name.c_str(), false, m_db);
    if (nameDictId.isNull())
        return CD_ERR_NOTFOUND;
    cdbDictId = acad::get_subDict_id(nameDictId, L"CDBASE", false, m_db);
    return cdbDictId.isNull() ? CD_ERR_NOTFOUND : CD_ERR_NONE;
}

bool NodCdb::isOpen() const { return !cdbDictId.isNull() && m_db != nullptr && cdbDictId.isValid(); }

cd_error_t NodCdb::close() {
    const AcDbDatabase* const named = drawing();
    cdbDictId.setNull();
    nameDictId.setNull();
    m_db = nullptr;
    // Sent when the store is closed already: a listener that throws must not keep it open, nor end the
    // program from the destructor.
    try {
        LogStream stream("cdb.nod");
        stream << "close(";
        const ACHAR* current = nullptr;
        if (named != nullptr && named->getFilename(current) == Acad::eOk && current != nullptr &&
            *current != L'\0')
            stream << "current=" << current << "; ";
        const ACHAR* const original = named != nullptr ? named->originalFileName() : nullptr;
        if (original != nullptr && *original != L'\0')
            stream << "orig=" << original;
        stream << ")\n";
    } catch (...) {
    }
    return CD_ERR_NONE;
}

// Asked at each use: nobody tells a store that its drawing ends, and there are only a few drawings to look
// at. A new drawing may stand where the old one stood; the ids of the old one know that it has ended.
AcDbDatabase* NodCdb::drawing() const {
    if (m_db == nullptr || !acdbActiveDatabaseArray()->contains(m_db))
        return nullptr;
    return nameDictId.isNull() || nameDictId.isValid() ? m_db : nullptr;
}

AcDbDictionary* NodCdb::_getDict(AcDb::OpenMode mode) {
    AcDbDictionary* const cdbDict = acad::openDictionary(cdbDictId, mode, drawing());
    ORV_ASSERT(cdbDict);
    return cdbDict;
}

AcDbDictionary* NodCdb::_getDictForKwh(int kwh, AcDb::OpenMode mode, bool bCreate) const {
    AcDbDatabase* const db = drawing();
    ORV_CDBTransactionManager manager(db, false);
    AcDbObjectId father = cdbDictId;
    const AcDbObjectId idKwh = acad::get_subDict_id(father, IntText(kwh), bCreate, db);
    if (idKwh.isNull())
        return nullptr;
    AcDbDictionary* const dictKwh = acad::openDictionary(idKwh, mode, db);
    ORV_ASSERT(dictKwh)(kwh)(bCreate);
    return dictKwh;
}

AcDbDictionary* NodCdb::_getDictForKwhKwl(int kwh, int kwl, AcDb::OpenMode mode, bool bCreate) const {
    AcDbDatabase* const db = drawing();
    ORV_CDBTransactionManager manager(db, false);
    AcDbDictionary* const dictKwh = _getDictForKwh(kwh, AcDb::kForRead, bCreate);
    if (dictKwh == nullptr)
        return nullptr;
    AcDbObjectId father = dictKwh->objectId();
    const AcDbObjectId idKwl = acad::get_subDict_id(father, IntText(kwl), bCreate, db);
    if (idKwl.isNull())
        return nullptr;
    AcDbDictionary* const dict = acad::openDictionary(idKwl, mode, db);
    if (dict == nullptr)
        reportNoKeyDictionary(kwh, kwl, idKwl);
    return dict;
}

cd_error_t NodCdb::getNextKey(int& kwh, int& kwl) const {
    std::set<int> keys;
    const cd_error_t err = getKeysForKwh(kwh, keys);
    return err == CD_ERR_NONE ? detail::stepKey(keys, kwl) : err;
}

cd_error_t NodCdb::getKeysForKwh(int kwh, std::set<int>& keys) const {
    ORV_CDBTransactionManager manager(drawing(), false);
    const AcDbDictionary* const dict = _getDictForKwh(kwh, AcDb::kForRead, false);
    if (dict == nullptr)
        return CD_ERR_NOTFOUND;
    addAll(keys, listKeys(*dict, INT_MIN, INT_MAX));
    return CD_ERR_NONE;
}

cd_error_t NodCdb::listKeysForKwh(int kwh, std::vector<int>& keys) const {
    ORV_CDBTransactionManager manager(drawing(), false);
    keys.clear();
    const AcDbDictionary* const dict = _getDictForKwh(kwh, AcDb::kForRead, false);
    if (dict == nullptr)
        return CD_ERR_NOTFOUND;
    keys = listKeys(*dict, INT_MIN, INT_MAX);
    return CD_ERR_NONE;
}

cd_error_t NodCdb::getKeysForKwhAndRange(int kwh, std::set<int>& keys, int kwlFrom, int kwlTo) const {
    ORV_CDBTransactionManager manager(drawing(), false);
    ORV_ASSERT(kwlTo >= kwlFrom)(kwh)(kwlFrom)(kwlTo);
    const AcDbDictionary* const dict = _getDictForKwh(kwh, AcDb::kForRead, false);
    if (dict == nullptr)
        return CD_ERR_NOTFOUND;
    addAll(keys, listKeys(*dict, kwlFrom, kwlTo));
    return CD_ERR_NONE;
}

bool NodCdb::exists(int kwh, int kwl) const {
    ORV_CDBTransactionManager manager(drawing(), false);
    const AcDbDictionary* const dict = _getDictForKwh(kwh, AcDb::kForRead, false);
    if (dict == nullptr)
        return false;
    AcDbObjectId id;
    if (dict->getAt(IntText(kwl), id) == Acad::eOk)
        return true;
    // By the number, not by the name: "007" is key 7.
    bool found = false;
    forEachKey(*dict, [&](int listed) {
        found = listed == kwl;
        return !found;
    });
    return found;
}

cd_error_t NodCdb::lock(int, int) { return CD_ERR_NONE; }

cd_error_t NodCdb::unlock(int, int) { return CD_ERR_NONE; }

cd_error_t NodCdb::read(int kwh, int kwl, void* data, std::size_t& len, CdbReadWriteMode mode) const {
    ORV_CDBTransactionManager manager(drawing(), false);
    ORV_ASSERT(isOpen());
    const AcDbDictionary* const dict = _getDictForKwhKwl(kwh, kwl, AcDb::kForRead, false);
    if (dict == nullptr)
        return CD_ERR_NOTFOUND;
    step(position, mode);
    AcDbObjectId recordId;
    if (dict->getAt(PositionText(position), recordId) != Acad::eOk)
        return CD_ERR_NOTFOUND;
    ORV_ASSERT(!recordId.isNull());
    AcDbObject* object = nullptr;
    ORV_NOTE_STATUS(manager.getObject(object, recordId, AcDb::kForRead, false, true));
    RecordView record;
    const bool oldrec = record.takeFrom(object);
    ORV_ASSERT(oldrec);
    return oldrec ? detail::deliverRecord(record.data, record.size, data, len) : CD_ERR_FAILED;
}

cd_error_t NodCdb::write(int kwh, int kwl, const void* data, std::size_t len, CdbReadWriteMode mode) {
    ORV_ASSERT(isOpen());
    // clang-format off
    ORV_ASSERT(data && (len>0));
    // clang-format on
    ORV_CDBTransactionManager manager(drawing(), false);
    ORV_ASSERT(isOpen());
    step(position, mode);
    if (mode == kFirstRecord) {
        cd_error_t err = CD_ERR_NONE;
        if (_rewriteKey(kwh, kwl, data, len, err))
            return err;
        err = del(kwh, kwl);
        ORV_ASSERT(err == CD_ERR_NONE || err == CD_ERR_NOTFOUND);
    }
    AcDbDictionary* const dict = _getDictForKwhKwl(kwh, kwl, AcDb::kForWrite, true);
    if (dict == nullptr)
        return CD_ERR_NOTFOUND;
    ORV_ASSERT(dict->isWriteEnabled());
    if (!dict->isWriteEnabled())
        return CD_ERR_FAILED;
    const PositionText name(position);
    AcDbObjectId replaced;
    if (dict->remove(name, replaced) == Acad::eOk && !replaced.isNull())
        eraseRemoved(replaced);
    return addRecord(*dict, name, data, len);
}

// A first write deletes the key and makes it anew. Here this is done in one go, with each dictionary looked
// up once. It answers false when anything is out of order; the long way then does what can be done and
// reports the rest. What was done by then, up to the old key's removal where the group refuses the new one,
// is what the long way begins with. A derived store has its own `del`, so it always goes the long way.
bool NodCdb::_rewriteKey(int kwh, int kwl, const void* data, std::size_t len, cd_error_t& err) {
    if (typeid(*this) != typeid(NodCdb) || !isOpen() || data == nullptr || len == 0 || kwh < 0 || kwl < 0)
        return false;
    AcDbDictionary* const base = acad::openDictionary(cdbDictId, AcDb::kForRead, m_db);
    if (base == nullptr)
        return false;
    const AcDbObjectId idKwh = acad::get_subDict_id(*base, IntText(kwh), true, m_db);
    AcDbDictionary* const group =
        idKwh.isNull() ? nullptr : acad::openDictionary(idKwh, AcDb::kForWrite, m_db);
    if (group == nullptr || !group->isWriteEnabled())
        return false;
    const IntText name(kwl);
    const AcDbObjectId old = acad::get_subDict_id(*group, name, false, m_db);
    // The look-up may have taken out an entry whose object is gone for good, and the right to write with it.
    if (!group->isWriteEnabled() && group->upgradeOpen() != Acad::eOk)
        return false;
    if (!old.isNull()) {
        group->remove(old);
        eraseRemoved(old);
    }
    auto* const key = new AcDbDictionary;
    AcDbObjectId id;
    if (group->setAt(name, key, id) != Acad::eOk) {
        delete key; // nobody took it over
        return false;
    }
    err = addRecord(*key, PositionText(position), data, len);
    ORV_NOTE_STATUS(key->close());
    return true;
}

cd_error_t NodCdb::del(int kwh, int kwl) {
    ORV_CDBTransactionManager manager(drawing(), false);
    ORV_ASSERT(isOpen());
    // clang-format off
    ORV_ASSERT(kwh>=0)(kwh)(kwl);
    // clang-format on
    if (kwl < 0)
        return _removeDictForKwh(kwh);
    // With `true`: a group that is missing is made, and stays, empty.
    AcDbDictionary* const dict = _getDictForKwh(kwh, AcDb::kForWrite, true);
    if (dict == nullptr)
        return CD_ERR_NOTFOUND;
    ORV_ASSERT(dict->isWriteEnabled());
    if (!dict->isWriteEnabled())
        return CD_ERR_FAILED;
    const AcDbObjectId id = acad::get_subDict_id(*dict, IntText(kwl), false, drawing());
    if (id.isNull())
        return CD_ERR_NOTFOUND;
    // The look-up takes an entry whose object is gone for good out itself, and the right to write goes with
    // it.
    if (dict->isWriteEnabled())
        dict->remove(id);
    eraseRemoved(id); // the records go with their dictionary
    return CD_ERR_NONE;
}

cd_error_t NodCdb::_removeDictForKwh(int kwh) {
    AcDbDictionary* const cdbDict = _getDict(AcDb::kForWrite);
    if (cdbDict == nullptr)
        return CD_ERR_FAILED;
    const AcDbDictionary* const dictKwh = _getDictForKwh(kwh, AcDb::kForWrite, false);
    if (dictKwh == nullptr)
        return CD_ERR_NOTFOUND;
    const AcDbObjectId id = dictKwh->objectId();
    const Acad::ErrorStatus es = cdbDict->remove(id);
    if (es != Acad::eOk) {
        ORV_NOTE_STATUS(es);
        return CD_ERR_REMOVE;
    }
    eraseRemoved(id);
    return CD_ERR_NONE;
}

} // namespace orv::cdb
