#include "dbx/nod.h"

#include "arx/dictionary_utils.h"
#include "base/dbx/inc/orvrxuti_dbx.h"
#include "dbapserv.h"
#include "dbdict.h"
#include "dbx/cdb/cdbrec_old.h"
#include "dbx/dictionary.h"
#include "orvcore/transaction_manager.h"
#include "platform/text.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace orv::acad {

namespace {

// The layout of texts that is written today: ".data" holds 16-bit units. Before it held as many bytes as
// ".size" says.
constexpr int kTextVersion = 2;

// Above this, a size is only believed if the text is as long.
constexpr int kTrustedTextSize = 1 << 20;

// The two checks that every call begins with: true if it is to go on.
bool checkNames(const std::wstring& dbName, const std::wstring& name) {
    ORV_ASSERT(!dbName.empty());
    return !name.empty();
}

// Null if there is none, or for an empty name of either kind.
AcDbObjectId generalDictionary(const std::wstring& dbName, const std::wstring& name, bool create) {
    if (!checkNames(dbName, name) || dbName.empty())
        return AcDbObjectId();
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    ORV_CDBTransactionManager manager(db, false);
    AcDbObjectId id = create ? dictionary::getOrCreateKelmoran(db) : dictionary::getKelmoran(db);
    for (const wchar_t* const level : {dbName.c_str(), L"GENERAL"}) {
        if (id.isNull())
            break;
        id = get_subDict_id(id, level, create, db);
    }
    return id;
}

// Needs a manager around it. Null if there is no such value, or something of another kind.
ORV_CObjCdbRecord* openRecord(ORV_CDBTransactionManager& manager, const AcDbDictionary& general,
                              const std::wstring& name) {
    AcDbObjectId id;
    if (general.getAt(name.c_str(), id) != Acad::eOk)
        return nullptr;
    AcDbObject* object = nullptr;
    manager.getObject(object, id, AcDb::kForRead, false, true);
    return ORV_CObjCdbRecord::cast(object);
}

bool readBytes(AcDbObjectId generalId, const std::wstring& name, void* data, std::size_t len) {
    if (generalId.isNull() || name.empty())
        return false;
    ORV_CDBTransactionManager manager(generalId.database(), false);
    const AcDbDictionary* const general = openDictionary(generalId, AcDb::kForRead, generalId.database());
    ORV_CObjCdbRecord* const record = general != nullptr ? openRecord(manager, *general, name) : nullptr;
    if (record == nullptr || len > static_cast<std::size_t>(record->getLen()))
        return false;
    if (len > 0)
        std::memcpy(data, record->getData(), len);
    return true;
}

bool overwriteRecord(ORV_CDBTransactionManager& manager, AcDbObjectId id, const void* data,
                     Adesk::Int32 len) {
    AcDbObject* object = nullptr;
    manager.getObject(object, id, AcDb::kForWrite, false, true);
    ORV_CObjCdbRecord* const pRec = ORV_CObjCdbRecord::cast(object);
    ORV_ASSERT(pRec);
    if (pRec == nullptr)
        return false;
    pRec->setData(data, len);
    return true;
}

bool addRecord(AcDbDictionary& general, const std::wstring& name, const void* data, Adesk::Int32 len) {
    auto* const pRec = new ORV_CObjCdbRecord(data, len);
    ORV_ASSERT(pRec);
    if (pRec == nullptr)
        return false;
    AcDbObjectId id;
    const Acad::ErrorStatus es = general.setAt(name.c_str(), pRec, id);
    ORV_NOTE_STATUS(es);
    if (es == Acad::eOk)
        ORV_NOTE_STATUS(pRec->close());
    else
        delete pRec; // nobody took it over
    return true;
}

bool writeBytes(AcDbObjectId generalId, const std::wstring& name, const void* data, std::size_t len) {
    if (generalId.isNull() || name.empty())
        return false;
    ORV_ASSERT(len <= INT_MAX)(name)(len);
    if (len > INT_MAX)
        return false;
    ORV_CDBTransactionManager manager(generalId.database(), false);
    AcDbDictionary* const general = openDictionary(generalId, AcDb::kForWrite, generalId.database());
    if (general == nullptr)
        return false;
    AcDbObjectId id;
    if (general->getAt(name.c_str(), id) == Acad::eOk)
        return overwriteRecord(manager, id, data, static_cast<Adesk::Int32>(len));
    return addRecord(*general, name, data, static_cast<Adesk::Int32>(len));
}

bool holdsBytes(AcDbObjectId generalId, const std::wstring& name, std::size_t len) {
    ORV_CDBTransactionManager manager(generalId.database(), false);
    const AcDbDictionary* const general = openDictionary(generalId, AcDb::kForRead, generalId.database());
    ORV_CObjCdbRecord* const record = general != nullptr ? openRecord(manager, *general, name) : nullptr;
    return record != nullptr && len <= static_cast<std::size_t>(record->getLen());
}

// What ".data" holds for that many units.
std::size_t filedBytes(int version, int size) {
    return static_cast<std::size_t>(size) * (version < kTextVersion ? 1 : sizeof(char16_t));
}

// Reads into units that are there already. The report speaks of filed widths.
bool readUnits(const std::wstring& dbName, const std::wstring& name, int version, int size,
               std::u16string& value) {
    const bool succ = value.size() == static_cast<std::size_t>(size) &&
                      nod_readGeneralData(dbName, name + L".data", value.data(), filedBytes(version, size));
    // clang-format off
    ORV_ASSERT(succ)(dbName)(name)("data")(size*sizeof(value[0]))(size)(sizeof(value[0]));
    // clang-format on
    return succ;
}

} // namespace

bool nod_writeGeneralData(const std::wstring& dbName, const std::wstring& name, const void* data,
                          std::size_t len) {
    return writeBytes(generalDictionary(dbName, name, true), name, data, len);
}

bool nod_readGeneralData(const std::wstring& dbName, const std::wstring& name, void* data, std::size_t len) {
    return readBytes(generalDictionary(dbName, name, false), name, data, len);
}

bool nod_writeGeneralData(const std::wstring& dbName, const std::wstring& name, bool value) {
    const unsigned char byte = value ? 1 : 0;
    return checkNames(dbName, name) && nod_writeGeneralData(dbName, name, &byte, 1);
}

bool nod_readGeneralData(const std::wstring& dbName, const std::wstring& name, bool& value) {
    unsigned char byte = 0;
    if (!checkNames(dbName, name) || !nod_readGeneralData(dbName, name, &byte, 1))
        return false;
    value = byte != 0;
    return true;
}

bool nod_writeGeneralData(const std::wstring& dbName, const std::wstring& name, const std::wstring& value) {
    if (!checkNames(dbName, name))
        return false;
    const std::u16string units = platform::toUtf16(value);
    const int version = kTextVersion;
    const int size = static_cast<int>(units.size());
    nod_writeGeneralData(dbName, name + L".version", &version, sizeof version);
    nod_writeGeneralData(dbName, name + L".size", &size, sizeof size);
    nod_writeGeneralData(dbName, name + L".data", units.data(), units.size() * sizeof units[0]);
    return true;
}

bool nod_readGeneralData(const std::wstring& dbName, const std::wstring& name, std::wstring& value) {
    if (!checkNames(dbName, name))
        return false;
    int version = 1;
    nod_readGeneralData(dbName, name + L".version", &version, sizeof version);
    int size = 0;
    if (!nod_readGeneralData(dbName, name + L".size", &size, sizeof size))
        return false;
    size = std::max(size, 0);
    // A damaged size must not take the memory of a text that is not there.
    if (size <= kTrustedTextSize ||
        holdsBytes(generalDictionary(dbName, name, false), name + L".data", filedBytes(version, size)))
        value.resize(static_cast<std::size_t>(size));
    if (size < 1)
        return true;
    std::u16string units(value.begin(), value.end());
    if (!readUnits(dbName, name, version, size, units))
        return false;
    value = platform::fromUtf16(units);
    return true;
}

} // namespace orv::acad
