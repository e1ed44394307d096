#pragma once

#include "dwg/byte_span.h"
#include "platform/files.h"
#include "platform/registry.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

// The drawings beside the project that CAD products wrote; TALDORK_DRAWINGS names their folder.
inline std::string drawingFile(const std::string& name) { return std::string(TALDORK_DRAWINGS) + "/" + name; }

inline embedded::dwg::Bytes bytesOfFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return embedded::dwg::Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void writeFile(const std::string& path, const embedded::dwg::Bytes& bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

#define NEED_DRAWING(NAME)                                                                                   \
    if (!std::filesystem::exists(drawingFile(NAME)))                                                         \
    GTEST_SKIP() << "no " << drawingFile(NAME)

// A folder of the test's own, and a registry in it.
class FolderFixture : public testing::Test {
protected:
    FolderFixture() : m_folder(platform::makeTemporaryFolder()) {
        platform::registry::setRegistryFile(platform::joinPath(m_folder, L"registry"));
    }
    ~FolderFixture() override {
        platform::registry::setRegistryFile(L"");
        std::filesystem::remove_all(m_folder);
    }

    std::wstring path(const std::wstring& name) const { return platform::joinPath(m_folder, name); }
    std::string narrowPath(const std::wstring& name) const { return platform::toUtf8(path(name)); }

    const std::wstring m_folder;
};

// The bytes of each object by handle, through a walk that shares nothing with the reader under test.
inline std::map<std::uint64_t, std::string> objectsOf(const embedded::dwg::Bytes& file) {
    std::map<std::uint64_t, std::string> objects;
    const auto longAt = [&](std::size_t at) {
        return std::uint64_t(file.at(at)) | std::uint64_t(file.at(at + 1)) << 8 |
               std::uint64_t(file.at(at + 2)) << 16 | std::uint64_t(file.at(at + 3)) << 24;
    };
    const std::size_t locator = 0x19 + 9 * 2;
    std::size_t at = longAt(locator + 1);
    while (true) {
        const std::size_t size = std::size_t(file.at(at)) << 8 | file.at(at + 1);
        const std::size_t stop = at + size;
        if (size == 2)
            return objects;
        std::uint64_t handle = 0;
        std::int64_t place = 0;
        for (at += 2; at < stop;) {
            for (int shift = 0;; shift += 7) {
                handle += std::uint64_t(file.at(at) & 0x7F) << shift;
                if ((file.at(at++) & 0x80) == 0)
                    break;
            }
            std::int64_t move = 0;
            int shift = 0;
            for (; (file.at(at) & 0x80) != 0; shift += 7)
                move |= std::int64_t(file.at(at++) & 0x7F) << shift;
            move |= std::int64_t(file.at(at) & 0x3F) << shift;
            place += (file.at(at++) & 0x40) != 0 ? -move : move;
            std::size_t body = static_cast<std::size_t>(place);
            std::size_t length = 0;
            for (int word = 0;; word += 15) {
                const unsigned value = file.at(body) | file.at(body + 1) << 8;
                body += 2;
                length |= std::size_t(value & 0x7FFF) << word;
                if ((value & 0x8000) == 0)
                    break;
            }
            objects[handle] = std::string(file.begin() + static_cast<std::ptrdiff_t>(body),
                                          file.begin() + static_cast<std::ptrdiff_t>(body + length));
        }
        at += 2;
    }
}
