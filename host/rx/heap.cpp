#include "AcHeapOpers.h"

#include <new>

void* acHeapAlloc(std::size_t bytes) { return ::operator new(bytes); }
void acHeapFree(void* memory) noexcept { ::operator delete(memory); }
