#include "dbx/cdb/cdb_manager.h"

#include "app/log.h"
#include "base/assert.h"
#include "dbx/cdb/nod_cdb.h"

#include <boost/scoped_ptr.hpp>

#include <map>
#include <new>
#include <utility>

namespace orv::cdb {

struct CdbManager::State {
    struct Entry {
        int count;
        boost::shared_ptr<ICdb> cdb;
    };

    std::map<std::pair<std::wstring, CdbType>, Entry> m_cdbs;
    std::map<CdbType, Creator> m_creators;
};

namespace {

boost::shared_ptr<ICdb> createNodCdb(const std::wstring& name, CdbLockMode lockMode) {
    boost::shared_ptr<ICdb> cdb(new NodCdb(acdbHostApplicationServices()->workingDatabase()));
    const cd_error_t err = cdb->open(name, lockMode);
    // A drawing without the store gives a store that is alive and not open.
    ORV_ASSERT(err == CD_ERR_NOTFOUND || err == CD_ERR_NONE)(err);
    if (err != CD_ERR_NOTFOUND && err != CD_ERR_NONE)
        cdb.reset();
    return cdb;
}

// Entered while the module is loaded, so that it is there before any caller.
const bool s_registered = [] {
    CdbManager::instance().regCreator(kNodCdb, &createNodCdb);
    return true;
}();

} // namespace

CdbManager::CdbManager() : m_state(new State) {
    // The stores that are open at the end of the process log their closing.
    orv::detail::keepLogs();
}

CdbManager::~CdbManager() {
    closeAll();
    delete m_state;
}

CdbManager& CdbManager::instance() {
    static boost::scoped_ptr<CdbManager> s_instance(new (std::nothrow) CdbManager);
    ORV_ASSERT(s_instance.get()).error("failed to create CdbManager");
    return *s_instance;
}

void CdbManager::regCreator(CdbType type, Creator creator) {
    auto& m_creators = m_state->m_creators;
    const auto it = m_creators.find(type);
    ORV_ASSERT(it == m_creators.end())(type).debug("cdb creator already registered");
    if (it == m_creators.end())
        m_creators.emplace(type, std::move(creator));
}

const CdbManager::Creator* CdbManager::findCreator(CdbType type) const {
    const auto& m_creators = m_state->m_creators;
    const auto it = m_creators.find(type);
    ORV_ASSERT(it != m_creators.end())(type).debug("cdb creator not found");
    return it != m_creators.end() ? &it->second : nullptr;
}

const CdbManager::Creator* CdbManager::findCreatorFor(CdbType type, const std::wstring& name) const {
    const Creator* createCdbFn = findCreator(type);
    if (createCdbFn != nullptr && createCdbFn->empty())
        createCdbFn = nullptr; // somebody registered no function
    ORV_ASSERT(createCdbFn)
    (type)(name).error("no function available for creating CDB object of requested type.");
    return createCdbFn;
}

boost::shared_ptr<ICdb> CdbManager::open(const std::wstring& name, CdbType type, CdbLockMode lockMode) {
    const auto key = std::make_pair(name, type);
    const auto found = m_state->m_cdbs.find(key);
    if (found != m_state->m_cdbs.end()) {
        ++found->second.count;
        return found->second.cdb;
    }
    const Creator* const createCdbFn = findCreatorFor(type, name);
    if (createCdbFn == nullptr)
        return boost::shared_ptr<ICdb>();
    boost::shared_ptr<ICdb> cdb = (*createCdbFn)(name, lockMode);
    ORV_ASSERT(cdb.get()).warning("creation of CDB object failed");
    if (!cdb)
        return cdb;
    ORV_ASSERT(cdb->isOpen()).warning("CDB object has not been opened");
    m_state->m_cdbs.emplace(key, State::Entry{1, cdb});
    return cdb;
}

boost::shared_ptr<ICdb> CdbManager::createOnly(const std::wstring& name, CdbType type, CdbLockMode lockMode) {
    const Creator* const createCdbFn = findCreatorFor(type, name);
    return createCdbFn != nullptr ? (*createCdbFn)(name, lockMode) : boost::shared_ptr<ICdb>();
}

void CdbManager::close(const std::wstring& name, CdbType type) {
    const auto found = m_state->m_cdbs.find(std::make_pair(name, type));
    if (found == m_state->m_cdbs.end() || --found->second.count != 0)
        return;
    // The entry goes first: a store logs its end, and who listens may come back here.
    const boost::shared_ptr<ICdb> last = found->second.cdb;
    m_state->m_cdbs.erase(found);
}

void CdbManager::closeAll() {
    std::map<std::pair<std::wstring, CdbType>, State::Entry> last;
    last.swap(m_state->m_cdbs);
}

} // namespace orv::cdb
