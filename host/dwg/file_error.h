#pragma once

#include <stdexcept>
#include <string>

namespace embedded::dwg {

// Why a file cannot be taken for a drawing. The text is one line without the file's name. Thrown inside this
// room only; the database's operations turn it into a status.
class FileError : public std::runtime_error {
public:
    enum Kind { kForeign, kDamaged, kOlderVersion, kNewerVersion };

    FileError(Kind kind, const std::string& text) : std::runtime_error(text), m_kind(kind) {}
    Kind kind() const { return m_kind; }

private:
    Kind m_kind;
};

[[noreturn]] inline void throwDamaged(const std::string& text) {
    throw FileError(FileError::kDamaged, "damaged drawing: " + text);
}

} // namespace embedded::dwg
