#pragma once

#include <functional>
#include <typeinfo>

namespace orv {

// A run-time type as a value: copyable, and with an order, so that it can be the key of a map. The order is
// that of type_info::before, with no type at all in front; it may differ from one run to the next.
class TypeInfo {
public:
    // No type.
    TypeInfo() : m_type(nullptr) {}
    TypeInfo(const std::type_info& type) : m_type(&type) {}
    // Null is no type.
    explicit TypeInfo(const std::type_info* type) : m_type(type) {}

    // Only where there is a type.
    const std::type_info& get() const { return *m_type; }
    const std::type_info* pointer() const { return m_type; }

    friend bool operator==(const TypeInfo& left, const TypeInfo& right) {
        if (left.m_type == nullptr || right.m_type == nullptr)
            return left.m_type == right.m_type;
        return *left.m_type == *right.m_type;
    }
    friend bool operator!=(const TypeInfo& left, const TypeInfo& right) { return !(left == right); }
    friend bool operator<(const TypeInfo& left, const TypeInfo& right) {
        if (left.m_type == nullptr || right.m_type == nullptr)
            return std::less<const std::type_info*>()(left.m_type, right.m_type);
        return left.m_type->before(*right.m_type);
    }

private:
    const std::type_info* m_type;
};

} // namespace orv
