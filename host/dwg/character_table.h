#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace embedded::dwg {

// The characters of one byte code page, in both directions.
class CharacterTable {
public:
    // By the number that a drawing's header has for its code page. An unknown number gives ASCII. The table
    // belongs to the process.
    static const CharacterTable& ofDrawing(std::uint16_t drawingCodePage);
    // By the digit of a \M+ sequence, '1' to '5'; null for another.
    static const CharacterTable* ofMultibyteDigit(wchar_t digit);

    // Takes one character off `bytes` at `at`. A byte that stands for nothing is the character of its number.
    char32_t decode(const unsigned char* bytes, std::size_t size, std::size_t& at) const;
    // Appends the bytes of a character; false if the code page does not have it.
    bool encode(char32_t character, std::string& bytes) const;

private:
    explicit CharacterTable(int windowsNumber);
    static const CharacterTable& ofWindows(int windowsNumber);
    void add(std::uint16_t code, char32_t character);

    static constexpr char32_t kLead = 0xFFFFFFFF;
    static constexpr char32_t kNone = 0xFFFFFFFE;

    char32_t m_single[256];
    // 256 characters for each lead byte, in the order of the lead bytes.
    std::vector<char32_t> m_double;
    std::uint16_t m_leadIndex[256] = {};
    std::unordered_map<char32_t, std::uint16_t> m_codes;
};

} // namespace embedded::dwg
