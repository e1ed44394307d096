#include "base/guard.h"
#include "base/product_name.h"
#include "dbx/elem/generic_load.h"
#include "dbx/elem/legacy_load.h"
#include "orvcore/warn_on_new_version.h"
#include "orvshape/segmented_curve.h"

#include "AcString.h"
#include "rxclass.h"
#include "rxdict.h"
#include "rxsrvice.h"

#include <memory>

namespace orv::elem::legacy {

namespace {

// The first versions that have these.
constexpr Adesk::UInt32 kHasElement = 2;
constexpr Adesk::UInt32 kHasCurves = 3;

// The class of that name, or null.
AcRxClass* findClass(const AcString& name) {
    auto* const classes = AcRxDictionary::cast(acrxSysRegistry()->at(L"ClassDictionary"));
    return classes != nullptr ? AcRxClass::cast(classes->at(name.kwszPtr())) : nullptr;
}

} // namespace

Acad::ErrorStatus ORV_Load::dwgOutFields(AcDbDwgFiler* filer) const {
    ORV_ASSERT(filer);
    assertReadEnabled();
    if (filer == nullptr)
        return Acad::eNullPtr;
    try {
        writeContent(*filer);
        ORV_ASSERT_STATUS(filer->filerStatus());
        return Acad::eOk;
    } catch (const Acad::ErrorStatus& es) {
        return es;
    }
    ORV_GUARD
    return status::kFilingFailed;
}

void ORV_Load::writeContent(AcDbDwgFiler& filer) const {
    ORV_ASSERT_STATUS(AcDbEntity::dwgOutFields(&filer));
    ORV_ASSERT_STATUS(filer.writeUInt32(kVersion));
    ORV_ASSERT_STATUS(ElementBase::dwgOutFields(filer));
    ORV_ASSERT_STATUS(filer.writeSoftPointerId(getElement()));
    for (const auto& plugin : getConstPluginIterator())
        if (const auto* const load = dynamic_cast<const GenericLoad*>(plugin.get()))
            writeCurve(filer, *load);
    ORV_ASSERT_STATUS(filer.writeUInt32(kMagic));
}

void ORV_Load::writeCurve(AcDbDwgFiler& filer, const GenericLoad& load) {
    const ORV_SegmentedCurve* const curve = load.m_visCurve.get();
    ORV_ASSERT_STATUS(filer.writeBool(curve != nullptr));
    if (curve == nullptr)
        return;
    ORV_ASSERT_STATUS(filer.writeString(curve->isA()->name()));
    ORV_ASSERT_STATUS(curve->dwgOutFields(&filer));
}

Acad::ErrorStatus ORV_Load::dwgInFields(AcDbDwgFiler* filer) {
    ORV_ASSERT(filer);
    assertWriteEnabled();
    if (filer == nullptr)
        return Acad::eNullPtr;
    try {
        const Acad::ErrorStatus es = readContent(*filer);
        if (es != Acad::eOk)
            return es;
        ORV_ASSERT_STATUS(filer->filerStatus());
        return Acad::eOk;
    } catch (const Acad::ErrorStatus& es) {
        return es;
    }
    ORV_GUARD
    return status::kMakeProxy;
}

Acad::ErrorStatus ORV_Load::readContent(AcDbDwgFiler& filer) {
    ORV_ASSERT_STATUS(AcDbEntity::dwgInFields(&filer));
    Adesk::UInt32 version = 0;
    ORV_ASSERT_STATUS(filer.readUInt32(&version));
    if (version > kVersion)
        return status::kMakeProxy;
    orv_warnOnNewVersion(version, kVersion, productName());

    const Acad::ErrorStatus es = ElementBase::dwgInFields(filer);
    if (es != Acad::eOk)
        return es;
    if (version >= kHasElement) {
        AcDbSoftPointerId element;
        ORV_ASSERT_STATUS(filer.readSoftPointerId(&element));
        setElement(element);
    }
    if (version >= kHasCurves)
        for (const auto& plugin : getConstPluginIterator())
            if (auto* const load = dynamic_cast<GenericLoad*>(plugin.get()))
                readCurve(filer, *load);
    Adesk::UInt32 magicNo = 0;
    ORV_ASSERT_STATUS(filer.readUInt32(&magicNo));
    ORV_ASSERT(magicNo == kMagic)(kMagic)(magicNo)(kVersion)(version).debug("filing error");
    return Acad::eOk;
}

void ORV_Load::readCurve(AcDbDwgFiler& filer, GenericLoad& load) {
    load.dropCurve();
    bool hasCurve = false;
    ORV_ASSERT_STATUS(filer.readBool(&hasCurve));
    if (!hasCurve)
        return;
    AcString rxclsName;
    ORV_ASSERT_STATUS(filer.readString(rxclsName));
    AcRxClass* const rx = findClass(rxclsName);
    ORV_ASSERT(rx)(rxclsName.kwszPtr());
    if (rx == nullptr)
        throw status::kMakeProxy;
    std::unique_ptr<AcRxObject> made(rx->create());
    if (auto* const curve = ORV_SegmentedCurve::cast(made.get())) {
        static_cast<void>(made.release());
        load.m_visCurve.reset(curve);
    }
    ORV_ASSERT(load.m_visCurve.get())(rxclsName.kwszPtr());
    // There is nobody to read the curve's fields, and so nothing behind them can be found.
    if (load.m_visCurve == nullptr)
        throw status::kMakeProxy;
    ORV_ASSERT_STATUS(load.m_visCurve->dwgInFields(&filer));
}

} // namespace orv::elem::legacy
