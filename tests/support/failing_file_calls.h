#pragma once

#include "platform/file_calls.h"

#include <string>

namespace tests {

// The system's file calls, of which one fails; stands in their place for the life of the object.
class FailingFileCalls : public platform::FileCalls {
public:
    enum Manner {
        kError, // the one call does nothing and answers an error
        kDeath  // nothing at all happens from that call on, as after the end of the process
    };

    // `failing` counts from 1; 0 lets all calls pass.
    FailingFileCalls(int failing, Manner manner) : m_failing(failing), m_manner(manner) {
        platform::setFileCalls(this);
    }
    ~FailingFileCalls() override { platform::setFileCalls(nullptr); }

    int calls() const { return m_calls; }
    bool hasStruck() const { return m_failing != 0 && m_calls >= m_failing; }
    // The call that failed first, by name.
    const std::string& struck() const { return m_struck; }

    int openForReading(const std::wstring& path, File& file) override {
        return fails("openForReading") ? kIoError : FileCalls::openForReading(path, file);
    }
    int createFile(const std::wstring& path, const std::wstring& like, File& file) override {
        return fails("createFile") ? kIoError : FileCalls::createFile(path, like, file);
    }
    int size(File file, std::uint64_t& bytes) override {
        return fails("size") ? kIoError : FileCalls::size(file, bytes);
    }
    int read(File file, void* buffer, std::size_t bytes, std::size_t& done) override {
        return fails("read") ? kIoError : FileCalls::read(file, buffer, bytes, done);
    }
    // The one that fails leaves half of its bytes behind.
    int write(File file, const void* buffer, std::size_t bytes, std::size_t& done) override {
        const bool isFirst = !hasStruck();
        if (!fails("write"))
            return FileCalls::write(file, buffer, bytes, done);
        if (isFirst)
            FileCalls::write(file, buffer, bytes / 2, done);
        done = 0;
        return kIoError;
    }
    int flush(File file) override { return fails("flush") ? kIoError : FileCalls::flush(file); }
    // The system would close after a death too, and would have closed after an error.
    int close(File file) override {
        const bool failing = fails("close");
        const int error = FileCalls::close(file);
        return failing ? kIoError : error;
    }
    int rename(const std::wstring& from, const std::wstring& to) override {
        return fails("rename") ? kIoError : FileCalls::rename(from, to);
    }
    int remove(const std::wstring& path) override {
        return fails("remove") ? kIoError : FileCalls::remove(path);
    }
    int flushFolder(const std::wstring& folder) override {
        return fails("flushFolder") ? kIoError : FileCalls::flushFolder(folder);
    }

    static constexpr int kIoError = 5;

private:
    bool fails(const char* name) {
        ++m_calls;
        const bool struck = m_calls == m_failing || (m_manner == kDeath && hasStruck());
        if (struck && m_struck.empty())
            m_struck = name;
        return struck;
    }

    const int m_failing;
    const Manner m_manner;
    int m_calls = 0;
    std::string m_struck;
};

} // namespace tests
