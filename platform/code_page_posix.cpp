#include "platform/code_page.h"

#include <cerrno>
#include <iconv.h>
#include <string>

namespace platform {
namespace {

const iconv_t kNone = reinterpret_cast<iconv_t>(-1);

std::string systemName(int windowsNumber) {
    switch (windowsNumber) {
    case 1361:
        return "JOHAB";
    case 20127:
        return "US-ASCII";
    case 10000:
        return "MACINTOSH";
    default:
        // ISO 8859-1 to -9 have the numbers 28591 to 28599.
        if (windowsNumber > 28590 && windowsNumber < 28600)
            return "ISO-8859-" + std::to_string(windowsNumber - 28590);
        return "CP" + std::to_string(windowsNumber);
    }
}

} // namespace

CodePage::CodePage(int windowsNumber)
    : m_converter(iconv_open("UTF-32LE", systemName(windowsNumber).c_str())), m_number(windowsNumber) {}

CodePage::~CodePage() {
    if (isKnown())
        iconv_close(m_converter);
}

bool CodePage::isKnown() const { return m_number > 0 && m_converter != kNone; }

CodePage::Outcome CodePage::decode(const unsigned char* bytes, std::size_t count, char32_t& character) const {
    if (!isKnown())
        return kNoCharacter;
    char* in = const_cast<char*>(reinterpret_cast<const char*>(bytes));
    unsigned char units[8];
    char* out = reinterpret_cast<char*>(units);
    std::size_t inLeft = count;
    std::size_t outLeft = sizeof units;
    iconv(m_converter, nullptr, nullptr, nullptr, nullptr);
    if (iconv(m_converter, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1))
        return errno == EINVAL ? kIncomplete : kNoCharacter;
    // Where marks combine, the system holds a letter back until it knows what follows.
    iconv(m_converter, nullptr, nullptr, &out, &outLeft);
    if (inLeft != 0 || sizeof units - outLeft != 4)
        return kNoCharacter;
    character = units[0] | units[1] << 8 | units[2] << 16 | static_cast<char32_t>(units[3]) << 24;
    return kCharacter;
}

} // namespace platform
