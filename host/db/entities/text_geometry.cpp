#include "acgi.h"
#include "db/entities/entity_parts.h"
#include "dbents.h"
#include "embedded/display_list.h"
#include "gi/plane_arc.h"
#include "gi/text_metrics.h"

#include <cmath>

using namespace embedded;

namespace {

// How far letters like g hang below the base line, as a share of the height.
const double kDescent = 1.0 / 3.0;

double heightAbove(Adesk::UInt16 vertical, Adesk::UInt16 horizontal, double height) {
    if (horizontal == AcDb::kTextMid || vertical == AcDb::kTextVertMid)
        return height / 2.0;
    if (vertical == AcDb::kTextTop)
        return height;
    return vertical == AcDb::kTextBottom ? -kDescent * height : 0.0;
}

} // namespace

double AcDbText::letterWidth() const {
    AcGiTextStyle style;
    if (!m_fields.style.isNull())
        fromAcDbTextStyle(style, m_fields.style);
    return textWidth(withoutTextCodes(m_fields.text.kACharPtr()), m_fields.height, m_fields.widthFactor,
                     settingOf(style));
}

AcGeVector3d AcDbText::baseLine() const {
    const AcGeVector3d x = m_fields.normal.perpVector();
    return x * std::cos(m_fields.rotation) + m_fields.normal.crossProduct(x) * std::sin(m_fields.rotation);
}

Acad::ErrorStatus AcDbText::adjustAlignment(const AcDbDatabase*) {
    if (isDefaultAlignment())
        return Acad::eOk;
    assertWriteEnabled();
    Fields& f = m_fields;
    if (f.horizontal == AcDb::kTextAlign || f.horizontal == AcDb::kTextFit) {
        // Between the two points, by its size or by its letters' width.
        const AcGeVector2d between = f.alignment - f.position;
        const double width = letterWidth();
        if (!(between.length() > 0.0) || !(width > 0.0))
            return Acad::eOk;
        f.rotation = between.angle();
        (f.horizontal == AcDb::kTextFit ? f.widthFactor : f.height) *= between.length() / width;
        return Acad::eOk;
    }
    const double width = letterWidth();
    const double before = f.horizontal == AcDb::kTextRight                                      ? width
                          : f.horizontal == AcDb::kTextCenter || f.horizontal == AcDb::kTextMid ? width / 2.0
                                                                                                : 0.0;
    const AcGeVector2d along(std::cos(f.rotation), std::sin(f.rotation));
    f.position =
        f.alignment - along * before - along.perpVector() * heightAbove(f.vertical, f.horizontal, f.height);
    return Acad::eOk;
}

// Along the base line, up, and slanted: where these go tells height, width and slant behind the
// transformation.
Acad::ErrorStatus AcDbText::subTransformBy(const AcGeMatrix3d& xform) {
    const AcGeVector3d along = baseLine();
    const AcGeVector3d up = m_fields.normal.crossProduct(along);
    const AcGeVector3d newAlong = xform * along;
    const AcGeVector3d slanted = xform * (up + along * std::tan(m_fields.oblique));
    AcGeVector3d normal = m_fields.normal;
    if (!transformsPlane(xform, normal))
        return Acad::eCannotScaleNonUniformly;
    assertWriteEnabled();
    const double stretch = newAlong.length();
    const double rise = newAlong.crossProduct(slanted).length() / stretch;
    const AcGePoint3d position = xform * toWorld(m_fields.position);
    const AcGePoint3d alignment = xform * toWorld(m_fields.alignment);
    const bool aligned = !isDefaultAlignment();
    Fields& f = m_fields;
    f.thickness = transformedThickness(xform, f.normal, normal, f.thickness);
    f.normal = normal;
    f.oblique = wholeTurns(std::atan2(slanted.dotProduct(newAlong) / stretch, rise));
    f.height *= rise;
    f.widthFactor *= stretch / rise;
    const AcGeVector3d x = normal.perpVector();
    f.rotation = wholeTurns(std::atan2(newAlong.dotProduct(normal.crossProduct(x)), newAlong.dotProduct(x)));
    setPosition(position);
    if (aligned) {
        const AcGePoint3d own = worldToOwn(normal, alignment);
        f.alignment.set(own.x, own.y);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                             AcDbIntArray&) const {
    gripPoints.append(toWorld(m_fields.position));
    if (!isDefaultAlignment())
        gripPoints.append(toWorld(m_fields.alignment));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    if (!indicesAreBelow(indices, isDefaultAlignment() ? 1 : 2))
        return Acad::eInvalidIndex;
    return indices.isEmpty() ? Acad::eOk : transformBy(AcGeMatrix3d::translation(offset));
}

Acad::ErrorStatus AcDbText::subGetGeomExtents(AcDbExtents& extents) const {
    if (drawnExtents(*this, extents) == Acad::eOk)
        return Acad::eOk;
    AcDbExtents box;
    box.addPoint(toWorld(m_fields.position));
    box.expandBy(m_fields.normal.crossProduct(baseLine()) * m_fields.height);
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                              const AcGePoint3d&, const AcGeMatrix3d&,
                                              AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
    if (osnapMode != AcDb::kOsModeIns && osnapMode != AcDb::kOsModeNode)
        return Acad::eOk;
    snapPoints.append(toWorld(m_fields.position));
    if (!isDefaultAlignment())
        snapPoints.append(toWorld(m_fields.alignment));
    return Acad::eOk;
}

Adesk::Boolean AcDbText::subWorldDraw(AcGiWorldDraw* worldDraw) {
    AcGiTextStyle style;
    // A text without a style that can be read is drawn all the same.
    if (!m_fields.style.isNull())
        fromAcDbTextStyle(style, m_fields.style);
    style.setTextSize(m_fields.height);
    style.setXScale(m_fields.widthFactor);
    style.setObliquingAngle(m_fields.oblique);
    style.setBackward(isMirroredInX());
    style.setUpsideDown(isMirroredInY());
    worldDraw->subEntityTraits().setThickness(m_fields.thickness);
    worldDraw->geometry().text(toWorld(m_fields.position), m_fields.normal, baseLine(),
                               m_fields.text.kACharPtr(), -1, false, style);
    return true;
}
