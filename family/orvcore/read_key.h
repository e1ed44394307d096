#pragma once

#include "orvcore/export.h"

#include <string>

// Where a path of the registry begins.
enum class ORV_RegistryRoot { kCurrentUser };

// Reads the text value `key` of the node `path` (names parted by backslashes) below `root`. 0 on success,
// with the text in `out`; otherwise a system error number, with `out` as it was: 2 if there is no such node
// or value, 1630 if the value is no text.
ORVCORE_API int orv_readKey(std::wstring& out, const std::wstring& key, const std::wstring& path,
                            ORV_RegistryRoot root = ORV_RegistryRoot::kCurrentUser);
