#pragma once

#include "platform/export.h"

#ifdef ORVCORE_BUILD
#define ORVCORE_API PLATFORM_EXPORT
#else
#define ORVCORE_API PLATFORM_IMPORT
#endif
