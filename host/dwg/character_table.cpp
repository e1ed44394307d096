#include "dwg/character_table.h"

#include "platform/code_page.h"

#include <map>
#include <mutex>

namespace embedded::dwg {
namespace {

// Windows' numbers of the code pages in the order of their numbers in a drawing; 0 where there is none.
const int kWindowsNumbers[] = {
    0,    20127, 28591, 28592, 28593, 28594, 28595, 28596, 28597, 28598, 28599, 437,  850,  852,  855,
    857,  860,   861,   863,   864,   865,   869,   932,   10000, 950,   949,   1361, 866,  1250, 1251,
    1252, 936,   1253,  1254,  1255,  1256,  1257,  874,   932,   936,   949,   950,  1361, 0,    1258,
};
const int kAscii = 20127;

// Those of \M+1 to \M+5.
const int kMultibyteNumbers[] = {932, 950, 949, 1361, 936};

} // namespace

CharacterTable::CharacterTable(int windowsNumber) {
    const platform::CodePage page(windowsNumber);
    for (unsigned byte = 0; byte < 256; ++byte) {
        const unsigned char first = static_cast<unsigned char>(byte);
        char32_t character = kNone;
        // ASCII is the same in all of them.
        if (byte < 0x80) {
            m_single[byte] = byte;
            continue;
        }
        const platform::CodePage::Outcome outcome = page.decode(&first, 1, character);
        m_single[byte] = outcome == platform::CodePage::kCharacter ? character : kNone;
        if (outcome == platform::CodePage::kCharacter)
            add(static_cast<std::uint16_t>(byte), character);
        if (outcome != platform::CodePage::kIncomplete)
            continue;
        m_single[byte] = kLead;
        m_leadIndex[byte] = static_cast<std::uint16_t>(m_double.size() / 256);
        for (unsigned second = 0; second < 256; ++second) {
            const unsigned char both[2] = {first, static_cast<unsigned char>(second)};
            const bool is = page.decode(both, 2, character) == platform::CodePage::kCharacter;
            m_double.push_back(is ? character : kNone);
            if (is)
                add(static_cast<std::uint16_t>(byte << 8 | second), character);
        }
    }
}

// Of two codes for one character the first is written.
void CharacterTable::add(std::uint16_t code, char32_t character) { m_codes.emplace(character, code); }

const CharacterTable& CharacterTable::ofWindows(int windowsNumber) {
    static std::mutex mutex;
    static std::map<int, std::unique_ptr<CharacterTable>> tables;
    const std::lock_guard<std::mutex> lock(mutex);
    std::unique_ptr<CharacterTable>& table = tables[windowsNumber];
    if (table == nullptr)
        table.reset(new CharacterTable(windowsNumber));
    return *table;
}

const CharacterTable& CharacterTable::ofDrawing(std::uint16_t drawingCodePage) {
    const std::size_t count = sizeof kWindowsNumbers / sizeof kWindowsNumbers[0];
    const int number = drawingCodePage < count ? kWindowsNumbers[drawingCodePage] : 0;
    return ofWindows(number != 0 ? number : kAscii);
}

const CharacterTable* CharacterTable::ofMultibyteDigit(wchar_t digit) {
    return digit >= L'1' && digit <= L'5' ? &ofWindows(kMultibyteNumbers[digit - L'1']) : nullptr;
}

char32_t CharacterTable::decode(const unsigned char* bytes, std::size_t size, std::size_t& at) const {
    const unsigned char first = bytes[at++];
    char32_t character = m_single[first];
    if (character == kLead) {
        character = at < size ? m_double[m_leadIndex[first] * 256u + bytes[at]] : kNone;
        if (character != kNone)
            ++at;
    }
    return character == kNone ? first : character;
}

bool CharacterTable::encode(char32_t character, std::string& bytes) const {
    if (character < 0x80) {
        bytes.push_back(static_cast<char>(character));
        return true;
    }
    const auto found = m_codes.find(character);
    if (found == m_codes.end())
        return false;
    if (found->second > 0xFF)
        bytes.push_back(static_cast<char>(found->second >> 8));
    bytes.push_back(static_cast<char>(found->second));
    return true;
}

} // namespace embedded::dwg
