#pragma once

#include "acdb.h"
#include "dbid.h"
#include "rxobject.h"

class AcDbDatabase;
class AcDbObject;

// One level of a database's transactions. Belongs to the manager; dead after its end or abort.
class AcTransaction : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcTransaction);

    // Opens an object for as long as the outermost transaction lasts; it is not to be closed. An object that
    // a transaction holds already is upgraded in place when `mode` asks for more. Statuses as acdbOpenObject.
    virtual Acad::ErrorStatus getObject(AcDbObject*& object, AcDbObjectId id,
                                        AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) = 0;
};

// A database's transactions. They nest: an inner abort takes back what was done since the inner start.
class AcDbTransactionManager : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbTransactionManager);

    // The new innermost transaction; never null.
    virtual AcTransaction* startTransaction() = 0;
    // Ends the innermost one. When it was the outermost, all objects that were got are closed.
    // eNoActiveTransactions.
    virtual Acad::ErrorStatus endTransaction() = 0;
    // As endTransaction, but what was changed since the start is undone first. eNoActiveTransactions. With
    // recording for undo switched off nothing can be taken back, and the answer is eNotApplicable, the
    // transaction ended.
    virtual Acad::ErrorStatus abortTransaction() = 0;
    virtual int numActiveTransactions() = 0;
    // Null if there is none.
    virtual AcTransaction* topTransaction() = 0;
    // As AcTransaction::getObject on the innermost. eNoActiveTransactions.
    virtual Acad::ErrorStatus getObject(AcDbObject*& object, AcDbObjectId id,
                                        AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) = 0;
    // Hands an object that was just added to the database over to the innermost transaction, which closes it.
    virtual Acad::ErrorStatus addNewlyCreatedDBRObject(AcDbObject* object, bool add = true) = 0;
};
