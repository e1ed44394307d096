#pragma once

#include <cstddef>
#include <cstdint>

namespace orv::legacy {

// The record 0/98 of a store: graphic settings of older programs. Only the named fields are of use here.
struct typeSymbolSetup {
    unsigned char before8[8];
    std::int32_t version;
    unsigned char before664[652];
    std::int32_t size151;
    std::int32_t size152;
    unsigned char before752[80];
    std::int32_t size153;
    unsigned char before828[72];
    std::int32_t size155;
    unsigned char before888[56];
    double size154;
    unsigned char before3216[2320];
    double globalScalingValue; // a record that ends before its end is damaged
    unsigned char before3248[24];
    std::int32_t switch62; // on above 0, as the next two
    std::int32_t switch63;
    unsigned char before3268[12];
    std::int32_t switch61;
    unsigned char rest[264];
};

static_assert(sizeof(typeSymbolSetup) == 3536, "all that is ever looked at");
static_assert(offsetof(typeSymbolSetup, version) == 8, "");
static_assert(offsetof(typeSymbolSetup, size151) == 664, "");
static_assert(offsetof(typeSymbolSetup, size152) == 668, "");
static_assert(offsetof(typeSymbolSetup, size153) == 752, "");
static_assert(offsetof(typeSymbolSetup, size155) == 828, "");
static_assert(offsetof(typeSymbolSetup, size154) == 888, "");
static_assert(offsetof(typeSymbolSetup, globalScalingValue) == 3216, "");
static_assert(offsetof(typeSymbolSetup, switch62) == 3248, "");
static_assert(offsetof(typeSymbolSetup, switch63) == 3252, "");
static_assert(offsetof(typeSymbolSetup, switch61) == 3268, "");

} // namespace orv::legacy
