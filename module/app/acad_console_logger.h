#pragma once

#include "app/log_listener.h"
#include "base/export.h"

namespace orv {

// Prints errors and worse on the host's console, but for the channels that are of no use to its user. A
// percent sign in a message is a directive to the console.
class TALDORK_API AcadConsoleLogger : public ILogListener {
public:
    void onLog(const std::string& document, const std::string& channel, LogLevel level,
               const std::string& message) override;
};

} // namespace orv
