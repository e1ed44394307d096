#pragma once

#include "gemat2d.h"
#include "gemat3d.h"

#include <gtest/gtest.h>

#include <ostream>

// What gtest shows of a value that is not as expected.
inline void PrintTo(const AcGeVector2d& v, std::ostream* out) { *out << "<" << v.x << " " << v.y << ">"; }
inline void PrintTo(const AcGePoint2d& p, std::ostream* out) { *out << "(" << p.x << " " << p.y << ")"; }
inline void PrintTo(const AcGeVector3d& v, std::ostream* out) {
    *out << "<" << v.x << " " << v.y << " " << v.z << ">";
}
inline void PrintTo(const AcGePoint3d& p, std::ostream* out) {
    *out << "(" << p.x << " " << p.y << " " << p.z << ")";
}
inline void PrintTo(const AcGeMatrix3d& m, std::ostream* out) {
    for (const auto& row : m.entry)
        *out << "\n[" << row[0] << " " << row[1] << " " << row[2] << " " << row[3] << "]";
}

constexpr double kPi = 3.141592653589793;
constexpr double kRightAngle = kPi / 2.0;

inline AcGeTol tolerance(double equalVector, double equalPoint = 1.0e-10) {
    AcGeTol tol;
    tol.setEqualVector(equalVector);
    tol.setEqualPoint(equalPoint);
    return tol;
}

// The same numbers, not only within a tolerance; a negative zero counts as zero.
inline bool same(const AcGeVector3d& a, const AcGeVector3d& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}
inline bool same(const AcGePoint3d& a, const AcGePoint3d& b) { return same(a.asVector(), b.asVector()); }
inline bool same(const AcGeMatrix3d& a, const AcGeMatrix3d& b) {
    for (unsigned row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column)
            if (a(row, column) != b(row, column))
                return false;
    return true;
}
