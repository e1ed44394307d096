#include "platform/files.h"

#include "platform/system_messages.h"

#include <system_error>

namespace platform {

namespace {

FileResult failed(const wchar_t* what, const std::wstring& path, int error) {
    return {error, std::wstring(what) + L" '" + path + L"': " + systemMessage(error)};
}

// The name beside `path` that no file has yet, opened for writing.
int createBeside(const std::wstring& path, std::wstring& beside, FileCalls::File& file) {
    const int kTries = 1000;
    for (int number = 0;; ++number) {
        beside = path + L".new" + (number == 0 ? L"" : std::to_wstring(number));
        const int error = fileCalls().createFile(beside, path, file);
        if (error == 0)
            return 0;
        if (!fileExists(beside) || number == kTries) {
            beside.clear();
            return error;
        }
    }
}

int writeAll(FileCalls::File file, const void* bytes, std::size_t size) {
    const char* at = static_cast<const char*>(bytes);
    while (size > 0) {
        std::size_t done = 0;
        if (const int error = fileCalls().write(file, at, size, done))
            return error;
        if (done == 0)
            return static_cast<int>(std::errc::io_error);
        at += done;
        size -= done;
    }
    return 0;
}

// Writes a whole new file to the disk beside `path`. The name stays empty if none was made.
int writeBeside(const std::wstring& path, const void* bytes, std::size_t size, std::wstring& beside) {
    FileCalls::File file = -1;
    if (const int error = createBeside(path, beside, file))
        return error;
    int error = writeAll(file, bytes, size);
    if (error == 0)
        error = fileCalls().flush(file);
    const int closing = fileCalls().close(file);
    return error != 0 ? error : closing;
}

// The file is read to its end, not to the size that it told first: it may have changed in between.
int readAll(FileCalls::File file, std::vector<unsigned char>& bytes) {
    std::uint64_t size = 0;
    if (const int error = fileCalls().size(file, size))
        return error;
    if (size > bytes.max_size())
        return static_cast<int>(std::errc::not_enough_memory);
    bytes.resize(static_cast<std::size_t>(size) + 1);
    for (std::size_t have = 0;;) {
        std::size_t done = 0;
        if (const int error = fileCalls().read(file, bytes.data() + have, bytes.size() - have, done))
            return error;
        have += done;
        if (done == 0) {
            bytes.resize(have);
            return 0;
        }
        if (have == bytes.size())
            bytes.resize(have * 2);
    }
}

bool isSlash(wchar_t character) { return character == L'/' || character == L'\\'; }

std::size_t lastSlash(const std::wstring& path) {
    std::size_t at = path.size();
    while (at > 0 && !isSlash(path[at - 1]))
        --at;
    return at;
}

} // namespace

FileResult readFile(const std::wstring& path, std::vector<unsigned char>& bytes) {
    bytes.clear();
    FileCalls::File file = -1;
    if (const int error = fileCalls().openForReading(path, file))
        return failed(L"cannot open", path, error);
    int error = 0;
    try {
        error = readAll(file, bytes);
    } catch (const std::bad_alloc&) {
        error = static_cast<int>(std::errc::not_enough_memory);
    }
    fileCalls().close(file);
    if (error == 0)
        return {};
    bytes.clear();
    return failed(L"cannot read", path, error);
}

FileResult replaceFile(const std::wstring& path, const void* bytes, std::size_t size) {
    const std::wstring target = realPath(path);
    // A rename would take a device or a pipe away and leave a file in its place.
    if (fileExists(target) && !isOrdinaryFile(target))
        return {static_cast<int>(std::errc::invalid_argument),
                L"cannot write '" + path + L"': it is no ordinary file"};
    std::wstring beside;
    int error = writeBeside(target, bytes, size, beside);
    if (error == 0)
        error = fileCalls().rename(beside, target);
    if (error != 0) {
        if (!beside.empty())
            fileCalls().remove(beside);
        return failed(L"cannot write", path, error);
    }
    error = fileCalls().flushFolder(systemFolderOf(target));
    return error == 0 ? FileResult{} : failed(L"written, but not known to be on the disk:", path, error);
}

FileResult removeFile(const std::wstring& path) {
    const int error = fileCalls().remove(path);
    return error == 0 ? FileResult{} : failed(L"cannot remove", path, error);
}

std::wstring folderOf(const std::wstring& path) {
    const std::size_t at = lastSlash(path);
    return at <= 1 ? path.substr(0, at) : path.substr(0, at - 1);
}

std::wstring bareNameOf(const std::wstring& path) { return path.substr(lastSlash(path)); }

std::wstring joinPath(const std::wstring& folder, const std::wstring& name) {
    return folder.empty() || isSlash(folder.back()) ? folder + name : folder + L"/" + name;
}

} // namespace platform
