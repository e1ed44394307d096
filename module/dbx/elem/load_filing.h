#pragma once

#include "dbx/in_archive.h"
#include "dbx/out_archive.h"

#include <set>

// How the fields of loads are filed that several classes have.
namespace orv::elem {

// Types and kinds are filed in 16 bits, and come back without a sign.
template <class Number>
void writeShort(serialization::IOutArchive& archive, Number number) {
    archive << static_cast<unsigned short>(number);
}
template <class Number>
void readShort(serialization::IInArchive& archive, Number& number) {
    unsigned short filed = 0;
    archive >> filed;
    number = static_cast<Number>(filed);
}

// How many, then each in ascending order. Nothing is reserved when they are read: a count that is wrong ends
// with the archive. What was read until then is added to the set.
inline void writeNumbers(serialization::IOutArchive& archive, const std::set<unsigned int>& numbers) {
    archive << static_cast<unsigned int>(numbers.size());
    for (const unsigned int number : numbers)
        archive << number;
}
inline void readNumbers(serialization::IInArchive& archive, std::set<unsigned int>& numbers) {
    unsigned int count = 0;
    archive >> count;
    for (unsigned int i = 0; i < count; ++i) {
        unsigned int number = 0;
        archive >> number;
        numbers.insert(number);
    }
}

} // namespace orv::elem
