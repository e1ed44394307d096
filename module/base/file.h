#pragma once

#include "base/export.h"
#include "base/path.h"

#include <string>

namespace orv::filesystem {

// What is needed of files. All of it is about the whole path in `path::full`.
struct TALDORK_API file {
    // There is nothing to assign.
    file& operator=(const file&) { return *this; }

    // Whether a file or a folder is there. False for an empty path.
    static bool exists(const path& p);
    // Whether a file was there and is gone now. Folders stay.
    static bool remove(const path& p);
    // The lines of a text file, with a line feed between them and none behind the last; empty lines at the
    // beginning are dropped. With bit 0 of `flags` the lines stand one behind the other with nothing between
    // them. Empty for a file that is not there or cannot be read. Characters and line ends are those that
    // wide streams of the system give in the program's locale; a byte order mark is a character like others.
    static std::wstring get_contents_as_text(const path& p, unsigned int flags);
};

} // namespace orv::filesystem
