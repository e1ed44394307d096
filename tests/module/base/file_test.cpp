#include "base/file.h"

#include "platform/files.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <locale>
#include <string>

using orv::filesystem::file;
using testing_support::ReportRecorder;

namespace {

class File : public testing::Test {
protected:
    orv::path at(const std::wstring& name) const {
        orv::path p;
        p.full = platform::joinPath(m_folder, name);
        return p;
    }
    orv::path write(const std::string& content, const std::wstring& name = L"text.txt") {
        const orv::path p = at(name);
        EXPECT_TRUE(platform::replaceFile(p.full, content.data(), content.size()));
        return p;
    }
    std::wstring lines(const std::string& content) { return file::get_contents_as_text(write(content), 0); }
    std::wstring joined(const std::string& content) { return file::get_contents_as_text(write(content), 1); }

    std::wstring m_folder = platform::makeTemporaryFolder();
    ReportRecorder m_reports;
};

// The program's locale, put back at the end.
class ProgramLocale {
public:
    explicit ProgramLocale(const std::locale& locale) : m_before(std::locale::global(locale)) {}
    ~ProgramLocale() { std::locale::global(m_before); }

private:
    std::locale m_before;
};

} // namespace

TEST_F(File, ExistsForFilesAndFolders) {
    EXPECT_TRUE(file::exists(write("a")));
    EXPECT_TRUE(file::exists(at(L"")));
    EXPECT_FALSE(file::exists(at(L"missing")));
    EXPECT_FALSE(file::exists(orv::path()));
}

TEST_F(File, LooksAtTheWholePathOnly) {
    orv::path p = write("a");
    p.directory = p.name = L"missing";
    EXPECT_TRUE(file::exists(p));
    p.name = p.full;
    p.full.clear();
    EXPECT_FALSE(file::exists(p));
}

TEST_F(File, RemovesAFileOnce) {
    const orv::path p = write("a");
    EXPECT_TRUE(file::remove(p));
    EXPECT_FALSE(file::exists(p));
    EXPECT_FALSE(file::remove(p));
}

TEST_F(File, RemovesNoMissingFileAndNoFolder) {
    EXPECT_FALSE(file::remove(at(L"missing")));
    EXPECT_FALSE(file::remove(orv::path()));
    EXPECT_TRUE(platform::makeFolders(at(L"folder").full));
    EXPECT_FALSE(file::remove(at(L"folder")));
    EXPECT_TRUE(file::exists(at(L"folder")));
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(File, NamesBeyondPlainLettersAreFound) {
    const orv::path p = write("a", L"Tr\u00e4ger \u03b1.txt");
    EXPECT_TRUE(file::exists(p));
    EXPECT_EQ(file::get_contents_as_text(p, 0), L"a");
    EXPECT_TRUE(file::remove(p));
}

TEST_F(File, LinesAreJoinedByALineFeedOrRunTogether) {
    EXPECT_EQ(lines("a\nb"), L"a\nb");
    EXPECT_EQ(joined("a\nb"), L"ab");
    EXPECT_EQ(lines("a\nb\n"), L"a\nb") << "none at the end";
    EXPECT_EQ(joined("a\nb\n"), L"ab");
}

TEST_F(File, EmptyLinesAtTheBeginningAreDroppedAndOthersAreNot) {
    EXPECT_EQ(lines("\nb"), L"b");
    EXPECT_EQ(lines("\n\n\nb\n\nc\n\n"), L"b\n\nc\n");
    EXPECT_EQ(lines("\n\n"), L"");
    EXPECT_EQ(joined("\nb\n\nc\n"), L"bc");
}

TEST_F(File, OnlyBit0OfTheFlagsCounts) {
    const orv::path p = write("a\nb");
    EXPECT_EQ(file::get_contents_as_text(p, ~1u), L"a\nb");
    EXPECT_EQ(file::get_contents_as_text(p, ~0u), L"ab");
}

TEST_F(File, AnEmptyFileGivesAnEmptyText) {
    EXPECT_EQ(lines(""), L"");
    EXPECT_EQ(joined(""), L"");
}

TEST_F(File, AMissingFileAndAFolderGiveAnEmptyTextAndNoReport) {
    EXPECT_EQ(file::get_contents_as_text(at(L"missing"), 0), L"");
    EXPECT_EQ(file::get_contents_as_text(orv::path(), 0), L"");
    EXPECT_EQ(file::get_contents_as_text(at(L""), 0), L"");
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(File, ALineOfAnyLengthIsWhole) {
    const std::string line(100000, 'x');
    EXPECT_EQ(lines(line + "\n" + line), std::wstring(100000, L'x') + L"\n" + std::wstring(100000, L'x'));
}

TEST_F(File, TabsAndBlanksStay) { EXPECT_EQ(lines(" a\t\n \n"), L" a\t\n "); }

#ifndef _WIN32
// Where a system ends its lines with a line feed alone, a carriage return is a character like others.
TEST_F(File, ACarriageReturnStaysWithItsLine) {
    EXPECT_EQ(lines("a\r\nb\r\n"), L"a\r\nb\r");
    EXPECT_EQ(lines("\r\nb"), L"\r\nb") << "the first line is not empty";
    EXPECT_EQ(joined("a\r\nb"), L"a\rb");
}

TEST_F(File, CharactersAreThoseOfTheProgramsLocale) {
    const ProgramLocale utf8(std::locale("C.UTF-8"));
    EXPECT_EQ(lines("Tr\xc3\xa4ger\n\xce\xb1"), L"Tr\u00e4ger\n\u03b1");
    EXPECT_EQ(lines("\xef\xbb\xbf"
                    "a"),
              L"\ufeff"
              L"a")
        << "a byte order mark stays";
}
#endif
