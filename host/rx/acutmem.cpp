#include "acutmem.h"

#include <cstdlib>
#include <cwchar>

void* acutNewBuffer(std::size_t bytes) { return std::malloc(bytes == 0 ? 1 : bytes); }

ACHAR* acutNewString(const ACHAR* text) {
    if (text == nullptr)
        return nullptr;
    const std::size_t length = std::wcslen(text) + 1;
    auto* copy = static_cast<ACHAR*>(acutNewBuffer(length * sizeof(ACHAR)));
    return copy == nullptr ? nullptr : std::wmemcpy(copy, text, length);
}

void acutFreeBuffer(void* buffer) { std::free(buffer); }
void acutFreeString(ACHAR* text) { std::free(text); }

void acutUpdString(const ACHAR* source, ACHAR*& destination) {
    ACHAR* copy = acutNewString(source); // first, since the source may be the destination
    acutDelString(destination);
    destination = copy;
}
