#pragma once

#include "arx/types.h"

#include "AcString.h"
#include "dbfiler.h"
#include "gepnt3d.h"
#include "gevec3d.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace orv {

// The filer's call for each type of value that a property can have. A read gives zero when it fails.
template <class T>
struct ValueFiling;

#define ORV_VALUE_FILING(T, Name)                                                                            \
    template <>                                                                                              \
    struct ValueFiling<T> {                                                                                  \
        static Acad::ErrorStatus write(AcDbDwgFiler& filer, const T& value) {                                \
            return filer.write##Name(value);                                                                 \
        }                                                                                                    \
        static Acad::ErrorStatus read(AcDbDwgFiler& filer, T& value) { return filer.read##Name(&value); }    \
    };

ORV_VALUE_FILING(unsigned char, UInt8)
ORV_VALUE_FILING(unsigned short, UInt16)
ORV_VALUE_FILING(unsigned int, UInt32)
ORV_VALUE_FILING(signed char, Int8)
ORV_VALUE_FILING(short, Int16)
ORV_VALUE_FILING(int, Int32)
ORV_VALUE_FILING(bool, Bool)
ORV_VALUE_FILING(double, Double)
ORV_VALUE_FILING(AcGePoint3d, Point3d)
ORV_VALUE_FILING(AcGeVector3d, Vector3d)
#undef ORV_VALUE_FILING

// 8 raw bytes, the low one first, past the filer's own 64-bit calls.
template <>
struct ValueFiling<std::uint64_t> {
    static Acad::ErrorStatus write(AcDbDwgFiler& filer, std::uint64_t value) {
        unsigned char bytes[8];
        for (std::size_t i = 0; i < sizeof bytes; ++i)
            bytes[i] = static_cast<unsigned char>(value >> (8 * i));
        return filer.writeBytes(bytes, sizeof bytes);
    }
    static Acad::ErrorStatus read(AcDbDwgFiler& filer, std::uint64_t& value) {
        unsigned char bytes[8] = {};
        const Acad::ErrorStatus es = filer.readBytes(bytes, sizeof bytes);
        value = 0;
        for (std::size_t i = 0; i < sizeof bytes; ++i)
            value |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
        return es;
    }
};

template <>
struct ValueFiling<std::int64_t> {
    static Acad::ErrorStatus write(AcDbDwgFiler& filer, std::int64_t value) {
        return ValueFiling<std::uint64_t>::write(filer, static_cast<std::uint64_t>(value));
    }
    static Acad::ErrorStatus read(AcDbDwgFiler& filer, std::int64_t& value) {
        std::uint64_t bits = 0;
        const Acad::ErrorStatus es = ValueFiling<std::uint64_t>::read(filer, bits);
        value = static_cast<std::int64_t>(bits);
        return es;
    }
};

// Ends at the first zero character, as the filer's texts do.
template <>
struct ValueFiling<std::wstring> {
    static Acad::ErrorStatus write(AcDbDwgFiler& filer, const std::wstring& value) {
        return filer.writeString(value.c_str());
    }
    static Acad::ErrorStatus read(AcDbDwgFiler& filer, std::wstring& value) {
        AcString text;
        const Acad::ErrorStatus es = filer.readString(text);
        value = text.kACharPtr();
        return es;
    }
};

// A property never owns what it points at, nor keeps it alive.
template <>
struct ValueFiling<AcDbObjectId> {
    static Acad::ErrorStatus write(AcDbDwgFiler& filer, const AcDbObjectId& value) {
        return filer.writeSoftPointerId(AcDbSoftPointerId(value));
    }
    static Acad::ErrorStatus read(AcDbDwgFiler& filer, AcDbObjectId& value) {
        AcDbSoftPointerId id;
        const Acad::ErrorStatus es = filer.readSoftPointerId(&id);
        value = id;
        return es;
    }
};

// File a value and report a call that fails.
template <class T>
Acad::ErrorStatus writeChecked(AcDbDwgFiler& filer, const T& value) {
    const Acad::ErrorStatus es = ValueFiling<T>::write(filer, value);
    checkErrorStatus(es, Acad::eOk, "es", __FILE__, __LINE__);
    return es;
}

// Whatever a failing filer left behind, the value is zero then.
template <class T>
Acad::ErrorStatus readChecked(AcDbDwgFiler& filer, T& value) {
    const Acad::ErrorStatus es = ValueFiling<T>::read(filer, value);
    checkErrorStatus(es, Acad::eOk, "es", __FILE__, __LINE__);
    if (es != Acad::eOk)
        value = T();
    return es;
}

} // namespace orv
