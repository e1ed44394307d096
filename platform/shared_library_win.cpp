#include "platform/shared_library.h"

#include "platform/system_messages.h"

#include <windows.h>

namespace platform {

ModuleHandle openLibrary(const std::wstring& path, std::wstring& failure) {
    const HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    failure = module == nullptr ? systemMessage(static_cast<int>(GetLastError())) : std::wstring();
    return module;
}

void* librarySymbol(ModuleHandle module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

ModuleHandle moduleHandle(const wchar_t* fileName) { return GetModuleHandleW(fileName); }

std::size_t moduleFileName(ModuleHandle module, wchar_t* buffer, std::size_t size) {
    return GetModuleFileNameW(static_cast<HMODULE>(module), buffer, static_cast<DWORD>(size));
}

std::wstring modulePath(ModuleHandle module) {
    std::wstring path(32768, L'\0');
    path.resize(moduleFileName(module, path.data(), path.size()));
    return path;
}

std::wstring modulePathOfAddress(const void* address) {
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            static_cast<const wchar_t*>(address), &module))
        return {};
    return modulePath(module);
}

std::wstring programPath() { return modulePath(nullptr); }

} // namespace platform
