#include "symbols/block_table.h"

#include "db/database_core.h"
#include "db/entity_list.h"
#include "db/field_stream.h"
#include "db/symbol_index.h"

#include <cwctype>
#include <string>

using namespace embedded;

AcDbBlockTable::AcDbBlockTable() = default;

namespace {

bool asksForNumber(const AcString& name) {
    return name.length() == 2 && name.getAt(0) == L'*' &&
           std::iswalpha(static_cast<std::wint_t>(name.getAt(1)));
}

} // namespace

Acad::ErrorStatus AcDbBlockTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
    AcDbBlockTableRecord* block = AcDbBlockTableRecord::cast(record);
    if (block != nullptr && asksForNumber(SymbolAccess::name(*block)) && !objectId().isNull()) {
        const std::wstring stem = SymbolAccess::name(*block).kACharPtr();
        std::wstring name;
        do {
            name = stem + std::to_wstring(m_nextAnonymous++);
        } while (has(name.c_str()));
        SymbolAccess::setName(*block, name.c_str());
        BlockAccess::setAnonymous(*block);
    }
    const Acad::ErrorStatus es = AcDbSymbolTable::add(id, record);
    if (es == Acad::eOk)
        BlockAccess::frame(*block);
    return es;
}

// Behind the others the file names model and paper space, and doesn't count them.
Acad::ErrorStatus AcDbBlockTable::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus es = AcDbSymbolTable::dwgOutFields(filer);
    if (filer->filerType() == AcDb::kUndoFiler)
        return es;
    return writeFields(filer, es, [this](FieldWriter& out) {
        const SymbolIndex& index = SymbolAccess::index(*this);
        for (std::size_t slot = 0; slot < 2; ++slot)
            out.hardOwner(slot < index.leading() ? AcDbObjectId(index.at(slot)) : AcDbObjectId());
    });
}

Acad::ErrorStatus AcDbBlockTable::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = AcDbSymbolTable::dwgInFields(filer);
    if (filer->filerType() == AcDb::kUndoFiler)
        return es;
    return readFields(filer, es, [this](FieldReader& in) {
        AcDbObjectId model, paper;
        in.hardOwner(model);
        in.hardOwner(paper);
        SymbolAccess::index(*this).setLeading({model, paper});
    });
}
