#include "symbols/abstract_view_table.h"

AcDbAbstractViewTableRecord::AcDbAbstractViewTableRecord() = default;

double AcDbAbstractViewTableRecord::height() const {
    assertReadEnabled();
    return m_view.height;
}

void AcDbAbstractViewTableRecord::setHeight(double value) {
    assertWriteEnabled();
    m_view.height = value;
}

double AcDbAbstractViewTableRecord::width() const {
    assertReadEnabled();
    return m_view.width;
}

void AcDbAbstractViewTableRecord::setWidth(double value) {
    assertWriteEnabled();
    m_view.width = value;
}

AcGePoint2d AcDbAbstractViewTableRecord::centerPoint() const {
    assertReadEnabled();
    return m_view.center;
}

void AcDbAbstractViewTableRecord::setCenterPoint(const AcGePoint2d& value) {
    assertWriteEnabled();
    m_view.center = value;
}

AcGePoint3d AcDbAbstractViewTableRecord::target() const {
    assertReadEnabled();
    return m_view.target;
}

void AcDbAbstractViewTableRecord::setTarget(const AcGePoint3d& value) {
    assertWriteEnabled();
    m_view.target = value;
}

AcGeVector3d AcDbAbstractViewTableRecord::viewDirection() const {
    assertReadEnabled();
    return m_view.direction;
}

void AcDbAbstractViewTableRecord::setViewDirection(const AcGeVector3d& value) {
    assertWriteEnabled();
    m_view.direction = value;
}

double AcDbAbstractViewTableRecord::viewTwist() const {
    assertReadEnabled();
    return m_view.twist;
}

void AcDbAbstractViewTableRecord::setViewTwist(double value) {
    assertWriteEnabled();
    m_view.twist = value;
}

double AcDbAbstractViewTableRecord::lensLength() const {
    assertReadEnabled();
    return m_view.lensLength;
}

void AcDbAbstractViewTableRecord::setLensLength(double value) {
    assertWriteEnabled();
    m_view.lensLength = value;
}

double AcDbAbstractViewTableRecord::frontClipDistance() const {
    assertReadEnabled();
    return m_view.frontClip;
}

void AcDbAbstractViewTableRecord::setFrontClipDistance(double value) {
    assertWriteEnabled();
    m_view.frontClip = value;
}

double AcDbAbstractViewTableRecord::backClipDistance() const {
    assertReadEnabled();
    return m_view.backClip;
}

void AcDbAbstractViewTableRecord::setBackClipDistance(double value) {
    assertWriteEnabled();
    m_view.backClip = value;
}

Adesk::UInt8 AcDbAbstractViewTableRecord::renderMode() const {
    assertReadEnabled();
    return m_view.renderMode;
}

void AcDbAbstractViewTableRecord::setRenderMode(Adesk::UInt8 value) {
    assertWriteEnabled();
    m_view.renderMode = value;
}

double AcDbAbstractViewTableRecord::elevation() const {
    assertReadEnabled();
    return m_ucs.elevation;
}

void AcDbAbstractViewTableRecord::setElevation(double value) {
    assertWriteEnabled();
    m_ucs.elevation = value;
}

void AcDbAbstractViewTableRecord::setMode(Adesk::UInt8 bit, bool on) {
    assertWriteEnabled();
    m_view.mode = static_cast<Adesk::UInt8>(on ? m_view.mode | bit : m_view.mode & ~bit);
}

bool AcDbAbstractViewTableRecord::perspectiveEnabled() const {
    assertReadEnabled();
    return (m_view.mode & kPerspective) != 0;
}

void AcDbAbstractViewTableRecord::setPerspectiveEnabled(bool enabled) { setMode(kPerspective, enabled); }

bool AcDbAbstractViewTableRecord::frontClipEnabled() const {
    assertReadEnabled();
    return (m_view.mode & kFrontClip) != 0;
}

void AcDbAbstractViewTableRecord::setFrontClipEnabled(bool enabled) { setMode(kFrontClip, enabled); }

bool AcDbAbstractViewTableRecord::backClipEnabled() const {
    assertReadEnabled();
    return (m_view.mode & kBackClip) != 0;
}

void AcDbAbstractViewTableRecord::setBackClipEnabled(bool enabled) { setMode(kBackClip, enabled); }

bool AcDbAbstractViewTableRecord::frontClipAtEye() const {
    assertReadEnabled();
    return (m_view.mode & kFrontClipNotAtEye) == 0;
}

void AcDbAbstractViewTableRecord::setFrontClipAtEye(bool atEye) { setMode(kFrontClipNotAtEye, !atEye); }

void AcDbAbstractViewTableRecord::getUcs(AcGePoint3d& origin, AcGeVector3d& xAxis,
                                         AcGeVector3d& yAxis) const {
    assertReadEnabled();
    origin = m_ucs.origin;
    xAxis = m_ucs.xAxis;
    yAxis = m_ucs.yAxis;
}

void AcDbAbstractViewTableRecord::setUcs(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                         const AcGeVector3d& yAxis) {
    assertWriteEnabled();
    m_ucs.origin = origin;
    m_ucs.xAxis = xAxis;
    m_ucs.yAxis = yAxis;
    m_ucs.named.setNull();
    m_ucs.base.setNull();
}

AcDbObjectId AcDbAbstractViewTableRecord::ucsName() const {
    assertReadEnabled();
    return m_ucs.named;
}
