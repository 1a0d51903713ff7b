/* What went wrong during the latest load call. */
#pragma once

#include <korv_platform.h>
#include <qxyang.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

    /* True if this failure says that sentence, with or without a hint behind it. */
    bool Says(std::string_view sentence) const;
};

/* Thrown to end a load that cannot go on. The failure that says why is recorded before. */
struct LoadStopped {};

/* Records the failures of a load, each once. A load that has more of them than are recorded, or meets the same ones too
 * often, ends: then LoadStopped is thrown. */
class Failures {
  public:
    /* The load of that module begins: forgets the failures of the one before. */
    void Begin(std::string_view module) noexcept;

    void Add(Source &source, uint32_t offset, std::string_view sentence);

    /* The same with a hint. The hint is what makes a failure expensive, so makeHint() is called for new failures
     * only. */
    template <class MakeHint>
    void Add(Source &source, uint32_t offset, const std::string &sentence, MakeHint &&makeHint)
    {
        if (IsKnown(source, offset, sentence))
            Count();
        else
            Add(source, offset, sentence + makeHint());
    }

    /* A failure that has no place in a file. */
    void Add(std::string_view module, std::string_view sentence);

    /* Memory ran out in the load that has begun. Needs no memory itself. */
    void AddOutOfMemory() noexcept { outOfMemory_ = true; }

    /* A point in time, to learn later whether something failed since. */
    struct Mark {
        size_t count = 0;
        size_t recorded = 0;
    };
    Mark Now() const { return {count_, failures_.size()}; }

    bool AnySince(Mark mark) const { return count_ != mark.count; }
    bool Any() const { return count_ != 0; }

    /* The text of the first failure since then, from which the others may follow. */
    std::string FirstSince(Mark mark) const;

    uint32_t Scan(QY_LOADFAIL_SCAN_PF callback, void *cookie) const;
    uint32_t ScanRecords(QXYANG_FAILURE_PF callback, void *cookie) const;

    NameBudget names; /* that hints may still compare */

  private:
    bool IsKnown(const Source &source, uint32_t offset, std::string_view sentence) const;
    void Count();
    void Record(Failure failure);

    std::array<char, 256> wanted_{}; /* name of the module being loaded, cut to the room that there is */
    std::vector<Failure> failures_;
    size_t count_ = 0;
    bool outOfMemory_ = false;
};

} // namespace qxyang
