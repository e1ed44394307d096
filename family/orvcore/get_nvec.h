#pragma once

#include "orvcore/export.h"

#include "gevec3d.h"

// The normal of the user coordinate system that the working database's user is in, of length 1. The Z axis if
// there is no working database, and for axes that span no plane.
ORVCORE_API AcGeVector3d orv_get_nvec();
