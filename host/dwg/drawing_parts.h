#pragma once

#include "dwg/byte_span.h"

#include <array>
#include <memory>
#include <vector>

namespace embedded::dwg {

// One object of a file: its bytes between the size in front and the check sum behind.
struct ObjectSlot {
    std::uint64_t handle = 0;
    ByteSpan body;
    // The check sum as filed. An object whose sum is wrong is carried with it, so that it stays known as
    // damaged.
    std::uint16_t sum = 0;
    // Where the object stood in the file that was read.
    std::uint32_t offset = 0;
};

// A section that is carried without being understood.
struct OtherSection {
    std::uint8_t number = 0;
    ByteSpan bytes;
};

// A drawing taken out of its container, or to be put into one. What is here is the same for every version;
// where it stands in the file and how it is packed is the container's matter. The spans point into `file` or
// into what whoever fills a record for writing keeps alive.
struct DrawingParts {
    std::shared_ptr<const Bytes> file;

    std::uint8_t maintenance = 0;
    // The byte behind the maintenance number, whose meaning is not known.
    std::uint8_t maintenanceMark = 1;
    // The program that wrote the file, by version and maintenance number.
    std::uint8_t writerVersion = 0;
    std::uint8_t writerMaintenance = 0;
    std::uint16_t codePage = 30;

    // The data of the sections, without frame, size and check sum.
    ByteSpan headerVariables;
    ByteSpan classes;
    // By ascending handle, no handle twice, no two overlapping.
    std::vector<ObjectSlot> objects;

    // Carried as they stand. Addresses inside that are known to be such follow when the place changes.
    ByteSpan preview;
    std::uint32_t previewAddress = 0;
    ByteSpan auxiliaryHeader;
    ByteSpan freeSpace;
    ByteSpan templateData;
    std::uint32_t objectsAddress = 0;
    std::vector<OtherSection> others;
    std::array<std::uint8_t, 8> secondHeaderTrailer{};
};

} // namespace embedded::dwg
