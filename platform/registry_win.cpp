#include "platform/registry.h"

#include "platform/registry_key.h"

#include <windows.h>

#include <algorithm>

namespace platform::registry {

namespace {

constexpr DWORD kMaxName = 16384;

// The path as the system takes it, which refuses a backslash at the begin.
std::wstring systemPath(std::wstring_view path) {
    path = path.substr(0, path.find(L'\0'));
    std::wstring made;
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find(L'\\', at), path.size());
        if (end > at) {
            if (!made.empty())
                made += L'\\';
            made += path.substr(at, end - at);
        }
        at = end + 1;
    }
    return made;
}

// A key of the user's that is open for the life of this object.
class Key {
public:
    Key(std::wstring_view path, REGSAM access) {
        error = RegOpenKeyExW(HKEY_CURRENT_USER, systemPath(path).c_str(), 0, access, &handle);
    }
    ~Key() {
        if (handle != nullptr)
            RegCloseKey(handle);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    HKEY handle = nullptr;
    LSTATUS error;
};

Value decoded(DWORD type, std::vector<unsigned char> bytes) {
    Value value;
    if (type == REG_SZ || type == REG_EXPAND_SZ) {
        value.text.assign(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t));
        while (!value.text.empty() && value.text.back() == L'\0')
            value.text.pop_back();
    } else if (type == REG_DWORD && bytes.size() == sizeof(value.number)) {
        value.type = ValueType::kNumber;
        std::copy(bytes.begin(), bytes.end(), reinterpret_cast<unsigned char*>(&value.number));
    } else {
        value.type = ValueType::kBinary;
        value.binary = std::move(bytes);
    }
    return value;
}

} // namespace

int createKey(std::wstring_view path) {
    HKEY key = nullptr;
    const LSTATUS error = RegCreateKeyExW(HKEY_CURRENT_USER, systemPath(path).c_str(), 0, nullptr,
                                          REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &key, nullptr);
    if (error == ERROR_SUCCESS)
        RegCloseKey(key);
    return error;
}

bool keyExists(std::wstring_view path) { return Key(path, KEY_READ).error == ERROR_SUCCESS; }

int setValue(std::wstring_view path, std::wstring_view name, const Value& value) {
    const Key key(path, KEY_SET_VALUE);
    if (key.error != ERROR_SUCCESS)
        return key.error;
    const void* data = value.binary.data();
    std::size_t size = value.binary.size();
    if (value.type == ValueType::kText) {
        data = value.text.c_str();
        size = (value.text.size() + 1) * sizeof(wchar_t);
    } else if (value.type == ValueType::kNumber) {
        data = &value.number;
        size = sizeof(value.number);
    }
    return RegSetValueExW(key.handle, std::wstring(name).c_str(), 0, static_cast<DWORD>(value.type),
                          static_cast<const BYTE*>(data), static_cast<DWORD>(size));
}

int getValue(std::wstring_view path, std::wstring_view name, Value& value) {
    const Key key(path, KEY_QUERY_VALUE);
    if (key.error != ERROR_SUCCESS)
        return key.error;
    const std::wstring wanted(name);
    DWORD type = 0;
    DWORD size = 0;
    LSTATUS error = RegQueryValueExW(key.handle, wanted.c_str(), nullptr, &type, nullptr, &size);
    std::vector<unsigned char> bytes(size);
    if (error == ERROR_SUCCESS)
        error = RegQueryValueExW(key.handle, wanted.c_str(), nullptr, &type, bytes.data(), &size);
    if (error == ERROR_SUCCESS)
        value = decoded(type, std::move(bytes));
    return error;
}

int listKeys(std::wstring_view path, std::vector<std::wstring>& names) {
    names.clear();
    const Key key(path, KEY_READ);
    wchar_t name[kMaxName];
    for (DWORD index = 0;
         key.error == ERROR_SUCCESS && RegEnumKeyW(key.handle, index, name, kMaxName) == ERROR_SUCCESS;
         ++index)
        names.emplace_back(name);
    return key.error;
}

int listValues(std::wstring_view path, std::vector<NamedValue>& values) {
    values.clear();
    const Key key(path, KEY_READ);
    for (DWORD index = 0; key.error == ERROR_SUCCESS; ++index) {
        wchar_t name[kMaxName];
        DWORD length = kMaxName;
        if (RegEnumValueW(key.handle, index, name, &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS)
            break;
        NamedValue found{std::wstring(name, length), {}};
        if (getValue(path, found.name, found.value) == kDone)
            values.push_back(std::move(found));
    }
    return key.error;
}

int deleteValue(std::wstring_view path, std::wstring_view name) {
    const Key key(path, KEY_SET_VALUE);
    return key.error != ERROR_SUCCESS ? key.error : RegDeleteValueW(key.handle, std::wstring(name).c_str());
}

int deleteKey(std::wstring_view path) {
    // Without a path the system would empty the whole tree.
    const std::wstring taken = systemPath(path);
    return taken.empty() ? kNotFound : static_cast<int>(RegDeleteTreeW(HKEY_CURRENT_USER, taken.c_str()));
}

static_assert(kReadAccess == KEY_READ && kAllAccess == KEY_ALL_ACCESS);
static_assert(kTextType == REG_SZ && kExpandableTextType == REG_EXPAND_SZ && kBinaryType == REG_BINARY &&
              kNumberType == REG_DWORD);
static_assert(kNoMoreItems == ERROR_NO_MORE_ITEMS && kNotFound == ERROR_FILE_NOT_FOUND);

KeyHandle currentUser() { return reinterpret_cast<KeyHandle>(HKEY_CURRENT_USER); }

int createKey(KeyHandle root, const std::wstring& path, std::uint32_t access, KeyHandle& key) {
    HKEY opened = nullptr;
    const LSTATUS error =
        RegCreateKeyExW(reinterpret_cast<HKEY>(root), systemPath(path).c_str(), 0, nullptr,
                        REG_OPTION_NON_VOLATILE, static_cast<REGSAM>(access), nullptr, &opened, nullptr);
    key = error == ERROR_SUCCESS ? reinterpret_cast<KeyHandle>(opened) : nullptr;
    return error;
}

int openKey(KeyHandle root, const std::wstring& path, std::uint32_t access, KeyHandle& key) {
    HKEY opened = nullptr;
    const LSTATUS error = RegOpenKeyExW(reinterpret_cast<HKEY>(root), systemPath(path).c_str(), 0,
                                        static_cast<REGSAM>(access), &opened);
    key = error == ERROR_SUCCESS ? reinterpret_cast<KeyHandle>(opened) : nullptr;
    return error;
}

void closeKey(KeyHandle key) {
    if (key != nullptr && key != currentUser())
        RegCloseKey(reinterpret_cast<HKEY>(key));
}

int setData(KeyHandle key, const std::wstring& name, std::uint32_t type, const void* data,
            std::uint32_t size) {
    return RegSetValueExW(reinterpret_cast<HKEY>(key), name.c_str(), 0, type, static_cast<const BYTE*>(data),
                          size);
}

int enumerateValue(KeyHandle key, std::uint32_t index, std::size_t capacity, std::wstring& name,
                   std::uint32_t& type, std::uint32_t& size) {
    std::wstring buffer(capacity, L'\0');
    DWORD length = static_cast<DWORD>(capacity);
    DWORD foundType = 0;
    DWORD foundSize = 0;
    const LSTATUS error = RegEnumValueW(reinterpret_cast<HKEY>(key), index, buffer.data(), &length, nullptr,
                                        &foundType, nullptr, &foundSize);
    if (error != ERROR_SUCCESS)
        return error;
    name.assign(buffer, 0, length);
    type = foundType;
    size = foundSize;
    return kDone;
}

int enumerateKey(KeyHandle key, std::uint32_t index, std::size_t capacity, std::wstring& name) {
    std::wstring buffer(capacity, L'\0');
    const LSTATUS error =
        RegEnumKeyW(reinterpret_cast<HKEY>(key), index, buffer.data(), static_cast<DWORD>(capacity));
    if (error == ERROR_SUCCESS)
        name = buffer.c_str();
    return error;
}

// The system has a registry of its own.
void setRegistryFile(std::wstring) {}
std::wstring registryFile() { return {}; }

} // namespace platform::registry
