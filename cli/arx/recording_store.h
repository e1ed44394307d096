#pragma once

#include "cli/common/terminal.h"
#include "dbx/cdb/cdb.h"

#include <cstddef>
#include <map>
#include <set>

namespace taldork::cli {

/// What was written under one key.
struct WrittenKey {
    std::size_t records = 0;
    std::size_t bytes = 0;
};

/// Passes everything on to another store and notes what is written and deleted, so that a copy or a sync can
/// be told afterwards. The other store must outlive it.
class RecordingStore : public orv::cdb::ICdb {
public:
    explicit RecordingStore(orv::cdb::ICdb& store) : m_store(store), m_progress("copying records") {}

    /// Keys of the groups that were worked on, by kwl.
    const std::map<int, WrittenKey>& written() const { return m_written; }
    const std::set<int>& deleted() const { return m_deleted; }
    /// The group went as a whole.
    bool groupDeleted() const { return m_groupDeleted; }

    orv::cdb::cd_error_t open(const std::wstring& name, orv::cdb::CdbLockMode lockMode) override;
    bool isOpen() const override;
    orv::cdb::cd_error_t close() override;
    orv::cdb::cd_error_t getNextKey(int& kwh, int& kwl) const override;
    orv::cdb::cd_error_t getKeysForKwh(int kwh, std::set<int>& keys) const override;
    orv::cdb::cd_error_t getKeysForKwhAndRange(int kwh, std::set<int>& keys, int kwlFrom,
                                               int kwlTo) const override;
    bool exists(int kwh, int kwl) const override;
    orv::cdb::cd_error_t lock(int kwh, int kwl) override;
    orv::cdb::cd_error_t unlock(int kwh, int kwl) override;
    orv::cdb::cd_error_t read(int kwh, int kwl, void* data, std::size_t& len,
                              orv::cdb::CdbReadWriteMode mode) const override;
    orv::cdb::cd_error_t write(int kwh, int kwl, const void* data, std::size_t len,
                               orv::cdb::CdbReadWriteMode mode) override;
    orv::cdb::cd_error_t del(int kwh, int kwl) override;
    int getIndex() const override;
    int getUpdateNo(int kwh, int kwl) const override;
    int getUpdateNo() const override;

private:
    orv::cdb::ICdb& m_store;
    Progress m_progress;
    std::map<int, WrittenKey> m_written;
    std::set<int> m_deleted;
    bool m_groupDeleted = false;
};

} // namespace taldork::cli
