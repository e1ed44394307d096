#pragma once

#include <string>

namespace embedded::rx {

// By what modules are told apart: the bare file name in small letters.
std::wstring moduleKey(const std::wstring& name);

} // namespace embedded::rx
