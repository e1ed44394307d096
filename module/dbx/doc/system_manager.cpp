#include "dbx/doc/system_manager.h"

#include "base/assert.h"
#include "dbmain.h"
#include "dbx/cdb/nod_cdb.h"
#include "dbx/cdb/read_blob.h"
#include "dbx/doc/enumerate_cdbs.h"
#include "dbx/doc/system_fallback.h"

#include <boost/make_shared.hpp>

#include <exception>

namespace orv {

SystemManager SystemManager::s_instance;

SystemManager::SystemManager() = default;
SystemManager::~SystemManager() = default;

SystemManager& SystemManager::instance() { return s_instance; }

void SystemManager::initFromDatabase(AcDbDatabase* db) {
    if (db == nullptr)
        return;
    systemNames(db).clear();
    systems(db).clear();
    _initForDatabase(*db);
}

void SystemManager::_initForDatabase(AcDbDatabase& db) {
    m_checked(&db) = true;
    Names names;
    detail::enumerateCdbsInNod(&db, names);
    std::exception_ptr first;
    for (auto it = names.cbegin(); it != names.cend(); ++it) {
        try {
            _initForStore(db, it);
        } catch (...) {
            if (!first)
                first = std::current_exception();
        }
    }
    if (first)
        std::rethrow_exception(first);
}

void SystemManager::_initForStore(AcDbDatabase& db, Names::const_iterator it) {
    const auto nod = boost::make_shared<cdb::NodCdb>(&db);
    nod->open(it->first, cdb::kSharedLocking);
    ORV_ASSERT(nod && nod->isOpen())
    (it->first).debug("could not access NOD database information in drawing. => DWG too old or defect.");
    if (!nod->isOpen())
        return;
    const auto system = boost::make_shared<System>();
    if (cdb::readBlob(*nod, 10, 0, cdb::kFirstRecord).is_empty() &&
        !detail::makeSystemRecord(db, it->first, *system, *nod))
        ORV_ASSERT(false).debug("Failed to find fallback record for 10/0.");
    const bool success = system->updateFrom(*nod);
    ORV_ASSERT(success)(it->first).debug("system could not be initialized");
    if (!success)
        return;
    systemNames(&db)[it->first] = it->second;
    systems(&db)[it->second].system = system;
    system->updateVisFrom(*nod);
    system->updateSettingsFrom(*nod);
}

bool SystemManager::wasDatabaseCheckedAtLeastOnce(AcDbDatabase* db) const {
    ORV_ASSERT(db);
    return db != nullptr && m_checked(db);
}

boost::shared_ptr<System> SystemManager::getSystemById(const AcDbObjectId& id) const {
    AcDbDatabase* const db = id.database();
    if (db == nullptr)
        return nullptr;
    const Systems& known = systems(db);
    const auto found = known.find(id);
    return found != known.end() ? found->second.system : nullptr;
}

boost::shared_ptr<System> SystemManager::getSystemByName(AcDbDatabase* db, const std::wstring& name) const {
    ORV_ASSERT(db);
    if (db == nullptr)
        return nullptr;
    const Names& names = systemNames(db);
    const auto found = names.find(name);
    return found != names.end() ? getSystemById(found->second) : nullptr;
}

} // namespace orv
