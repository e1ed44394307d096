#pragma once

#include <cstdarg>
#include <string>

namespace embedded::rx {

// What a wide printf of the C library gives; empty where it refuses the format.
std::wstring wideFormat(const wchar_t* format, va_list arguments);

} // namespace embedded::rx
