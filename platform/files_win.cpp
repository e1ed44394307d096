#include "platform/files.h"

#include "platform/system_messages.h"
#include "platform/text.h"

#include <windows.h>

#include <algorithm>

namespace platform {

bool isOrdinaryFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

bool fileExists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool isFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

FileResult makeFolders(const std::wstring& path) {
    if (path.empty() || isFolder(path))
        return {};
    if (FileResult above = makeFolders(folderOf(path)); !above)
        return above;
    if (CreateDirectoryW(path.c_str(), nullptr) || isFolder(path))
        return {};
    const int error = static_cast<int>(GetLastError());
    return {error, L"cannot make folder '" + path + L"': " + systemMessage(error)};
}

std::vector<std::wstring> listFolder(const std::wstring& path) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(joinPath(path, L"*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    do {
        const std::wstring name = entry.cFileName;
        if (name != L"." && name != L"..")
            names.push_back(name);
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    std::sort(names.begin(), names.end());
    return names;
}

std::wstring realPath(const std::wstring& path) {
    wchar_t full[32768];
    const DWORD length = GetFullPathNameW(path.c_str(), 32768, full, nullptr);
    return length == 0 || length >= 32768 ? path : std::wstring(full, length);
}

std::wstring makeTemporaryFolder() {
    wchar_t base[MAX_PATH + 1];
    if (GetTempPathW(MAX_PATH + 1, base) == 0)
        return {};
    for (unsigned number = 0; number < 1000; ++number) {
        const std::wstring name = joinPath(base, L"taldork-" + std::to_wstring(GetTickCount64() + number));
        if (CreateDirectoryW(name.c_str(), nullptr))
            return name;
    }
    return {};
}

std::wstring systemFolderOf(const std::wstring& path) { return folderOf(path); }

std::wstring homeFolder() {
    std::wstring folder;
    return environmentVariable("USERPROFILE", folder) && !folder.empty() ? folder : L"\\";
}

bool environmentVariable(const char* name, std::wstring& value) {
    const std::wstring wideName = widen(name);
    SetLastError(ERROR_SUCCESS);
    const DWORD size = GetEnvironmentVariableW(wideName.c_str(), nullptr, 0);
    if (size == 0)
        return GetLastError() == ERROR_SUCCESS;
    value.resize(size);
    value.resize(GetEnvironmentVariableW(wideName.c_str(), value.data(), size));
    return true;
}

} // namespace platform
