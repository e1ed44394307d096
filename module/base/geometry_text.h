#pragma once

#include "gepnt3d.h"
#include "gevec3d.h"

#include <ostream>

// How points and vectors show as values of a report: "Point3d(1, 2.5, 0)". In the namespace of the types, so
// that the report's own stream finds them.

inline std::wostream& operator<<(std::wostream& stream, const AcGePoint3d& point) {
    return stream << L"Point3d(" << point.x << L", " << point.y << L", " << point.z << L')';
}

inline std::wostream& operator<<(std::wostream& stream, const AcGeVector3d& vector) {
    return stream << L"Vector3d(" << vector.x << L", " << vector.y << L", " << vector.z << L')';
}
