#pragma once

#include "acadstrc.h"
#include "gepnt3d.h"

// A box along the world's axes. A fresh one holds nothing, and its points say so: the lower one is above the
// upper one.
class AcDbExtents {
public:
    AcDbExtents() = default;
    // As set; what stands in the wrong order gives an empty box.
    AcDbExtents(const AcGePoint3d& minPoint, const AcGePoint3d& maxPoint) { set(minPoint, maxPoint); }

    AcGePoint3d minPoint() const { return m_min; }
    AcGePoint3d maxPoint() const { return m_max; }
    // Nothing is in it.
    bool isEmpty() const { return m_min.x > m_max.x || m_min.y > m_max.y || m_min.z > m_max.z; }

    // eInvalidExtents, and the box stays, if a coordinate of the lower point is above that of the upper.
    Acad::ErrorStatus set(const AcGePoint3d& minPoint, const AcGePoint3d& maxPoint);
    // Grows to hold the point, or the other box. An empty box adds nothing.
    void addPoint(const AcGePoint3d& point);
    void addExt(const AcDbExtents& other);
    // By the vector in its direction: the box holds itself and itself moved. An empty one stays so.
    void expandBy(const AcGeVector3d& vector);
    // To the box of the eight corners where the matrix takes them. An empty one stays so.
    void transformBy(const AcGeMatrix3d& matrix);

private:
    AcGePoint3d m_min = {1.0e20, 1.0e20, 1.0e20};
    AcGePoint3d m_max = {-1.0e20, -1.0e20, -1.0e20};
};
