#pragma once

#include "platform/export.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace platform {

// The system calls that files are read and written with, so that a test can make any of them fail, or stop
// the world in front of it. All answer 0 or the system's error number. Paths are wide; `file` is what an open
// gave.
class PLATFORM_API FileCalls {
public:
    using File = std::intptr_t;

    virtual ~FileCalls();

    virtual int openForReading(const std::wstring& path, File& file);
    // Fails if there is such a file. `like` is the file whose permissions the new one gets, empty for the
    // usual ones.
    virtual int createFile(const std::wstring& path, const std::wstring& like, File& file);
    virtual int size(File file, std::uint64_t& bytes);
    // `done` may be less than `bytes`; 0 at the end of the file.
    virtual int read(File file, void* buffer, std::size_t bytes, std::size_t& done);
    virtual int write(File file, const void* buffer, std::size_t bytes, std::size_t& done);
    virtual int flush(File file);
    virtual int close(File file);
    // Replaces what has the new name, in one step.
    virtual int rename(const std::wstring& from, const std::wstring& to);
    virtual int remove(const std::wstring& path);
    virtual int flushFolder(const std::wstring& folder);
};

// Puts other calls in place of the system's; null puts those back. Belongs to the caller, who keeps it alive.
PLATFORM_API void setFileCalls(FileCalls* calls);
PLATFORM_API FileCalls& fileCalls();

} // namespace platform
