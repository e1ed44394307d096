#pragma once

#include "structure/moved_elements_reactor.h"

#include "dbxEntryPoint.h"

namespace structure {

// This module's one application: what the host's linker talks to.
class Application final : public AcRxDbxApp {
public:
    // Made when it is first asked for.
    static Application& instance();

    // Brings the module that this one stands on, registers the classes, installs the numbering, begins to
    // watch drawings, and enters the module where the host looks when a drawing has elements of it. Refuses
    // to start without the other module.
    AcRx::AppRetCode On_kInitAppMsg(void* packet) override;
    // The other way round. From then on drawings keep the elements as proxies.
    AcRx::AppRetCode On_kUnloadAppMsg(void* packet) override;

    void RegisterServerComponents() override {}

private:
    Application();

    void writeLoaderEntry() const;

    MovedElementsReactor m_reactor;
};

} // namespace structure
