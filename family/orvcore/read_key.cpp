#include "orvcore/read_key.h"

#include "platform/registry.h"

namespace {

constexpr int kNoText = 1630; // the system's number for a value of an unsupported type

} // namespace

int orv_readKey(std::wstring& out, const std::wstring& key, const std::wstring& path, ORV_RegistryRoot) {
    platform::registry::Value value;
    const int result = platform::registry::getValue(path, key, value);
    if (result != platform::registry::kDone)
        return result;
    if (value.type != platform::registry::ValueType::kText)
        return kNoText;
    out = value.text;
    return 0;
}
