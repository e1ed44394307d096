#pragma once

#include "embedded/console.h"

#include <string>

namespace testing_support {

// Gathers all that is printed for the user while it lives.
class ConsoleRecorder {
public:
    ConsoleRecorder() {
        m_before = embedded::setConsoleSink([this](const std::wstring& printed) { m_text += printed; });
    }
    ~ConsoleRecorder() { embedded::setConsoleSink(m_before); }

    ConsoleRecorder(const ConsoleRecorder&) = delete;
    ConsoleRecorder& operator=(const ConsoleRecorder&) = delete;

    const std::wstring& text() const { return m_text; }

private:
    std::wstring m_text;
    embedded::ConsoleSink m_before;
};

} // namespace testing_support
