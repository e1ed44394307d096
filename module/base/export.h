#pragma once

#include "platform/export.h"

#ifdef TALDORK_BUILD
#define TALDORK_API PLATFORM_EXPORT
#else
#define TALDORK_API PLATFORM_IMPORT
#endif
