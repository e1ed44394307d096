#pragma once

#include "acarray.h"
#include "dbid.h"

// Ids in a row.
using AcDbObjectIdArray = AcArray<AcDbObjectId>;
