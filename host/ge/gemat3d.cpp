#include "gemat3d.h"

AcGeMatrix3d::AcGeMatrix3d() { setToIdentity(); }

AcGeMatrix3d& AcGeMatrix3d::setToIdentity() {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            entry[row][column] = row == column ? 1.0 : 0.0;
    return *this;
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& other) const {
    AcGeMatrix3d product;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) {
            double sum = 0.0;
            for (int inner = 0; inner < 4; ++inner)
                sum += entry[row][inner] * other.entry[inner][column];
            product.entry[row][column] = sum;
        }
    return product;
}

AcGeMatrix3d& AcGeMatrix3d::setToTranslation(const AcGeVector3d& vector) {
    return setToIdentity().setTranslation(vector);
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(double factor, const AcGePoint3d& centre) {
    setToIdentity();
    for (int axis = 0; axis < 3; ++axis)
        entry[axis][axis] = factor;
    return setTranslation(centre.asVector() * (1.0 - factor));
}

AcGeMatrix3d& AcGeMatrix3d::setTranslation(const AcGeVector3d& vector) {
    for (unsigned int row = 0; row < 3; ++row)
        entry[row][3] = vector[row];
    return *this;
}

AcGeVector3d AcGeMatrix3d::translation() const { return {entry[0][3], entry[1][3], entry[2][3]}; }

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

bool AcGeMatrix3d::isEqualTo(const AcGeMatrix3d& other, const AcGeTol& tol) const {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            if (std::fabs(entry[row][column] - other.entry[row][column]) > tol.equalVector())
                return false;
    return true;
}

AcGeVector3d operator*(const AcGeMatrix3d& matrix, const AcGeVector3d& vector) {
    AcGeVector3d result;
    for (unsigned int row = 0; row < 3; ++row)
        result[row] = matrix(row, 0) * vector.x + matrix(row, 1) * vector.y + matrix(row, 2) * vector.z;
    return result;
}

AcGePoint3d operator*(const AcGeMatrix3d& matrix, const AcGePoint3d& point) {
    const AcGeVector3d turned = matrix * point.asVector() + matrix.translation();
    return {turned.x, turned.y, turned.z};
}

AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& matrix) { return *this = matrix * *this; }
AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& matrix) { return *this = matrix * *this; }
