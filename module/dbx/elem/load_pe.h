#pragma once

#include "base/export.h"

#include "acadstrc.h"

class AcDbAuditInfo;

namespace orv::elem::legacy {

class ORV_Load;

// What the front end adds to the load entity; see ORV_Load::setProtExt. Nobody destroys one through this.
class TALDORK_API LoadPE {
public:
    // The host audits the entity, which is open for read or write.
    virtual Acad::ErrorStatus audit(ORV_Load& load, AcDbAuditInfo* auditInfo) = 0;

protected:
    ~LoadPE() = default;
};

} // namespace orv::elem::legacy
