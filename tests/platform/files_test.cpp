#include "platform/files.h"

#include "platform/system_messages.h"
#include "support/failing_file_calls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace {

using Bytes = std::vector<unsigned char>;

class Files : public testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(m_folder.empty()); }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    std::wstring in(const wchar_t* name) const { return platform::joinPath(m_folder, name); }

    void put(const std::wstring& path, const Bytes& bytes) {
        const platform::FileResult result = platform::replaceFile(path, bytes.data(), bytes.size());
        ASSERT_TRUE(result) << result.error;
    }
    Bytes get(const std::wstring& path) {
        Bytes bytes;
        EXPECT_TRUE(platform::readFile(path, bytes));
        return bytes;
    }

    const std::wstring m_folder = platform::makeTemporaryFolder();
    const Bytes m_old = Bytes(3000, 1);
    const Bytes m_new = Bytes(5000, 2);
};

TEST_F(Files, WritesAndReadsBack) {
    put(in(L"a"), m_new);
    EXPECT_EQ(get(in(L"a")), m_new);
    put(in(L"empty"), {});
    EXPECT_TRUE(get(in(L"empty")).empty());
    EXPECT_EQ(platform::listFolder(m_folder), (std::vector<std::wstring>{L"a", L"empty"}));
}

TEST_F(Files, NameOutsideAsciiIsKept) {
    put(in(L"Decke \u00E4\u4E2D"), m_old);
    EXPECT_EQ(platform::listFolder(m_folder), (std::vector<std::wstring>{L"Decke \u00E4\u4E2D"}));
}

TEST_F(Files, ReadingNothingTellsTheFileAndTheReason) {
    Bytes bytes(1);
    const platform::FileResult result = platform::readFile(in(L"none"), bytes);
    EXPECT_FALSE(result);
    EXPECT_TRUE(bytes.empty());
    EXPECT_NE(result.message.find(in(L"none")), std::wstring::npos);
    EXPECT_NE(result.message.find(platform::systemMessage(result.error)), std::wstring::npos);
}

TEST_F(Files, AFolderIsNoFile) {
    Bytes bytes;
    EXPECT_FALSE(platform::readFile(m_folder, bytes));
    EXPECT_FALSE(platform::replaceFile(m_folder, m_new.data(), m_new.size()));
    EXPECT_FALSE(platform::fileExists(m_folder + L".new"));
}

#ifndef _WIN32
TEST_F(Files, ADeviceIsNotReplacedByAFile) {
    EXPECT_TRUE(platform::fileExists(L"/dev/null"));
    EXPECT_FALSE(platform::isOrdinaryFile(L"/dev/null"));
    const platform::FileResult result = platform::replaceFile(L"/dev/null", m_new.data(), m_new.size());
    EXPECT_FALSE(result);
    EXPECT_NE(result.message.find(L"/dev/null"), std::wstring::npos);
    EXPECT_FALSE(platform::isOrdinaryFile(L"/dev/null"));
}
#endif

TEST_F(Files, AFailureAtAnyCallLeavesTheOldFile) {
    for (int call = 1;; ++call) {
        put(in(L"a"), m_old);
        platform::FileResult result;
        std::string struck;
        {
            tests::FailingFileCalls calls(call, tests::FailingFileCalls::kError);
            result = platform::replaceFile(in(L"a"), m_new.data(), m_new.size());
            if (!calls.hasStruck())
                break;
            struck = calls.struck();
        }
        SCOPED_TRACE(struck);
        EXPECT_EQ(result.error, tests::FailingFileCalls::kIoError);
        EXPECT_NE(result.message.find(in(L"a")), std::wstring::npos);
        EXPECT_EQ(get(in(L"a")), struck == "flushFolder" ? m_new : m_old);
        EXPECT_EQ(platform::listFolder(m_folder), std::vector<std::wstring>{L"a"});
    }
    EXPECT_EQ(get(in(L"a")), m_new);
}

TEST_F(Files, DeathAtAnyCallLeavesTheOldOrTheNewFile) {
    int deaths = 0;
    for (bool struck = true; struck;) {
        std::filesystem::remove_all(m_folder);
        ASSERT_TRUE(platform::makeFolders(m_folder));
        put(in(L"a"), m_old);
        {
            tests::FailingFileCalls calls(deaths + 1, tests::FailingFileCalls::kDeath);
            platform::replaceFile(in(L"a"), m_new.data(), m_new.size());
            struck = calls.hasStruck();
        }
        const Bytes left = get(in(L"a"));
        EXPECT_TRUE(left == m_old || left == m_new) << "death " << deaths;
        deaths += struck;
    }
    // Create, write, flush, close, rename and flush of the folder at the least.
    EXPECT_GE(deaths, 6);
}

TEST_F(Files, WhatADeathLeftBehindIsNoHindrance) {
    put(in(L"a"), m_old);
    put(in(L"a.new"), {7});
    put(in(L"a"), m_new);
    EXPECT_EQ(get(in(L"a")), m_new);
    EXPECT_EQ(get(in(L"a.new")), Bytes{7});
}

TEST_F(Files, PermissionsStayWithTheName) {
    put(in(L"a"), m_old);
    const auto rights = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    std::filesystem::permissions(in(L"a"), rights);
    put(in(L"a"), m_new);
    EXPECT_EQ(std::filesystem::status(in(L"a")).permissions(), rights);
}

TEST_F(Files, ALinkIsFollowed) {
    put(in(L"a"), m_old);
    std::filesystem::create_symlink(in(L"a"), in(L"link"));
    put(in(L"link"), m_new);
    EXPECT_TRUE(std::filesystem::is_symlink(in(L"link")));
    EXPECT_EQ(get(in(L"a")), m_new);
}

TEST_F(Files, ReadsThatComeInPiecesArePutTogether) {
    class Pieces : public platform::FileCalls {
    public:
        Pieces() { platform::setFileCalls(this); }
        ~Pieces() override { platform::setFileCalls(nullptr); }
        int read(File file, void* buffer, std::size_t bytes, std::size_t& done) override {
            return FileCalls::read(file, buffer, std::min<std::size_t>(bytes, 7), done);
        }
        int write(File file, const void* buffer, std::size_t bytes, std::size_t& done) override {
            return FileCalls::write(file, buffer, std::min<std::size_t>(bytes, 11), done);
        }
        // As a file that grows after it was asked.
        int size(File, std::uint64_t& bytes) override {
            bytes = 10;
            return 0;
        }
    } pieces;
    put(in(L"a"), m_new);
    EXPECT_EQ(get(in(L"a")), m_new);
}

TEST_F(Files, ExistsAndRemove) {
    put(in(L"a"), m_old);
    EXPECT_TRUE(platform::fileExists(in(L"a")));
    EXPECT_FALSE(platform::isFolder(in(L"a")));
    EXPECT_TRUE(platform::isFolder(m_folder));
    EXPECT_TRUE(platform::removeFile(in(L"a")));
    EXPECT_FALSE(platform::fileExists(in(L"a")));
    EXPECT_FALSE(platform::removeFile(in(L"a")));
}

TEST_F(Files, FoldersAreMadeWithThoseAbove) {
    EXPECT_TRUE(platform::makeFolders(in(L"x/y/z")));
    EXPECT_TRUE(platform::isFolder(in(L"x/y/z")));
    EXPECT_TRUE(platform::makeFolders(in(L"x/y/z")));
    put(in(L"a"), m_old);
    EXPECT_FALSE(platform::makeFolders(in(L"a/b")));
}

TEST(Paths, BothSlashesCount) {
    EXPECT_EQ(platform::folderOf(L"C:\\a/b\\c.dbx"), L"C:\\a/b");
    EXPECT_EQ(platform::bareNameOf(L"C:\\a/b\\c.dbx"), L"c.dbx");
    EXPECT_EQ(platform::folderOf(L"c.dbx"), L"");
    EXPECT_EQ(platform::folderOf(L"/c.dbx"), L"/");
    EXPECT_EQ(platform::joinPath(L"", L"c"), L"c");
    EXPECT_EQ(platform::joinPath(L"a", L"c"), L"a/c");
    EXPECT_EQ(platform::joinPath(L"a\\", L"c"), L"a\\c");
}

TEST(SystemMessage, HasWordsForEveryNumber) {
    EXPECT_NE(platform::systemMessage(2), platform::systemMessage(13));
    EXPECT_FALSE(platform::systemMessage(987654).empty());
}

} // namespace
