#pragma once

#include "base/export.h"
#include "dbx/cdb/cdb_manager.h"

#include <string>

namespace orv::cdb {

// Holds a store that the manager opened. The manager's count stays when the guard ends: who wants to give it
// back calls CdbManager::close.
class TALDORK_API UseCdb {
public:
    // Holds nothing.
    UseCdb();
    // Holds what CdbManager::open gives with kSharedLocking: nothing, after its reports, if there is no store
    // object.
    UseCdb(const std::wstring& name, CdbType type);
    ~UseCdb();

    // The store, which may be unopened; null, with a report, for a guard that holds nothing.
    ICdb* operator->();
    const ICdb* operator->() const;

    bool empty() const { return !m_cdb; }
    // The store without a report; null for a guard that holds nothing. It lives as long as the guard holds
    // it.
    ICdb* get() const { return m_cdb.get(); }
    // Holds nothing from now on. As at the guard's end, the manager's count stays.
    void reset() { m_cdb.reset(); }

private:
    boost::shared_ptr<ICdb> m_cdb;
};

} // namespace orv::cdb
