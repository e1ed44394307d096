#include "acgi.h"
#include "db/entities/entity_parts.h"
#include "db/entities/mtext_codes.h"
#include "dbmtext.h"
#include "entities/text.h"

#include <algorithm>

using namespace embedded;

// The lines as they are drawn, in the plane of the text from its location on: X along the lines, Y up.
struct AcDbMText::Layout {
    struct Line {
        std::wstring text;
        double x, y;
    };
    AcGiTextStyle style;
    std::vector<Line> lines;
    double left = 0.0, top = 0.0, width = 0.0, height = 0.0;
};

namespace {

// From one base line to the next at factor 1, as a share of the letters' height.
const double kLineDistance = 5.0 / 3.0;

double widthOf(const AcGiTextStyle& style, const std::wstring& text) {
    return text.empty() ? 0.0 : style.extents(text.c_str(), false, -1, true).x;
}

// Where an attachment point is, from 0 at the left or the top to 1. Files name no others than these.
double shareLeftOf(Adesk::UInt16 attachment) {
    return attachment >= AcDbMText::kTopLeft && attachment <= AcDbMText::kBaseRight
               ? ((attachment - 1) % 3) / 2.0
               : 0.0;
}

double shareAbove(Adesk::UInt16 attachment) {
    return attachment >= AcDbMText::kTopLeft && attachment <= AcDbMText::kBaseRight
               ? std::min((attachment - 1) / 3, 2) / 2.0
               : 0.0;
}

} // namespace

AcGeVector3d AcDbMText::alongLines() const {
    const AcGeVector3d& n = m_fields.normal;
    const double size = n.dotProduct(n);
    const AcGeVector3d along =
        size > 0.0 ? m_fields.direction - n * (m_fields.direction.dotProduct(n) / size) : m_fields.direction;
    return along.isZeroLength() ? n.perpVector() : along.normal();
}

AcDbMText::Layout AcDbMText::layout() const {
    Layout made;
    // A text whose style cannot be read is drawn all the same.
    if (!m_fields.style.isNull())
        fromAcDbTextStyle(made.style, m_fields.style);
    made.style.setTextSize(m_fields.height);
    const std::wstring plain = withoutFormatCodes(m_fields.contents.kACharPtr());
    if (plain.empty())
        return made;
    const auto measured = [&made](const std::wstring& text) { return widthOf(made.style, text); };
    const double step = kLineDistance * m_fields.height * m_fields.spacingFactor;
    for (const std::wstring& line : brokenLines(plain, m_fields.width, measured)) {
        const double y = -m_fields.height - step * static_cast<double>(made.lines.size());
        made.lines.push_back({line, measured(line), y});
        made.width = std::max(made.width, made.lines.back().x);
    }
    made.height = -made.lines.back().y;
    const double share = shareLeftOf(m_fields.attachment);
    made.left = -share * made.width;
    made.top = shareAbove(m_fields.attachment) * made.height;
    for (Layout::Line& line : made.lines) {
        line.x *= -share;
        line.y += made.top;
    }
    return made;
}

Acad::ErrorStatus AcDbMText::measure() {
    const Layout made = layout();
    m_fields.actualHeight = made.height;
    m_fields.actualWidth = made.width;
    return Acad::eOk;
}

double AcDbMText::actualHeight() const {
    assertReadEnabled();
    return layout().height;
}

double AcDbMText::actualWidth() const {
    assertReadEnabled();
    return layout().width;
}

void AcDbMText::getBoundingPoints(AcGePoint3dArray& corners) const {
    assertReadEnabled();
    const Layout shown = layout();
    if (shown.lines.empty())
        return;
    const AcGeVector3d along = alongLines();
    const AcGeVector3d up = m_fields.normal.crossProduct(along).normal();
    for (const double y : {shown.top, shown.top - shown.height})
        for (const double x : {shown.left, shown.left + shown.width})
            corners.append(m_fields.location + along * x + up * y);
}

Acad::ErrorStatus AcDbMText::subTransformBy(const AcGeMatrix3d& xform) {
    AcGeVector3d normal = m_fields.normal;
    if (!keepsCirclesRound(xform, normal) || !transformsPlane(xform, normal))
        return Acad::eCannotScaleNonUniformly;
    const AcGeVector3d along = xform * alongLines();
    const double scale = along.length();
    assertWriteEnabled();
    m_fields.location = xform * m_fields.location;
    m_fields.normal = normal;
    m_fields.direction = along / scale;
    for (double* length : {&m_fields.width, &m_fields.height, &m_fields.actualHeight, &m_fields.actualWidth})
        *length *= scale;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                              AcDbIntArray&) const {
    gripPoints.append(m_fields.location);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    if (!indicesAreBelow(indices, 1))
        return Acad::eInvalidIndex;
    return indices.isEmpty() ? Acad::eOk : transformBy(AcGeMatrix3d::translation(offset));
}

Acad::ErrorStatus AcDbMText::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                               const AcGePoint3d&, const AcGeMatrix3d&,
                                               AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
    if (osnapMode == AcDb::kOsModeIns || osnapMode == AcDb::kOsModeNode)
        snapPoints.append(m_fields.location);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetGeomExtents(AcDbExtents& extents) const {
    AcGePoint3dArray corners;
    getBoundingPoints(corners);
    AcDbExtents box;
    for (const AcGePoint3d& corner : corners)
        box.addPoint(corner);
    if (corners.isEmpty())
        box.addPoint(m_fields.location);
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subExplode(AcDbVoidPtrArray& entitySet) const {
    const Layout shown = layout();
    if (shown.lines.empty())
        return Acad::eCannotExplodeEntity;
    const AcGeVector3d along = alongLines();
    const AcGeVector3d up = m_fields.normal.crossProduct(along).normal();
    for (const Layout::Line& line : shown.lines) {
        if (line.text.empty())
            continue;
        auto* text = new AcDbText;
        takeSettings(*this, *text);
        text->setNormal(m_fields.normal);
        text->setPosition(m_fields.location + along * line.x + up * line.y);
        text->setRotation(rotation());
        text->setHeight(m_fields.height);
        text->setWidthFactor(shown.style.xScale());
        text->setOblique(shown.style.obliquingAngle());
        text->setTextStyle(m_fields.style);
        text->setTextString(line.text.c_str());
        entitySet.append(text);
    }
    return Acad::eOk;
}

Adesk::Boolean AcDbMText::subWorldDraw(AcGiWorldDraw* worldDraw) {
    const Layout shown = layout();
    const AcGeVector3d along = alongLines();
    const AcGeVector3d up = m_fields.normal.crossProduct(along).normal();
    for (const Layout::Line& line : shown.lines)
        if (!line.text.empty() &&
            worldDraw->geometry().text(m_fields.location + along * line.x + up * line.y, m_fields.normal,
                                       along, line.text.c_str(), -1, true, shown.style))
            break;
    return true;
}
