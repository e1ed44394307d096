#pragma once

#include "acarray.h"

using AcDbIntArray = AcArray<int>;
