#include "ratio_report.h"

#include <algorithm>
#include <cstdio>

namespace bench {

void RatioReport::ReportRuns(const std::vector<Run> &runs)
{
    for (const Run &run : runs) {
        if (run.run_type == Run::RT_Iteration && !run.error_occurred)
            m_times[run.run_name.function_name].push_back(run.real_accumulated_time /
                                                          static_cast<double>(run.iterations));
    }
    ConsoleReporter::ReportRuns(runs);
}

double RatioReport::Median(const std::string &name) const
{
    const auto found = m_times.find(name);
    if (found == m_times.end())
        return 0;
    std::vector<double> times = found->second;
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void RatioReport::Print(const std::vector<Ratio> &ratios) const
{
    std::printf("\n%-62s %7s %9s\n", "Measure (medians of this run)", "ratio", "to reach");
    for (const Ratio &ratio : ratios) {
        const double time = Median(ratio.benchmark);
        const double against = Median(ratio.against);
        if (time > 0 && against > 0)
            std::printf("%-62s %7.2f %9.2f\n", ratio.measure.c_str(), time / against, ratio.toReach);
    }
}

} // namespace bench
