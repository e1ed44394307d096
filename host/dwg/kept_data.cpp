#include "embedded/kept_data.h"

#include "db/object_access.h"
#include "dwg/bit_reader.h"
#include "dwg/bit_writer.h"

namespace embedded {

namespace {

constexpr std::uint64_t lowBits(std::size_t count) { return (std::uint64_t(1) << count) - 1; }

} // namespace

bool keepsNumber(const AcDbObject& object, Adesk::Int32 number) {
    const ObjectBody* const body = ObjectAccess::body(object);
    if (body == nullptr)
        return false;
    dwg::BitWriter writer;
    writer.bitLong(static_cast<std::uint32_t>(number));
    const std::size_t length = writer.length(); // 34 at most
    dwg::BitReader filed(dwg::ByteSpan(writer.bytes()), 0, length);
    std::uint64_t wanted = 0;
    for (std::size_t i = 0; i < length; ++i)
        wanted = wanted << 1 | (filed.bit() ? 1 : 0);

    dwg::BitReader data(dwg::ByteSpan(body->data), 0, body->dataBits);
    std::uint64_t window = 0;
    for (std::size_t seen = 1; data.left() != 0; ++seen) {
        window = (window << 1 | (data.bit() ? 1 : 0)) & lowBits(length);
        if (seen >= length && window == wanted)
            return true;
    }
    return false;
}

} // namespace embedded
