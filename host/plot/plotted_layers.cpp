#include "plot/plotted_layers.h"

#include "dbsymtb.h"
#include "embedded/plot.h"

#include <algorithm>

namespace embedded {

bool PlottedLayers::isPlotted(const AcDbObjectId& layer) {
    if (layer == m_last)
        return m_isLastPlotted;
    const auto [place, isNew] = m_layers.try_emplace(static_cast<AcDbStub*>(layer), true);
    AcDbLayerTableRecord* record = nullptr;
    if (isNew && !layer.isNull() && acdbOpenObject(record, layer, AcDb::kForRead) == Acad::eOk) {
        place->second = record->isPlottable();
        record->close();
    }
    m_last = layer;
    m_isLastPlotted = place->second;
    return m_isLastPlotted;
}

void leaveOutNotPlotted(DisplayList& list) {
    PlottedLayers layers;
    auto& primitives = list.primitives;
    primitives.erase(std::remove_if(primitives.begin(), primitives.end(),
                                    [&](const Primitive& primitive) { return !layers.has(primitive); }),
                     primitives.end());
}

} // namespace embedded
