#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

// Values in a row. Indexes count from 0; one outside of the row is a programming error that is not looked
// for, but in the operations that say so. The row grows by itself; lengths are `int`.
template <class T>
class AcArray {
public:
    AcArray() = default;
    // Room for that many before it grows for the first time; how far it grows is its own business.
    explicit AcArray(int physicalLength, int growLength = 8) {
        static_cast<void>(growLength);
        setPhysicalLength(physicalLength);
    }

    bool operator==(const AcArray& other) const { return m_values == other.m_values; }
    bool operator!=(const AcArray& other) const { return !(*this == other); }

    int length() const { return static_cast<int>(m_values.size()); }
    int logicalLength() const { return length(); }
    int physicalLength() const { return static_cast<int>(m_values.capacity()); }
    bool isEmpty() const { return m_values.empty(); }
    // New places hold T's default value. A negative length empties the row.
    AcArray& setLogicalLength(int length) {
        m_values.resize(clamped(length));
        return *this;
    }
    // Room for that many; what stands behind it is cut off.
    AcArray& setPhysicalLength(int length) {
        if (length < this->length())
            setLogicalLength(length);
        m_values.reserve(clamped(length));
        return *this;
    }

    T& operator[](int index) { return m_values[static_cast<std::size_t>(index)]; }
    const T& operator[](int index) const { return m_values[static_cast<std::size_t>(index)]; }
    T& at(int index) { return (*this)[index]; }
    const T& at(int index) const { return (*this)[index]; }
    AcArray& setAt(int index, const T& value) {
        (*this)[index] = value;
        return *this;
    }
    AcArray& setAll(const T& value) {
        std::fill(m_values.begin(), m_values.end(), value);
        return *this;
    }
    T& first() { return m_values.front(); }
    const T& first() const { return m_values.front(); }
    T& last() { return m_values.back(); }
    const T& last() const { return m_values.back(); }
    // Valid until the row grows.
    T* asArrayPtr() { return m_values.data(); }
    const T* asArrayPtr() const { return m_values.data(); }
    T* begin() { return m_values.data(); }
    T* end() { return m_values.data() + m_values.size(); }
    const T* begin() const { return m_values.data(); }
    const T* end() const { return m_values.data() + m_values.size(); }

    // The index of what was added.
    int append(const T& value) {
        m_values.push_back(value);
        return length() - 1;
    }
    AcArray& append(const AcArray& others) {
        const std::vector<T> copy = others.m_values;
        m_values.insert(m_values.end(), copy.begin(), copy.end());
        return *this;
    }
    // In front of `index`; nothing happens outside of 0 to length.
    AcArray& insertAt(int index, const T& value) {
        if (index >= 0 && index <= length())
            m_values.insert(m_values.begin() + index, T(value));
        return *this;
    }
    // Nothing happens for an index outside of the row.
    AcArray& removeAt(int index) {
        if (index >= 0 && index < length())
            m_values.erase(m_values.begin() + index);
        return *this;
    }
    // Both ends included. Nothing happens for indexes outside of the row, or in the wrong order.
    AcArray& removeSubArray(int startIndex, int endIndex) {
        if (startIndex >= 0 && startIndex <= endIndex && endIndex < length())
            m_values.erase(m_values.begin() + startIndex, m_values.begin() + endIndex + 1);
        return *this;
    }
    // The first one that is equal; false if there is none.
    bool remove(const T& value, int start = 0) {
        const int index = findFrom(value, start);
        removeAt(index);
        return index >= 0;
    }
    AcArray& removeFirst() { return removeAt(0); }
    AcArray& removeLast() { return removeAt(length() - 1); }
    AcArray& removeAll() {
        m_values.clear();
        return *this;
    }

    bool contains(const T& value, int start = 0) const { return findFrom(value, start) >= 0; }
    bool find(const T& value, int& index, int start = 0) const {
        const int found = findFrom(value, start);
        if (found >= 0)
            index = found;
        return found >= 0;
    }
    // -1 if there is none.
    int find(const T& value) const { return findFrom(value, 0); }
    int findFrom(const T& value, int start) const {
        for (int i = std::max(start, 0); i < length(); ++i)
            if ((*this)[i] == value)
                return i;
        return -1;
    }

    AcArray& reverse() {
        std::reverse(m_values.begin(), m_values.end());
        return *this;
    }
    // Nothing happens for indexes outside of the row.
    AcArray& swap(int first, int second) {
        if (first >= 0 && second >= 0 && first < length() && second < length())
            std::swap((*this)[first], (*this)[second]);
        return *this;
    }

private:
    static std::size_t clamped(int length) { return length < 0 ? 0 : static_cast<std::size_t>(length); }

    // `bool` would be packed there and have no references.
    static_assert(!std::is_same<T, bool>::value, "a row of bool has no places to refer to");

    std::vector<T> m_values;
};
