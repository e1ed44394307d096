#pragma once

#include "orvcheck/report.h"

#include <functional>

namespace taldork::cli {

/// Takes the module's failed expectations while it lives; what took them before takes them again afterwards.
/// Scopes end in the reverse order of their beginning.
class ReportScope {
public:
    using Report = orv::smartassert::Report;

    enum class Before { kIsQuiet, kHearsToo };

    explicit ReportScope(std::function<void(const Report&)> take, Before before = Before::kIsQuiet);
    ~ReportScope();
    ReportScope(const ReportScope&) = delete;
    ReportScope& operator=(const ReportScope&) = delete;

private:
    std::function<void(const Report&)> m_before;
};

} // namespace taldork::cli
