#pragma once

#include "acarray.h"

using AcGeDoubleArray = AcArray<double>;
