#pragma once

#include "platform/export.h"

#ifdef ORVCHECK_BUILD
#define ORVCHECK_API PLATFORM_EXPORT
#else
#define ORVCHECK_API PLATFORM_IMPORT
#endif
