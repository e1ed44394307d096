#include "gemat3d.h"

#include "ge/eigen_views.h"

using namespace embedded::ge;

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& right) const {
    AcGeMatrix3d product;
    view(product) = view(*this) * view(right);
    return product;
}

AcGeMatrix3d AcGeMatrix3d::inverse(const AcGeTol& tol) const { return embedded::ge::inverse<4>(*this, tol); }

Adesk::Boolean AcGeMatrix3d::isSingular(const AcGeTol& tol) const {
    return embedded::ge::isSingular<4>(*this, tol);
}

AcGeMatrix3d AcGeMatrix3d::transpose() const {
    AcGeMatrix3d result;
    view(result) = view(*this).transpose();
    return result;
}

double AcGeMatrix3d::det() const { return view(*this).determinant(); }

Adesk::Boolean AcGeMatrix3d::isEqualTo(const AcGeMatrix3d& other, const AcGeTol& tol) const {
    return entriesAreEqual(*this, other, tol);
}

Adesk::Boolean AcGeMatrix3d::isUniScaledOrtho(const AcGeTol& tol) const {
    return isScaledOrtho(tol) && isUniform<4>(*this, tol);
}

Adesk::Boolean AcGeMatrix3d::isScaledOrtho(const AcGeTol& tol) const {
    return columnsArePerpendicular<4>(*this, tol);
}

double AcGeMatrix3d::scale() const { return longestColumn<4>(*this); }

double AcGeMatrix3d::norm() const { return linearPart<4>(*this).cwiseAbs().colwise().sum().maxCoeff(); }

AcGeMatrix3d& AcGeMatrix3d::setTranslation(const AcGeVector3d& vector) {
    for (unsigned int row = 0; row < 3; ++row)
        entry[row][3] = vector[row];
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                           const AcGeVector3d& yAxis, const AcGeVector3d& zAxis) {
    setToIdentity();
    for (unsigned int row = 0; row < 3; ++row) {
        entry[row][0] = xAxis[row];
        entry[row][1] = yAxis[row];
        entry[row][2] = zAxis[row];
        entry[row][3] = origin[row];
    }
    return *this;
}

void AcGeMatrix3d::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                                  AcGeVector3d& zAxis) const {
    for (unsigned int row = 0; row < 3; ++row) {
        xAxis[row] = entry[row][0];
        yAxis[row] = entry[row][1];
        zAxis[row] = entry[row][2];
        origin[row] = entry[row][3];
    }
}

AcGeMatrix2d AcGeMatrix3d::convertToLocal(AcGeVector3d& normal, double& elev) const {
    const AcGeMatrix3d drawn = *this * AcGeMatrix3d::planeToWorld(normal);
    AcGePoint3d origin;
    AcGeVector3d xAxis;
    AcGeVector3d yAxis;
    AcGeVector3d zAxis;
    drawn.getCoordSystem(origin, xAxis, yAxis, zAxis);
    origin += zAxis * elev;
    normal = xAxis.crossProduct(yAxis).normal();
    const AcGeMatrix3d local = AcGeMatrix3d::worldToPlane(normal);
    const AcGePoint3d place = local * origin;
    elev = place.z;
    xAxis.transformBy(local);
    yAxis.transformBy(local);
    AcGeMatrix2d result;
    result.setCoordSystem({place.x, place.y}, {xAxis.x, xAxis.y}, {yAxis.x, yAxis.y});
    return result;
}
