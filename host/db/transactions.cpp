#include "db/transactions.h"

#include "db/database_core.h"
#include "db/open_close.h"
#include "embedded/guarded.h"

namespace embedded {

Acad::ErrorStatus Transaction::getObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                         bool openErased) {
    return m_manager.getObject(object, id, mode, openErased);
}

AcTransaction* TransactionManager::startTransaction() {
    m_open.push_back(std::make_unique<Transaction>(*this, m_core.undo().beginScope()));
    return m_open.back().get();
}

Acad::ErrorStatus TransactionManager::endTransaction() {
    if (m_open.empty())
        return Acad::eNoActiveTransactions;
    m_open.pop_back();
    if (m_open.empty())
        closeAll();
    return Acad::eOk;
}

Acad::ErrorStatus TransactionManager::abortTransaction() {
    if (m_open.empty())
        return Acad::eNoActiveTransactions;
    const bool takenBack = m_core.undo().rollBack(m_open.back()->undoMark());
    endTransaction();
    return takenBack ? Acad::eOk : Acad::eNotApplicable;
}

Acad::ErrorStatus TransactionManager::getObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                                bool openErased) {
    object = nullptr;
    if (m_open.empty())
        return Acad::eNoActiveTransactions;
    AcDbStub* stub = id;
    if (stub == nullptr || !stub->has(kInTransaction)) {
        Acad::ErrorStatus es = openStub(stub, mode, openErased, object);
        if (es == Acad::eOk && stub != nullptr) {
            stub->set(kInTransaction);
            m_held.push_back(stub);
        }
        return es;
    }
    if (stub->has(kErased) && !openErased)
        return Acad::eWasErased;
    if (mode == AcDb::kForWrite && !stub->has(kOpenForWrite)) {
        Acad::ErrorStatus es = upgradeStub(*stub);
        if (es != Acad::eOk)
            return es == Acad::eHadMultipleReaders ? Acad::eWasOpenForRead : es;
    }
    object = stub->object;
    return Acad::eOk;
}

Acad::ErrorStatus TransactionManager::addNewlyCreatedDBRObject(AcDbObject* object, bool add) {
    if (m_open.empty())
        return Acad::eNoActiveTransactions;
    AcDbStub* stub = object->objectId();
    if (stub == nullptr)
        return Acad::eNoDatabase;
    if (add && !stub->has(kInTransaction)) {
        stub->set(kInTransaction);
        m_held.push_back(stub);
    }
    return Acad::eOk;
}

void TransactionManager::closeAll() {
    // An object's close may get further objects through a new transaction; those have their own list by then.
    std::vector<AcDbStub*> held;
    held.swap(m_held);
    for (AcDbStub* stub : held) {
        stub->clear(kInTransaction);
        if (stub->object != nullptr)
            guarded(L"An object failed at the end of a transaction", [&] { closeStub(*stub); });
    }
    held.clear();
    if (m_held.empty())
        m_held.swap(held); // keeps the room for the next transaction
}

} // namespace embedded
