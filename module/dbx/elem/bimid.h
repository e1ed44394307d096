#pragma once

#include "base/blob.h"
#include "base/export.h"

#include <cstdint>
#include <string>

namespace orv {

// A UUID in the system's own layout: the first three numbers as numbers, the rest as bytes.
struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};
static_assert(sizeof(GUID) == 16, "a UUID has 128 bits");

// Names of elements that hold across file versions and systems. Such an identifier is a text that says of
// what kind it is: "guid:128:" and the UUID in small letters, "invalid:failed_to_convert" where the system
// could not write the UUID, or empty for no identifier.
namespace bimid {

// A new identifier; later ones are later in time. Empty if the system has no UUID to give.
TALDORK_API std::string generate();
// Replaces `id` by the text of this UUID.
TALDORK_API void assign(std::string& id, const GUID& guid);
// The text form is the identifier itself.
TALDORK_API std::string toString(const std::string& id);

// The record of a store: the number 999, then the text up to its first zero byte, filled with blanks to whole
// words of four bytes.
TALDORK_API Blob toCDB(const std::string& id);
// The text of a record, without trailing blanks. The number in front is not looked at. A record of less than
// 5 bytes is reported and gives an empty text; one of 5 to 7 bytes gives it without a report.
TALDORK_API std::string fromCDB(const Blob& data);
TALDORK_API void fromCDB(const Blob& data, std::string& id);

} // namespace bimid
} // namespace orv
