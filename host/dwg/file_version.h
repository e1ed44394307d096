#pragma once

#include "dwg/byte_span.h"

namespace embedded::dwg {

enum class FileVersion { kR2000 };

// The version that the first bytes of a file name. FileError with one clear line for a file that is no
// drawing and for a version that this host does not read.
FileVersion versionOf(ByteSpan file);

} // namespace embedded::dwg
