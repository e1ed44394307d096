#include "orvcore/get_nvec.h"

#include "dbapserv.h"
#include "dbmain.h"

AcGeVector3d orv_get_nvec() {
    const AcDbHostApplicationServices* const services = acdbHostApplicationServices();
    const AcDbDatabase* const db = services != nullptr ? services->workingDatabase() : nullptr;
    if (db == nullptr)
        return AcGeVector3d::kZAxis;
    const AcGeVector3d normal = db->ucsxdir().crossProduct(db->ucsydir());
    return normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal();
}
