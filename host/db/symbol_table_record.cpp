#include "acutmem.h"
#include "db/database_core.h"
#include "db/field_stream.h"
#include "db/symbol_index.h"

using namespace embedded;

namespace {

template <class Fields, class Stream>
void fileFields(Fields& f, Stream& s) {
    s.text(f.name);
    s.flag(f.referenced);
    s.int16(f.referenceIndex);
    s.flag(f.dependent);
    s.hardPointer(f.referenceBlock);
}

bool everyDrawingHas(AcDbObjectId id) {
    const DatabaseCore* core = coreOf(id);
    if (core == nullptr)
        return false;
    const RootIds& roots = core->roots;
    return id == roots.modelSpace || id == roots.paperSpace || id == roots.layerZero ||
           id == roots.byLayerLinetype || id == roots.byBlockLinetype || id == roots.continuousLinetype;
}

} // namespace

AcDbSymbolTableRecord::AcDbSymbolTableRecord() = default;
AcDbSymbolTableRecord::~AcDbSymbolTableRecord() = default;

Acad::ErrorStatus AcDbSymbolTableRecord::getName(ACHAR*& name) const {
    assertReadEnabled();
    name = acutNewString(m_fields.name.kACharPtr());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(const ACHAR*& name) const {
    assertReadEnabled();
    name = m_fields.name.kACharPtr();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(AcString& name) const {
    assertReadEnabled();
    name = m_fields.name;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* name) {
    if (name == nullptr || name[0] == 0)
        return Acad::eInvalidInput;
    AcDbStub* owner = ownerId();
    const AcDbSymbolTable* table = owner != nullptr ? AcDbSymbolTable::cast(owner->object) : nullptr;
    if (table != nullptr && !SymbolAccess::allowsSameNames(*table)) {
        const AcDbStub* holder = SymbolAccess::index(*table).find(NameKey(name), false);
        if (holder != nullptr && holder != static_cast<AcDbStub*>(objectId()))
            return Acad::eDuplicateRecordName;
    }
    assertWriteEnabled();
    m_fields.name = name;
    SymbolAccess::nameChanged(*this);
    return Acad::eOk;
}

bool AcDbSymbolTableRecord::isDependent() const {
    assertReadEnabled();
    return m_fields.dependent;
}

bool AcDbSymbolTableRecord::isResolved() const {
    assertReadEnabled();
    return !m_fields.dependent || m_fields.referenceIndex != 0;
}

bool AcDbSymbolTableRecord::isRenamable() const {
    assertReadEnabled();
    return !m_fields.dependent && !everyDrawingHas(objectId());
}

Acad::ErrorStatus AcDbSymbolTableRecord::subErase(Adesk::Boolean erasing) {
    if (erasing && everyDrawingHas(objectId()))
        return Acad::eCannotBeErasedByCaller;
    return AcDbObject::subErase(erasing);
}

Acad::ErrorStatus AcDbSymbolTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbObject::dwgOutFields(filer),
                       [this](auto& out) { fileFields(m_fields, out); });
}

Acad::ErrorStatus AcDbSymbolTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es =
        readFields(filer, AcDbObject::dwgInFields(filer), [this](auto& in) { fileFields(m_fields, in); });
    // A record that is just made is named in no index yet.
    if (filer->filerType() != AcDb::kFileFiler)
        SymbolAccess::nameChanged(*this);
    return es;
}
