#include "gi/block_boxes.h"

#include <cstring>

namespace embedded {
namespace {

AcGeVector3d moveOf(const AcGeMatrix3d& matrix) { return {matrix(0, 3), matrix(1, 3), matrix(2, 3)}; }

} // namespace

void DrawnBoxes::add(const DrawnBoxes& other) {
    drawn.addExt(other.drawn);
    told.addExt(other.told);
}

void DrawnBoxes::transformBy(const AcGeMatrix3d& matrix) {
    drawn.transformBy(matrix);
    told.transformBy(matrix);
}

BlockBoxes::Form BlockBoxes::formOf(const AcGeMatrix3d& matrix) {
    Form form;
    for (unsigned int row = 0; row < 3; ++row)
        for (unsigned int column = 0; column < 3; ++column) {
            const double number = matrix(row, column);
            std::memcpy(&form[row * 3 + column], &number, sizeof number);
        }
    return form;
}

DrawnBoxes BlockBoxes::under(const AcDbObjectId& block, const AcGeMatrix3d& matrix, const Walk& walk) {
    const std::pair<AcDbStub*, Form> key(static_cast<AcDbStub*>(block), formOf(matrix));
    const AcGeVector3d move = moveOf(matrix);
    const auto known = m_exact.find(key);
    if (known != m_exact.end()) {
        DrawnBoxes boxes = known->second;
        boxes.transformBy(AcGeMatrix3d::translation(move));
        return boxes;
    }
    const DrawnBoxes walked = walk(matrix);
    DrawnBoxes unmoved = walked;
    unmoved.transformBy(AcGeMatrix3d::translation(-move));
    m_exact[key] = unmoved;
    return walked;
}

DrawnBoxes BlockBoxes::roughlyUnder(const AcDbObjectId& block, const AcGeMatrix3d& matrix, const Walk& walk) {
    const auto [place, isNew] = m_own.emplace(static_cast<AcDbStub*>(block), DrawnBoxes());
    if (isNew)
        place->second = walk(AcGeMatrix3d());
    DrawnBoxes boxes = place->second;
    boxes.transformBy(matrix);
    return boxes;
}

} // namespace embedded
