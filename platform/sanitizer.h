#pragma once

// Takes one function out of the checks for null references. For the one contract that hands such a reference
// out.
#if defined(__GNUC__)
#define PLATFORM_ALLOW_NULL_REFERENCE __attribute__((no_sanitize("null")))
#else
#define PLATFORM_ALLOW_NULL_REFERENCE
#endif
