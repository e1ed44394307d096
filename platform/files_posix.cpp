#include "platform/files.h"

#include "platform/system_messages.h"
#include "platform/text.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <dirent.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

bool look(const std::wstring& path, struct stat& status) {
    return ::stat(toUtf8(path).c_str(), &status) == 0;
}

} // namespace

bool isOrdinaryFile(const std::wstring& path) {
    struct stat status;
    return look(path, status) && S_ISREG(status.st_mode);
}

bool fileExists(const std::wstring& path) {
    struct stat status;
    return look(path, status);
}

bool isFolder(const std::wstring& path) {
    struct stat status;
    return look(path, status) && S_ISDIR(status.st_mode);
}

FileResult makeFolders(const std::wstring& path) {
    if (path.empty() || isFolder(path))
        return {};
    if (FileResult above = makeFolders(systemFolderOf(path)); !above)
        return above;
    // Another process may be making it at the same time.
    if (::mkdir(toUtf8(path).c_str(), 0777) == 0 || (errno == EEXIST && isFolder(path)))
        return {};
    const int error = errno;
    return {error, L"cannot make folder '" + path + L"': " + systemMessage(error)};
}

std::vector<std::wstring> listFolder(const std::wstring& path) {
    std::vector<std::wstring> names;
    DIR* folder = ::opendir(toUtf8(path).c_str());
    if (folder == nullptr)
        return names;
    while (const dirent* entry = ::readdir(folder)) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..")
            names.push_back(fromUtf8(name));
    }
    ::closedir(folder);
    std::sort(names.begin(), names.end());
    return names;
}

std::wstring realPath(const std::wstring& path) {
    char resolved[PATH_MAX];
    return ::realpath(toUtf8(path).c_str(), resolved) == nullptr ? path : fromUtf8(resolved);
}

std::wstring makeTemporaryFolder() {
    const char* base = std::getenv("TMPDIR");
    std::string name = std::string(base == nullptr || *base == '\0' ? "/tmp" : base) + "/taldork-XXXXXX";
    return ::mkdtemp(name.data()) == nullptr ? std::wstring() : fromUtf8(name);
}

std::wstring systemFolderOf(const std::wstring& path) {
    const std::size_t slash = path.rfind(L'/');
    return slash == std::wstring::npos ? std::wstring() : path.substr(0, slash == 0 ? 1 : slash);
}

std::wstring homeFolder() {
    std::wstring folder;
    if (environmentVariable("HOME", folder) && !folder.empty())
        return folder;
    const passwd* user = ::getpwuid(::getuid());
    return user == nullptr || user->pw_dir == nullptr || *user->pw_dir == '\0' ? L"/"
                                                                               : fromUtf8(user->pw_dir);
}

bool environmentVariable(const char* name, std::wstring& value) {
    const char* found = std::getenv(name);
    if (found == nullptr)
        return false;
    value = fromUtf8(found);
    return true;
}

} // namespace platform
