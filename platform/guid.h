#pragma once

// The system's 128-bit identifier of a class, also where the system has none.
#ifdef _WIN32
#include <guiddef.h>
#else
#include <cstdint>

struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};
using CLSID = GUID;
#endif
