#include "platform/file_calls.h"

#include "platform/text.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

// Runs a system call until no signal interrupts it; 0 or the error number.
template <class Call>
int repeated(Call call) {
    for (;;) {
        if (call() >= 0)
            return 0;
        if (errno != EINTR)
            return errno;
    }
}

int descriptor(FileCalls::File file) { return static_cast<int>(file); }

} // namespace

int FileCalls::openForReading(const std::wstring& path, File& file) {
    return repeated(
        [&] { return static_cast<int>(file = ::open(toUtf8(path).c_str(), O_RDONLY | O_CLOEXEC)); });
}

int FileCalls::createFile(const std::wstring& path, const std::wstring& like, File& file) {
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    if (const int error =
            repeated([&] { return static_cast<int>(file = ::open(toUtf8(path).c_str(), flags, 0666)); }))
        return error;
    struct stat status;
    if (!like.empty() && ::stat(toUtf8(like).c_str(), &status) == 0) {
        // Another owner or group cannot always be kept; that is no reason to refuse the write.
        if (::fchown(descriptor(file), status.st_uid, status.st_gid) != 0)
            errno = 0;
        if (::fchmod(descriptor(file), status.st_mode & 07777) != 0)
            errno = 0;
    }
    return 0;
}

int FileCalls::size(File file, std::uint64_t& bytes) {
    struct stat status;
    if (::fstat(descriptor(file), &status) != 0)
        return errno;
    if (S_ISDIR(status.st_mode))
        return EISDIR;
    bytes = static_cast<std::uint64_t>(status.st_size);
    return 0;
}

int FileCalls::read(File file, void* buffer, std::size_t bytes, std::size_t& done) {
    ssize_t count = 0;
    const int error = repeated(
        [&] { return static_cast<int>((count = ::read(descriptor(file), buffer, bytes)) < 0 ? -1 : 0); });
    done = count > 0 ? static_cast<std::size_t>(count) : 0;
    return error;
}

int FileCalls::write(File file, const void* buffer, std::size_t bytes, std::size_t& done) {
    ssize_t count = 0;
    const int error = repeated(
        [&] { return static_cast<int>((count = ::write(descriptor(file), buffer, bytes)) < 0 ? -1 : 0); });
    done = count > 0 ? static_cast<std::size_t>(count) : 0;
    return error;
}

int FileCalls::flush(File file) {
    return repeated([&] { return ::fsync(descriptor(file)); });
}

// Not repeated: the descriptor is gone after an interruption too.
int FileCalls::close(File file) { return ::close(descriptor(file)) == 0 || errno == EINTR ? 0 : errno; }

int FileCalls::rename(const std::wstring& from, const std::wstring& to) {
    return ::rename(toUtf8(from).c_str(), toUtf8(to).c_str()) == 0 ? 0 : errno;
}

int FileCalls::remove(const std::wstring& path) { return ::unlink(toUtf8(path).c_str()) == 0 ? 0 : errno; }

int FileCalls::flushFolder(const std::wstring& folder) {
    const std::string name = folder.empty() ? std::string(".") : toUtf8(folder);
    int file = -1;
    if (const int error =
            repeated([&] { return file = ::open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }))
        return error;
    const int error = repeated([&] { return ::fsync(file); });
    ::close(file);
    // Some file systems cannot flush a folder and say so; there is nothing more to be had from them.
    return error == EINVAL ? 0 : error;
}

} // namespace platform
