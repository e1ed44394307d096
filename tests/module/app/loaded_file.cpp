// A file that is only there to be loaded, under the suffix that the build gives it.

#include "platform/export.h"

PLATFORM_ENTRY int loadedFile() { return 1; }
