#include "base/registry.h"

#include "platform/system_messages.h"

#include <iostream>

namespace orv {

namespace calls = platform::registry;

namespace {

// Room for names, with the terminator.
constexpr std::size_t kValueNameBuffer = 16383;
constexpr std::size_t kKeyNameBuffer = 255;

void tell(const wchar_t* operation, int status) {
    std::wcerr << operation << platform::systemMessage(status) << std::endl;
}

std::uint32_t kindOfType(std::uint32_t type) {
    switch (type) {
    case calls::kTextType:
        return registry::kText;
    case calls::kExpandableTextType:
        return registry::kExpandableText;
    case calls::kBinaryType:
        return registry::kBinary;
    case calls::kNumberType:
        return registry::kNumber;
    default:
        return registry::kNothing;
    }
}

} // namespace

bool registry::set(Root root, const std::wstring& path, const std::wstring& name, std::uint32_t type,
                   const void* data, std::uint32_t size, std::uint32_t extraAccess) {
    calls::KeyHandle key = nullptr;
    int status = calls::createKey(root, path, calls::kAllAccess | extraAccess, key);
    if (status == calls::kDone)
        status = calls::setData(key, name, type, data, size);
    if (status != calls::kDone)
        tell(L"registry::set(): ", status);
    calls::closeKey(key);
    return status == calls::kDone;
}

registry::iterator::iterator(Root root, const std::wstring& path, std::uint32_t extraAccess)
    : m_end(true), m_key(nullptr), m_root(nullptr), m_extraAccess(extraAccess), m_inKeys(false), m_index(0),
      m_kind(kNothing), m_dataSize(0), m_heldValue(nullptr), m_ownsHeldValue(false) {
    if (calls::openKey(root, path, calls::kReadAccess | m_extraAccess, m_key) != calls::kDone)
        return;
    m_root = root;
    m_path = path;
    m_end = false;
    next();
}

registry::iterator::~iterator() { close(); }

void registry::iterator::next() {
    if (m_end)
        return;
    release();
    m_name.clear();
    if (!m_inKeys) {
        std::uint32_t type = 0;
        const int status = calls::enumerateValue(m_key, m_index, kValueNameBuffer, m_name, type, m_dataSize);
        if (status == calls::kDone)
            m_kind = kindOfType(type);
        if (status != calls::kNoMoreItems)
            return stepDone(status);
        m_inKeys = true;
        m_index = 0;
    }
    const int status = calls::enumerateKey(m_key, m_index, kKeyNameBuffer, m_name);
    if (status == calls::kDone)
        m_kind = kSubKey;
    stepDone(status);
}

void registry::iterator::stepDone(int status) {
    if (status == calls::kDone) {
        ++m_index;
        return;
    }
    close();
    if (status != calls::kNoMoreItems)
        tell(L"registry::iterator::next(): ", status);
}

void registry::iterator::close() {
    release();
    calls::closeKey(m_key);
    m_key = nullptr;
    m_end = true;
    m_name.clear();
    m_kind = kNothing;
}

void registry::iterator::hold(unsigned char* data, bool owned) {
    release();
    m_heldValue = data;
    m_ownsHeldValue = owned;
}

void registry::iterator::release() {
    if (m_ownsHeldValue)
        delete[] m_heldValue;
    m_heldValue = nullptr;
    m_ownsHeldValue = false;
}

} // namespace orv
