#pragma once

#include "platform/export.h"

namespace platform {

enum class Stream { kInput, kOutput, kError };

// Whether a person sits at the other end, rather than a file or a pipe.
PLATFORM_API bool isTerminal(Stream stream);

} // namespace platform
