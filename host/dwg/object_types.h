#pragma once

#include <cstdint>

namespace embedded::dwg {

// A kind of object whose number the format fixes.
struct FixedType {
    std::uint16_t number;
    bool isEntity;
    // The format's name of the kind.
    const char* name;
    // The host's class for it.
    const wchar_t* className;
};

// Null for a number that the format does not fix.
const FixedType* fixedType(std::uint16_t number);
// The number for a class of the host; 0 if the format fixes none for it.
std::uint16_t fixedNumber(const wchar_t* className);

// From here on the format fixes numbers for kinds that files nevertheless name in their class table.
constexpr std::uint16_t kFirstNamedType = 0x50;

enum : std::uint16_t {
    kBlockBeginType = 0x04,
    kBlockEndType = 0x05,
    kProxyEntityType = 0x1F2,
    kProxyObjectType = 0x1F3
};

} // namespace embedded::dwg
