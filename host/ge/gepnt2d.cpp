#include "gepnt2d.h"

AcGePoint2d& AcGePoint2d::rotateBy(double angle, const AcGePoint2d& about) {
    return *this = about + (*this - about).rotateBy(angle);
}

AcGePoint2d& AcGePoint2d::scaleBy(double factor, const AcGePoint2d& about) {
    return *this = about + (*this - about) * factor;
}
