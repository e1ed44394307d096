#include "db/entities/hatch_picture.h"

namespace embedded {

Acad::ErrorStatus ringsOf(const HatchFields& fields, std::vector<HatchRing>& rings) {
    if (fields.loops.empty())
        return Acad::eInvalidInput;
    std::size_t points = 0;
    for (const HatchLoop& loop : fields.loops) {
        points += pointsOf(loop);
        if (points > kMostHatchPoints)
            return Acad::eExcessiveItemCount;
    }
    for (const HatchLoop& loop : fields.loops) {
        HatchRing ring = ringOf(loop);
        if (ring.size() > 2)
            rings.push_back(std::move(ring));
    }
    return Acad::eOk;
}

HatchPicture evaluate(const HatchFields& fields, const HatchLimits& limits) {
    HatchPicture picture;
    std::vector<HatchRing> rings;
    picture.status = ringsOf(fields, rings);
    if (picture.status == Acad::eOk)
        picture.status = fields.isSolid
                             ? hatchPieces(rings, fields.style, picture.pieces)
                             : hatchLines(rings, fields.style, fields.families, limits, picture.lines);
    if (picture.status != Acad::eOk) {
        picture.lines.clear();
        picture.pieces.clear();
    }
    return picture;
}

} // namespace embedded
