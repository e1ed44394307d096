#pragma once

#include "rxobject.h"

class AcDbDatabase;

// What the application gives the database library: which drawing is worked in, and which release it is.
class AcDbHostApplicationServices : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbHostApplicationServices);

    // Null if there is none. The services do not own it; the database's end clears it.
    AcDbDatabase* workingDatabase() const { return m_working; }
    void setWorkingDatabase(AcDbDatabase* database) { m_working = database; }

    // The release of the host, as in 19.1. A program sets them through embedded/host_release.h.
    int releaseMajorVersion() const;
    int releaseMinorVersion() const;

private:
    AcDbDatabase* m_working = nullptr;
};

// The one object; never null.
AcDbHostApplicationServices* acdbHostApplicationServices();
