#pragma once

#include "AdAChar.h"

#include <cstddef>

// Buffers that pass between the host and its modules. What one of these gave goes back through acutDelBuffer
// or acutDelString, and nothing else does. Null when the system has no memory left.
void* acutNewBuffer(std::size_t bytes);
// A copy of the text; null for null.
ACHAR* acutNewString(const ACHAR* text);

void acutFreeBuffer(void* buffer);
void acutFreeString(ACHAR* text);

// Gives the buffer back and makes the pointer null. Null is left alone.
template <class T>
void acutDelBuffer(T*& buffer) {
    acutFreeBuffer(const_cast<void*>(static_cast<const void*>(buffer)));
    buffer = nullptr;
}

inline void acutDelString(ACHAR*& text) { acutDelBuffer(text); }

// Copies `source` into a fresh buffer in `destination`, after giving back what stood there.
void acutUpdString(const ACHAR* source, ACHAR*& destination);
