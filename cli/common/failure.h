#pragma once

#include <stdexcept>
#include <string>

namespace taldork::cli {

/// An operation that could not be done. The program prints it as one line, "taldork: SUBJECT: what", and ends
/// with 1.
class Failure : public std::runtime_error {
public:
    /// @param subject the file (or the name) that the failure is about, UTF-8
    Failure(std::string subject, const std::string& what)
        : std::runtime_error(what), m_subject(std::move(subject)) {}

    const std::string& subject() const { return m_subject; }

private:
    std::string m_subject;
};

} // namespace taldork::cli
