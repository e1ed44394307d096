#pragma once

#include "acutads.h"

#include <string>

namespace embedded::rx {

// The text that acutPrintf hands to the console.
std::wstring formatted(const wchar_t* format, const PrintArgument* arguments, std::size_t count);

} // namespace embedded::rx
