#pragma once

#include "platform/export.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The user's registry: a tree of keys that hold named values. Names are compared without regard to case and
// keep the case in which they were first written. Paths are relative to the user's root, with backslashes
// between the names; those at the begin and at the end, and more than one between two names, do not count.
// Paths and names end at their first zero.
namespace platform::registry {

enum class ValueType { kText = 1, kBinary = 3, kNumber = 4 };

struct Value {
    ValueType type = ValueType::kText;
    std::wstring text;                 // of a text
    std::uint32_t number = 0;          // of a number
    std::vector<unsigned char> binary; // of a binary value
};

struct NamedValue {
    std::wstring name;
    Value value;
};

// What the operations answer; other numbers are the system's (systemMessage).
constexpr int kDone = 0;
constexpr int kNotFound = 2;

// Makes a key and those above it; one that is there is no failure.
PLATFORM_API int createKey(std::wstring_view path);
PLATFORM_API bool keyExists(std::wstring_view path);
// Sets a value of a key that is there; kNotFound if it is not. The empty name is the key's own value.
PLATFORM_API int setValue(std::wstring_view path, std::wstring_view name, const Value& value);
PLATFORM_API int setText(std::wstring_view path, std::wstring_view name, std::wstring_view text);
PLATFORM_API int setNumber(std::wstring_view path, std::wstring_view name, std::uint32_t number);
// kNotFound if there is no such key or value.
PLATFORM_API int getValue(std::wstring_view path, std::wstring_view name, Value& value);
// The keys directly below, by name; the values in the order in which they came. kNotFound for no such key.
PLATFORM_API int listKeys(std::wstring_view path, std::vector<std::wstring>& names);
PLATFORM_API int listValues(std::wstring_view path, std::vector<NamedValue>& values);
PLATFORM_API int deleteValue(std::wstring_view path, std::wstring_view name);
// Deletes a key with all below it. kNotFound for the user's root, which stays.
PLATFORM_API int deleteKey(std::wstring_view path);

// The file that stands for the registry where the system has none of its own. The environment variable
// TALDORK_REGISTRY names it, else it is `taldork/registry` in the user's configuration folder. Setting a path
// holds for this process; an empty one goes back to that rule.
PLATFORM_API void setRegistryFile(std::wstring path);
PLATFORM_API std::wstring registryFile();

} // namespace platform::registry
