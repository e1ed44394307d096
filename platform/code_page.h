#pragma once

#include "platform/export.h"

#include <cstddef>

namespace platform {

// Decodes single characters of the byte code pages that Windows numbers.
class PLATFORM_API CodePage {
public:
    explicit CodePage(int windowsNumber);
    ~CodePage();

    // The system knows this code page.
    bool isKnown() const;

    enum Outcome { kCharacter, kIncomplete, kNoCharacter };
    // What exactly these bytes stand for. kIncomplete if more have to follow; `character` is set for
    // kCharacter only.
    Outcome decode(const unsigned char* bytes, std::size_t count, char32_t& character) const;

private:
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;

    void* m_converter;
    int m_number;
};

} // namespace platform
