#include "platform/export.h"
#include "platform/shared_library.h"

#include <string>

namespace {

// What a static initialiser of a library sees of itself.
std::wstring ownPath() {
    wchar_t path[platform::kMaxModulePath];
    platform::moduleFileName(platform::moduleHandle(L"platform_test.dbx"), path);
    return path;
}

const std::wstring g_pathAtStart = ownPath();

} // namespace

PLATFORM_ENTRY int answer() { return 42; }
PLATFORM_ENTRY const wchar_t* pathAtStart() { return g_pathAtStart.c_str(); }
