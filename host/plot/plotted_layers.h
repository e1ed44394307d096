#pragma once

#include "embedded/display_list.h"

#include <map>

namespace embedded {

// What is plotted: all but what its drawable or its layer keeps off any plot. Each layer is looked at once.
class PlottedLayers {
public:
    bool has(const Primitive& primitive) {
        return primitive.isPlottable && isPlotted(primitive.traits.layer);
    }

private:
    // True for null and for what is no layer.
    bool isPlotted(const AcDbObjectId& layer);

    std::map<AcDbStub*, bool> m_layers;
    // Most primitives are on the layer of the one before.
    AcDbObjectId m_last;
    bool m_isLastPlotted = true;
};

} // namespace embedded
