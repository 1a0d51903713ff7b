/* What a run is busy with, for people who wait. */
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace inspect {

/* A line on standard error that each step overwrites, from the second on that a run takes; nothing unless that is a
 * terminal. The line is gone when the object is. */
class Progress {
  public:
    Progress();
    ~Progress() { Clear(); }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void Show(size_t number, size_t total, const std::string &what);

    /* Before anything else is written. */
    void Clear();

  private:
    bool isTerminal_;
    bool isShown_ = false;
    std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

} // namespace inspect
