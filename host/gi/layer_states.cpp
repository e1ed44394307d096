#include "gi/layer_states.h"

#include "dbsymtb.h"

namespace embedded {

LayerStates::State LayerStates::of(const AcDbObjectId& layer) {
    const auto made = m_states.try_emplace(static_cast<AcDbStub*>(layer), State::kShown);
    if (!made.second || layer.isNull())
        return made.first->second;
    AcDbLayerTableRecord* record = nullptr;
    if (acdbOpenObject(record, layer, AcDb::kForRead) == Acad::eOk) {
        made.first->second = record->isFrozen() ? State::kFrozen
                             : record->isOff()  ? State::kOff
                                                : State::kShown;
        record->close();
    }
    return made.first->second;
}

} // namespace embedded
