#include "dbmstyle.h"

#include "db/field_stream.h"

using namespace embedded;

namespace {

template <class Fields, class Stream>
void fileFront(Fields& f, Stream& s) {
    s.text(f.name);
    s.text(f.description);
    s.int16(f.flags);
    s.colour(f.fillColour);
    s.real(f.startAngle);
    s.real(f.endAngle);
}

template <class Fields, class Stream>
void fileElements(Fields& f, Stream& s) {
    for (auto& element : f.elements) {
        s.real(element.offset);
        s.colour(element.colour);
        s.int16(element.linetype);
    }
}

constexpr std::size_t kMostElements = 16;

} // namespace

AcDbMlineStyle::AcDbMlineStyle() = default;

Acad::ErrorStatus AcDbMlineStyle::getName(const ACHAR*& name) const {
    assertReadEnabled();
    name = m_fields.name.kACharPtr();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMlineStyle::set(const ACHAR* name) {
    assertWriteEnabled();
    m_fields.name = name;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMlineStyle::getDescription(const ACHAR*& text) const {
    assertReadEnabled();
    text = m_fields.description.kACharPtr();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMlineStyle::setDescription(const ACHAR* text) {
    assertWriteEnabled();
    m_fields.description = text;
    return Acad::eOk;
}

int AcDbMlineStyle::numElements() const {
    assertReadEnabled();
    return static_cast<int>(m_fields.elements.size());
}

Acad::ErrorStatus AcDbMlineStyle::getElementAt(int index, double& offset, Adesk::UInt16& colour) const {
    if (index < 0 || index >= numElements())
        return Acad::eInvalidIndex;
    offset = m_fields.elements[static_cast<std::size_t>(index)].offset;
    colour = m_fields.elements[static_cast<std::size_t>(index)].colour;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMlineStyle::addElement(int& index, double offset, Adesk::UInt16 colour) {
    if (m_fields.elements.size() >= kMostElements)
        return Acad::eOutOfRange;
    assertWriteEnabled();
    index = static_cast<int>(m_fields.elements.size());
    Element element;
    element.offset = offset;
    element.colour = colour;
    m_fields.elements.push_back(element);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMlineStyle::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbObject::dwgOutFields(filer), [this](auto& out) {
        fileFront(m_fields, out);
        out.byte(static_cast<Adesk::UInt8>(m_fields.elements.size()));
        fileElements(m_fields, out);
    });
}

Acad::ErrorStatus AcDbMlineStyle::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbObject::dwgInFields(filer), [this](auto& in) {
        fileFront(m_fields, in);
        Adesk::UInt8 count = 0;
        in.byte(count);
        m_fields.elements.assign(count, Element());
        fileElements(m_fields, in);
    });
}
