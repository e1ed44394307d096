#pragma once

#include "orvcore/co_stream.h"

#include <string>
#include <vector>

namespace testing_support {

// Gathers the lines of orvBeep that come while it lives.
class BeepRecorder {
public:
    BeepRecorder() {
        m_before = orvBeep.setSink([this](const std::wstring& line) { m_lines.push_back(line); });
    }
    ~BeepRecorder() { orvBeep.setSink(m_before); }

    BeepRecorder(const BeepRecorder&) = delete;
    BeepRecorder& operator=(const BeepRecorder&) = delete;

    const std::vector<std::wstring>& lines() const { return m_lines; }

private:
    std::vector<std::wstring> m_lines;
    ORV_COStream::Sink m_before;
};

} // namespace testing_support
