#include "app/file_log_listener.h"

#include "platform/cstring.h"

namespace orv {

// The library's default for opening shares the file with everybody.
FileLogListener::FileLogListener(const std::string& path) : m_path(path), m_file(m_path, std::ios::out) {}

FileLogListener::~FileLogListener() = default;

void FileLogListener::onLog(const std::string& document, const std::string& channel, LogLevel level,
                            const std::string& message) {
    if (!m_file.is_open())
        return;
    m_file << "[" << document << "] [" << channel << "] " << CStringA(to_string(level).c_str()).GetString()
           << " : " << message << "\n";
    m_file.flush();
}

} // namespace orv
