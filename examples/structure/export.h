#pragma once

#include "platform/export.h"

// The mark of what this module offers to its own command module, and to other programs that work with its
// elements.
#ifdef STRUCTURE_BUILD
#define STRUCTURE_API PLATFORM_EXPORT
#else
#define STRUCTURE_API PLATFORM_IMPORT
#endif
