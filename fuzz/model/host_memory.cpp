#include "host_memory.h"

#include <cstdlib>
#include <unordered_set>
#include <utility>

#include "korv_platform.h"

namespace fuzz {
namespace {

constexpr uint64_t NEVER = UINT64_MAX;

/* An entry of the queue that releases a tree. Where a text of that size fails, too, a leak would be overlooked. */
constexpr uint64_t QUEUE_ENTRY_SIZE = 3 * sizeof(void *);

struct Fault {
    Memory memory = Memory::Host;
    uint64_t left = NEVER;
    bool armed = false;
    bool met = false;
    bool treeGivenUp = false;
};

Fault g_fault;

std::unordered_set<void *> &Live()
{
    static std::unordered_set<void *> live;
    return live;
}

} // namespace

void SetFault(Memory memory, uint64_t n)
{
    g_fault = {memory, n};
}

void Arm(bool armed)
{
    g_fault.armed = armed;
}

bool Fails(Memory memory)
{
    if (!g_fault.armed || g_fault.memory != memory || g_fault.met || g_fault.left == NEVER)
        return false;
    g_fault.met = g_fault.left-- == 0;
    return g_fault.met;
}

bool FaultMet()
{
    return g_fault.met;
}

bool TreeGivenUp()
{
    return g_fault.treeGivenUp;
}

size_t LiveHostBlocks()
{
    return Live().size();
}

void ReleaseHostBlocks()
{
    for (void *block : Live())
        std::free(block);
    Live().clear();
}

} // namespace fuzz

/* Part of the program, so that the libraries find these before their own. */
void *ZOR_Malloc_F(uint64_t, uint8_t, uint64_t ulSize, const char *, uint32_t)
{
    if (fuzz::Fails(fuzz::Memory::Host)) {
        fuzz::g_fault.treeGivenUp = ulSize == fuzz::QUEUE_ENTRY_SIZE;
        return nullptr;
    }
    void *block = std::malloc(ulSize);
    const bool armed = std::exchange(fuzz::g_fault.armed, false); /* the list of blocks is no part of the host */
    fuzz::Live().insert(block);
    fuzz::g_fault.armed = armed;
    return block;
}

void ZOR_Free_F(void *pvBlock, const char *, uint32_t)
{
    if (pvBlock != nullptr && fuzz::Live().erase(pvBlock) != 1)
        std::abort(); /* released twice, or never allocated */
    std::free(pvBlock);
}
