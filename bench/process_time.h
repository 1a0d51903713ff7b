/* Processor times of whole processes. */
#ifndef KORV_BENCH_PROCESS_TIME_H
#define KORV_BENCH_PROCESS_TIME_H

#include <string>
#include <vector>

namespace bench {

/* The program (found along PATH) and its arguments. Its standard output is thrown away. */
using Command = std::vector<std::string>;

bool Succeeds(const Command &command);

class ProcessTimes {
  public:
    /* Runs the command; ends the program when it fails. */
    void Add(const Command &command);
    /* In nanoseconds, user and system. */
    double Median();

  private:
    std::vector<double> m_times;
};

} // namespace bench

#endif // KORV_BENCH_PROCESS_TIME_H
