#pragma once

#include "dbid.h"
#include "gemat3d.h"

#include <functional>

namespace embedded {

// A draw that wants to know where a block begins and ends. The host's own draws are such; those of others
// need not be.
class BlockDrawing {
public:
    virtual void drawBlock(const AcDbObjectId& block, const AcGeMatrix3d& place,
                           const std::function<void()>& drawEntities) = 0;

protected:
    ~BlockDrawing() = default;
};

} // namespace embedded
