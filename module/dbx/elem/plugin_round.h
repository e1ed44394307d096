#pragma once

#include "dbx/elem/plugin.h"

namespace orv::elem {

// A hook may take plugins in or out of the list that is just walked, so the walk goes by index and holds the
// plugin that it calls.
template <class Call>
void ElementBase::forEachPlugin(Call call) const {
    for (std::size_t i = 0; i < m_plugins.size(); ++i) {
        const boost::shared_ptr<IPlugin> plugin = m_plugins[i];
        call(*plugin);
    }
}

template <class Ask>
bool ElementBase::doAllAgree(Ask ask) const {
    for (std::size_t i = 0; i < m_plugins.size(); ++i) {
        const boost::shared_ptr<IPlugin> plugin = m_plugins[i];
        if (!ask(static_cast<const IPlugin&>(*plugin)))
            return false;
    }
    return true;
}

} // namespace orv::elem
