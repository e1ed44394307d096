#pragma once

#include "adsdef.h"

// From the world's coordinates to those of the user, and back: the user coordinate system of the working
// database (AcDbDatabase::ucsorg, ucsxdir, ucsydir; its third axis stands on the two). `vec`: the three
// numbers are a direction, which the origin does not move. `result` may be the argument. False, with the
// result as it was, without a working database, for null, and where origin or axes make no system of
// coordinates.
bool acdbWcs2Ucs(const ads_point point, ads_point result, bool vec);
bool acdbUcs2Wcs(const ads_point point, ads_point result, bool vec);
