#pragma once

#include <boost/filesystem/path.hpp>

#include <string>

namespace orv {

// Between wide text and the file system's paths. Not left to the library, whose conversion depends on the
// locale that happens to be set.
boost::filesystem::path toFilePath(const std::wstring& text);
std::wstring toWide(const boost::filesystem::path& path);

} // namespace orv
