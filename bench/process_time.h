/* Processor times of whole processes. */
#ifndef KORV_BENCH_PROCESS_TIME_H
#define KORV_BENCH_PROCESS_TIME_H

#include <string>
#include <vector>

namespace bench {

/* The program (found along PATH) and its arguments. Its standard output is thrown away. */
using Command = std::vector<std::string>;

bool Succeeds(const Command &command);

/* The same, but a negative answer of korv-inspect counts as well: a check has findings. */
bool Finishes(const Command &command);

/* A program beside this one. */
std::string Beside(const std::string &program);

/* This program, doing that operation once (instruction_count.h). */
Command OperationCommand(const std::string &operation, const std::string &dir, const std::string &module);

class ProcessTimes {
  public:
    /* Runs the command; ends the program when it fails. */
    void Add(const Command &command);
    /* In nanoseconds, user and system. */
    double Median();

    /* Median of one command's times against another's, which run in turn. */
    static double Ratio(const Command &command, const Command &against, int repetitions);

  private:
    std::vector<double> m_times;
};

} // namespace bench

#endif // KORV_BENCH_PROCESS_TIME_H
