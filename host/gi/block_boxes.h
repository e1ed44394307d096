#pragma once

#include "dbextents.h"
#include "dbid.h"
#include "gemat3d.h"

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <utility>

namespace embedded {

// The box of what was drawn, and of what drawables told themselves.
struct DrawnBoxes {
    AcDbExtents drawn;
    AcDbExtents told;

    void add(const DrawnBoxes& other);
    void transformBy(const AcGeMatrix3d& matrix);
};

// The boxes of the blocks that a walk for extents comes through. Blocks inside of blocks are soon too many to
// be drawn one by one, but what a block draws depends on where it stands only by a move: so each is walked
// through once for each turn, scale and slant that it has, and the box of any other reference is that one,
// moved.
class BlockBoxes {
public:
    // Walks through the block under a transform, and answers what that draws.
    using Walk = std::function<DrawnBoxes(const AcGeMatrix3d&)>;

    // The boxes of a block under a transform.
    DrawnBoxes under(const AcDbObjectId& block, const AcGeMatrix3d& matrix, const Walk& walk);
    // The same where even that takes too long: the block's own box as the transform leaves it, which holds
    // the block and may be larger. Walks through each block once. Nothing for a block within itself.
    DrawnBoxes roughlyUnder(const AcDbObjectId& block, const AcGeMatrix3d& matrix, const Walk& walk);

private:
    // The nine numbers beside the move, bit by bit: damaged drawings have some that do not compare.
    using Form = std::array<std::uint64_t, 9>;

    static Form formOf(const AcGeMatrix3d& matrix);

    std::map<std::pair<AcDbStub*, Form>, DrawnBoxes> m_exact;
    std::map<AcDbStub*, DrawnBoxes> m_own; // without a box while the block is walked through
};

} // namespace embedded
