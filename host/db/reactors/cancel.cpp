#include "db/database_core.h"
#include "db/open_close.h"
#include "db/reactors/notices.h"
#include "dbmain.h"

using namespace embedded;

Acad::ErrorStatus AcDbObject::cancel() {
    if (mId.isNull())
        return Acad::eNoDatabase;
    AcDbStub& stub = *static_cast<AcDbStub*>(mId);
    if (!stub.has(kOpenForWrite))
        return close();
    if (stub.has(kInTransaction) || stub.has(kNewSinceOpen | kEraseToggled))
        return Acad::eNotApplicable;
    // Only a state that was taken down during this very opening is the one to go back to.
    const bool written = stub.has(kWrittenSinceOpen);
    if (written && !stub.has(kStateSinceOpen))
        return Acad::eNotApplicable;
    const Acad::ErrorStatus es = subCancel();
    if (es != Acad::eOk)
        return es;
    if (written && !coreOf(&stub)->undo().restoreState(*this))
        return Acad::eNotApplicable;
    stub.clear(kWrittenSinceOpen);
    notices::cancelled(*this);
    return closeStub(stub);
}

Acad::ErrorStatus AcDbObject::subCancel() { return Acad::eOk; }
