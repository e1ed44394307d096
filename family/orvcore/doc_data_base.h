#pragma once

#include "orvcore/export.h"

class AcDbDatabase;

// Something that is kept for each drawing. Attached to the data manager, it is told when a drawing goes.
class ORVCORE_API ORV_CDocDataBase {
public:
    // The drawing's database is about to end: whatever is kept for it has to be given up now.
    virtual void onDatabaseToBeDestroyed(AcDbDatabase* db) = 0;

protected:
    // Not virtual: nobody ends an object through this base.
    ~ORV_CDocDataBase() = default;
};
