#pragma once

#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec2d.h"
#include "gevec3d.h"

// Points and vectors as the rows of numbers that the plain interface takes, and such rows as points and
// vectors: the same memory, no copy.
inline double* asDblArray(AcGePoint2d& point) { return &point.x; }
inline double* asDblArray(AcGeVector2d& vector) { return &vector.x; }
inline double* asDblArray(AcGePoint3d& point) { return &point.x; }
inline double* asDblArray(AcGeVector3d& vector) { return &vector.x; }
inline const double* asDblArray(const AcGePoint2d& point) { return &point.x; }
inline const double* asDblArray(const AcGeVector2d& vector) { return &vector.x; }
inline const double* asDblArray(const AcGePoint3d& point) { return &point.x; }
inline const double* asDblArray(const AcGeVector3d& vector) { return &vector.x; }

inline AcGePoint2d& asPnt2d(double* numbers) { return *reinterpret_cast<AcGePoint2d*>(numbers); }
inline AcGeVector2d& asVec2d(double* numbers) { return *reinterpret_cast<AcGeVector2d*>(numbers); }
inline AcGePoint3d& asPnt3d(double* numbers) { return *reinterpret_cast<AcGePoint3d*>(numbers); }
inline AcGeVector3d& asVec3d(double* numbers) { return *reinterpret_cast<AcGeVector3d*>(numbers); }
inline const AcGePoint2d& asPnt2d(const double* numbers) {
    return *reinterpret_cast<const AcGePoint2d*>(numbers);
}
inline const AcGeVector2d& asVec2d(const double* numbers) {
    return *reinterpret_cast<const AcGeVector2d*>(numbers);
}
inline const AcGePoint3d& asPnt3d(const double* numbers) {
    return *reinterpret_cast<const AcGePoint3d*>(numbers);
}
inline const AcGeVector3d& asVec3d(const double* numbers) {
    return *reinterpret_cast<const AcGeVector3d*>(numbers);
}
