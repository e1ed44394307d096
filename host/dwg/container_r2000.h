#pragma once

#include "dwg/drawing_parts.h"
#include "dwg/second_header.h"

namespace embedded::dwg {

// Takes a file of version 2000 apart. Everything that is used of it has been checked: places and sizes lie
// inside the file, sentinels stand, the check sums of header, variables, classes and object map are right.
// The sums of single objects are looked at when an object is opened. FileError otherwise.
DrawingParts readContainerR2000(std::shared_ptr<const Bytes> file);

// What a container needs to know of the drawing beside its parts.
struct RootHandles {
    // As SecondHeader::handles.
    std::array<std::uint64_t, SecondHeader::kHandles> handles{};
};

// The bytes of a file of version 2000. `order` gives the sequence of the objects in the file, as indexes into
// `parts.objects`. FileError if the drawing gets too big for the format's 32 bit places.
Bytes writeContainerR2000(const DrawingParts& parts, const std::vector<std::size_t>& order,
                          const RootHandles& roots);

} // namespace embedded::dwg
