#include "structure/application.h"

#include "structure/beam.h"
#include "structure/class_rows.h"
#include "structure/load.h"
#include "structure/node.h"
#include "structure/numbering.h"
#include "structure/slab.h"

#include "appinfo.h"
#include "platform/shared_library.h"
#include "rxclass.h"
#include "rxdlinkr.h"

namespace structure {

namespace {

// Whoever is linked against another module has its code; its application runs only when the host has loaded
// it, too.
constexpr const wchar_t* kModuleBelow = L"taldork191_x64.dbx";

template <class Class>
void removeClass() {
    deleteAcRxClass(Class::desc());
}

} // namespace

Application::Application() {
    static const ClassEntry classes[] = {
        {&Node::rxInit, &removeClass<Node>},
        {&Beam::rxInit, &removeClass<Beam>},
        {&Slab::rxInit, &removeClass<Slab>},
        {&Load::rxInit, &removeClass<Load>},
    };
    setClassTable({classes, classes + sizeof classes / sizeof classes[0]});
}

Application& Application::instance() {
    // Never destroyed: the host may tell of a drawing's end while the process ends.
    static Application& application = *new Application;
    return application;
}

AcRx::AppRetCode Application::On_kInitAppMsg(void* packet) {
    if (!acrxDynamicLinker->loadModule(kModuleBelow, false))
        return AcRx::kRetError;
    const AcRx::AppRetCode code = AcRxDbxApp::On_kInitAppMsg(packet);
    if (code != AcRx::kRetOK)
        return code;
    orv::elem::Plugin_General::setProtExt(&Numbering::instance());
    m_reactor.start();
    writeLoaderEntry();
    return AcRx::kRetOK;
}

AcRx::AppRetCode Application::On_kUnloadAppMsg(void* packet) {
    m_reactor.stop();
    if (orv::elem::Plugin_General::getProtExt() == &Numbering::instance())
        orv::elem::Plugin_General::setProtExt(nullptr);
    return AcRxDbxApp::On_kUnloadAppMsg(packet);
}

void Application::writeLoaderEntry() const {
    AcadAppInfo entry;
    entry.setAppName(kApplicationName);
    entry.setModuleName(platform::modulePath(m_hdllInstance).c_str());
    entry.setLoadReason(
        static_cast<AcadApp::LoadReasons>(AcadApp::kOnProxyDetection | AcadApp::kOnLoadRequest));
    entry.writeToRegistry(true, false);
}

} // namespace structure
