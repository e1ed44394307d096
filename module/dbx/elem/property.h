#pragma once

#include "base/export.h"
#include "dbx/elem/type_info.h"

#include <boost/any.hpp>

namespace orv {

// One value whose type is known at run time only. The order of the virtual operations is part of the
// interface between modules.
struct TALDORK_API property_base {
    property_base() = default;
    property_base(const property_base&) = delete;
    property_base& operator=(const property_base&) = delete;
    virtual ~property_base();

    // property<T> itself.
    virtual TypeInfo type() const = 0;
    // T.
    virtual TypeInfo valueType() const = 0;
    // A copy of the value.
    virtual boost::any value() const = 0;
    // Stores what `value` holds. False, and the old value stays, unless that is exactly a T.
    virtual bool setValue(const boost::any& value) = 0;
};

template <class T>
struct property : property_base {
    property() : m_value() {}
    explicit property(const T& initial) : m_value(initial) {}

    TypeInfo type() const override { return typeid(property<T>); }
    TypeInfo valueType() const override { return typeid(T); }
    boost::any value() const override { return m_value; }
    bool setValue(const boost::any& value) override {
        const T* const held = value.empty() ? nullptr : boost::any_cast<T>(&value);
        if (held != nullptr)
            m_value = *held;
        return held != nullptr;
    }

    T m_value;
};

} // namespace orv
