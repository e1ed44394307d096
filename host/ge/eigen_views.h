#pragma once

#include "gemat2d.h"
#include "gemat3d.h"

#include <Eigen/Dense>

// The host's matrices and vectors as the linear algebra library sees them, in place.
namespace embedded::ge {

template <int kSize>
using RowMatrix = Eigen::Matrix<double, kSize, kSize, Eigen::RowMajor>;

inline Eigen::Map<const RowMatrix<4>> view(const AcGeMatrix3d& matrix) {
    return Eigen::Map<const RowMatrix<4>>(&matrix.entry[0][0]);
}
inline Eigen::Map<RowMatrix<4>> view(AcGeMatrix3d& matrix) {
    return Eigen::Map<RowMatrix<4>>(&matrix.entry[0][0]);
}
inline Eigen::Map<const RowMatrix<3>> view(const AcGeMatrix2d& matrix) {
    return Eigen::Map<const RowMatrix<3>>(&matrix.entry[0][0]);
}
inline Eigen::Map<RowMatrix<3>> view(AcGeMatrix2d& matrix) {
    return Eigen::Map<RowMatrix<3>>(&matrix.entry[0][0]);
}
inline Eigen::Vector3d view(const AcGeVector3d& vector) { return {vector.x, vector.y, vector.z}; }
inline Eigen::Vector3d view(const AcGePoint3d& point) { return {point.x, point.y, point.z}; }

// What is asked of an affine matrix, for the plane and for space alike: `Matrix` is AcGeMatrix2d or 3d,
// kSize its number of rows.

template <int kSize, class Matrix>
auto linearPart(Matrix& matrix) {
    return view(matrix).template topLeftCorner<kSize - 1, kSize - 1>();
}

// A volume between 0 and 1: how far the columns are from lying in one plane, whatever their lengths. Not a
// number if one has none.
template <int kSize, class Matrix>
double spannedVolume(const Matrix& matrix) {
    Eigen::Matrix<double, kSize - 1, kSize - 1> columns = linearPart<kSize>(matrix);
    for (int i = 0; i < kSize - 1; ++i)
        columns.col(i) /= columns.col(i).norm();
    return std::fabs(columns.determinant());
}

template <int kSize, class Matrix>
bool isSingular(const Matrix& matrix, const AcGeTol& tol) {
    const double volume = spannedVolume<kSize>(matrix);
    return !(volume > tol.equalVector()) || !std::isnormal(matrix.det());
}

template <int kSize, class Matrix>
bool isAffine(const Matrix& matrix) {
    return view(matrix).row(kSize - 1) == RowMatrix<kSize>::Identity().row(kSize - 1);
}

template <int kSize, class Matrix>
Matrix inverse(const Matrix& matrix, const AcGeTol& tol) {
    if (isSingular<kSize>(matrix, tol))
        return matrix;
    Matrix result;
    if (isAffine<kSize>(matrix)) {
        // By parts, so that the last row stays exact.
        linearPart<kSize>(result) = linearPart<kSize>(matrix).inverse();
        view(result).template topRightCorner<kSize - 1, 1>() =
            -(linearPart<kSize>(result) * view(matrix).template topRightCorner<kSize - 1, 1>());
    } else {
        view(result) = view(matrix).inverse();
    }
    // Adding a zero makes a positive one of a negative one.
    view(result).array() += 0.0;
    return result;
}

template <int kSize, class Matrix>
bool columnsArePerpendicular(const Matrix& matrix, const AcGeTol& tol) {
    const auto columns = linearPart<kSize>(matrix);
    for (int i = 0; i < kSize - 1; ++i) {
        if (!(columns.col(i).norm() > tol.equalVector()))
            return false;
        for (int j = 0; j < i; ++j) {
            const double cosine =
                columns.col(i).dot(columns.col(j)) / columns.col(i).norm() / columns.col(j).norm();
            if (!(std::fabs(cosine) <= tol.equalVector()))
                return false;
        }
    }
    return true;
}

template <int kSize, class Matrix>
bool isUniform(const Matrix& matrix, const AcGeTol& tol) {
    const auto columns = linearPart<kSize>(matrix);
    const double first = columns.col(0).norm();
    for (int i = 1; i < kSize - 1; ++i) {
        if (!(std::fabs(columns.col(i).norm() / first - 1.0) <= tol.equalVector()))
            return false;
    }
    return true;
}

template <int kSize, class Matrix>
double longestColumn(const Matrix& matrix) {
    return linearPart<kSize>(matrix).colwise().norm().maxCoeff();
}

template <class Matrix>
bool entriesAreEqual(const Matrix& a, const Matrix& b, const AcGeTol& tol) {
    return ((view(a) - view(b)).array().abs() <= tol.equalVector()).all();
}

} // namespace embedded::ge
