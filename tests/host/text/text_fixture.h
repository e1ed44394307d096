#pragma once

#include "acutads.h"
#include "acutmem.h"
#include "dbmain.h"
#include "embedded/host_start.h"
#include "embedded/text_filer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace testing_text {

using embedded::TextFiler;
using embedded::TextForm;

// The lines of the ASCII form.
inline std::string lines(std::initializer_list<const char*> texts) {
    std::string bytes;
    for (const char* const text : texts)
        bytes += std::string(text) + "\r\n";
    return bytes;
}

// The packed form begins with these, which the format fixes.
inline const std::string& sentinel() {
    static const std::string bytes{0x41, 0x75, 0x74, 0x6F, 0x43, 0x41, 0x44, 0x20, 0x42, 0x69, 0x6E,
                                   0x61, 0x72, 0x79, 0x20, 0x44, 0x58, 0x46, 0x0D, 0x0A, 0x1A, 0x00};
    return bytes;
}

// Packed bytes of the binary form, given by their string literals.
template <std::size_t kSize>
std::string packed(const char (&bytes)[kSize]) {
    return std::string(bytes, kSize - 1);
}

struct GiveBack {
    void operator()(resbuf* value) const { acutRelRb(value); }
};
using Value = std::unique_ptr<resbuf, GiveBack>;

// The next value; null unless it could be read.
inline Value read(AcDbDxfFiler& filer) {
    Value value(acutNewRb(0));
    if (filer.readResBuf(value.get()) != Acad::eOk)
        value.reset();
    return value;
}

inline std::string chunkOf(const resbuf& value) {
    return std::string(value.resval.rbinary.buf == nullptr ? "" : value.resval.rbinary.buf,
                       static_cast<std::size_t>(value.resval.rbinary.clen));
}

} // namespace testing_text
