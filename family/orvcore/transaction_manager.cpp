#include "orvcore/transaction_manager.h"

#include "dbapserv.h"
#include "dbmain.h"
#include "dbtrans.h"
#include "orvcore/undo_watch.h"

namespace {

// The outermost managers, one for each database in use, the youngest first. There are hardly ever more than
// two, so a walk is the fastest way to find out whether a manager is a nested one.
ORV_CDBTransactionManager* s_outermost = nullptr;

} // namespace

ORV_CDBTransactionManager::ORV_CDBTransactionManager(AcDbDatabase* db, bool ownTransaction)
    : m_db(db != nullptr ? db : acdbHostApplicationServices()->workingDatabase()) {
    if (m_db == nullptr)
        return;
    const ORV_CDBTransactionManager* outer = s_outermost;
    while (outer != nullptr && outer->m_db != m_db)
        outer = outer->m_next;
    m_manager = outer != nullptr ? outer->m_manager : m_db->transactionManager();
    m_outermost = outer == nullptr;
    if (m_outermost) {
        m_next = s_outermost;
        s_outermost = this;
    }
    m_started = m_outermost || ownTransaction;
    if (m_started)
        m_manager->startTransaction();
}

ORV_CDBTransactionManager::~ORV_CDBTransactionManager() {
    if (m_outermost) {
        // Taken out first: what the host calls while it closes the objects must not join a transaction that
        // ends.
        ORV_CDBTransactionManager** link = &s_outermost;
        while (*link != this)
            link = &(*link)->m_next;
        *link = m_next;
    }
    if (m_started)
        m_manager->endTransaction();
}

Acad::ErrorStatus ORV_CDBTransactionManager::getObject(AcDbObject*& object, AcDbObjectId id,
                                                       AcDb::OpenMode mode, bool openErased,
                                                       bool acceptProxies) {
    object = nullptr;
    if (m_manager == nullptr)
        return Acad::eNoDatabase;
    const Acad::ErrorStatus es = m_manager->getObject(object, id, mode, openErased);
    if (es == Acad::eOk && !acceptProxies && object->isAProxy()) {
        object = nullptr; // stays open with the transaction
        return Acad::eWrongObjectType;
    }
    return es;
}

bool ORV_CDBTransactionManager::getUndoRedoActive() { return orvcore::undoOrRedoRuns(); }
