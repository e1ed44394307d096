#pragma once

#include <typeinfo>

namespace orv {

// A run-time type as a value: copyable, and with an order, so that it can be the key of a map. The order is
// that of type_info::before; it may differ from one run to the next.
class TypeInfo {
public:
    TypeInfo(const std::type_info& type) : m_type(&type) {}

    const std::type_info& get() const { return *m_type; }

    friend bool operator==(const TypeInfo& left, const TypeInfo& right) {
        return *left.m_type == *right.m_type;
    }
    friend bool operator!=(const TypeInfo& left, const TypeInfo& right) { return !(left == right); }
    friend bool operator<(const TypeInfo& left, const TypeInfo& right) {
        return left.m_type->before(*right.m_type);
    }

private:
    const std::type_info* m_type; // never null
};

} // namespace orv
