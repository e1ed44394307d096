#include "gemat2d.h"

#include "ge/eigen_views.h"

using namespace embedded::ge;

AcGeMatrix2d AcGeMatrix2d::operator*(const AcGeMatrix2d& right) const {
    AcGeMatrix2d product;
    view(product) = view(*this) * view(right);
    return product;
}

AcGeMatrix2d AcGeMatrix2d::inverse() const { return embedded::ge::inverse<3>(*this, AcGeContext::gTol); }

Adesk::Boolean AcGeMatrix2d::isSingular(const AcGeTol& tol) const {
    return embedded::ge::isSingular<3>(*this, tol);
}

AcGeMatrix2d AcGeMatrix2d::transpose() const {
    AcGeMatrix2d result;
    view(result) = view(*this).transpose();
    return result;
}

double AcGeMatrix2d::det() const { return view(*this).determinant(); }

Adesk::Boolean AcGeMatrix2d::isEqualTo(const AcGeMatrix2d& other, const AcGeTol& tol) const {
    return entriesAreEqual(*this, other, tol);
}

Adesk::Boolean AcGeMatrix2d::isUniScaledOrtho(const AcGeTol& tol) const {
    return isScaledOrtho(tol) && isUniform<3>(*this, tol);
}

Adesk::Boolean AcGeMatrix2d::isScaledOrtho(const AcGeTol& tol) const {
    return columnsArePerpendicular<3>(*this, tol);
}

double AcGeMatrix2d::scale() const { return longestColumn<3>(*this); }

AcGeMatrix2d& AcGeMatrix2d::setTranslation(const AcGeVector2d& vector) {
    entry[0][2] = vector.x;
    entry[1][2] = vector.y;
    return *this;
}

AcGeMatrix2d& AcGeMatrix2d::setCoordSystem(const AcGePoint2d& origin, const AcGeVector2d& xAxis,
                                           const AcGeVector2d& yAxis) {
    setToIdentity();
    for (unsigned int row = 0; row < 2; ++row) {
        entry[row][0] = xAxis[row];
        entry[row][1] = yAxis[row];
        entry[row][2] = origin[row];
    }
    return *this;
}

void AcGeMatrix2d::getCoordSystem(AcGePoint2d& origin, AcGeVector2d& xAxis, AcGeVector2d& yAxis) const {
    xAxis.set(entry[0][0], entry[1][0]);
    yAxis.set(entry[0][1], entry[1][1]);
    origin.set(entry[0][2], entry[1][2]);
}

AcGeMatrix2d& AcGeMatrix2d::setToTranslation(const AcGeVector2d& vector) {
    return setToIdentity().setTranslation(vector);
}

AcGeMatrix2d& AcGeMatrix2d::setToRotation(double angle, const AcGePoint2d& centre) {
    const AcGeVector2d xAxis = AcGeVector2d(1.0, 0.0).rotateBy(angle);
    setCoordSystem(AcGePoint2d(), xAxis, xAxis.perpVector());
    return setTranslation(centre - *this * centre);
}

AcGeMatrix2d& AcGeMatrix2d::setToScaling(double factor, const AcGePoint2d& centre) {
    return setCoordSystem(centre * (1.0 - factor), {factor, 0.0}, {0.0, factor});
}

AcGeMatrix2d& AcGeMatrix2d::setToMirroring(const AcGePoint2d& point) { return setToScaling(-1.0, point); }

AcGeMatrix2d& AcGeMatrix2d::setToAlignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromX,
                                               const AcGeVector2d& fromY, const AcGePoint2d& toOrigin,
                                               const AcGeVector2d& toX, const AcGeVector2d& toY) {
    AcGeMatrix2d from;
    from.setCoordSystem(fromOrigin, fromX, fromY);
    setCoordSystem(toOrigin, toX, toY);
    return *this *= from.inverse();
}
