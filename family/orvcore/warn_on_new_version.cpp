#include "orvcore/warn_on_new_version.h"

#include "acutads.h"

#include <set>
#include <string>
#include <utility>

namespace {

void printOnConsole(const ORV_NewVersionWarning& warning) {
    const std::wstring text = L"\n" + std::wstring(warning.name.GetString()) + L": the data are of version " +
                              std::to_wstring(warning.version) + L", which is newer than " +
                              std::to_wstring(warning.current) +
                              L". A newer release is needed to read all of them.\n";
    acutPrintf(L"%ls", text.c_str());
}

ORV_NewVersionSink s_sink = printOnConsole;
std::set<std::pair<std::wstring, std::int64_t>> s_given;

} // namespace

void orv_warnOnNewVersion(std::int64_t version, std::int64_t current, const CString& name) {
    if (version <= current)
        return;
    if (!s_given.emplace(std::wstring(name.GetString()), version).second)
        return;
    const ORV_NewVersionSink sink = s_sink;
    sink({version, current, name});
}

ORV_NewVersionSink orv_setNewVersionSink(ORV_NewVersionSink sink) {
    if (!sink)
        sink = printOnConsole;
    std::swap(s_sink, sink);
    return sink;
}

void orv_forgetNewVersionWarnings() { s_given.clear(); }
