#include "dbents.h"

#include "acutmem.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"
#include "dbsymtb.h"
#include "geplane.h"
#include "rxclass.h"

using namespace embedded;

namespace {

// Which fields the file leaves out, since they have the value that most texts have.
enum AbsentField : Adesk::UInt8 {
    kNoElevation = 0x01,
    kNoAlignment = 0x02,
    kNoOblique = 0x04,
    kNoRotation = 0x08,
    kNoWidthFactor = 0x10,
    kNoGeneration = 0x20,
    kNoHorizontal = 0x40,
    kNoVertical = 0x80
};

enum Generation : Adesk::UInt16 { kMirroredInX = 2, kMirroredInY = 4 };

} // namespace

AcDbText::AcDbText() = default;

AcDbText::AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style, double height,
                   double rotation) {
    m_fields.position.set(position.x, position.y);
    m_fields.elevation = position.z;
    m_fields.text = text;
    m_fields.style = style;
    m_fields.rotation = rotation;
    if (height > 0.0)
        m_fields.height = height;
}

AcGePoint3d AcDbText::toWorld(const AcGePoint2d& point) const {
    return ownToWorld(m_fields.normal, {point.x, point.y, m_fields.elevation});
}

AcGePoint3d AcDbText::position() const {
    assertReadEnabled();
    return toWorld(m_fields.position);
}

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& point) {
    assertWriteEnabled();
    const AcGePoint3d own = worldToOwn(m_fields.normal, point);
    m_fields.position.set(own.x, own.y);
    m_fields.elevation = own.z;
    return Acad::eOk;
}

AcGePoint3d AcDbText::alignmentPoint() const {
    assertReadEnabled();
    return toWorld(m_fields.alignment);
}

Acad::ErrorStatus AcDbText::setAlignmentPoint(const AcGePoint3d& point) {
    if (isDefaultAlignment())
        return Acad::eNotApplicable;
    assertWriteEnabled();
    const AcGePoint3d own = worldToOwn(m_fields.normal, point);
    m_fields.alignment.set(own.x, own.y);
    m_fields.elevation = own.z;
    return adjustAlignment();
}

bool AcDbText::isDefaultAlignment() const {
    assertReadEnabled();
    return m_fields.horizontal == AcDb::kTextLeft && m_fields.vertical == AcDb::kTextBase;
}

AcDb::TextHorzMode AcDbText::horizontalMode() const {
    assertReadEnabled();
    return static_cast<AcDb::TextHorzMode>(m_fields.horizontal);
}

Acad::ErrorStatus AcDbText::setHorizontalMode(AcDb::TextHorzMode mode) {
    return setField(*this, m_fields.horizontal, static_cast<Adesk::UInt16>(mode));
}

AcDb::TextVertMode AcDbText::verticalMode() const {
    assertReadEnabled();
    return static_cast<AcDb::TextVertMode>(m_fields.vertical);
}

Acad::ErrorStatus AcDbText::setVerticalMode(AcDb::TextVertMode mode) {
    return setField(*this, m_fields.vertical, static_cast<Adesk::UInt16>(mode));
}

ACHAR* AcDbText::textString() const {
    assertReadEnabled();
    return acutNewString(m_fields.text.kACharPtr());
}

const ACHAR* AcDbText::textStringConst() const {
    assertReadEnabled();
    return m_fields.text.kACharPtr();
}

Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text) {
    if (text == nullptr)
        return Acad::eInvalidInput;
    return setField(*this, m_fields.text, text);
}

AcDbObjectId AcDbText::textStyle() const { return readField(*this, m_fields.style); }

Acad::ErrorStatus AcDbText::setTextStyle(AcDbObjectId style) {
    AcRxClass* kind = style.objectClass();
    if (kind == nullptr || !kind->isDerivedFrom(AcDbTextStyleTableRecord::desc()))
        return Acad::eInvalidInput;
    return setField(*this, m_fields.style, style);
}

double AcDbText::height() const { return readField(*this, m_fields.height); }

Acad::ErrorStatus AcDbText::setHeight(double height) {
    if (!(height > 0.0))
        return Acad::eInvalidInput;
    return setField(*this, m_fields.height, height);
}

double AcDbText::widthFactor() const { return readField(*this, m_fields.widthFactor); }

Acad::ErrorStatus AcDbText::setWidthFactor(double factor) {
    if (!(factor > 0.0))
        return Acad::eInvalidInput;
    return setField(*this, m_fields.widthFactor, factor);
}

double AcDbText::rotation() const { return readField(*this, m_fields.rotation); }

Acad::ErrorStatus AcDbText::setRotation(double angle) { return setField(*this, m_fields.rotation, angle); }

double AcDbText::oblique() const { return readField(*this, m_fields.oblique); }

Acad::ErrorStatus AcDbText::setOblique(double angle) { return setField(*this, m_fields.oblique, angle); }

double AcDbText::thickness() const { return readField(*this, m_fields.thickness); }

Acad::ErrorStatus AcDbText::setThickness(double thickness) {
    return setField(*this, m_fields.thickness, thickness);
}

AcGeVector3d AcDbText::normal() const { return readField(*this, m_fields.normal); }

Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength())
        return Acad::eInvalidInput;
    assertWriteEnabled();
    const AcGePoint3d position = toWorld(m_fields.position);
    const AcGePoint3d alignment = toWorld(m_fields.alignment);
    m_fields.normal = normal.normal();
    const AcGePoint3d ownAlignment = worldToOwn(m_fields.normal, alignment);
    m_fields.alignment.set(ownAlignment.x, ownAlignment.y);
    return setPosition(position);
}

Adesk::Boolean AcDbText::isMirroredInX() const {
    assertReadEnabled();
    return (m_fields.generation & kMirroredInX) != 0;
}

Acad::ErrorStatus AcDbText::mirrorInX(Adesk::Boolean mirrored) {
    assertWriteEnabled();
    m_fields.generation =
        static_cast<Adesk::UInt16>((m_fields.generation & ~kMirroredInX) | (mirrored ? kMirroredInX : 0));
    return Acad::eOk;
}

Adesk::Boolean AcDbText::isMirroredInY() const {
    assertReadEnabled();
    return (m_fields.generation & kMirroredInY) != 0;
}

Acad::ErrorStatus AcDbText::mirrorInY(Adesk::Boolean mirrored) {
    assertWriteEnabled();
    m_fields.generation =
        static_cast<Adesk::UInt16>((m_fields.generation & ~kMirroredInY) | (mirrored ? kMirroredInY : 0));
    return Acad::eOk;
}

void AcDbText::getEcs(AcGeMatrix3d& ecs) const {
    assertReadEnabled();
    ecs = AcGeMatrix3d::planeToWorld(m_fields.normal);
}

Acad::ErrorStatus AcDbText::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    plane.set(position(), m_fields.normal);
    planarity = AcDb::kPlanar;
    return Acad::eOk;
}

template <class F, class Stream>
void AcDbText::fileFields(F& f, Adesk::UInt8 absent, Stream& s) {
    const auto has = [absent](Adesk::UInt8 field) { return (absent & field) == 0; };
    if (has(kNoElevation))
        s.rawReal(f.elevation);
    s.rawPoint(f.position);
    if (has(kNoAlignment)) {
        s.realBy(f.alignment.x, f.position.x);
        s.realBy(f.alignment.y, f.position.y);
    }
    s.extrusion(f.normal);
    s.thickness(f.thickness);
    if (has(kNoOblique))
        s.rawReal(f.oblique);
    if (has(kNoRotation))
        s.rawReal(f.rotation);
    s.rawReal(f.height);
    if (has(kNoWidthFactor))
        s.rawReal(f.widthFactor);
    s.text(f.text);
    if (has(kNoGeneration))
        s.int16(f.generation);
    if (has(kNoHorizontal))
        s.int16(f.horizontal);
    if (has(kNoVertical))
        s.int16(f.vertical);
    s.hardPointer(f.style);
}

Acad::ErrorStatus AcDbText::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbEntity::dwgOutFields(filer), [this, filer](FieldWriter& out) {
        const Fields& f = m_fields;
        const auto zero = [](double value) { return FieldWriter::isPlainZero(value); };
        Adesk::UInt8 absent = 0;
        if (zero(f.elevation))
            absent |= kNoElevation;
        if (zero(f.alignment.x) && zero(f.alignment.y))
            absent |= kNoAlignment;
        if (zero(f.oblique))
            absent |= kNoOblique;
        if (zero(f.rotation))
            absent |= kNoRotation;
        if (f.widthFactor == 1.0)
            absent |= kNoWidthFactor;
        if (f.generation == 0)
            absent |= kNoGeneration;
        if (f.horizontal == 0)
            absent |= kNoHorizontal;
        if (f.vertical == 0)
            absent |= kNoVertical;
        out.byte(absent);
        fileFields(f, absent, out);
        writeMore(*filer);
    });
}

Acad::ErrorStatus AcDbText::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es =
        readFields(filer, AcDbEntity::dwgInFields(filer), [this, filer](FieldReader& in) {
            Fields f;
            Adesk::UInt8 absent = 0;
            in.byte(absent);
            fileFields(f, absent, in);
            readMore(*filer);
            if (in.ok())
                m_fields = f;
        });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}
