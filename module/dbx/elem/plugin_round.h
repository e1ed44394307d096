#pragma once

#include "dbx/elem/plugin.h"

#include <algorithm>

namespace orv::elem {

// A hook may take plugins in or out of the list that is just walked: the round is that of its beginning,
// without those that have left it meanwhile.
template <class Ask>
bool ElementBase::doAllAgree(Ask ask) const {
    for (Plugins round = m_plugins; !round.empty();) {
        const boost::shared_ptr<IPlugin> plugin = round.front();
        round.pop_front();
        const bool isThere = std::find(m_plugins.begin(), m_plugins.end(), plugin) != m_plugins.end();
        if (isThere && !ask(*plugin))
            return false;
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
