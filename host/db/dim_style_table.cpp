#include "symbols/dim_style_table.h"

#include "db/field_stream.h"
#include "db/symbol_index.h"

using namespace embedded;

namespace {

template <class Fields, class Stream>
void fileFields(Fields& f, Stream& s) {
#define DIM_REAL(name, Name, initial) s.real(f.name);
#define DIM_FLAG(name, Name, initial) s.flag(f.name);
#define DIM_INT16(name, Name, initial) s.int16(f.name);
#define DIM_COLOUR(name, Name, initial) s.colour(f.name);
#define DIM_TEXT(name, Name) s.text(f.name);
#define DIM_ID(name, Name) s.hardPointer(f.name);
#include "symbols/dim_variables.inc"
    s.flag(f.mark);
}

} // namespace

AcDbDimStyleTableRecord::AcDbDimStyleTableRecord() = default;
AcDbDimStyleTable::AcDbDimStyleTable() = default;

#define DIM_ACCESS(type, name, Name, read, write)                                                            \
    type AcDbDimStyleTableRecord::name() const {                                                             \
        assertReadEnabled();                                                                                 \
        return read;                                                                                         \
    }                                                                                                        \
    Acad::ErrorStatus AcDbDimStyleTableRecord::set##Name(type value) {                                       \
        assertWriteEnabled();                                                                                \
        m_fields.name = write;                                                                               \
        return Acad::eOk;                                                                                    \
    }
#define DIM_PLAIN(type, name, Name) DIM_ACCESS(type, name, Name, m_fields.name, value)
#define DIM_REAL(name, Name, initial) DIM_PLAIN(double, name, Name)
#define DIM_FLAG(name, Name, initial) DIM_PLAIN(bool, name, Name)
#define DIM_INT16(name, Name, initial)                                                                       \
    DIM_ACCESS(int, name, Name, static_cast<Adesk::Int16>(m_fields.name), static_cast<Adesk::UInt16>(value))
#define DIM_COLOUR(name, Name, initial) DIM_PLAIN(Adesk::UInt16, name, Name)
#define DIM_TEXT(name, Name) DIM_ACCESS(const ACHAR*, name, Name, m_fields.name.kACharPtr(), value)
#define DIM_ID(name, Name) DIM_PLAIN(AcDbObjectId, name, Name)
#include "symbols/dim_variables.inc"
#undef DIM_PLAIN
#undef DIM_ACCESS

Acad::ErrorStatus AcDbDimStyleTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbSymbolTableRecord::dwgOutFields(filer),
                       [this](auto& out) { fileFields(m_fields, out); });
}

Acad::ErrorStatus AcDbDimStyleTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    return readFields(filer, AcDbSymbolTableRecord::dwgInFields(filer),
                      [this](auto& in) { fileFields(m_fields, in); });
}

Acad::ErrorStatus AcDbDimStyleTable::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus es = AcDbSymbolTable::dwgOutFields(filer);
    if (es != Acad::eOk || filer->filerType() == AcDb::kUndoFiler)
        return es;
    FieldWriter out(*filer);
    std::vector<AcDbObjectId> named;
    for (const AcDbObjectId& id : m_named)
        if (id.isNull() || !id.isErased())
            named.push_back(id);
    out.byte(static_cast<Adesk::UInt8>(named.size()));
    for (const AcDbObjectId& id : named)
        out.hardPointer(id);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbDimStyleTable::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = AcDbSymbolTable::dwgInFields(filer);
    if (es != Acad::eOk || filer->filerType() == AcDb::kUndoFiler)
        return es;
    FieldReader in(*filer);
    Adesk::UInt8 count = 0;
    in.byte(count);
    m_named.clear();
    for (unsigned i = 0; i < count && in.ok(); ++i) {
        m_named.emplace_back();
        in.hardPointer(m_named.back());
    }
    return filer->filerStatus();
}
