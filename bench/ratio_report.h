/* The benchmarks' result: ratios of times measured side by side in one run. */
#ifndef KORV_BENCH_RATIO_REPORT_H
#define KORV_BENCH_RATIO_REPORT_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

/* One row of the table: the median time of one benchmark by that of another. */
struct Ratio {
    std::string measure;
    std::string benchmark;
    std::string against;
    double toReach;
};

class RatioReport : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run> &runs) override;
    void Print(const std::vector<Ratio> &ratios) const;

  private:
    double Median(const std::string &name) const;

    std::map<std::string, std::vector<double>> m_times;
};

} // namespace bench

#endif // KORV_BENCH_RATIO_REPORT_H
