#pragma once

#include "acdb.h"
#include "dbid.h"
#include "orvcore/export.h"

class AcDbDatabase;
class AcDbObject;
class AcDbTransactionManager;

// A transaction on a database for the life of a stack object. Managers on the same database nest: the
// outermost one starts the host's transaction and ends it, those within only join it. Whatever one of them
// opened stays usable until the outermost ends, and is not to be closed.
class ORVCORE_API ORV_CDBTransactionManager {
public:
    // A null `db` means the working database. With `ownTransaction` the manager starts a transaction of the
    // host's own inside a running one too.
    ORV_CDBTransactionManager(AcDbDatabase* db, bool ownTransaction);
    // Ends what it started.
    ~ORV_CDBTransactionManager();

    ORV_CDBTransactionManager(const ORV_CDBTransactionManager&) = delete;
    ORV_CDBTransactionManager& operator=(const ORV_CDBTransactionManager&) = delete;

    // Whether the host is putting old states back now: an undo or redo of any database runs. Not for a
    // transaction that is given up.
    static bool getUndoRedoActive();

    // Opens an object. Without `openErased` an erased one is refused; without `acceptProxies` one that stands
    // for an object of a missing class is refused with eWrongObjectType. eNoDatabase if there is no database;
    // otherwise the host's statuses, of which the one of value 81 says that the object is gone for good.
    // `object` is null in all cases but eOk.
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode, bool openErased,
                                bool acceptProxies);

private:
    AcDbDatabase* m_db;
    AcDbTransactionManager* m_manager = nullptr; // the host's, null without a database
    ORV_CDBTransactionManager* m_next = nullptr; // the next outer manager of another database
    bool m_outermost = false;
    bool m_started = false;
};
