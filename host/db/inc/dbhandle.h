#pragma once

#include "adesk.h"

// The persistent name of an object in its drawing: a number that is given once and never used again. 0 is
// null.
class AcDbHandle {
public:
    AcDbHandle() = default;
    AcDbHandle(Adesk::UInt64 value) : m_value(value) {}
    AcDbHandle(int value) : m_value(static_cast<Adesk::UInt32>(value)) {}

    operator Adesk::UInt64() const { return m_value; }
    bool isNull() const { return m_value == 0; }
    void setNull() { m_value = 0; }
    bool isOne() const { return m_value == 1; }
    void increment() { ++m_value; }

    // Hexadecimal text without leading zeros. False if `length` wide characters, terminator included, are too
    // few.
    bool getIntoAsciiBuffer(wchar_t* buffer, std::size_t length) const;
    bool getIntoAsciiBuffer(wchar_t (&buffer)[17]) const { return getIntoAsciiBuffer(buffer, 17); }

private:
    Adesk::UInt64 m_value = 0;
};
