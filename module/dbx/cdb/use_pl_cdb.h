#pragma once

#include "base/export.h"
#include "base/path.h"
#include "dbx/cdb/use_cdb.h"

namespace orv::cdb {

// A project's view of its stores, which are opened when they are first asked for.
class TALDORK_API UsePlCdb {
public:
    explicit UsePlCdb(const orv::path& path);
    // Releases the stores and gives the manager's counts back: of the plain store under the project's path,
    // of a store in the drawing that bears the project's bare name, and of the project's store file. The
    // count of "ASDWG" stays unless the project has that very name.
    ~UsePlCdb();

    UsePlCdb(const UsePlCdb&) = delete;
    UsePlCdb& operator=(const UsePlCdb&) = delete;

    // The drawing's store "ASDWG"; may be unopened, if the drawing has none. Throws orv::IOErrorException if
    // there is no store object at all.
    ICdb& nod();
    const ICdb& nod() const;
    // The project's store file. Throws as nod.
    ICdb& file();
    const ICdb& file() const;

private:
    // Whoever fills the plain store, with one that the manager has opened under the project's path.
    friend struct UsePlCdbAccess;

    ICdb& openNod() const;
    ICdb& openFile() const;

    mutable UseCdb m_nod;
    mutable UseCdb m_file;
    UseCdb m_plain;
    orv::path m_path;
};

} // namespace orv::cdb
