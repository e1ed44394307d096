#include "db/text/group_values.h"

#include "db/text/group_text.h"
#include "platform/text.h"

#include <limits>

namespace embedded::text {

namespace {

template <class Signed>
bool fits(std::int64_t value) {
    return value >= std::numeric_limits<Signed>::min() && value <= std::numeric_limits<Signed>::max();
}

template <class Signed, class Unsigned>
Fit setSized(Group& group, std::int64_t value, bool isUnsigned) {
    if (isUnsigned && value >= 0 && static_cast<std::uint64_t>(value) <= std::numeric_limits<Unsigned>::max())
        value = static_cast<Signed>(static_cast<Unsigned>(value));
    if (!fits<Signed>(value))
        return Fit::kOutOfRange;
    group.integer = value;
    return Fit::kOk;
}

} // namespace

bool inRange(GroupType type, std::int64_t value) {
    switch (type) {
    case GroupType::kInt16:
        return fits<std::int16_t>(value);
    case GroupType::kInt32:
        return fits<std::int32_t>(value);
    case GroupType::kSwitch:
        return value == 0 || value == 1;
    default:
        return true;
    }
}

Fit setInteger(Group& group, std::int64_t value, bool isUnsigned) {
    switch (group.type) {
    case GroupType::kInt16:
        return setSized<std::int16_t, std::uint16_t>(group, value, isUnsigned);
    case GroupType::kInt32:
        return setSized<std::int32_t, std::uint32_t>(group, value, isUnsigned);
    case GroupType::kInt64:
        group.integer = value;
        return Fit::kOk;
    case GroupType::kSwitch:
        group.integer = value;
        return inRange(group.type, value) ? Fit::kOk : Fit::kOutOfRange;
    case GroupType::kReal:
        group.real = static_cast<double>(value);
        return Fit::kOk;
    case GroupType::kText:
        group.text = std::to_wstring(value);
        return Fit::kOk;
    default:
        return Fit::kWrongKind;
    }
}

Fit setUnsigned64(Group& group, std::uint64_t value) {
    if (group.type == GroupType::kText)
        group.text = std::to_wstring(value);
    else if (group.type == GroupType::kReal)
        group.real = static_cast<double>(value);
    else if (group.type != GroupType::kInt64 &&
             value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        return Fit::kOutOfRange;
    else
        return setInteger(group, static_cast<std::int64_t>(value), true);
    return Fit::kOk;
}

Fit setReal(Group& group, double value, int digits) {
    if (group.type == GroupType::kReal)
        group.real = value;
    else if (group.type == GroupType::kText)
        group.text = platform::widen(realText(value, digits));
    else
        return Fit::kWrongKind;
    return Fit::kOk;
}

Fit setText(Group& group, const std::wstring& value) {
    if (group.type == GroupType::kText) {
        group.text = value;
        return Fit::kOk;
    }
    if (group.type != GroupType::kHandle && group.type != GroupType::kObjectId)
        return Fit::kWrongKind;
    return parseHandle(platform::narrow(value), group.handle) ? Fit::kOk : Fit::kOutOfRange;
}

Fit setHandle(Group& group, std::uint64_t value) {
    group.handle = value;
    return group.type == GroupType::kHandle || group.type == GroupType::kObjectId ? Fit::kOk
                                                                                  : Fit::kWrongKind;
}

} // namespace embedded::text
