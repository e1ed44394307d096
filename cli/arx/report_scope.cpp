#include "cli/arx/report_scope.h"

#include "orvcheck/report_sink.h"

#include <utility>

namespace taldork::cli {

ReportScope::ReportScope(std::function<void(const Report&)> take, Before before) {
    m_before = orv::smartassert::setReportSink([this, take = std::move(take), before](const Report& report) {
        take(report);
        if (before == Before::kHearsToo && m_before)
            m_before(report);
    });
}

ReportScope::~ReportScope() { orv::smartassert::setReportSink(std::move(m_before)); }

} // namespace taldork::cli
