#pragma once

#include "base/export.h"

#include "gepnt3d.h"

#include <cstdint>
#include <string>

namespace orv::serialization {
struct IInArchive;
struct IOutArchive;
} // namespace orv::serialization

namespace orv::elem {

// Where a vertex has its position from. Filed in 8 bits; only that of a point decides anything here.
enum PositionSource : std::uint8_t { PS_POINT = 1 };

// How a vertex's position along a curve is meant.
enum DistanceMode : std::uint8_t { kRelativeDistance = 0, kAbsoluteDistance = 1 };

// One point of a load, with the value there.
struct LoadVertex {
    PositionSource posSource = PS_POINT;
    unsigned int segment = 0; // filed and handed back
    DistanceMode distanceMode = kRelativeDistance;
    double position = 0.0; // a share of the curve's length, or a distance along it in drawing units
    unsigned int node = 0; // filed and handed back
    AcGePoint3d point;     // counts for PS_POINT; in the drawing's world
    double value = 10.0;
    std::wstring text; // drawn beside it
};

// File a vertex. Loads of versions that had no texts are read without; what is not read stays. What the
// archive throws passes through.
TALDORK_API void writeLoadVertex(serialization::IOutArchive& archive, const LoadVertex& vertex);
TALDORK_API void readLoadVertex(serialization::IInArchive& archive, bool hasText, LoadVertex& vertex);

} // namespace orv::elem
