#include "orvshape/acad_draw.h"

#include "dbapserv.h"
#include "dbmain.h"
#include "dbsymtb.h"

namespace orv {

namespace {

AcDbDatabase* drawnDatabase(AcGiCommonDraw& draw) {
    AcGiContext* const context = draw.context();
    AcDbDatabase* const drawn = context != nullptr ? context->database() : nullptr;
    return drawn != nullptr ? drawn : acdbHostApplicationServices()->workingDatabase();
}

AcGiTextStyle styleOfSize(double size) {
    AcGiTextStyle style;
    style.setTextSize(size);
    return style;
}

} // namespace

AcGiSubEntityTraits& AcadCommonDraw::subEntityTraits() const { return m_draw.subEntityTraits(); }

bool AcadCommonDraw::line(const AcGePoint3d& from, const AcGePoint3d& to) const {
    const AcGePoint3d points[] = {from, to};
    return m_geometry.polyline(2, points) != 0;
}

bool AcadCommonDraw::circle(const AcGePoint3d& centre, double radius, const AcGeVector3d& normal) const {
    return radius > 0.0 && !normal.isZeroLength() && m_geometry.circle(centre, radius, normal) != 0;
}

bool AcadCommonDraw::polygon(const std::vector<AcGePoint3d>& corners) const {
    return corners.size() >= 2 &&
           m_geometry.polygon(static_cast<Adesk::UInt32>(corners.size()), corners.data()) != 0;
}

bool AcadCommonDraw::lineType(const std::wstring& name) const {
    AcDbDatabase* const database = drawnDatabase(m_draw);
    AcDbLinetypeTable* table = nullptr;
    if (database == nullptr ||
        acdbOpenObject(table, database->linetypeTableId(), AcDb::kForRead) != Acad::eOk)
        return false;
    AcDbObjectId id;
    const Acad::ErrorStatus es = table->getAt(name.c_str(), id);
    table->close();
    if (es != Acad::eOk)
        return false;
    subEntityTraits().setLineType(id);
    return true;
}

bool AcadCommonDraw::text(const AcGePoint3d& point, const std::wstring& string, const AcGeVector3d& direction,
                          const AcGeVector3d& normal) const {
    // A direction along the normal leaves no way up.
    if (string.empty() || direction.isZeroLength() || normal.isZeroLength() ||
        normal.normal().crossProduct(direction.normal()).isZeroLength())
        return false;
    const AcGiTextStyle style = styleOfSize(m_textSize);
    // The host begins at the left of the base line; both shares say how far the place is from there.
    const AcGePoint2d box = style.extents(string.c_str(), false, -1, false);
    const double toRight = ((m_textAttachment - 1) % 3) / 2.0;
    const double upwards = 1.0 - (m_textAttachment - 1) / 3 / 2.0;
    const AcGeVector3d right = direction.normal();
    const AcGeVector3d up = normal.crossProduct(right).normal();
    const AcGePoint3d begin = point - right * (box.x * toRight) - up * (m_textSize * upwards);
    return m_geometry.text(begin, normal.normal(), right, string.c_str(), -1, false, style) != 0;
}

bool AcadCommonDraw::text(const AcGePoint3d& point, const std::wstring& string,
                          const AcGeVector3d& direction) const {
    return text(point, string, direction, facingNormal());
}

double AcadCommonDraw::textWidth(const std::wstring& string) const {
    return styleOfSize(m_textSize).extents(string.c_str(), false, -1, false).x;
}

void AcadCommonDraw::textSize(double size) {
    if (size > 0.0)
        m_textSize = size;
}

void AcadCommonDraw::textAttachment(int attachment) {
    if (attachment >= 1 && attachment <= 9)
        m_textAttachment = attachment;
}

AcGeVector3d AcadCommonDraw::facingNormal() const { return AcGeVector3d::kZAxis; }

AcadWorldDraw::AcadWorldDraw(AcGiWorldDraw& draw) : AcadCommonDraw(draw, draw.geometry()), m_draw(draw) {}

AcadViewportDraw::AcadViewportDraw(AcGiViewportDraw& draw)
    : AcadCommonDraw(draw, draw.geometry()), m_draw(draw) {}

// The eye's axes through the way back to the drawable: inside of a turned block they are not the world's.
AcGeVector3d AcadViewportDraw::axisOfEye(const AcGeVector3d& axis) const {
    AcGeMatrix3d eyeToModel;
    m_draw.viewport().getEyeToModelTransform(eyeToModel);
    return (eyeToModel * axis).normal();
}

AcGeVector3d AcadViewportDraw::viewDir() const { return axisOfEye(AcGeVector3d::kZAxis); }
AcGeVector3d AcadViewportDraw::viewRight() const { return axisOfEye(AcGeVector3d::kXAxis); }
AcGeVector3d AcadViewportDraw::viewUp() const { return axisOfEye(AcGeVector3d::kYAxis); }

} // namespace orv
