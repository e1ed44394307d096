#pragma once

#include "rxobject.h"

using AcRxDependencyFunc = AcRx::AppRetCode (*)(void*);

// Something that one application offers to others by name, in the service dictionary.
class AcRxService : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxService);
    AcRxService() = default;

    // Called when the first dependency comes, and when the last one goes.
    void attachTo(AcRxDependencyFunc dependency, AcRxDependencyFunc noDependency);

    void addDependency();
    void removeDependency();
    bool hasDependency() const { return m_dependencies > 0; }

    // Whether the application that offers it may be unloaded.
    bool unloadAllowed() const { return m_dependencies == 0; }

private:
    int m_dependencies = 0;
    AcRxDependencyFunc m_dependency = nullptr;
    AcRxDependencyFunc m_noDependency = nullptr;
};
