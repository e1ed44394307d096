#include "gevec2d.h"

#include "ge/directions.h"

using namespace embedded::ge;

AcGeVector2d& AcGeVector2d::rotateBy(double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return set(c * x - s * y, s * x + c * y);
}

AcGeVector2d& AcGeVector2d::mirror(const AcGeVector2d& line) {
    const AcGeVector2d across = line.normal().perpVector();
    return *this -= across * (2.0 * dotProduct(across));
}

double AcGeVector2d::angle() const { return fullTurn(std::atan2(y, x)); }

AcGeVector2d& AcGeVector2d::normalize(const AcGeTol& tol, AcGeError& flag) {
    flag = isZeroLength(tol) ? AcGe::k0This : AcGe::kOk;
    return normalize(tol);
}

Adesk::Boolean AcGeVector2d::isParallelTo(const AcGeVector2d& other, const AcGeTol& tol) const {
    AcGeError flag;
    return isParallelTo(other, tol, flag);
}

Adesk::Boolean AcGeVector2d::isParallelTo(const AcGeVector2d& other, const AcGeTol& tol,
                                          AcGeError& flag) const {
    return isParallel(*this, other, tol, flag);
}

Adesk::Boolean AcGeVector2d::isCodirectionalTo(const AcGeVector2d& other, const AcGeTol& tol) const {
    AcGeError flag;
    return isCodirectionalTo(other, tol, flag);
}

Adesk::Boolean AcGeVector2d::isCodirectionalTo(const AcGeVector2d& other, const AcGeTol& tol,
                                               AcGeError& flag) const {
    return isCodirectional(*this, other, tol, flag);
}

Adesk::Boolean AcGeVector2d::isPerpendicularTo(const AcGeVector2d& other, const AcGeTol& tol) const {
    AcGeError flag;
    return isPerpendicularTo(other, tol, flag);
}

Adesk::Boolean AcGeVector2d::isPerpendicularTo(const AcGeVector2d& other, const AcGeTol& tol,
                                               AcGeError& flag) const {
    return isPerpendicular(*this, other, tol, flag);
}
