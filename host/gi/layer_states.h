#pragma once

#include "dbid.h"

#include <map>

namespace embedded {

// What of a drawing's layers is shown; each layer is looked at once.
class LayerStates {
public:
    enum class State { kShown, kOff, kFrozen };

    // Shown for null and for what is no layer.
    State of(const AcDbObjectId& layer);

private:
    std::map<AcDbStub*, State> m_states;
};

} // namespace embedded
