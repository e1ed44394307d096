#pragma once

#include "dbx/elem/ObjectProperties.h"
#include "dbx/elem/property_serializers.h"

#include "module/property_tree/arx/value_trees.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace testing_support {

// The tables of the serializers laid open, in an instance of its own.
class OpenSerializers : public orv::PropertySerializers {
public:
    OpenSerializers() { registerTypes(); }

    using PropertySerializers::m_id2createProp;
    using PropertySerializers::m_id2in;
    using PropertySerializers::m_in;
    using PropertySerializers::m_out;
    using PropertySerializers::m_ti2id;
};

// A property of any type, from the outside.
using PropertyPointer = boost::shared_ptr<orv::property_base>;

template <class T>
PropertyPointer propertyOf(const T& value) {
    return boost::make_shared<orv::property<T>>(value);
}

// A character that a filed text can hold.
inline wchar_t anyCharacter() {
    return static_cast<wchar_t>(*rc::gen::oneOf(rc::gen::inRange(1, 0x80), rc::gen::inRange(1, 0xD800),
                                                rc::gen::inRange(0xE000, 0x10000),
                                                rc::gen::inRange(0x10000, 0x110000)));
}
inline std::wstring anyWideText() {
    std::wstring text(*rc::gen::inRange<std::size_t>(0, 12), L' ');
    for (wchar_t& character : text)
        character = anyCharacter();
    return text;
}

inline PropertyPointer anyProperty(const std::vector<AcDbObjectId>& ids) {
    switch (*rc::gen::inRange(0, 14)) {
    case 0:
        return propertyOf(*rc::gen::arbitrary<unsigned char>());
    case 1:
        return propertyOf(*rc::gen::arbitrary<unsigned short>());
    case 2:
        return propertyOf(*rc::gen::arbitrary<unsigned int>());
    case 3:
        return propertyOf(*rc::gen::arbitrary<std::uint64_t>());
    case 4:
        return propertyOf(*rc::gen::arbitrary<signed char>());
    case 5:
        return propertyOf(*rc::gen::arbitrary<short>());
    case 6:
        return propertyOf(*rc::gen::arbitrary<int>());
    case 7:
        return propertyOf(*rc::gen::arbitrary<std::int64_t>());
    case 8:
        return propertyOf(*rc::gen::arbitrary<bool>());
    case 9:
        return propertyOf(anyDouble());
    case 10:
        return propertyOf(anyWideText());
    case 11:
        return propertyOf(anyPoint());
    case 12:
        return propertyOf(anyPoint().asVector());
    default:
        return propertyOf(AcDbObjectId(*rc::gen::elementOf(ids)));
    }
}

inline orv::AcadObjectProperties anyProperties(const std::vector<AcDbObjectId>& ids) {
    orv::AcadObjectProperties owner;
    const int count = *rc::gen::inRange(0, 12);
    for (int i = 0; i < count; ++i) {
        const auto key = *rc::gen::oneOf(rc::gen::inRange(1u, 20u), rc::gen::nonZero<unsigned int>());
        if (!owner.get(key))
            owner.add(key, anyProperty(ids));
    }
    return owner;
}

inline bool identical(const orv::AcadObjectProperties& a, const orv::AcadObjectProperties& b) {
    if (a.size() != b.size())
        return false;
    for (auto one = a.begin(), other = b.begin(); one != a.end(); ++one, ++other)
        if (one->first != other->first || one->second->type() != other->second->type() ||
            !identical(one->second->value(), other->second->value()))
            return false;
    return true;
}

inline Bytes propertyBytes(const orv::AcadObjectProperties& owner) {
    Bytes bytes;
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes);
    RC_ASSERT(orv::dwgOutProperties(filer, owner) == Acad::eOk);
    return bytes;
}

} // namespace testing_support
