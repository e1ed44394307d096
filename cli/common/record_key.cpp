#include "cli/common/record_key.h"

#include <charconv>

namespace taldork::cli {

namespace {

std::optional<int> parseInt(const std::string& text) {
    int value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return value;
}

} // namespace

std::string RecordKey::text() const { return std::to_string(kwh) + (kwl ? "/" + std::to_string(*kwl) : ""); }

std::optional<RecordKey> parseRecordKey(const std::string& text) {
    const auto slash = text.find('/');
    const auto kwh = parseInt(text.substr(0, slash));
    if (!kwh || *kwh < 0)
        return std::nullopt;
    RecordKey key;
    key.kwh = *kwh;
    if (slash == std::string::npos)
        return key;
    key.kwl = parseInt(text.substr(slash + 1));
    if (!key.kwl || *key.kwl < 0)
        return std::nullopt;
    return key;
}

std::optional<KeyRange> parseKeyRange(const std::string& text) {
    const auto colon = text.find(':');
    if (colon == std::string::npos)
        return std::nullopt;
    const auto from = parseInt(text.substr(0, colon));
    const auto to = parseInt(text.substr(colon + 1));
    if (!from || !to || *from > *to)
        return std::nullopt;
    return KeyRange{*from, *to};
}

std::string checkKey(const std::string& text) {
    const auto key = parseRecordKey(text);
    return key && !key->isGroup() ? "" : "'" + text + "' is no key: write KWH/KWL, as in 10/0";
}

std::string checkKeyOrGroup(const std::string& text) {
    return parseRecordKey(text)
               ? ""
               : "'" + text + "' is no key and no group: write KWH/KWL or KWH, as in 10/0 or 10";
}

std::string checkGroup(const std::string& text) {
    const auto key = parseRecordKey(text);
    return key && key->isGroup() ? "" : "'" + text + "' is no group: write KWH, as in 10";
}

std::string checkRange(const std::string& text) {
    return parseKeyRange(text) ? "" : "'" + text + "' is no range: write FROM:TO, as in 0:99";
}

std::string checkPosition(const std::string& text) {
    const auto position = parseInt(text);
    return position && *position >= 0 ? "" : "'" + text + "' is no position: write a number from 0 on";
}

} // namespace taldork::cli
