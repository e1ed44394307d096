#include "dbx/elem/legacy_load.h"

#include "app/class_table.h"
#include "dbx/elem/element_load.h"
#include "dbx/elem/load_pe.h"
#include "orvcore/transaction_manager.h"

namespace orv::elem::legacy {

ORV_DEFINE_CLASS(ORV_Load, kLoadRow)

LoadPE* ORV_Load::s_protExt = nullptr;

namespace {

constexpr auto kNotImplemented = static_cast<Acad::ErrorStatus>(1);
constexpr auto kNotApplicable = static_cast<Acad::ErrorStatus>(2);

bool isElementLoad(const ORV_Load& entity) {
    for (const auto& plugin : entity.getConstPluginIterator())
        if (dynamic_cast<const ElementLoad*>(plugin.get()) != nullptr)
            return true;
    return false;
}

} // namespace

ORV_Load::ORV_Load() : LoadBase(static_cast<AcDbEntity&>(*this)) {}
ORV_Load::~ORV_Load() = default;

Acad::ErrorStatus ORV_Load::audit(AcDbAuditInfo* auditInfo) {
    return s_protExt != nullptr ? s_protExt->audit(*this, auditInfo) : Acad::eOk;
}

void ORV_Load::acdb_assertWriteEnabled() { AcDbEntity::assertWriteEnabled(); }
void ORV_Load::acdb_assertReadEnabled() const { AcDbEntity::assertReadEnabled(); }
AcRxClass* ORV_Load::acdb_isA() const { return isA(); }
int ORV_Load::acdb_isNewObject() const { return isNewObject(); }
AcDbObjectId ORV_Load::acdb_id() { return objectId(); }

Adesk::Boolean ORV_Load::subWorldDraw(AcGiWorldDraw*) { return 0; }

void ORV_Load::subViewportDraw(AcGiViewportDraw*) {}

Acad::ErrorStatus ORV_Load::subGetClassID(CLSID*) const { return kNotImplemented; }

Acad::ErrorStatus ORV_Load::subErase(Adesk::Boolean erasing) {
    if (!ORV_CDBTransactionManager::getUndoRedoActive())
        assertWriteEnabled();
    triggerOnErase(erasing != 0);
    return AcDbEntity::subErase(erasing);
}

Acad::ErrorStatus ORV_Load::subDeepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                         Adesk::Boolean isPrimary) const {
    return isElementLoad(*this) ? kNotApplicable : AcDbEntity::subDeepClone(owner, clone, idMap, isPrimary);
}

Acad::ErrorStatus ORV_Load::subWblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& idMap,
                                           Adesk::Boolean isPrimary) const {
    return isElementLoad(*this) ? kNotApplicable : AcDbEntity::subWblockClone(owner, clone, idMap, isPrimary);
}

} // namespace orv::elem::legacy
