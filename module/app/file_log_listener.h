#pragma once

#include "app/log_listener.h"
#include "base/export.h"

#include <fstream>
#include <string>

namespace orv {

// Writes a line per message into a file, and each at once to the disk, so that it survives a crash of the
// host:
// "[document] [channel] LEVEL : message".
class TALDORK_API FileLogListener : public ILogListener {
public:
    // Empties the file. Others may read it meanwhile. If it cannot be opened, all messages are ignored.
    explicit FileLogListener(const std::string& path);
    ~FileLogListener() override;

    void onLog(const std::string& document, const std::string& channel, LogLevel level,
               const std::string& message) override;

private:
    std::string m_path;
    std::ofstream m_file;
};

} // namespace orv
