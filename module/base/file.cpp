#include "base/file.h"

#include "base/file_path.h"
#include "platform/files.h"

#include <boost/filesystem/fstream.hpp>

namespace orv::filesystem {

namespace {

constexpr unsigned int kLinesRunTogether = 1;

} // namespace

bool file::exists(const path& p) { return !p.full.empty() && platform::fileExists(p.full); }

bool file::remove(const path& p) { return exists(p) && platform::removeFile(p.full); }

std::wstring file::get_contents_as_text(const path& p, unsigned int flags) {
    std::wstring text;
    if (!exists(p))
        return text;
    boost::filesystem::wifstream stream(toFilePath(p.full));
    for (std::wstring line; std::getline(stream, line, stream.widen('\n'));) {
        if ((flags & kLinesRunTogether) == 0 && !text.empty())
            text += L'\n';
        text += line;
    }
    return text;
}

} // namespace orv::filesystem
