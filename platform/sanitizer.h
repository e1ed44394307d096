#pragma once

// Takes one function out of the checks for null references. For the one contract that hands such a reference
// out.
#if defined(__GNUC__)
#define PLATFORM_ALLOW_NULL_REFERENCE __attribute__((no_sanitize("null")))
#else
#define PLATFORM_ALLOW_NULL_REFERENCE
#endif

// 1 in builds that look for memory which nothing points to any more when the process ends.
#if defined(__SANITIZE_ADDRESS__)
#define PLATFORM_CHECKS_LEAKS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define PLATFORM_CHECKS_LEAKS 1
#endif
#endif
#if !defined(PLATFORM_CHECKS_LEAKS)
#define PLATFORM_CHECKS_LEAKS 0
#endif
