/* Runs a few benchmarks in turn, repetition by repetition in random order, and keeps their times. */
#ifndef KORV_BENCH_RUNNER_H
#define KORV_BENCH_RUNNER_H

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace bench {

class Runner {
  public:
    using Function = std::function<void(benchmark::State &)>;

    /* iterations 0: as many as make a time that can be measured. */
    void Add(const std::string &name, Function function, int64_t iterations = 0);

    /* Runs what was added since the last run. Ends the program when one of them fails. */
    void Run();

    /* Median processor time of an iteration in nanoseconds; 0 for a name that did not run. */
    double Median(const std::string &name) const;
    /* The same of a counter: a part of an iteration that the benchmark timed itself. */
    double Median(const std::string &name, const std::string &counter) const;

    double Ratio(const std::string &name, const std::string &against) const { return Median(name) / Median(against); }

  private:
    class Reporter;

    std::map<std::string, std::vector<double>> m_times;
};

/* Processor time of this thread in nanoseconds. */
double ThreadTime();

} // namespace bench

#endif // KORV_BENCH_RUNNER_H
