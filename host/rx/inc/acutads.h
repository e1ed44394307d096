#pragma once

#include "AdAChar.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

constexpr int RTNORM = 5100;
constexpr int RTERROR = -5001;

namespace embedded::rx {

// One argument of acutPrintf with its type, so that a directive that does not fit it can be told from one
// that does.
class PrintArgument {
public:
    enum Kind { kSigned, kUnsigned, kDouble, kWide, kNarrow, kPointer };

    template <class T>
    PrintArgument(const T& value) {
        if constexpr (std::is_convertible_v<T, const wchar_t*> && !std::is_null_pointer_v<T>) {
            m_kind = kWide;
            m_value.wide = value;
        } else if constexpr (std::is_convertible_v<T, const char*> && !std::is_null_pointer_v<T>) {
            m_kind = kNarrow;
            m_value.narrow = value;
        } else if constexpr (std::is_floating_point_v<T>) {
            m_kind = kDouble;
            m_value.number = static_cast<double>(value);
        } else if constexpr (std::is_enum_v<T> || (std::is_integral_v<T> && std::is_signed_v<T>)) {
            m_kind = kSigned;
            m_value.integer = static_cast<std::int64_t>(value);
        } else if constexpr (std::is_integral_v<T>) {
            m_kind = kUnsigned;
            m_value.natural = static_cast<std::uint64_t>(value);
        } else {
            m_kind = kPointer;
            m_value.pointer = value;
        }
        m_width = sizeof(T);
    }

    Kind kind() const { return m_kind; }
    // The size in bytes of the value as it was given.
    std::size_t width() const { return m_width; }
    bool isInteger() const { return m_kind == kSigned || m_kind == kUnsigned; }
    std::int64_t integer() const { return m_value.integer; }
    std::uint64_t natural() const { return m_value.natural; }
    double number() const { return m_value.number; }
    const wchar_t* wide() const { return m_value.wide; }
    const char* narrow() const { return m_value.narrow; }
    const void* pointer() const { return m_value.pointer; }

private:
    union {
        std::int64_t integer;
        std::uint64_t natural;
        double number;
        const wchar_t* wide;
        const char* narrow;
        const void* pointer;
    } m_value;
    Kind m_kind;
    std::size_t m_width;
};

int print(const ACHAR* format, const PrintArgument* arguments, std::size_t count);

} // namespace embedded::rx

// Prints on the console. `format` is a wide printf text; a directive that has no argument, or one of another
// kind, is printed as it stands, so that no text can do harm. RTNORM, or RTERROR for a null format.
template <class... Arguments>
int acutPrintf(const ACHAR* format, const Arguments&... arguments) {
    if constexpr (sizeof...(arguments) == 0) {
        return embedded::rx::print(format, nullptr, 0);
    } else {
        const embedded::rx::PrintArgument list[] = {embedded::rx::PrintArgument(arguments)...};
        return embedded::rx::print(format, list, sizeof...(arguments));
    }
}
