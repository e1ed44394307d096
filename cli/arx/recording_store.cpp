#include "cli/arx/recording_store.h"

namespace taldork::cli {

using namespace orv::cdb;

cd_error_t RecordingStore::open(const std::wstring& name, CdbLockMode lockMode) {
    return m_store.open(name, lockMode);
}
bool RecordingStore::isOpen() const { return m_store.isOpen(); }
cd_error_t RecordingStore::close() { return m_store.close(); }

cd_error_t RecordingStore::getNextKey(int& kwh, int& kwl) const { return m_store.getNextKey(kwh, kwl); }

cd_error_t RecordingStore::getKeysForKwh(int kwh, std::set<int>& keys) const {
    return m_store.getKeysForKwh(kwh, keys);
}

cd_error_t RecordingStore::getKeysForKwhAndRange(int kwh, std::set<int>& keys, int kwlFrom, int kwlTo) const {
    return m_store.getKeysForKwhAndRange(kwh, keys, kwlFrom, kwlTo);
}

bool RecordingStore::exists(int kwh, int kwl) const { return m_store.exists(kwh, kwl); }
cd_error_t RecordingStore::lock(int kwh, int kwl) { return m_store.lock(kwh, kwl); }
cd_error_t RecordingStore::unlock(int kwh, int kwl) { return m_store.unlock(kwh, kwl); }

cd_error_t RecordingStore::read(int kwh, int kwl, void* data, std::size_t& len, CdbReadWriteMode mode) const {
    return m_store.read(kwh, kwl, data, len, mode);
}

cd_error_t RecordingStore::write(int kwh, int kwl, const void* data, std::size_t len, CdbReadWriteMode mode) {
    const cd_error_t status = m_store.write(kwh, kwl, data, len, mode);
    if (status != CD_ERR_NONE)
        return status;
    WrittenKey& key = m_written[kwl];
    if (mode == kFirstRecord)
        key = {};
    ++key.records;
    key.bytes += len;
    m_progress.step();
    return status;
}

cd_error_t RecordingStore::del(int kwh, int kwl) {
    std::set<int> going;
    if (kwl < 0)
        m_store.getKeysForKwh(kwh, going);
    else
        going.insert(kwl);
    const cd_error_t status = m_store.del(kwh, kwl);
    if (status == CD_ERR_NONE) {
        m_deleted.insert(going.begin(), going.end());
        m_groupDeleted |= kwl < 0;
    }
    return status;
}

int RecordingStore::getIndex() const { return m_store.getIndex(); }
int RecordingStore::getUpdateNo(int kwh, int kwl) const { return m_store.getUpdateNo(kwh, kwl); }
int RecordingStore::getUpdateNo() const { return m_store.getUpdateNo(); }

} // namespace taldork::cli
