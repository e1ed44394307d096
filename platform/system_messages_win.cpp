#include "platform/system_messages.h"

#include <windows.h>

namespace platform {

std::wstring systemMessage(int error) {
    wchar_t text[1024];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  static_cast<DWORD>(error), 0, text, 1024, nullptr);
    while (length > 0 && (text[length - 1] == L'\n' || text[length - 1] == L'\r' || text[length - 1] == L' '))
        --length;
    return length > 0 ? std::wstring(text, length) : L"error " + std::to_wstring(error);
}

} // namespace platform
