#pragma once

#include "platform/registry.h"

#include <cstddef>
#include <cstdint>
#include <string>

// The user's registry by handles and raw data, for those who walk it step by step. Whole values and whole
// lists are in registry.h; both look at the same tree.
namespace platform::registry {

// A key that is open. The system's own handle where the system has a registry.
struct OpenKey;
using KeyHandle = OpenKey*;

// The key that the user's own tree begins with. It is never closed; closing it does nothing.
PLATFORM_API KeyHandle currentUser();

// What a key is opened for. Only Windows looks at it.
constexpr std::uint32_t kReadAccess = 0x20019;
constexpr std::uint32_t kAllAccess = 0xF003F;

// The numbers under which values of these types are stored.
constexpr std::uint32_t kTextType = 1;
constexpr std::uint32_t kExpandableTextType = 2;
constexpr std::uint32_t kBinaryType = 3;
constexpr std::uint32_t kNumberType = 4;

// There is no entry at that index.
constexpr int kNoMoreItems = 259;

// The longest names, in 16-bit units.
constexpr std::size_t kLongestKeyName = 255;
constexpr std::size_t kLongestValueName = 16383;

// All of these answer kDone, kNotFound, kNoMoreItems or another of the system's numbers (systemMessage).
// Paths and names are taken as those of registry.h. Whoever gets a handle closes it.

// Opens the key `path` below an open one, made with all above it where it is missing. `key` is null after a
// failure.
PLATFORM_API int createKey(KeyHandle root, const std::wstring& path, std::uint32_t access, KeyHandle& key);
// The same for a key that is there; kNotFound if it is not.
PLATFORM_API int openKey(KeyHandle root, const std::wstring& path, std::uint32_t access, KeyHandle& key);
// Null is no failure.
PLATFORM_API void closeKey(KeyHandle key);

// Sets a value of any type to these bytes, as they are.
PLATFORM_API int setData(KeyHandle key, const std::wstring& name, std::uint32_t type, const void* data,
                         std::uint32_t size);

// Name, type and size in bytes of the value at an index, in the order in which values came. A name of
// `capacity` units and more is a failure. Nothing is changed but by kDone.
PLATFORM_API int enumerateValue(KeyHandle key, std::uint32_t index, std::size_t capacity, std::wstring& name,
                                std::uint32_t& type, std::uint32_t& size);
// The name of the key at an index directly below, likewise; by name.
PLATFORM_API int enumerateKey(KeyHandle key, std::uint32_t index, std::size_t capacity, std::wstring& name);

} // namespace platform::registry
