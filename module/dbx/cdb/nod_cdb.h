#pragma once

#include "base/export.h"
#include "dbx/cdb/icdb.h"

#include "acdb.h"
#include "dbapserv.h"
#include "dbid.h"

#include <vector>

class AcDbDatabase;
class AcDbDictionary;

namespace orv::cdb {

// The store in a drawing: under the named object dictionary's "KELMORAN", the store's name and "CDBASE" a
// dictionary for each group, in it one for each key, in it one object for each record, named after its
// position with six digits. A key exists as soon as its dictionary does. Nothing is thrown; what is broken is
// reported. The drawing is not owned. A store that outlives it is not open any more, and its operations
// answer as those of a closed one.
struct TALDORK_API NodCdb : ICdb {
    explicit NodCdb(AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase());
    ~NodCdb() override;

    // Creates nothing. Lets go of the store that was open before, also when this one is not found.
    // CD_ERR_FAILED without a drawing, or if its named object dictionary cannot be had. A drawing that has
    // ended is none: the working one is taken, with a report.
    cd_error_t open(const std::wstring& name, CdbLockMode lockMode) override;
    bool isOpen() const override;
    // Also gives up the drawing: another `open` takes the working one, with a report.
    cd_error_t close() override;

    // Lists the whole group for each step.
    cd_error_t getNextKey(int& kwh, int& kwl) const override;
    cd_error_t getKeysForKwh(int kwh, std::set<int>& keys) const override;
    cd_error_t getKeysForKwhAndRange(int kwh, std::set<int>& keys, int kwlFrom, int kwlTo) const override;
    bool exists(int kwh, int kwl) const override;

    // Always CD_ERR_NONE: the host's transactions are the only protection.
    cd_error_t lock(int kwh, int kwl) override;
    cd_error_t unlock(int kwh, int kwl) override;

    // CD_ERR_FAILED for an object that is no record, such as a proxy.
    cd_error_t read(int kwh, int kwl, void* data, std::size_t& len, CdbReadWriteMode mode) const override;
    // Makes group and key on the way. CD_ERR_FAILED if the host refuses the record.
    cd_error_t write(int kwh, int kwl, const void* data, std::size_t len, CdbReadWriteMode mode) override;
    // Makes the group if it is missing, also when there is nothing to delete. CD_ERR_REMOVE if the host does
    // not let a group go.
    cd_error_t del(int kwh, int kwl) override;

    using ICdb::getUpdateNo;

    // What getKeysForKwh lists, as a sorted list in place of a set: for walks over many keys, which a set's
    // nodes would slow down. `keys` is cleared first.
    cd_error_t listKeysForKwh(int kwh, std::vector<int>& keys) const;

    // The store's own dictionary, by which it is known in the drawing; null unless the last `open` found it.
    AcDbObjectId _dbId() const { return nameDictId; }

private:
    // The drawing while there is one; null for a store that is closed or has outlived it.
    AcDbDatabase* drawing() const;
    AcDbDictionary* _getDict(AcDb::OpenMode mode);
    AcDbDictionary* _getDictForKwh(int kwh, AcDb::OpenMode mode, bool bCreate) const;
    AcDbDictionary* _getDictForKwhKwl(int kwh, int kwl, AcDb::OpenMode mode, bool bCreate) const;
    cd_error_t _removeDictForKwh(int kwh);
    bool _rewriteKey(int kwh, int kwl, const void* data, std::size_t len, cd_error_t& err);

    AcDbObjectId cdbDictId;  // "CDBASE"; null while not open
    AcDbObjectId nameDictId; // the store's name
    AcDbDatabase* m_db;
    mutable int position;
};

} // namespace orv::cdb
