#pragma once

#include <string>
#include <vector>

namespace embedded::rx {

// The folders, after the one of the host, in which modules without a folder are looked for.
void setModuleSearchPath(std::vector<std::wstring> folders);

// The file that a module's name stands for, or empty if there is none.
std::wstring findModule(const std::wstring& name);

// Why the last load or unload failed, as one line without line end; empty if it did not.
const std::wstring& lastLinkerFailure();

} // namespace embedded::rx
