/* The memory of the host and of the schema layer, counted, with one allocation of it failing where an input asks for that. */
#ifndef KORV_FUZZ_HOST_MEMORY_H
#define KORV_FUZZ_HOST_MEMORY_H

#include <cstddef>
#include <cstdint>

namespace fuzz {

enum class Memory {
    Host,   /* ZOR_Malloc_F */
    Schema, /* operator new */
};

/* Fails allocation number n, counted from 0 while it is Armed. Only one fault can be set. */
void SetFault(Memory memory, uint64_t n);
void Arm(bool armed);

/* Counts an allocation; true if it is the one that fails. */
bool Fails(Memory memory);

/* True once the allocation has failed. */
bool FaultMet();

/* True if what failed was a queue entry of a tree that was being released: the rest of that tree is given up. */
bool TreeGivenUp();

/* Blocks of the host that are allocated. */
size_t LiveHostBlocks();
void ReleaseHostBlocks();

} // namespace fuzz

#endif // KORV_FUZZ_HOST_MEMORY_H
