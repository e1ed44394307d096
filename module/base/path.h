#pragma once

#include <string>

namespace orv {

// A file's path and its parts.
struct path {
    std::wstring full;
    std::wstring drive;
    std::wstring directory;
    std::wstring name; // bare name of the file
    std::wstring extension;
};

} // namespace orv
