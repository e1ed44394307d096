#include "dbx/cdb/use_cdb.h"

#include "base/assert.h"

namespace orv::cdb {

UseCdb::UseCdb() = default;

UseCdb::UseCdb(const std::wstring& name, CdbType type)
    : m_cdb(CdbManager::instance().open(name, type, kSharedLocking)) {}

UseCdb::~UseCdb() = default;

ICdb* UseCdb::operator->() {
    ORV_ASSERT(m_cdb.get()).debug("no CDB object available");
    return m_cdb.get();
}

const ICdb* UseCdb::operator->() const {
    ORV_ASSERT(m_cdb.get()).debug("no CDB object available");
    return m_cdb.get();
}

} // namespace orv::cdb
