#pragma once

#include "dbtrans.h"

#include <memory>
#include <vector>

class AcDbStub;

namespace embedded {

class DatabaseCore;
class TransactionManager;

class Transaction : public AcTransaction {
public:
    Transaction(TransactionManager& manager, std::size_t undoMark)
        : m_manager(manager), m_undoMark(undoMark) {}
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                bool openErased) override;
    std::size_t undoMark() const { return m_undoMark; }

private:
    TransactionManager& m_manager;
    std::size_t m_undoMark;
};

class TransactionManager : public AcDbTransactionManager {
public:
    explicit TransactionManager(DatabaseCore& core) : m_core(core) {}

    AcTransaction* startTransaction() override;
    Acad::ErrorStatus endTransaction() override;
    Acad::ErrorStatus abortTransaction() override;
    int numActiveTransactions() override { return static_cast<int>(m_open.size()); }
    AcTransaction* topTransaction() override { return m_open.empty() ? nullptr : m_open.back().get(); }
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                bool openErased) override;
    Acad::ErrorStatus addNewlyCreatedDBRObject(AcDbObject* object, bool add) override;

private:
    void closeAll();

    DatabaseCore& m_core;
    std::vector<std::unique_ptr<Transaction>> m_open;
    std::vector<AcDbStub*> m_held; // objects that were first got here; closed with the outermost transaction
};

} // namespace embedded
