/* The host's memory, assertions and vectors as the tests see them: counted, and failing where a test wants it. */
#ifndef KORV_TEST_HOST_SERVICES_H
#define KORV_TEST_HOST_SERVICES_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <set>
#include <string>
#include <vector>

namespace test {

inline constexpr uint64_t NEVER = std::numeric_limits<uint64_t>::max();

inline constexpr uint8_t PARTITION = 7;

struct Block {
    uint64_t moduleId;
    uint8_t partition;
    uint64_t size;
    std::string place; /* file:line that asked for it */
};

/* State of the host services of this process. */
class HostServices {
  public:
    /* From here on: counts start at 0 and nothing fails. Blocks that are alive stay known. */
    void Reset();

    /* Lets allocation number n (from 0, counted since Reset) fail, and all after it when forGood is set. */
    void FailAllocation(uint64_t n, bool forGood);
    /* The same for allocation number n of one source file alone. */
    void FailAllocationOf(const std::string &file, uint64_t n)
    {
        failFile = file;
        failOfFile = n;
    }
    void FailVectorInit(uint64_t n)
    {
        failVectorInit = n;
        vectorInits = 0;
    }
    void FailVectorSet(uint64_t n)
    {
        failVectorSet = n;
        vectorSets = 0;
    }
    /* Lets calls from number n (from 0, counted from here on) of a bounded memory or text function report a violation. */
    void FailBounded(uint64_t n, uint64_t calls)
    {
        failBounded = n;
        failBoundedCalls = calls;
        boundedCalls = 0;
    }

    bool AnyFault() const
    {
        return std::min({failAllocation, failOfFile, failVectorInit, failVectorSet, failBounded}) != NEVER;
    }

    std::vector<Block> LiveBlocks() const;
    std::set<void *> LiveAddresses() const;
    /* Releases what is alive beyond the given blocks, and answers it. */
    std::vector<Block> ReleaseAllBut(const std::set<void *> &blocks) const;
    /* "" when nothing is alive, otherwise a line a block. */
    std::string Leaks() const;

    uint64_t allocations = 0;
    uint64_t frees = 0;
    uint64_t vectorInits = 0;
    uint64_t vectorSets = 0;
    uint64_t boundedCalls = 0;
    std::vector<std::string> assertions; /* file:line */
    std::function<void()> watcher;       /* called when host code runs: hooks, memory, vectors, compared texts */

    uint64_t failAllocation = NEVER;
    bool failForGood = false;
    std::string failFile;
    uint64_t failOfFile = NEVER; /* counts down */
    uint64_t failVectorInit = NEVER;
    uint64_t failVectorSet = NEVER;
    uint64_t failBounded = NEVER;
    uint64_t failBoundedCalls = 1;
};

HostServices &Services();

} // namespace test

#endif // KORV_TEST_HOST_SERVICES_H
