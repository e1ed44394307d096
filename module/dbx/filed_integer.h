#pragma once

#include <cstdint>
#include <type_traits>

namespace orv::serialization {

// `long` and `long long` are filed by their width, but only one of the two is the type of the archives'
// operation for that width. What stands here for any of them is the type of that operation.
template <class Integer>
using FiledInteger =
    std::conditional_t<sizeof(Integer) == 8,
                       std::conditional_t<std::is_signed<Integer>::value, std::int64_t, std::uint64_t>,
                       std::conditional_t<std::is_signed<Integer>::value, std::int32_t, std::uint32_t>>;

// Integers without an operation of their own.
template <class Integer>
constexpr bool kHasNoOperation = (std::is_same<Integer, long>::value ||
                                  std::is_same<Integer, long long>::value ||
                                  std::is_same<Integer, unsigned long>::value ||
                                  std::is_same<Integer, unsigned long long>::value) &&
                                 !std::is_same<Integer, FiledInteger<Integer>>::value;

} // namespace orv::serialization
