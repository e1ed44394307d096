#pragma once

#include "acarray.h"
#include "gepnt2d.h"

using AcGePoint2dArray = AcArray<AcGePoint2d>;
