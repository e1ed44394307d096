#pragma once

#include "base/export.h"

#include "orvshape/settings.h"

namespace orv::serialization {
struct IInArchive;
struct IOutArchive;
} // namespace orv::serialization

// The graphic settings of a system: their defaults, which have grown over the versions, and their record
// 10/100.
namespace orv::settings {

// The version whose defaults are complete. A system builds its settings as
// `Settings(applyVisDefaults, kVisVersion, true)`.
constexpr int kVisVersion = 15;

// With `full` sets all that has a default; otherwise only what versions above `version` have added, and
// leaves what older ones knew. Ends in either case with the sizes scaled by size 1.
TALDORK_API void applyVisDefaults(Settings& settings, int version, bool full);

// Reads what writeVis wrote, and answers the version that was stored. What the record does not reach keeps
// its value, and so does the version of `settings`. The two cases in which nothing is read are reported: 0
// for a record of another kind, and the stored version if it is above that of `settings`. More entries than a
// table has are reported and read over. orv::Exception "filer error" if the record ends early; the entries
// read until then are set.
TALDORK_API int readVis(serialization::IInArchive& archive, Settings& settings);

TALDORK_API void writeVis(serialization::IOutArchive& archive, const Settings& settings);

} // namespace orv::settings
