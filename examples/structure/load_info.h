#pragma once

#include "structure/load_shape.h"

#include <string>

namespace orv {
struct ElementInfoContext;
}

namespace structure {

// What a load tells about itself: its type, shape, cases and values, under a heading.
void appendLoadInfo(const std::wstring& heading, const orv::elem::GenericLoad& load, LoadShape shape,
                    orv::ElementInfoContext& info);

} // namespace structure
