#include "db/entities/entity_parts.h"

#include "acgi.h"
#include "db/entities/curve_path.h"
#include "db/field_filer.h"
#include "db/object_access.h"
#include "dbents.h"

#include <cmath>

namespace embedded {

AcGePoint3d ownToWorld(const AcGeVector3d& normal, const AcGePoint3d& point) {
    return normal == AcGeVector3d::kZAxis ? point : AcGeMatrix3d::planeToWorld(normal) * point;
}

AcGePoint3d worldToOwn(const AcGeVector3d& normal, const AcGePoint3d& point) {
    return normal == AcGeVector3d::kZAxis ? point : AcGeMatrix3d::worldToPlane(normal) * point;
}

bool transformsPlane(const AcGeMatrix3d& matrix, AcGeVector3d& normal) {
    const AcGeVector3d across = normal.perpVector();
    const AcGeVector3d x = matrix * across;
    const AcGeVector3d y = matrix * normal.crossProduct(across);
    const AcGeVector3d made = x.crossProduct(y);
    const double size = x.length() * y.length();
    if (!(made.length() > 1.0e-12 * size) || !std::isfinite(size))
        return false;
    // Rounding must not tilt what stands upright: the coordinates behind it would all change a little.
    const AcGeVector3d unit = made / made.length();
    for (const AcGeVector3d& axis : {AcGeVector3d::kZAxis, -AcGeVector3d::kZAxis}) {
        if ((unit - axis).length() < 1.0e-14) {
            normal = axis;
            return true;
        }
    }
    normal = unit;
    return true;
}

double transformedThickness(const AcGeMatrix3d& matrix, const AcGeVector3d& normal,
                            const AcGeVector3d& newNormal, double thickness) {
    if (thickness == 0.0)
        return thickness;
    const AcGeVector3d up = matrix * normal;
    return up.dotProduct(newNormal) < 0.0 ? -up.length() * thickness : up.length() * thickness;
}

bool keepsCirclesRound(const AcGeMatrix3d& matrix, const AcGeVector3d& normal) {
    PlaneArc circle;
    circle.normal = normal;
    circle.xAxis = normal.perpVector();
    circle.radius = 1.0;
    return circle.transformBy(matrix);
}

bool indicesAreBelow(const AcDbIntArray& indices, int count) {
    for (const int index : indices)
        if (index < 0 || index >= count)
            return false;
    return true;
}

Acad::ErrorStatus declineWhatIsLeft(AcDbDwgFiler& filer) {
    const FieldFiler* file = fieldFiler(&filer);
    // Behind the last handle a byte may be begun, but no further handle fits in.
    return file != nullptr && (file->dataBitsLeft() != 0 || file->handleBitsLeft() >= 8) ? Acad::eMakeMeProxy
                                                                                         : Acad::eOk;
}

void takeSettings(const AcDbEntity& from, AcDbEntity& to) {
    ObjectAccess::setSettings(to, ObjectAccess::settings(from));
}

bool drawPath(const CurvePath& path, const AcGeVector3d* normal, bool isWhole, const AcGiGeometry& geometry) {
    std::vector<AcGePoint3d> chain;
    const auto flush = [&] {
        const bool stop = !chain.empty() &&
                          geometry.polyline(static_cast<Adesk::UInt32>(chain.size()), chain.data(), normal);
        chain.clear();
        return stop;
    };
    for (const PathSegment& piece : path.segments) {
        if (piece.isStraight) {
            if (chain.empty())
                chain.push_back(piece.from);
            chain.push_back(piece.to);
            continue;
        }
        const PlaneArc& arc = piece.arc;
        if (flush() ||
            (isWhole ? geometry.circle(arc.centre, arc.radius, arc.normal)
                     : geometry.circularArc(arc.centre, arc.radius, arc.normal, arc.xAxis, arc.sweep)))
            return true;
    }
    return flush();
}

Acad::ErrorStatus explodePath(const CurvePath& path, const AcGeVector3d& normal, double thickness,
                              const AcDbEntity& from, AcDbVoidPtrArray& entitySet) {
    if (path.segments.empty())
        return Acad::eCannotExplodeEntity;
    for (const PathSegment& piece : path.segments) {
        AcDbCurve* part = nullptr;
        if (piece.isStraight) {
            auto* line = new AcDbLine(piece.from, piece.to);
            line->setNormal(normal);
            line->setThickness(thickness);
            part = line;
        } else {
            auto* arc = newArc(piece.arc);
            // The arc's own normal may be the other one.
            arc->setThickness(piece.arc.normal.dotProduct(normal) < 0.0 ? -thickness : thickness);
            part = arc;
        }
        takeSettings(from, *part);
        entitySet.append(part);
    }
    return Acad::eOk;
}

} // namespace embedded
