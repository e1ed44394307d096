#pragma once

#include "dwg/byte_span.h"

#include <array>

namespace embedded::dwg {

// The copy of the most important places that a 2000 file keeps near its end, for recovery.
struct SecondHeader {
    struct Section {
        std::uint8_t number;
        std::uint32_t address;
        std::uint32_t size;
    };
    static constexpr std::size_t kSections = 6;
    static constexpr std::size_t kHandles = 14;

    std::uint32_t address = 0;
    std::uint8_t maintenance = 0;
    std::uint8_t maintenanceMark = 1;
    std::uint8_t writerVersion = 0;
    std::uint8_t writerMaintenance = 0;
    std::uint16_t codePage = 30;
    std::array<Section, kSections> sections{};
    // The next free handle, the nine symbol tables, the table of viewport headers, and the dictionaries of
    // named objects, of multiline styles and of groups.
    std::array<std::uint64_t, kHandles> handles{};
    // Behind the check sum; their meaning is not known. They go back as they came.
    std::array<std::uint8_t, 8> trailer{};
};

// The trailer of the second header that stands somewhere behind `from`, or zeros if there is none that is
// whole. The rest of it says nothing that the file does not say elsewhere.
std::array<std::uint8_t, 8> secondHeaderTrailer(ByteSpan file, std::size_t from);

// The whole section with its sentinels.
Bytes writeSecondHeader(const SecondHeader& header);

} // namespace embedded::dwg
