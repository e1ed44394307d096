#pragma once

#include <cstddef>

// The host's heap: host and modules allocate and free each other's objects, so both go through these.
// `acHeapAlloc` throws std::bad_alloc when the system has no memory left.
void* acHeapAlloc(std::size_t bytes);
void acHeapFree(void* memory) noexcept;

// Gives a class the operators of the host's heap. Stands in the public part of the class.
#define ACRX_HEAP_OPERATORS()                                                                                \
    static void* operator new(std::size_t bytes) { return acHeapAlloc(bytes); }                              \
    static void* operator new[](std::size_t bytes) { return acHeapAlloc(bytes); }                            \
    static void* operator new(std::size_t, void* place) { return place; }                                    \
    static void operator delete(void* memory) noexcept { acHeapFree(memory); }                               \
    static void operator delete[](void* memory) noexcept { acHeapFree(memory); }                             \
    static void operator delete(void*, void*) noexcept {}
