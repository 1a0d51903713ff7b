/* An instance that is led through what an input asks for. */
#ifndef KORV_FUZZ_SESSION_H
#define KORV_FUZZ_SESSION_H

#include <string>
#include <vector>

#include "korv_lib_yang.h"
#include "statement.h"

namespace fuzz {

struct Step {
    bool load;
    std::string module;
    std::string revision;
};

/* The steps of an input: those that it names, or a load of each module in order. */
std::vector<Step> StepsOf(const Statement &expanded);

/* What came of the steps. */
struct Outcome {
    std::vector<bool> results; /* true: the step answered 0 */
    std::string dumps;
    bool faultForgiven = false; /* a load met the fault and answered 0 all the same: something may be missing in it */

    bool operator==(const Outcome &) const = default;
};

/* Its hooks count what they are told and drop it. */
class Session {
  public:
    /* openLevels: a bit a log level. */
    explicit Session(unsigned openLevels);
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /* Takes each step once, and a load that the fault breaks twice; then every check on what is registered. */
    Outcome Run(const std::vector<Step> &steps);

    /* The same, and leaves out what follows a step that takes long: each step may take its time, an input may not. */
    Outcome RunAndCut(std::vector<Step> *steps);

    /* Unloads module after module, from the first or from the last, and checks those that stay. */
    void UnloadOneByOne(bool fromFirst);
    void UnloadAll();

    void SetLevels(unsigned openLevels) { m_openLevels = openLevels; }

  private:
    static uint32_t IsOpen(uint64_t session, uint32_t level);
    static void Print(uint64_t session, uint32_t level, const char *reserved, const char *text);

    bool Take(const Step &step);
    void TakeInto(const Step &step, Outcome *outcome);
    bool Load(const Step &step);
    std::vector<const TELMYANG_YANG_FILE_INFO_S *> Registered() const;
    std::string CheckAll();

    unsigned m_openLevels;
    uint64_t m_failuresSaid = 0;
    TELMYANG_LOCAL_DATA_S *m_local;
};

} // namespace fuzz

#endif // KORV_FUZZ_SESSION_H
