#pragma once

#include "platform/export.h"

#include <string>

namespace platform {

// The system's words for one of its error numbers, without a line end; never empty.
PLATFORM_API std::wstring systemMessage(int error);

} // namespace platform
