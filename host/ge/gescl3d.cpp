#include "gescl3d.h"

#include "gemat3d.h"

void AcGeScale3d::getMatrix(AcGeMatrix3d& matrix) const {
    matrix.setCoordSystem(AcGePoint3d(), {sx, 0.0, 0.0}, {0.0, sy, 0.0}, {0.0, 0.0, sz});
}
