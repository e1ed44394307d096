#pragma once

#include "app/log.h"

#include <boost/make_shared.hpp>

#include <string>
#include <vector>

namespace testing_support {

// Gathers the messages of one channel while it lives, as "3 text". Its end forgets all listeners.
class LogRecorder {
public:
    explicit LogRecorder(const std::string& channel) : m_listener(boost::make_shared<Listener>()) {
        orv::addLogListener(channel, m_listener);
    }
    ~LogRecorder() { orv::clearLogs(); }

    LogRecorder(const LogRecorder&) = delete;
    LogRecorder& operator=(const LogRecorder&) = delete;

    const std::vector<std::string>& messages() const { return m_listener->messages; }
    void clear() { m_listener->messages.clear(); }

private:
    struct Listener : orv::ILogListener {
        void onLog(const std::string&, const std::string&, orv::LogLevel level,
                   const std::string& message) override {
            messages.push_back(std::to_string(static_cast<int>(level)) + " " + message);
        }
        std::vector<std::string> messages;
    };
    boost::shared_ptr<Listener> m_listener;
};

} // namespace testing_support
