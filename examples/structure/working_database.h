#pragma once

#include "dbapserv.h"

namespace structure {

// Makes a drawing the one that is worked in, for the life of a stack object. The services that gather things
// over a whole drawing look at that one.
class WorkingDatabase {
public:
    explicit WorkingDatabase(AcDbDatabase* database)
        : m_before(acdbHostApplicationServices()->workingDatabase()) {
        acdbHostApplicationServices()->setWorkingDatabase(database);
    }
    ~WorkingDatabase() { acdbHostApplicationServices()->setWorkingDatabase(m_before); }

    WorkingDatabase(const WorkingDatabase&) = delete;
    WorkingDatabase& operator=(const WorkingDatabase&) = delete;

private:
    AcDbDatabase* m_before;
};

} // namespace structure
