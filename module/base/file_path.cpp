#include "base/file_path.h"

#include "platform/text.h"

#include <type_traits>

namespace orv {

namespace {

// Paths are of wide text on one system and of narrow text on the others.
template <class Native>
Native toNative(const std::wstring& text) {
    if constexpr (std::is_same_v<Native, std::wstring>)
        return text;
    else
        return platform::toSystem(text);
}

template <class Native>
std::wstring fromNative(const Native& native) {
    if constexpr (std::is_same_v<Native, std::wstring>)
        return native;
    else
        return platform::fromSystem(native);
}

} // namespace

boost::filesystem::path toFilePath(const std::wstring& text) {
    return boost::filesystem::path(toNative<boost::filesystem::path::string_type>(text));
}

std::wstring toWide(const boost::filesystem::path& path) { return fromNative(path.native()); }

} // namespace orv
