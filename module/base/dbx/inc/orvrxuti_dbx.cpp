#include "base/dbx/inc/orvrxuti_dbx.h"

#include "acestext.h"
#include "rxdict.h"
#include "rxregsvc.h"
#include "rxsrvice.h"

namespace orv::detail {

namespace {

AcRxClass* lookUp(const wchar_t* className) {
    AcRxDictionary* const dictionary = AcRxDictionary::cast(acrxSysRegistry()->at(L"ClassDictionary"));
    return dictionary != nullptr ? AcRxClass::cast(dictionary->at(className)) : nullptr;
}

} // namespace

void noteStatus(Acad::ErrorStatus stat, const char* file, int line) {
    if (acadErrorStatusText(stat) != nullptr)
        return;
    AssertSite("acadErrorStatusText(stat)", file, line)
        .value("file", file)
        .value("line", std::to_string(line));
}

void registerClass(AcRxClass*& desc, const ClassRow& row, PseudoConstructor make,
                   ProxySaveCallback callback) {
    if (desc != nullptr) {
        const AcRxClass* const present = lookUp(row.className);
        if (present == desc)
            return;
        if (present != nullptr)
            acrx_abort(L"Class mismatch");
    }
    desc = newAcRxClass(row.className, row.parentName, row.dwgVersion, row.maintenanceRelease, row.proxyFlags,
                        make, row.dxfName, row.appName, callback);
}

AcRxClass* descriptorOf(AcRxClass*& desc, const wchar_t* className) {
    if (desc == nullptr)
        desc = lookUp(className);
    return desc;
}

} // namespace orv::detail
