#include "app/log.h"

#include "platform/cstring.h"

#include <boost/make_shared.hpp>

#include <utility>

namespace orv {

namespace {

using Channels = std::map<std::string, boost::shared_ptr<Log>>;

constexpr const char* kDefault = "default";
DocumentNameFn s_documentName = nullptr;

Channels& channels() {
    static Channels s_channels;
    return s_channels;
}

// Shared with the caller: clearLogs in a listener must not end the channel that is delivering.
boost::shared_ptr<Log> channelOf(const std::string& name) {
    boost::shared_ptr<Log>& channel = channels()[name];
    if (!channel)
        channel = boost::make_shared<Log>();
    return channel;
}

std::string documentName() {
    if (s_documentName == nullptr)
        return std::string();
    return std::string(CStringA(s_documentName().c_str()).GetString());
}

} // namespace

ILogListener::~ILogListener() = default;

std::wstring to_string(LogLevel level) {
    switch (static_cast<int>(level)) {
    case kLogInfo:
        return L"INFO";
    case kLogWarning:
        return L"WARNING";
    case kLogDebug:
        return L"DEBUG";
    case kLogError:
        return L"ERROR";
    case kLogFatal:
        return L"FATAL";
    default:
        return L"unknown";
    }
}

void Log::addListener(boost::shared_ptr<ILogListener> listener) {
    if (listener)
        m_listeners.insert(std::move(listener));
}

void Log::addListener(LogLevel level, boost::shared_ptr<ILogListener> listener) {
    m_levelListeners[level].insert(std::move(listener));
}

void Log::log(const std::string& channel, LogLevel level, const std::string& message) {
    const std::string document = documentName();
    for (const auto& listener : m_listeners)
        listener->onLog(document, channel, level, message);
    const auto found = m_levelListeners.find(level);
    if (found == m_levelListeners.end())
        return;
    for (const auto& listener : found->second)
        listener->onLog(document, channel, level, message);
}

void log(const std::string& channel, LogLevel level, const std::string& message) {
    channelOf(channel)->log(channel, level, message);
    if (channel != kDefault)
        channelOf(kDefault)->log(channel, level, message);
}

void log(LogLevel level, const std::string& message) { channelOf(kDefault)->log(kDefault, level, message); }

void addLogListener(const std::string& channel, boost::shared_ptr<ILogListener> listener) {
    channelOf(channel)->addListener(std::move(listener));
}

void addLogListener(boost::shared_ptr<ILogListener> listener) {
    addLogListener(kDefault, std::move(listener));
}

void addListener(const std::string& channel, ILogListener* listener) {
    addLogListener(channel, boost::shared_ptr<ILogListener>(listener));
}

void addListener(ILogListener* listener) { addListener(kDefault, listener); }

void clearLogs() {
    // Emptied before the listeners end, so that one that logs at its end finds a whole table.
    const Channels ended = std::exchange(channels(), Channels());
}

void setGetAcApDocumentNameFn(DocumentNameFn fn) { s_documentName = fn; }

namespace detail {

void keepLogs() { channels(); }

} // namespace detail

} // namespace orv
