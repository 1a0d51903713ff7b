#include "runner.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace bench {

class Runner::Reporter : public benchmark::ConsoleReporter {
  public:
    explicit Reporter(Runner &runner) : ConsoleReporter(OO_Tabular), m_runner(runner) {}

    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            if (run.error_occurred) {
                std::fprintf(stderr, "korv_bench: %s: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
                std::exit(1);
            }
            if (run.run_type == Run::RT_Iteration)
                Keep(run);
        }
        std::fprintf(stderr, ".");
    }

    bool ReportContext(const Context &) override { return true; }
    void Finalize() override { std::fprintf(stderr, "\n"); }

  private:
    void Keep(const Run &run)
    {
        const std::string &name = run.run_name.function_name;
        m_runner.m_times[name].push_back(1e9 * run.cpu_accumulated_time / static_cast<double>(run.iterations));
        for (const auto &[counter, value] : run.counters)
            m_runner.m_times[name + ":" + counter].push_back(value.value);
    }

    Runner &m_runner;
};

void Runner::Add(const std::string &name, Function function, int64_t iterations)
{
    auto *added = benchmark::RegisterBenchmark(name.c_str(), std::move(function));
    if (iterations != 0)
        added->Iterations(iterations);
}

void Runner::Run()
{
    Reporter reporter(*this);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::ClearRegisteredBenchmarks();
}

double Runner::Median(const std::string &name) const
{
    const auto found = m_times.find(name);
    if (found == m_times.end())
        return 0;
    std::vector<double> times = found->second;
    const auto middle = times.begin() + static_cast<ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

double Runner::Median(const std::string &name, const std::string &counter) const
{
    return Median(name + ":" + counter);
}

double ThreadTime()
{
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return 1e9 * static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec);
}

} // namespace bench
