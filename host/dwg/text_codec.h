#pragma once

#include "dwg/character_table.h"

#include <string>
#include <string_view>

namespace embedded::dwg {

// Text between a drawing's code page and wide characters. What the code page does not have is filed as \U+
// and the four hexadecimal digits of its 16-bit unit, or of both its units. On reading \M+ with a digit and
// the two bytes of a far eastern code page are known too. A backslash that stands in a text where it would
// begin such a sequence is filed as \U+005C, so decode(encode(text)) is `text` for every text of valid
// characters and lone surrogates.
class TextCodec {
public:
    explicit TextCodec(std::uint16_t drawingCodePage)
        : m_table(&CharacterTable::ofDrawing(drawingCodePage)) {}

    std::wstring decode(std::string_view bytes) const;
    std::string encode(std::wstring_view text) const;

private:
    const CharacterTable* m_table;
};

} // namespace embedded::dwg
