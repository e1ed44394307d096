#pragma once

#include "platform/export.h"
#include "platform/file_calls.h"

#include <cstddef>
#include <string>
#include <vector>

namespace platform {

// How a file operation ended: 0, or the system's error number and a line that names the file.
struct FileResult {
    int error = 0;
    std::wstring message;

    explicit operator bool() const { return error == 0; }
};

// The whole of a file. `bytes` is empty after a failure.
PLATFORM_API FileResult readFile(const std::wstring& path, std::vector<unsigned char>& bytes);

// Puts a file of these bytes in the place of what is there, in one step: writes beside it, flushes to the
// disk, renames over it and flushes the folder. Whenever it ends or is interrupted, either the old or the new
// file stands there whole; after a failure it is the old one and nothing lies beside it, as far as the system
// lets that be cleaned up. The one exception is a failure to flush the folder, which is told with the new
// file in place. A folder, a device or a pipe is refused. A link is followed to its file, and the new file
// gets the old one's permissions.
PLATFORM_API FileResult replaceFile(const std::wstring& path, const void* bytes, std::size_t size);

// A file or folder of that name is there and can be looked at.
PLATFORM_API bool fileExists(const std::wstring& path);
// Whether it exists and holds bytes of its own: no folder, no device, no pipe.
PLATFORM_API bool isOrdinaryFile(const std::wstring& path);
PLATFORM_API bool isFolder(const std::wstring& path);
// Deletes a file; no folders.
PLATFORM_API FileResult removeFile(const std::wstring& path);
// Makes a folder and those above it; one that is there is no failure.
PLATFORM_API FileResult makeFolders(const std::wstring& path);
// The bare names in a folder, sorted; empty if it cannot be read.
PLATFORM_API std::vector<std::wstring> listFolder(const std::wstring& path);
// The path with its links resolved and from the root; the path itself where that fails.
PLATFORM_API std::wstring realPath(const std::wstring& path);
// A fresh folder of one's own below the system's place for temporary files; empty on failure.
PLATFORM_API std::wstring makeTemporaryFolder();

// The parts of a path; both kinds of slash count. The folder is without its last slash, empty if there is
// none.
PLATFORM_API std::wstring folderOf(const std::wstring& path);
PLATFORM_API std::wstring bareNameOf(const std::wstring& path);
// The folder as the system itself divides paths: off Windows a backslash is a letter of a name.
PLATFORM_API std::wstring systemFolderOf(const std::wstring& path);
PLATFORM_API std::wstring joinPath(const std::wstring& folder, const std::wstring& name);

// The user's own folder; the root where the system knows none.
PLATFORM_API std::wstring homeFolder();
// The value of an environment variable; false if it is not set.
PLATFORM_API bool environmentVariable(const char* name, std::wstring& value);

} // namespace platform
