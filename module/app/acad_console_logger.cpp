#include "app/acad_console_logger.h"

#include "acutads.h"
#include "platform/text.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace orv {

namespace {

constexpr const char* kSilentChannels[] = {"doc", "db", "sys", "MovedElementsReactor", "NamedSel"};

bool isSilent(const std::string& channel) {
    return std::any_of(std::begin(kSilentChannels), std::end(kSilentChannels),
                       [&](const char* silent) { return channel == silent; });
}

} // namespace

void AcadConsoleLogger::onLog(const std::string& /*document*/, const std::string& channel, LogLevel level,
                              const std::string& message) {
    if (message.empty() || level <= kLogDebug || isSilent(channel))
        return;
    std::wostringstream text;
    text << L"\n[" << platform::widen(channel) << L"] " << to_string(level) << L" : "
         << platform::widen(message);
    acutPrintf(text.str().c_str());
}

} // namespace orv
