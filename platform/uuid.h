#pragma once

#include "platform/export.h"

#include <cstdint>

namespace platform {

// 128 bits in the layout of the systems that have one: three numbers in the machine's byte order, then bytes.
struct Uuid {
    std::uint32_t data1;
    std::uint16_t data2;
    std::uint16_t data3;
    std::uint8_t data4[8];
};

// The system's operations on UUIDs, so that a test can make any of them fail.
class PLATFORM_API UuidCalls {
public:
    virtual ~UuidCalls();

    // A new one of this time and machine; later ones are later in time. 0 or the system's status.
    virtual int createSequential(Uuid& uuid);
    // All bits are 0.
    virtual bool isNil(const Uuid& uuid, int& status);
    // 36 characters: hexadecimal digits in small letters, with hyphens. 0 and a text that goes back through
    // freeText, or the system's status and null.
    virtual int toText(const Uuid& uuid, char*& text);
    virtual void freeText(char*& text);
};

// Puts other calls in place of the system's; null puts those back. Belongs to the caller, who keeps it alive.
PLATFORM_API void setUuidCalls(UuidCalls* calls);
PLATFORM_API UuidCalls& uuidCalls();

} // namespace platform
