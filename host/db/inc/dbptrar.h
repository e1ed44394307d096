#pragma once

#include "acarray.h"

// Plain pointers in a row.
using AcDbVoidPtrArray = AcArray<void*>;
