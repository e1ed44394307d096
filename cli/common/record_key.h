#pragma once

#include <optional>
#include <string>

namespace taldork::cli {

/// What a person writes to name records: "10/0" is a key, "10" the whole group.
struct RecordKey {
    int kwh = 0;
    std::optional<int> kwl;

    bool isGroup() const { return !kwl; }
    /// As it is written: "10/0" or "10".
    std::string text() const;
};

/// A closed range of keys inside a group, written "A:B".
struct KeyRange {
    int from = 0;
    int to = 0;
};

/// Nothing when the text names neither a key nor a group; both numbers are decimal and not negative.
std::optional<RecordKey> parseRecordKey(const std::string& text);

/// Nothing when the text is no range, or one whose end lies before its beginning.
std::optional<KeyRange> parseKeyRange(const std::string& text);

/// Checks for CLI11: an empty text when the argument is well formed, else what is wrong with it.
std::string checkKey(const std::string& text);
std::string checkKeyOrGroup(const std::string& text);
std::string checkGroup(const std::string& text);
std::string checkRange(const std::string& text);
std::string checkPosition(const std::string& text);

} // namespace taldork::cli
