#pragma once

#include "platform/export.h"

#ifdef ORVSHAPE_BUILD
#define ORVSHAPE_API PLATFORM_EXPORT
#else
#define ORVSHAPE_API PLATFORM_IMPORT
#endif
