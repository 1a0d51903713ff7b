/* What went wrong during the latest load call. */
#pragma once

#include <korv_platform.h>

#include <array>
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

/* Records failures up to a limit, each once; what comes after it only counts. */
class Failures {
  public:
    /* Forgets what was recorded: the load of that module begins. */
    void Begin(std::string_view module) noexcept;

    void Add(Source &source, uint32_t offset, std::string_view sentence);

    /* A failure that no place in a file explains. */
    void Add(std::string_view module, std::string_view sentence);

    /* Memory ran out in the load that has begun: needs none itself. */
    void AddOutOfMemory() noexcept { outOfMemory_ = true; }

    /* A point in time, to learn later whether something failed since. */
    struct Mark {
        size_t count = 0;
        size_t recorded = 0;
    };
    Mark Now() const { return {count_, failures_.size()}; }

    bool AnySince(Mark mark) const { return count_ != mark.count; }
    bool Any() const { return count_ != 0; }

    /* The text of the first failure since: the cause of those that followed from it. */
    std::string FirstSince(Mark mark) const;

    bool Full() const { return failures_.size() >= limits::FAILURES; }

    uint32_t Scan(QY_LOADFAIL_SCAN_PF callback, void *cookie) const;

  private:
    void Record(Failure failure);

    std::array<char, 256> wanted_{}; /* name of the module being loaded, cut where it does not fit */
    std::vector<Failure> failures_;
    size_t count_ = 0;
    bool outOfMemory_ = false;
};

/* Leaves a load that cannot go on: its failure is recorded. */
struct LoadStopped {};

} // namespace qxyang
