#include "dwg/second_header.h"

#include "dwg/bit_writer.h"
#include "dwg/crc16.h"
#include "dwg/raw_fields.h"
#include "dwg/sentinels.h"

#include <algorithm>

namespace embedded::dwg {

std::array<std::uint8_t, 8> secondHeaderTrailer(ByteSpan file, std::size_t from) {
    std::array<std::uint8_t, 8> trailer{};
    const Sentinel end = endOf(kSecondHeaderBegin);
    const std::uint8_t* begin =
        std::search(file.begin() + from, file.end(), kSecondHeaderBegin.begin(), kSecondHeaderBegin.end());
    const std::uint8_t* found = std::search(begin, file.end(), end.begin(), end.end());
    if (found != file.end() && found - begin >= 16 + 8)
        std::copy(found - trailer.size(), found, trailer.begin());
    return trailer;
}

namespace {

void writeFields(BitWriter& out, const SecondHeader& header) {
    out.bitLong(header.address);
    const std::uint8_t version[11] = {'A', 'C', '1', '0', '1', '5'};
    out.rawBytes(version, sizeof version);
    out.rawChar(header.maintenance);
    out.rawChar(header.maintenanceMark);
    out.bitShort(static_cast<std::uint16_t>(header.writerVersion | header.writerMaintenance << 8));
    out.rawShort(header.codePage);
    out.bitShort(SecondHeader::kSections);
    for (const SecondHeader::Section& section : header.sections) {
        out.rawChar(section.number);
        out.bitLong(section.address);
        out.bitLong(section.size);
    }
    out.bitShort(SecondHeader::kHandles);
    for (std::size_t i = 0; i < SecondHeader::kHandles; ++i) {
        const HandleReference handle(kPlainHandle, header.handles[i]);
        out.rawChar(handle.width);
        out.rawChar(static_cast<std::uint8_t>(i));
        for (unsigned byte = handle.width; byte > 0; --byte)
            out.rawChar(static_cast<std::uint8_t>(handle.value >> (8 * (byte - 1))));
    }
    out.alignToByte();
}

} // namespace

Bytes writeSecondHeader(const SecondHeader& header) {
    BitWriter fields;
    writeFields(fields, header);
    Bytes data;
    // The size counts itself, the check sum and the trailer.
    appendLong(data, static_cast<std::uint32_t>(4 + fields.bytes().size() + 2 + header.trailer.size()));
    append(data, fields.bytes());
    appendShort(data, crc16(data));

    Bytes section;
    append(section, kSecondHeaderBegin);
    append(section, data);
    section.insert(section.end(), header.trailer.begin(), header.trailer.end());
    append(section, endOf(kSecondHeaderBegin));
    return section;
}

} // namespace embedded::dwg
