#include "app/taldork_dbx_application.h"

#include "app/class_table.h"
#include "app/linker.h"
#include "base/guard.h"
#include "dbapserv.h"
#include "dbx/doc/system_manager.h"
#include "dbx/keyvalue_serialization.h"
#include "rxclass.h"

namespace {

constexpr const wchar_t* kModule = L"taldork191_x64.dbx";

// The command module that stands on this one. Its commands have to be gone before anything they use goes.
constexpr const wchar_t* kCommandModule = L"taldork.arx";

// The family, in the order in which it is taken down: each command module before its object module, the
// command module of this one once more, this one itself, and at last what everything stands on.
constexpr const wchar_t* kFamily[] = {
    L"orv_velmar.arx",
    L"orv_velmar191_x64.dbx",
    L"orv_tondrik.arx",
    L"orv_tondrik191_x64.dbx",
    L"drennoc.arx",
    L"drennoc191_x64.dbx",
    L"hasmuir191_x64.dbx",
    L"quillet.arx",
    L"quillet191_x64.dbx",
    L"kelmoran.arx",
    L"kelmoran191_x64.dbx",
    kCommandModule,
    kModule,
    L"orv_brisel191_x64.dbx",
};

Taldork_DBX_Application s_application;

} // namespace

Taldork_DBX_Application::Taldork_DBX_Application() : orv::DBX_Application(kModule) {}

Taldork_DBX_Application::~Taldork_DBX_Application() = default;

AcRx::AppRetCode Taldork_DBX_Application::On_kUnloadAppMsg(void* packet) {
    orv::unloadModule(kCommandModule);
    // What the family's modules have registered there points into their code, which is still loaded here.
    orv::KeyValueSerialization::instance().clear();
    for (const wchar_t* const module : kFamily)
        orv::unloadModule(module);
    return orv::DBX_Application::On_kUnloadAppMsg(packet);
}

AcRx::AppRetCode Taldork_DBX_Application::On_kLoadDwgMsg(void*) {
    // A drawing whose settings are damaged opens all the same, with the systems that could be read.
    try {
        orv::SystemManager::instance().initFromDatabase(acdbHostApplicationServices()->workingDatabase());
    }
    ORV_GUARD
    return AcRx::kRetOK;
}

AcRx::AppRetCode Taldork_DBX_Application::registerClasses(void*) {
    for (int i = 0; i < orv::kRegisteredClassCount; ++i)
        orv::kRegisteredClasses[i].rxInit();
    acrxBuildClassHierarchy();
    return AcRx::kRetOK;
}

Taldork_DBX_Application& Taldork_DBX_Application::instance() { return s_application; }
