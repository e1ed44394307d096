#pragma once

// The marks of what a shared library offers. A library builds its own mark of these two.
#if defined(_WIN32)
#define PLATFORM_EXPORT __declspec(dllexport)
#define PLATFORM_IMPORT __declspec(dllimport)
#define PLATFORM_ENTRY extern "C" __declspec(dllexport)
#else
#define PLATFORM_EXPORT __attribute__((visibility("default")))
#define PLATFORM_IMPORT __attribute__((visibility("default")))
// An entry point that is looked up by name.
#define PLATFORM_ENTRY extern "C" __attribute__((visibility("default")))
#endif

#if defined(PLATFORM_BUILD)
#define PLATFORM_API PLATFORM_EXPORT
#else
#define PLATFORM_API PLATFORM_IMPORT
#endif
