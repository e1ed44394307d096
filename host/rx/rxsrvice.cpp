#include "rxsrvice.h"

#include "rxclass.h"

ACRX_CONS_DEFINE_MEMBERS(AcRxService, AcRxObject, 1)

void AcRxService::attachTo(AcRxDependencyFunc dependency, AcRxDependencyFunc noDependency) {
    m_dependency = dependency;
    m_noDependency = noDependency;
}

void AcRxService::addDependency() {
    if (++m_dependencies == 1 && m_dependency != nullptr)
        m_dependency(this);
}

void AcRxService::removeDependency() {
    if (m_dependencies > 0 && --m_dependencies == 0 && m_noDependency != nullptr)
        m_noDependency(this);
}
