#include "platform/system_messages.h"

#include "platform/text.h"

#include <system_error>

namespace platform {

std::wstring systemMessage(int error) { return fromUtf8(std::generic_category().message(error)); }

} // namespace platform
