#pragma once

#include "base/export.h"
#include "dbx/doc/bool_option.h"
#include "dbx/doc/doc_data.h"
#include "dbx/doc/system.h"

#include "dbid.h"

#include <boost/shared_ptr.hpp>

#include <map>
#include <string>

class AcDbDatabase;

namespace orv {

// Knows the structural systems of each drawing, one for each of its stores, by the store's name and by the id
// of its dictionary. The systems belong to the drawing's entry here and go with it, or when the drawing is
// looked through again; who holds a shared pointer keeps one longer. For the host's main thread.
class TALDORK_API SystemManager {
public:
    struct SystemEntry {
        boost::shared_ptr<System> system;
    };
    // Store names with the ids of the stores' dictionaries.
    using Names = std::map<std::wstring, AcDbObjectId>;
    using Systems = std::map<AcDbObjectId, SystemEntry>;

    static SystemManager& instance();

    SystemManager(const SystemManager&) = delete;
    SystemManager& operator=(const SystemManager&) = delete;

    // Forgets what is known of a drawing and looks it through anew. Null does nothing. Exceptions as
    // _initForDatabase.
    void initFromDatabase(AcDbDatabase* db);

    // Marks the drawing as looked through and takes up its stores in the order of their names. What is wrong
    // with one is reported and does not keep the others out. An exception that reading a store's settings
    // throws (a damaged record ends in orv::Exception) leaves here, the first one, when all stores were taken
    // up; its system is there, with the settings that were read.
    void _initForDatabase(AcDbDatabase& db);

    // One store of _initForDatabase: opens it, builds its system from the records or, where 10/0 is missing,
    // from the older description object, and enters it. `it` gives name and dictionary of the store. A store
    // that cannot be opened and a system that cannot be built are reported, and nothing is entered. An
    // exception of its settings leaves here with the system entered.
    void _initForStore(AcDbDatabase& db, Names::const_iterator it);

    // Whether _initForDatabase has run for a drawing. A null one is reported, and false.
    bool wasDatabaseCheckedAtLeastOnce(AcDbDatabase* db) const;

    // The system of the store with this dictionary. Null, without a report, if there is none.
    boost::shared_ptr<System> getSystemById(const AcDbObjectId& id) const;
    // By the store's name, with upper and lower case as they stand. Null if there is none; a null drawing is
    // reported.
    boost::shared_ptr<System> getSystemByName(AcDbDatabase* db, const std::wstring& name) const;

private:
    SystemManager();
    ~SystemManager();

    Systems& systems(AcDbDatabase* db) { return m_systems(db); }
    const Systems& systems(AcDbDatabase* db) const { return m_systems(db); }
    Names& systemNames(AcDbDatabase* db) { return m_systemNames(db); }
    const Names& systemNames(AcDbDatabase* db) const { return m_systemNames(db); }

    ORV_CDocData<Systems> m_systems;
    ORV_CDocData<Names> m_systemNames;
    ORV_CDocData<BoolOptionTpl<CustomBoolF>> m_checked;

    static SystemManager s_instance;
};

} // namespace orv
