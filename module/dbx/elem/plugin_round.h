#pragma once

#include "dbx/elem/plugin.h"

namespace orv::elem {

// A hook may take plugins in or out of the list that is just walked, so the walk goes by index, holds the
// plugin that it calls, and only steps on where that one still stands.
template <class Ask>
bool ElementBase::doAllAgree(Ask ask) const {
    std::size_t i = 0;
    while (i < m_plugins.size()) {
        const boost::shared_ptr<IPlugin> plugin = m_plugins[i];
        if (!ask(*plugin))
            return false;
        if (i < m_plugins.size() && m_plugins[i] == plugin)
            ++i;
    }
    return true;
}

template <class Call>
void ElementBase::forEachPlugin(Call call) const {
    doAllAgree([&call](IPlugin& plugin) {
        call(plugin);
        return true;
    });
}

} // namespace orv::elem
