/* What went wrong during the latest load call. */
#pragma once

#include <korv_platform.h>
#include <qxyang.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/schema_limits.h"
#include "base/text.h"

namespace qxyang {

class Source;

struct Failure {
    std::string module;
    std::string file; /* empty: not in a file */
    uint32_t line = 0;
    uint32_t column = 0;
    std::string text;
    uint32_t offset = 0; /* in the file */

    /* Bytes of the text in front of the sentence. */
    size_t PlaceLength() const;

    /* True if the sentence, apart from a hint, is this failure's. */
    bool Says(std::string_view sentence) const;
};

/* Leaves a load that cannot go on: its failure is recorded. */
struct LoadStopped {};

/* Records the failures of a load, each once. A load that has more of them than are recorded, or meets the same ones too
 * often, ends: then LoadStopped is thrown. */
class Failures {
  public:
    /* Forgets what was recorded: the load of that module begins. */
    void Begin(std::string_view module) noexcept;

    void Add(Source &source, uint32_t offset, std::string_view sentence);

    /* The same with a hint, which is looked for when the failure is a new one: it is what makes failures expensive. */
    template <class MakeHint>
    void Add(Source &source, uint32_t offset, const std::string &sentence, MakeHint &&makeHint)
    {
        if (IsKnown(source, offset, sentence))
            Count();
        else
            Add(source, offset, sentence + makeHint());
    }

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

    uint32_t Scan(QY_LOADFAIL_SCAN_PF callback, void *cookie) const;
    uint32_t ScanRecords(QXYANG_FAILURE_PF callback, void *cookie) const;

    NameBudget names; /* of hints */

  private:
    bool IsKnown(const Source &source, uint32_t offset, std::string_view sentence) const;
    void Count();
    void Record(Failure failure);

    std::array<char, 256> wanted_{}; /* name of the module being loaded, cut where it does not fit */
    std::vector<Failure> failures_;
    size_t count_ = 0;
    bool outOfMemory_ = false;
};

} // namespace qxyang
