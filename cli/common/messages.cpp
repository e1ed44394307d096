#include "cli/common/messages.h"

#include "platform/text.h"

#include <exception>

namespace taldork::cli {

namespace {

/// Two bytes from U+0080 to U+009F, which some terminals obey like the first 32.
bool isWideControl(const std::string& text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    return byte(at) == 0xc2 && at + 1 < text.size() && byte(at + 1) >= 0x80 && byte(at + 1) <= 0x9f;
}

} // namespace

std::string oneLine(const std::string& text) {
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool wide = isWideControl(text, i);
        line += wide || byte < 0x20 || byte == 0x7f ? ' ' : text[i];
        i += wide ? 1 : 0;
    }
    return line;
}

std::string caughtMessage() {
    try {
        throw;
    } catch (const std::exception& exception) {
        return exception.what();
    } catch (const wchar_t* text) { // also text that is not const
        return text != nullptr ? platform::toUtf8(text) : "";
    } catch (...) {
        return "of an unknown kind";
    }
}

} // namespace taldork::cli
