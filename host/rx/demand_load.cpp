#include "embedded/demand_load.h"

#include "platform/text.h"
#include "rx/sys_registry.h"
#include "rxdlinkr.h"

#include <algorithm>
#include <vector>

namespace embedded::rx {

namespace {

// The applications whose load is under way, in small letters.
std::vector<std::wstring>& underWay() {
    static std::vector<std::wstring> names;
    return names;
}

class UnderWay {
public:
    explicit UnderWay(std::wstring name) { underWay().push_back(std::move(name)); }
    ~UnderWay() { underWay().pop_back(); }
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;
};

std::wstring bareAppName(const std::wstring& appName) {
    std::wstring name = appName.substr(0, appName.find(L'|'));
    const std::size_t last = name.find_last_not_of(L' ');
    name.resize(last == std::wstring::npos ? 0 : last + 1);
    return name;
}

} // namespace

bool demandLoad(const std::wstring& appName, AcadApp::LoadReasons reason) {
    const std::wstring name = bareAppName(appName);
    const std::wstring folded = platform::foldCase(std::wstring_view(name));
    if (std::find(underWay().begin(), underWay().end(), folded) != underWay().end())
        return false;
    AcadAppInfo entry;
    entry.setAppName(name.c_str());
    if (entry.readFromRegistry() != AcadApp::eOk || *entry.moduleName() == L'\0')
        return false;
    if ((entry.loadReason() & AcadApp::kLoadDisabled) != 0 || (entry.loadReason() & reason) == 0)
        return false;
    const UnderWay mark(folded);
    return linker().loadModule(entry.moduleName(), false, false);
}

} // namespace embedded::rx
