#pragma once

#include "app/log_level.h"
#include "base/export.h"

#include <boost/noncopyable.hpp>

#include <string>

namespace orv {

// Hears of messages. May throw, which ends the delivery; may not add or remove listeners of the channel that
// calls.
class TALDORK_API ILogListener : boost::noncopyable {
public:
    virtual ~ILogListener();
    virtual void onLog(const std::string& document, const std::string& channel, LogLevel level,
                       const std::string& message) = 0;
};

} // namespace orv
