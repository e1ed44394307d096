#pragma once

#include "app/log_level.h"
#include "app/log_listener.h"
#include "base/export.h"

#include <boost/shared_ptr.hpp>

#include <map>
#include <set>
#include <string>

namespace orv {

// One channel: who hears of its messages. Listeners are called in the order of their pointers, each once per
// set.
class TALDORK_API Log {
public:
    // For every message. Null is ignored.
    void addListener(boost::shared_ptr<ILogListener> listener);
    // For messages of exactly that level. Must not be null.
    void addListener(LogLevel level, boost::shared_ptr<ILogListener> listener);

    // Hands the message to the listeners, then to those of the level; who stands in both places gets it
    // twice.
    void log(const std::string& channel, LogLevel level, const std::string& message);

private:
    using Listeners = std::set<boost::shared_ptr<ILogListener>>;

    Listeners m_listeners;
    std::map<LogLevel, Listeners> m_levelListeners;
};

// To a channel, and then, unless it is that, to "default" with the name of the first. Listeners are called
// before these return. What one throws comes out here, and who stands behind it does not hear the message.
TALDORK_API void log(const std::string& channel, LogLevel level, const std::string& message);
// To "default" only.
TALDORK_API void log(LogLevel level, const std::string& message);

// Adds a listener for all messages, and shares it until clearLogs; null is ignored, and who listens on a
// channel already is not added again. Channels come into being when they are first named. Without a name:
// "default". Not from inside onLog of the same channel.
TALDORK_API void addLogListener(const std::string& channel, boost::shared_ptr<ILogListener> listener);
TALDORK_API void addLogListener(boost::shared_ptr<ILogListener> listener);
// The same for a plain pointer: it is taken over, and deleted with the channel. Not twice for one listener.
TALDORK_API void addListener(const std::string& channel, ILogListener* listener);
TALDORK_API void addListener(ILogListener* listener);

// Forgets every channel with its listeners. A message that is being delivered still reaches its channel's.
TALDORK_API void clearLogs();

// Who tells the name of the present document; null for nobody, as at the start.
using DocumentNameFn = std::wstring (*)();
TALDORK_API void setGetAcApDocumentNameFn(DocumentNameFn fn);

namespace detail {
// Makes sure that the channels outlive what the caller is about to build: who logs at its end calls it at its
// start.
void keepLogs();
} // namespace detail

} // namespace orv
