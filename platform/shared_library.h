#pragma once

#include "platform/export.h"

#include <cstddef>
#include <string>

namespace platform {

// A module that is in memory. Null stands for none.
using ModuleHandle = void*;

// The longest path that moduleFileName hands out, terminator included.
constexpr std::size_t kMaxModulePath = 260;

// Brings a shared library into memory, where it stays. Null on failure, with the reason in `failure`.
PLATFORM_API ModuleHandle openLibrary(const std::wstring& path, std::wstring& failure);
// The address of an exported name, or null.
PLATFORM_API void* librarySymbol(ModuleHandle module, const char* name);

// The module in memory that was loaded from a file of that name, the folders left out and without regard to
// case; null if there is none. Works from within the module's static initialisers too.
PLATFORM_API ModuleHandle moduleHandle(const wchar_t* fileName);
// The path of a module's file, with a terminator, cut to `size` characters if it is longer; for null the
// program's. Answers the number of characters without the terminator; 0 for something that is no module.
PLATFORM_API std::size_t moduleFileName(ModuleHandle module, wchar_t* buffer,
                                        std::size_t size = kMaxModulePath);
// The whole path, of whatever length; empty for something that is no module.
PLATFORM_API std::wstring modulePath(ModuleHandle module);

// The file of the module that holds this address, empty if there is none.
PLATFORM_API std::wstring modulePathOfAddress(const void* address);
// The file of the running program.
PLATFORM_API std::wstring programPath();

} // namespace platform
