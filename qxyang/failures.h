/* What went wrong during the latest load call. */
#pragma once

#include <korv_platform.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "schema_limits.h"

namespace qxyang {

class Source;

struct Failure {
    std::string module;
    std::string file; /* empty: not in a file */
    uint32_t line = 0;
    uint32_t column = 0;
    std::string text;
};

/* Records failures up to a limit; what comes after it only counts. */
class Failures {
  public:
    void Clear()
    {
        failures_.clear();
        count_ = 0;
        outOfMemory_ = false;
    }

    void Add(Source &source, uint32_t offset, std::string_view sentence);

    /* A failure that no place in a file explains. */
    void Add(std::string_view module, std::string_view sentence);

    /* Memory ran out: needs none itself. */
    void AddOutOfMemory() noexcept { outOfMemory_ = true; }

    /* Failures met so far, recorded or not: compare two counts to learn whether a stage failed. */
    size_t Count() const { return count_; }

    bool Full() const { return count_ >= limits::FAILURES; }

    const std::vector<Failure> &Recorded() const { return failures_; }

    uint32_t Scan(QY_LOADFAIL_SCAN_PF callback, void *cookie) const;

  private:
    std::vector<Failure> failures_;
    size_t count_ = 0;
    bool outOfMemory_ = false;
};

/* Leaves a load that cannot go on: its failure is recorded. */
struct LoadStopped {};

}  // namespace qxyang
