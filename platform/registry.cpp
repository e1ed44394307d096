#include "platform/registry.h"

namespace platform::registry {

int setText(std::wstring_view path, std::wstring_view name, std::wstring_view text) {
    Value value;
    value.type = ValueType::kText;
    value.text = text;
    return setValue(path, name, value);
}

int setNumber(std::wstring_view path, std::wstring_view name, std::uint32_t number) {
    Value value;
    value.type = ValueType::kNumber;
    value.number = number;
    return setValue(path, name, value);
}

} // namespace platform::registry
