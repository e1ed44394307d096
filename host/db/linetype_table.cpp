#include "symbols/linetype_table.h"

#include "acutmem.h"
#include "db/field_stream.h"
#include "db/symbol_index.h"

using namespace embedded;

namespace {

constexpr std::size_t kTextsLength = 256;
constexpr int kMostDashes = 12;

template <class Dash, class Stream>
void fileDash(Dash& d, Stream& s) {
    s.real(d.length);
    s.int16(d.shapeNumber);
    s.rawReal(d.xOffset);
    s.rawReal(d.yOffset);
    s.real(d.scale);
    s.real(d.rotation);
    s.int16(d.shapeFlags);
}

template <class Fields, class Stream>
void fileFront(Fields& f, Stream& s) {
    s.text(f.comments);
    s.real(f.patternLength);
    s.byte(f.alignment);
}

template <class Fields, class Stream>
void fileDashes(Fields& f, Stream& s) {
    for (auto& dash : f.dashes)
        fileDash(dash, s);
    s.bytes(f.texts, kTextsLength);
    for (auto& dash : f.dashes)
        s.hardPointer(dash.style);
}

} // namespace

AcDbLinetypeTable::AcDbLinetypeTable() = default;
AcDbLinetypeTableRecord::AcDbLinetypeTableRecord() = default;

Acad::ErrorStatus AcDbLinetypeTableRecord::comments(ACHAR*& text) const {
    assertReadEnabled();
    text = acutNewString(m_fields.comments.kACharPtr());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::comments(const ACHAR*& text) const {
    assertReadEnabled();
    text = m_fields.comments.kACharPtr();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const ACHAR* text) {
    assertWriteEnabled();
    m_fields.comments = text;
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::patternLength() const {
    assertReadEnabled();
    return m_fields.patternLength;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setPatternLength(double length) {
    if (!(length >= 0.0))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.patternLength = length;
    return Acad::eOk;
}

int AcDbLinetypeTableRecord::numDashes() const {
    assertReadEnabled();
    return static_cast<int>(m_fields.dashes.size());
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setNumDashes(int count) {
    if (count < 0 || count > kMostDashes)
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.dashes.resize(static_cast<std::size_t>(count));
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
    return index >= 0 && index < numDashes() ? m_fields.dashes[static_cast<std::size_t>(index)].length : 0.0;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setDashLengthAt(int index, double length) {
    if (index < 0 || static_cast<std::size_t>(index) >= m_fields.dashes.size())
        return Acad::eInvalidIndex;
    assertWriteEnabled();
    m_fields.dashes[static_cast<std::size_t>(index)].length = length;
    return Acad::eOk;
}

AcDbObjectId AcDbLinetypeTableRecord::shapeStyleAt(int index) const {
    return index >= 0 && index < numDashes() ? m_fields.dashes[static_cast<std::size_t>(index)].style
                                             : AcDbObjectId();
}

int AcDbLinetypeTableRecord::shapeNumberAt(int index) const {
    return index >= 0 && index < numDashes() ? m_fields.dashes[static_cast<std::size_t>(index)].shapeNumber
                                             : 0;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbSymbolTableRecord::dwgOutFields(filer), [this](FieldWriter& out) {
        Fields fields = m_fields;
        fields.texts.resize(kTextsLength);
        fileFront(fields, out);
        out.byte(static_cast<Adesk::UInt8>(fields.dashes.size()));
        fileDashes(fields, out);
    });
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbSymbolTableRecord::dwgInFields(filer), [this](FieldReader& in) {
        fileFront(m_fields, in);
        Adesk::UInt8 count = 0;
        in.byte(count);
        m_fields.dashes.assign(count, Dash());
        fileDashes(m_fields, in);
        while (!m_fields.texts.empty() && m_fields.texts.back() == 0)
            m_fields.texts.pop_back();
        m_fields.texts.shrink_to_fit();
    });
}

// Behind the others the file names "ByBlock" and "ByLayer", and doesn't count them.
Acad::ErrorStatus AcDbLinetypeTable::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus es = AcDbSymbolTable::dwgOutFields(filer);
    if (filer->filerType() == AcDb::kUndoFiler)
        return es;
    return writeFields(filer, es, [this](FieldWriter& out) {
        const SymbolIndex& index = SymbolAccess::index(*this);
        for (std::size_t slot = 0; slot < 2; ++slot)
            out.hardOwner(slot < index.leading() ? AcDbObjectId(index.at(slot)) : AcDbObjectId());
    });
}

Acad::ErrorStatus AcDbLinetypeTable::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = AcDbSymbolTable::dwgInFields(filer);
    if (filer->filerType() == AcDb::kUndoFiler)
        return es;
    return readFields(filer, es, [this](FieldReader& in) {
        AcDbObjectId byBlock, byLayer;
        in.hardOwner(byBlock);
        in.hardOwner(byLayer);
        SymbolAccess::index(*this).setLeading({byBlock, byLayer});
    });
}
