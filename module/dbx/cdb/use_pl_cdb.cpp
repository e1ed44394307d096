#include "dbx/cdb/use_pl_cdb.h"

#include "base/assert.h"
#include "base/exceptions.h"

namespace orv::cdb {

namespace {

// The drawing's own store.
constexpr const wchar_t* kOwnStore = L"ASDWG";

void giveBack(UseCdb& guard, const std::wstring& name, CdbType type) {
    if (guard.empty())
        return;
    guard.reset();
    CdbManager::instance().close(name, type);
}

} // namespace

UsePlCdb::UsePlCdb(const orv::path& path) : m_path(path) {}

UsePlCdb::~UsePlCdb() {
    giveBack(m_plain, m_path.full, kPlainCdb);
    // Not the name that nod() opens: other modules rely on the drawing's store staying with the manager.
    giveBack(m_nod, m_path.name, kNodCdb);
    giveBack(m_file, m_path.full, kFileCdb);
}

ICdb& UsePlCdb::openNod() const {
    if (m_nod.empty())
        m_nod = UseCdb(kOwnStore, kNodCdb);
    ORV_ASSERT(m_nod.get()).debug("no NOD CDB object available");
    if (m_nod.empty())
        throw IOErrorException(L"failed to open NOD cdb '" + m_path.full + L"'.");
    return *m_nod.get();
}

ICdb& UsePlCdb::openFile() const {
    if (m_file.empty())
        m_file = UseCdb(m_path.full, kFileCdb);
    ORV_ASSERT(m_file.get()).debug("no FILE CDB object available");
    if (m_file.empty())
        throw IOErrorException(L"failed to open FILE cdb '" + m_path.full + L"'.");
    return *m_file.get();
}

ICdb& UsePlCdb::nod() { return openNod(); }

const ICdb& UsePlCdb::nod() const { return openNod(); }

ICdb& UsePlCdb::file() { return openFile(); }

const ICdb& UsePlCdb::file() const { return openFile(); }

} // namespace orv::cdb
