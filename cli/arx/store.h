#pragma once

#include "cli/command.h"
#include "cli/common/drawing.h"
#include "cli/common/hex.h"
#include "dbx/cdb/cdb.h"

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace taldork::cli {

/// A record store of a drawing, opened for one call.
class Store {
public:
    /// Throws Failure when the drawing has no record store of that name.
    Store(const Drawing& drawing, const std::string& name);

    orv::cdb::NodCdb& cdb() { return m_cdb; }
    const std::string& name() const { return m_name; }

    /// The numbers of the groups that there are, ascending.
    std::set<int> groups() const;
    /// The keys of a group, none if the group is missing.
    std::set<int> keys(int kwh) const;

private:
    AcDbDatabase& m_database;
    std::string m_name;
    orv::cdb::NodCdb m_cdb;
};

/// The groups of an open store, ascending.
std::set<int> groupsOf(const orv::cdb::NodCdb& cdb, AcDbDatabase& database);

/// The sizes of the records under a key, in their order. A record that cannot be read, since its class is not
/// loaded, has none. Moves the store's position.
std::vector<std::optional<std::size_t>> recordSizes(const orv::cdb::ICdb& cdb, int kwh, int kwl);

/// What one record holds. Throws Failure, about `path`, when there is none at that position or it cannot be
/// read.
Bytes readRecord(const orv::cdb::ICdb& cdb, const std::string& path, int kwh, int kwl, int position);

/// Why a store operation failed, as people say it.
const char* statusText(orv::cdb::cd_error_t status);

/// Makes an empty record store. False when it is there already. Throws Failure.
bool createStore(AcDbDatabase& database, const std::string& name);
/// The stores below the drawing's top dictionary.
std::vector<StoreSummary> listStores(AcDbDatabase& database);

} // namespace taldork::cli
