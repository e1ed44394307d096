#include "platform/file_calls.h"

#include <windows.h>

namespace platform {

namespace {

HANDLE handle(FileCalls::File file) { return reinterpret_cast<HANDLE>(file); }
int outcome(BOOL done) { return done ? 0 : static_cast<int>(GetLastError()); }

int opened(HANDLE result, FileCalls::File& file) {
    file = reinterpret_cast<FileCalls::File>(result);
    return outcome(result != INVALID_HANDLE_VALUE);
}

DWORD oneStep(std::size_t bytes) { return bytes > 0x40000000 ? 0x40000000 : static_cast<DWORD>(bytes); }

} // namespace

int FileCalls::openForReading(const std::wstring& path, File& file) {
    return opened(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr),
                  file);
}

// A new file inherits its rights from the folder; there is nothing to take over from `like`.
int FileCalls::createFile(const std::wstring& path, const std::wstring&, File& file) {
    return opened(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr),
        file);
}

int FileCalls::size(File file, std::uint64_t& bytes) {
    LARGE_INTEGER length{};
    const int error = outcome(GetFileSizeEx(handle(file), &length));
    bytes = static_cast<std::uint64_t>(length.QuadPart);
    return error;
}

int FileCalls::read(File file, void* buffer, std::size_t bytes, std::size_t& done) {
    DWORD count = 0;
    const int error = outcome(ReadFile(handle(file), buffer, oneStep(bytes), &count, nullptr));
    done = count;
    return error;
}

int FileCalls::write(File file, const void* buffer, std::size_t bytes, std::size_t& done) {
    DWORD count = 0;
    const int error = outcome(WriteFile(handle(file), buffer, oneStep(bytes), &count, nullptr));
    done = count;
    return error;
}

int FileCalls::flush(File file) { return outcome(FlushFileBuffers(handle(file))); }
int FileCalls::close(File file) { return outcome(CloseHandle(handle(file))); }

int FileCalls::rename(const std::wstring& from, const std::wstring& to) {
    return outcome(MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

int FileCalls::remove(const std::wstring& path) { return outcome(DeleteFileW(path.c_str())); }

// The rename was written through already.
int FileCalls::flushFolder(const std::wstring&) { return 0; }

} // namespace platform
