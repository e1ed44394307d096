#include "dbextents.h"

#include <algorithm>

Acad::ErrorStatus AcDbExtents::set(const AcGePoint3d& minPoint, const AcGePoint3d& maxPoint) {
    // Written so that a coordinate that is no number is refused, too.
    if (!(minPoint.x <= maxPoint.x && minPoint.y <= maxPoint.y && minPoint.z <= maxPoint.z))
        return Acad::eInvalidExtents;
    m_min = minPoint;
    m_max = maxPoint;
    return Acad::eOk;
}

void AcDbExtents::addPoint(const AcGePoint3d& point) {
    if (isEmpty()) {
        m_min = m_max = point;
        return;
    }
    for (unsigned int i = 0; i < 3; ++i) {
        m_min[i] = std::min(m_min[i], point[i]);
        m_max[i] = std::max(m_max[i], point[i]);
    }
}

void AcDbExtents::addExt(const AcDbExtents& other) {
    if (other.isEmpty())
        return;
    addPoint(other.m_min);
    addPoint(other.m_max);
}

void AcDbExtents::expandBy(const AcGeVector3d& vector) {
    if (isEmpty())
        return;
    const AcDbExtents before = *this;
    addPoint(before.m_min + vector);
    addPoint(before.m_max + vector);
}

void AcDbExtents::transformBy(const AcGeMatrix3d& matrix) {
    if (isEmpty())
        return;
    const AcDbExtents before = *this;
    *this = AcDbExtents();
    for (int corner = 0; corner < 8; ++corner)
        addPoint(matrix * AcGePoint3d((corner & 1) != 0 ? before.m_max.x : before.m_min.x,
                                      (corner & 2) != 0 ? before.m_max.y : before.m_min.y,
                                      (corner & 4) != 0 ? before.m_max.z : before.m_min.z));
}
