#include "cli/common/handles.h"

#include "cli/common/failure.h"

#include "dbmain.h"
#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace taldork::cli {

std::optional<AcDbHandle> parseHandle(const std::string& text) {
    std::uint64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value, 16);
    if (result.ec != std::errc() || result.ptr != end || value == 0)
        return std::nullopt;
    return AcDbHandle(static_cast<Adesk::UInt64>(value));
}

std::string handleText(const AcDbObjectId& id) {
    wchar_t text[17];
    id.handle().getIntoAsciiBuffer(text);
    return platform::toUtf8(text);
}

std::string checkHandle(const std::string& text) {
    return parseHandle(text) ? "" : "'" + text + "' is no handle: write hexadecimal digits, as in 2A";
}

AcDbObjectId findObject(const Drawing& drawing, const std::string& handle) {
    const auto number = parseHandle(handle);
    AcDbObjectId id;
    if (!number || drawing.database().getAcDbObjectId(id, false, *number) != Acad::eOk ||
        id.objectClass() == nullptr || id.isErased())
        throw Failure(drawing.path(), "has no object with the handle " + handle);
    return id;
}

std::vector<AcDbObjectId> findObjects(const Drawing& drawing, const std::vector<std::string>& handles) {
    std::vector<AcDbObjectId> ids;
    for (const std::string& handle : handles) {
        const AcDbObjectId id = findObject(drawing, handle);
        if (std::find(ids.begin(), ids.end(), id) == ids.end())
            ids.push_back(id);
    }
    return ids;
}

} // namespace taldork::cli
