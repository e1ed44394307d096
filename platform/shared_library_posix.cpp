#include "platform/shared_library.h"

#include "platform/files.h"
#include "platform/text.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <climits>
#include <cstring>
#include <map>
#include <mutex>

namespace platform {

namespace {

// A module in memory. Handles are the addresses of these, which stay for the life of the process.
struct Module {
    std::wstring path;
    void* library = nullptr; // for looking up names; opened at the first use
};

struct Modules {
    std::mutex guard;
    std::map<std::string, Module> byPath;
};

// Never destroyed: modules ask for their paths in the initialisers and the terminators of any library.
Modules& modules() {
    static Modules& all = *new Modules;
    return all;
}

Module* moduleAt(const std::string& path) {
    Modules& all = modules();
    const std::lock_guard<std::mutex> lock(all.guard);
    Module& module = all.byPath[path];
    if (module.path.empty())
        module.path = fromUtf8(path);
    return &module;
}

std::string absolute(const char* path) {
    char resolved[PATH_MAX];
    return realpath(path, resolved) != nullptr ? resolved : path;
}

struct Search {
    std::wstring name;
    std::string found;
};

int compareName(dl_phdr_info* info, std::size_t, void* data) {
    Search& search = *static_cast<Search*>(data);
    if (info->dlpi_name == nullptr || info->dlpi_name[0] == '\0' ||
        !equalNoCase(bareNameOf(fromUtf8(info->dlpi_name)), search.name))
        return 0;
    search.found = info->dlpi_name;
    return 1;
}

bool isModule(ModuleHandle handle) {
    Modules& all = modules();
    const std::lock_guard<std::mutex> lock(all.guard);
    for (const auto& entry : all.byPath)
        if (&entry.second == handle)
            return true;
    return false;
}

} // namespace

ModuleHandle openLibrary(const std::wstring& path, std::wstring& failure) {
    void* library = dlopen(toUtf8(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        const char* reason = dlerror();
        failure = reason == nullptr ? path : fromUtf8(reason);
        return nullptr;
    }
    link_map* map = nullptr;
    dlinfo(library, RTLD_DI_LINKMAP, &map);
    Module* module =
        moduleAt(absolute(map != nullptr && map->l_name[0] != '\0' ? map->l_name : toUtf8(path).c_str()));
    module->library = library;
    failure.clear();
    return module;
}

void* librarySymbol(ModuleHandle handle, const char* name) {
    if (!isModule(handle))
        return nullptr;
    Module& module = *static_cast<Module*>(handle);
    if (module.library == nullptr)
        module.library = dlopen(toUtf8(module.path).c_str(), RTLD_NOW | RTLD_NOLOAD);
    return module.library == nullptr ? nullptr : dlsym(module.library, name);
}

ModuleHandle moduleHandle(const wchar_t* fileName) {
    if (fileName == nullptr || *fileName == L'\0')
        return nullptr;
    Search search{bareNameOf(fileName), {}};
    dl_iterate_phdr(compareName, &search);
    return search.found.empty() ? nullptr : moduleAt(absolute(search.found.c_str()));
}

std::size_t moduleFileName(ModuleHandle module, wchar_t* buffer, std::size_t size) {
    if (size == 0)
        return 0;
    const std::wstring path = modulePath(module);
    const std::size_t length = path.size() < size ? path.size() : size - 1;
    path.copy(buffer, length);
    buffer[length] = L'\0';
    return length;
}

std::wstring modulePath(ModuleHandle module) {
    if (module == nullptr)
        return programPath();
    return isModule(module) ? static_cast<const Module*>(module)->path : std::wstring();
}

std::wstring modulePathOfAddress(const void* address) {
    Dl_info info;
    if (dladdr(address, &info) == 0 || info.dli_fname == nullptr)
        return {};
    return fromUtf8(absolute(info.dli_fname));
}

std::wstring programPath() {
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof(path));
    return length <= 0 ? std::wstring() : fromUtf8({path, static_cast<std::size_t>(length)});
}

} // namespace platform
