#pragma once

#include <korv_lib_yang.h>

#include <array>
#include <string>
#include <vector>

namespace korv_python {

/* What the library logs during one call. Its hooks run in the middle of an operation, where nothing of Python may run that
 * could ask the instance for something else; so the lines are kept until the call is over. Only then it is known, too,
 * whether a line of level 0 told of a failure. */
class Lines {
  public:
    std::array<TELMYANG_DEBUG_HOOK_S, KORV_LOG_LEVEL_NUM> Hooks() const;

    /* Opens the levels that the logger "korv" wants. */
    void Listen();
    /* Closes them, and hands the lines to the logger: those of level 0 as errors after a failure, else as information;
     * progress is for debugging. */
    void Tell(bool failed);

  private:
    struct Line {
        uint32_t level;
        std::string text;
    };

    static void Print(uint64_t lines, uint32_t level, const char *reserved, const char *text);
    static uint32_t IsOpen(uint64_t lines, uint32_t level);

    std::array<bool, KORV_LOG_LEVEL_NUM> open_ = {};
    std::vector<Line> lines_;
};

} // namespace korv_python
