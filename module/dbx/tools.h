#pragma once

#include "base/export.h"

#include "acdb.h"
#include "adsdef.h"
#include "dbid.h"
#include "gepnt3d.h"
#include "gevec3d.h"

#include <set>

class AcDbEntity;
class AcDbLayerTableRecord;
class ORV_CDBTransactionManager;

// An entity, open until the manager's transaction ends. Null, with a report of what went wrong, if the id
// cannot be opened or is that of something else, which stays open in the manager then.
TALDORK_API AcDbEntity* orvGetEntity(ORV_CDBTransactionManager& tm, const AcDbObjectId& id,
                                     AcDb::OpenMode mode, bool openErased);
// The same by its name in the host's plain interface. A name that is no object's is reported as well.
TALDORK_API AcDbEntity* orvGetEntity(ORV_CDBTransactionManager& tm, const ads_name name, AcDb::OpenMode mode,
                                     bool openErased);

namespace orv {

// Replaces `layers` by the structural model's layers in the working drawing, those whose names begin with a
// capital X. All layers of the drawing are opened in the manager, and stay open. One that cannot be opened is
// reported and left out. Without a working drawing, or a layer table that can be read, that is reported, and
// `layers` is empty.
TALDORK_API void openAllKelmoranLayers(ORV_CDBTransactionManager& tm, AcDb::OpenMode mode,
                                       std::set<AcDbLayerTableRecord*>& layers);

// Between the world's coordinates and the user's. What the host cannot convert comes back as it was.
TALDORK_API AcGePoint3d wcs2ucs(const AcGePoint3d& point);
TALDORK_API AcGeVector3d wcs2ucs(const AcGeVector3d& vector);
TALDORK_API AcGePoint3d ucs2wcs(const AcGePoint3d& point);
TALDORK_API AcGeVector3d ucs2wcs(const AcGeVector3d& vector);

} // namespace orv
