#pragma once

// Marks a function whose body is not to be copied into its callers.
#if defined(_MSC_VER)
#define PLATFORM_NOINLINE __declspec(noinline)
#else
#define PLATFORM_NOINLINE __attribute__((noinline))
#endif
