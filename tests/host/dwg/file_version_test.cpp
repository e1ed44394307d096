#include "dwg/file_version.h"

#include "dwg/file_error.h"

#include <gtest/gtest.h>

using namespace embedded::dwg;

namespace {

struct Refusal {
    FileError::Kind kind;
    std::string text;
};

Refusal refusalOf(const std::string& begin) {
    const Bytes bytes(begin.begin(), begin.end());
    try {
        versionOf(bytes);
    } catch (const FileError& error) {
        return {error.kind(), error.what()};
    }
    return {FileError::kDamaged, "none"};
}

} // namespace

TEST(FileVersion, The2000FormatIsRead) {
    const Bytes bytes = {'A', 'C', '1', '0', '1', '5', 0};
    EXPECT_EQ(versionOf(bytes), FileVersion::kR2000);
}

TEST(FileVersion, OthersAreRefusedByNameInOneLine) {
    const struct {
        const char* mark;
        FileError::Kind kind;
        const char* text;
    } rows[] = {
        {"AC1032", FileError::kNewerVersion,
         "drawing version AC1032 (2018) is not supported; only AC1015 (2000) is"},
        {"AC1018", FileError::kNewerVersion,
         "drawing version AC1018 (2004) is not supported; only AC1015 (2000) is"},
        {"AC1014", FileError::kOlderVersion,
         "drawing version AC1014 (14) is not supported; only AC1015 (2000) is"},
        {"AC1009", FileError::kOlderVersion,
         "drawing version AC1009 (11/12) is not supported; only AC1015 (2000) is"},
        {"AC1099", FileError::kNewerVersion,
         "drawing version AC1099 is not supported; only AC1015 (2000) is"},
    };
    for (const auto& row : rows) {
        const Refusal refusal = refusalOf(std::string(row.mark) + std::string(100, '\0'));
        EXPECT_EQ(refusal.kind, row.kind) << row.mark;
        EXPECT_EQ(refusal.text, row.text);
    }
}

TEST(FileVersion, ForeignAndEmptyFilesAreNoDrawings) {
    EXPECT_EQ(refusalOf("").text, "the file is empty");
    for (const char* begin : {"A", "AC10", "%PDF-1.4", "ACxx15",
                              "\x7F"
                              "ELF..."}) {
        EXPECT_EQ(refusalOf(begin).text, "the file is not a drawing") << begin;
        EXPECT_EQ(refusalOf(begin).kind, FileError::kForeign);
    }
}
