#include "dbx/doc/system_fallback.h"

#include "arx/dictionary_utils.h"
#include "base/dbx/inc/orvrxuti_dbx.h"
#include "dbdict.h"
#include "dbmain.h"
#include "dbx/cdb/icdb.h"
#include "dbx/dictionary.h"
#include "dbx/doc/ORV_CCSysPar.h"
#include "dbx/doc/system.h"
#include "dbx/doc/system_record.h"
#include "dbx/nod.h"
#include "orvcore/transaction_manager.h"
#include "platform/text.h"

#include <algorithm>
#include <iterator>

namespace orv::detail {

namespace {

constexpr const wchar_t* kGeneralData = L"$Kelmoran";
// A box that holds nothing: the first point that is added makes both its corners.
constexpr float kEmptyBox = 1.0e8F;

// What stands in a field of fixed length, which need not end in a zero.
template <class Char, std::size_t kSize>
std::basic_string<Char> textOf(const Char (&field)[kSize]) {
    return {std::begin(field), std::find(std::begin(field), std::end(field), Char())};
}

// An entry's object; null if it is missing, or stands for an object of a missing class.
AcDbObject* openEntry(ORV_CDBTransactionManager& manager, const AcDbDictionary& dict, const wchar_t* name) {
    AcDbObjectId id;
    if (dict.getAt(name, id) != Acad::eOk)
        return nullptr;
    AcDbObject* object = nullptr;
    ORV_NOTE_STATUS(manager.getObject(object, id, AcDb::kForRead, false, true));
    return object != nullptr && !object->isAProxy() ? object : nullptr;
}

// Copies the description out of the drawing. False if there is none.
bool readDescription(AcDbDatabase& db, const std::wstring& name, ccsys& data) {
    AcDbObjectId id = dictionary::getKelmoran(&db);
    for (const wchar_t* const level : {name.c_str(), L"SYSTEM"}) {
        if (id.isNull())
            return false;
        id = acad::get_subDict_id(id, level, false, &db);
    }
    if (id.isNull())
        return false;
    ORV_CDBTransactionManager manager(&db, false);
    AcDbObject* object = nullptr;
    ORV_NOTE_STATUS(manager.getObject(object, id, AcDb::kForRead, false, true));
    const AcDbDictionary* const dict =
        object != nullptr && !object->isAProxy() ? AcDbDictionary::cast(object) : nullptr;
    const ORV_CCSysPar* const syst =
        dict != nullptr ? ORV_CCSysPar::cast(openEntry(manager, *dict, L"SYST")) : nullptr;
    if (syst == nullptr)
        return false;
    syst->getData(data);
    return true;
}

void setAxis(float (&target)[3], const AcGeVector3d& axis) {
    target[0] = static_cast<float>(axis.x);
    target[1] = static_cast<float>(axis.y);
    target[2] = static_cast<float>(axis.z);
}

typeCDB_SYST recordFrom(const ccsys& data, const AcDbDatabase& db) {
    typeCDB_SYST syst{};
    const auto kind = static_cast<SYSTEM>(data.system);
    syst.sys_numkn = data.numkn;
    syst.sys_maxkn = data.maxkn;
    syst.iachs = data.iachs;
    syst.igdiv = data.igdiv;
    syst.igres = ORV_CCSysPar::get_igres(kind);
    syst.iprob = ORV_CCSysPar::get_iprob(kind, static_cast<ZUSTAND>(data.zustand), data.chunkValue);
    if (kind == PLATTE)
        syst.iachs = syst.iprob == 34 || syst.iprob == 35 ? -3 : 3;
    std::fill(std::begin(syst.box_min), std::end(syst.box_min), kEmptyBox);
    std::fill(std::begin(syst.box_max), std::end(syst.box_max), -kEmptyBox);
    const AcGeVector3d x = db.ucsxdir();
    const AcGeVector3d y = db.ucsydir();
    setAxis(syst.m_tg.x, x);
    setAxis(syst.m_tg.y, y);
    setAxis(syst.m_tg.z, x.crossProduct(y).normal(AcGeContext::gTol));
    return syst;
}

} // namespace

bool makeSystemRecord(AcDbDatabase& db, const std::wstring& name, System& system, cdb::ICdb& store) {
    ccsys data;
    if (!readDescription(db, name, data))
        return false;
    const typeCDB_SYST syst = recordFrom(data, db);
    store.write(10, 0, &syst, sizeof syst, cdb::kFirstRecord);
    auto& properties = system.properties();
    properties.add<std::wstring>("project.name", textOf(data.projectName));
    properties.add<std::wstring>("designcode.name", platform::widen(textOf(data.codeName)));
    properties.add<int>("designcode.nation", data.nation);
    properties.add<std::wstring>("designcode.category", platform::widen(textOf(data.codeCategory)));
    acad::nod_writeGeneralData(kGeneralData, L"version_string", data.versionText);
    return true;
}

} // namespace orv::detail
