#include "rx/module_finder.h"

#include "embedded/linker.h"
#include "platform/files.h"
#include "platform/shared_library.h"
#include "platform/text.h"

#include <algorithm>

namespace embedded::rx {

namespace {

std::vector<std::wstring>& searchPath() {
    static std::vector<std::wstring> folders;
    return folders;
}

bool isModuleFile(const std::wstring& path) {
    return platform::fileExists(path) && !platform::isFolder(path);
}

// The file of that name in a folder; one whose name differs in case alone, if there is no other.
std::wstring fileIn(const std::wstring& folder, const std::wstring& name) {
    std::wstring exact = platform::joinPath(folder, name);
    if (isModuleFile(exact))
        return exact;
    for (const std::wstring& candidate : platform::listFolder(folder.empty() ? L"." : folder))
        if (platform::equalNoCase(candidate, name) && isModuleFile(platform::joinPath(folder, candidate)))
            return platform::joinPath(folder, candidate);
    return {};
}

std::wstring hostFolder() {
    static const std::wstring folder =
        platform::folderOf(platform::modulePathOfAddress(reinterpret_cast<const void*>(&findModule)));
    return folder;
}

bool isAbsolute(const std::wstring& path) {
    return path.front() == L'/' || (path.size() > 2 && path[1] == L':' && path[2] == L'/');
}

} // namespace

void setModuleSearchPath(std::vector<std::wstring> folders) { searchPath() = std::move(folders); }

std::wstring moduleKey(const std::wstring& name) {
    return platform::foldCase(std::wstring_view(platform::bareNameOf(name)));
}

std::wstring findModule(const std::wstring& name) {
    if (name.empty())
        return {};
    std::wstring path = name;
    std::replace(path.begin(), path.end(), L'\\', L'/');
    const std::wstring folder = platform::folderOf(path);
    const std::wstring bareName = platform::bareNameOf(path);
    std::vector<std::wstring> folders;
    if (!folder.empty())
        folders.push_back(folder);
    if (folder.empty() || !isAbsolute(path)) {
        folders.push_back(platform::joinPath(hostFolder(), folder));
        folders.push_back(platform::joinPath(platform::folderOf(platform::programPath()), folder));
        for (const std::wstring& searched : searchPath())
            folders.push_back(platform::joinPath(searched, folder));
    }
    for (const std::wstring& candidate : folders)
        if (std::wstring found = fileIn(candidate, bareName); !found.empty())
            return platform::realPath(found);
    return {};
}

} // namespace embedded::rx
