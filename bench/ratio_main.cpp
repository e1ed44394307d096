#include "ratio.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <vector>

namespace {

struct Row {
    std::string what, ours, peer;
    double aim;
};

std::vector<Row>& rows() {
    static std::vector<Row> all;
    return all;
}

// Keeps the median (or the single) time of each benchmark beside printing it.
class KeepingReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            const std::string name = run.run_name.function_name;
            if (median || (run.run_type == Run::RT_Iteration && m_seconds.count(name) == 0))
                m_seconds[name] = run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
        }
    }
    const std::map<std::string, double>& seconds() const { return m_seconds; }

private:
    std::map<std::string, double> m_seconds;
};

} // namespace

Comparison::Comparison(const char* what, std::string ours, std::string peer, double aim) {
    rows().push_back({what, std::move(ours), std::move(peer), aim});
}

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    KeepingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("\n%-44s %12s %12s %8s %8s\n", "work", "ours ms", "peer ms", "ratio", "aim");
    for (const Row& row : rows()) {
        auto ours = reporter.seconds().find(row.ours);
        auto peer = reporter.seconds().find(row.peer);
        if (ours == reporter.seconds().end())
            continue;
        std::printf("%-44s %12.3f ", row.what.c_str(), ours->second * 1e3);
        if (peer == reporter.seconds().end()) {
            std::printf("%12s %8s %8.2f\n", "-", "-", row.aim);
            continue;
        }
        const double ratio = ours->second / peer->second;
        std::printf("%12.3f %8.3f %8.2f  %s\n", peer->second * 1e3, ratio, row.aim,
                    ratio <= row.aim ? "met" : "MISSED");
    }
    return 0;
}
