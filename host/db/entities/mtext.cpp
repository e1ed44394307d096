#include "dbmtext.h"

#include "acutmem.h"
#include "db/entities/entity_parts.h"
#include "db/entities/mtext_codes.h"
#include "db/field_stream.h"
#include "db/text_form_filer.h"
#include "dbsymtb.h"
#include "geplane.h"
#include "gi/plane_arc.h"
#include "rxclass.h"

#include <cmath>

using namespace embedded;

namespace {

// Other filers get the spelling as a text of its own, one letter for each byte.
void fileContents(AcDbDwgFiler& filer, FieldReader& in, AcString& contents, std::string& spelling) {
    if (auto* file = dynamic_cast<TextFormFiler*>(&filer)) {
        file->readSpelledText(contents, spelling);
        return;
    }
    AcString bytes;
    in.text(contents);
    in.text(bytes);
    spelling.clear();
    for (const ACHAR* letter = bytes.kACharPtr(); *letter != 0; ++letter)
        spelling.push_back(static_cast<char>(*letter));
}

void fileContents(AcDbDwgFiler& filer, FieldWriter& out, const AcString& contents,
                  const std::string& spelling) {
    if (auto* file = dynamic_cast<TextFormFiler*>(&filer)) {
        file->writeSpelledText(contents, spelling);
        return;
    }
    std::wstring bytes;
    for (const char byte : spelling)
        bytes.push_back(static_cast<wchar_t>(static_cast<unsigned char>(byte)));
    out.text(contents);
    out.text(bytes.c_str());
}

} // namespace

AcDbMText::AcDbMText() = default;

AcGePoint3d AcDbMText::location() const { return readField(*this, m_fields.location); }

Acad::ErrorStatus AcDbMText::setLocation(const AcGePoint3d& point) {
    return setField(*this, m_fields.location, point);
}

AcGeVector3d AcDbMText::normal() const { return readField(*this, m_fields.normal); }

Acad::ErrorStatus AcDbMText::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength())
        return Acad::eInvalidInput;
    const double angle = rotation();
    assertWriteEnabled();
    m_fields.normal = normal.normal();
    return setRotation(angle);
}

AcGeVector3d AcDbMText::direction() const { return readField(*this, m_fields.direction); }

Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& direction) {
    if (direction.isZeroLength())
        return Acad::eInvalidInput;
    return setField(*this, m_fields.direction, direction.normal());
}

double AcDbMText::rotation() const {
    assertReadEnabled();
    const AcGeVector3d x = m_fields.normal.perpVector();
    const AcGeVector3d along = alongLines();
    return wholeTurns(std::atan2(along.dotProduct(m_fields.normal.crossProduct(x)), along.dotProduct(x)));
}

Acad::ErrorStatus AcDbMText::setRotation(double angle) {
    const AcGeVector3d x = m_fields.normal.perpVector();
    const AcGeVector3d y = m_fields.normal.crossProduct(x);
    return setField(*this, m_fields.direction, x * std::cos(angle) + y * std::sin(angle));
}

double AcDbMText::width() const { return readField(*this, m_fields.width); }

Acad::ErrorStatus AcDbMText::setWidth(double width) {
    if (!(width >= 0.0))
        return Acad::eInvalidInput;
    setField(*this, m_fields.width, width);
    return measure();
}

double AcDbMText::textHeight() const { return readField(*this, m_fields.height); }

Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
    if (!(height > 0.0))
        return Acad::eInvalidInput;
    setField(*this, m_fields.height, height);
    return measure();
}

AcDbMText::AttachmentPoint AcDbMText::attachment() const {
    assertReadEnabled();
    return static_cast<AttachmentPoint>(m_fields.attachment);
}

Acad::ErrorStatus AcDbMText::setAttachment(AttachmentPoint point) {
    if (point < kTopLeft || point > kBaseRight)
        return Acad::eInvalidInput;
    return setField(*this, m_fields.attachment, static_cast<Adesk::UInt16>(point));
}

AcDbMText::FlowDirection AcDbMText::flowDirection() const {
    assertReadEnabled();
    return static_cast<FlowDirection>(m_fields.flow);
}

Acad::ErrorStatus AcDbMText::setFlowDirection(FlowDirection direction) {
    if (direction < kLtoR || direction > kByStyle)
        return Acad::eInvalidInput;
    return setField(*this, m_fields.flow, static_cast<Adesk::UInt16>(direction));
}

ACHAR* AcDbMText::contents() const {
    assertReadEnabled();
    return acutNewString(m_fields.contents.kACharPtr());
}

Acad::ErrorStatus AcDbMText::contents(AcString& contents) const {
    contents = readField(*this, m_fields.contents);
    return Acad::eOk;
}

int AcDbMText::setContents(const ACHAR* contents) {
    if (contents == nullptr)
        return 0;
    setField(*this, m_fields.contents, contents);
    measure();
    return 1;
}

Acad::ErrorStatus AcDbMText::plainText(AcString& text) const {
    assertReadEnabled();
    const auto same = [](const std::wstring&) { return 0.0; };
    std::wstring plain;
    for (const std::wstring& line : brokenLines(withoutFormatCodes(m_fields.contents.kACharPtr()), 0.0, same))
        plain += line + L"\n";
    plain.pop_back();
    text = plain.c_str();
    return Acad::eOk;
}

AcDbObjectId AcDbMText::textStyle() const { return readField(*this, m_fields.style); }

Acad::ErrorStatus AcDbMText::setTextStyle(AcDbObjectId style) {
    AcRxClass* kind = style.objectClass();
    if (kind == nullptr || !kind->isDerivedFrom(AcDbTextStyleTableRecord::desc()))
        return Acad::eInvalidInput;
    setField(*this, m_fields.style, style);
    return measure();
}

AcDb::LineSpacingStyle AcDbMText::lineSpacingStyle() const {
    assertReadEnabled();
    return static_cast<AcDb::LineSpacingStyle>(m_fields.spacingStyle);
}

Acad::ErrorStatus AcDbMText::setLineSpacingStyle(AcDb::LineSpacingStyle style) {
    if (style != AcDb::kAtLeast && style != AcDb::kExactly)
        return Acad::eInvalidInput;
    return setField(*this, m_fields.spacingStyle, static_cast<Adesk::UInt16>(style));
}

double AcDbMText::lineSpacingFactor() const { return readField(*this, m_fields.spacingFactor); }

Acad::ErrorStatus AcDbMText::setLineSpacingFactor(double factor) {
    if (!(factor >= 0.25) || !(factor <= 4.0))
        return Acad::eInvalidInput;
    setField(*this, m_fields.spacingFactor, factor);
    return measure();
}

void AcDbMText::getEcs(AcGeMatrix3d& ecs) const {
    assertReadEnabled();
    ecs = AcGeMatrix3d::planeToWorld(m_fields.normal);
}

Acad::ErrorStatus AcDbMText::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    assertReadEnabled();
    plane.set(m_fields.location, m_fields.normal);
    planarity = AcDb::kPlanar;
    return Acad::eOk;
}

template <class F, class Stream>
void AcDbMText::fileFields(AcDbDwgFiler& filer, F& f, Stream& s) {
    s.point(f.location);
    s.vector(f.normal);
    s.vector(f.direction);
    s.real(f.width);
    s.real(f.height);
    s.int16(f.attachment);
    s.int16(f.flow);
    s.real(f.actualHeight);
    s.real(f.actualWidth);
    fileContents(filer, s, f.contents, f.spelling);
    s.int16(f.spacingStyle);
    s.real(f.spacingFactor);
    s.flag(f.unknownBit);
    s.hardPointer(f.style);
}

Acad::ErrorStatus AcDbMText::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbEntity::dwgOutFields(filer),
                       [this, filer](FieldWriter& out) { fileFields(*filer, m_fields, out); });
}

Acad::ErrorStatus AcDbMText::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es =
        readFields(filer, AcDbEntity::dwgInFields(filer), [this, filer](FieldReader& in) {
            Fields f;
            fileFields(*filer, f, in);
            if (in.ok())
                m_fields = f;
        });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}
