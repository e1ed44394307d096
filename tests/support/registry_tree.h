#pragma once

#include "platform/registry.h"
#include "platform/registry_key.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace testing_support {

// Gathers what is written on std::wcerr while it lives.
class WideErrorRecorder {
public:
    WideErrorRecorder() : m_before(std::wcerr.rdbuf(m_text.rdbuf())) {}
    ~WideErrorRecorder() { std::wcerr.rdbuf(m_before); }

    WideErrorRecorder(const WideErrorRecorder&) = delete;
    WideErrorRecorder& operator=(const WideErrorRecorder&) = delete;

    std::wstring text() const { return m_text.str(); }

private:
    std::wostringstream m_text;
    std::wstreambuf* m_before;
};

// A test with a tree of its own in the registry, gone at its end.
class RegistryTreeTest : public testing::Test {
protected:
    static constexpr const char* kBase = "Software\\TaldorkTest";
    static constexpr const wchar_t* kWideBase = L"Software\\TaldorkTest";

    RegistryTreeTest() { platform::registry::deleteKey(kWideBase); }
    ~RegistryTreeTest() override { platform::registry::deleteKey(kWideBase); }

    // The text of a value below the base; "<none>" without one.
    static std::wstring stored(const std::wstring& node, const std::wstring& name) {
        platform::registry::Value value;
        return platform::registry::getValue(kWideBase + node, name, value) == platform::registry::kDone
                   ? value.text
                   : L"<none>";
    }

    // The values of a node below the base, as "name type size", in their order.
    static std::vector<std::wstring> storedValues(const std::wstring& node) {
        std::vector<std::wstring> rows;
        platform::registry::KeyHandle key = nullptr;
        platform::registry::openKey(platform::registry::currentUser(), kWideBase + node,
                                    platform::registry::kReadAccess, key);
        std::wstring name;
        std::uint32_t type = 0;
        std::uint32_t size = 0;
        for (std::uint32_t index = 0; platform::registry::enumerateValue(key, index, 1000, name, type,
                                                                         size) == platform::registry::kDone;
             ++index)
            rows.push_back(name + L" " + std::to_wstring(type) + L" " + std::to_wstring(size));
        platform::registry::closeKey(key);
        return rows;
    }
};

} // namespace testing_support
