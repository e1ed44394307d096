#include "acutmem.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"
#include "dbents.h"

using namespace embedded;

namespace {

enum AttributeFlag : Adesk::UInt8 { kInvisibleFlag = 1, kConstantFlag = 2, kVerifyFlag = 4, kPresetFlag = 8 };

} // namespace

AcDbAttribute::AcDbAttribute() = default;

AcDbAttribute::AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                             AcDbObjectId style)
    : AcDbText(position, text, style) {
    m_fields.tag = tag;
}

ACHAR* AcDbAttribute::tag() const { return acutNewString(tagConst()); }

const ACHAR* AcDbAttribute::tagConst() const {
    assertReadEnabled();
    return m_fields.tag.kACharPtr();
}

Acad::ErrorStatus AcDbAttribute::setTag(const ACHAR* tag) {
    if (tag == nullptr)
        return Acad::eInvalidInput;
    return setField(*this, m_fields.tag, tag);
}

bool AcDbAttribute::flag(Adesk::UInt8 mask) const {
    assertReadEnabled();
    return (m_fields.flags & mask) != 0;
}

Adesk::Boolean AcDbAttribute::isInvisible() const { return flag(kInvisibleFlag); }
Adesk::Boolean AcDbAttribute::isConstant() const { return flag(kConstantFlag); }
Adesk::Boolean AcDbAttribute::isVerifiable() const { return flag(kVerifyFlag); }
Adesk::Boolean AcDbAttribute::isPreset() const { return flag(kPresetFlag); }

Acad::ErrorStatus AcDbAttribute::setInvisible(Adesk::Boolean invisible) {
    assertWriteEnabled();
    m_fields.flags =
        static_cast<Adesk::UInt8>((m_fields.flags & ~kInvisibleFlag) | (invisible ? kInvisibleFlag : 0));
    return Acad::eOk;
}

Adesk::UInt16 AcDbAttribute::fieldLength() const { return readField(*this, m_fields.fieldLength); }

Acad::ErrorStatus AcDbAttribute::setFieldLength(Adesk::UInt16 length) {
    return setField(*this, m_fields.fieldLength, length);
}

Adesk::Boolean AcDbAttribute::subWorldDraw(AcGiWorldDraw* worldDraw) {
    return isInvisible() || AcDbText::subWorldDraw(worldDraw);
}

template <class F, class Stream>
void AcDbAttribute::fileFields(F& f, Stream& s) {
    s.text(f.tag);
    s.int16(f.fieldLength);
    s.byte(f.flags);
}

void AcDbAttribute::readMore(AcDbDwgFiler& filer) {
    FieldReader in(filer);
    Fields f;
    fileFields(f, in);
    if (in.ok())
        m_fields = f;
}

void AcDbAttribute::writeMore(AcDbDwgFiler& filer) const {
    FieldWriter out(filer);
    fileFields(m_fields, out);
}
