#include "dwg/file_version.h"

#include "dwg/file_error.h"

#include <cstring>
#include <string>

namespace embedded::dwg {
namespace {

struct KnownVersion {
    const char* mark;
    const char* release;
    FileError::Kind kind;
};

const char kSupported[] = "AC1015";

const KnownVersion kOthers[] = {
    {"AC1002", "2.5", FileError::kOlderVersion},   {"AC1003", "2.6", FileError::kOlderVersion},
    {"AC1004", "9", FileError::kOlderVersion},     {"AC1006", "10", FileError::kOlderVersion},
    {"AC1009", "11/12", FileError::kOlderVersion}, {"AC1012", "13", FileError::kOlderVersion},
    {"AC1014", "14", FileError::kOlderVersion},    {"AC1018", "2004", FileError::kNewerVersion},
    {"AC1021", "2007", FileError::kNewerVersion},  {"AC1024", "2010", FileError::kNewerVersion},
    {"AC1027", "2013", FileError::kNewerVersion},  {"AC1032", "2018", FileError::kNewerVersion},
};

bool isMark(const std::string& mark) {
    return mark.size() == 6 && mark.compare(0, 2, "AC") == 0 &&
           mark.find_first_not_of("0123456789", 2) == std::string::npos;
}

[[noreturn]] void refuse(FileError::Kind kind, const std::string& name) {
    throw FileError(kind, "drawing version " + name + " is not supported; only AC1015 (2000) is");
}

} // namespace

FileVersion versionOf(ByteSpan file) {
    if (file.empty())
        throw FileError(FileError::kForeign, "the file is empty");
    const std::string mark(file.begin(), file.begin() + (file.size < 6 ? file.size : 6));
    if (mark == kSupported)
        return FileVersion::kR2000;
    for (const KnownVersion& other : kOthers) {
        if (mark == other.mark)
            refuse(other.kind, mark + " (" + other.release + ")");
    }
    if (!isMark(mark))
        throw FileError(FileError::kForeign, "the file is not a drawing");
    refuse(mark < kSupported ? FileError::kOlderVersion : FileError::kNewerVersion, mark);
}

} // namespace embedded::dwg
