/* How the C runtime's allocator gets memory from the system and gives it back. Left to itself it adapts to what was freed
 * before, and a row of the table would depend on those in front of it. */
#ifndef KORV_BENCH_ALLOCATOR_H
#define KORV_BENCH_ALLOCATOR_H

namespace bench {

/* The values that it starts with, fixed: as in a process that loads its models once. */
void UseFreshMemory();

/* While it lives, memory stays with the process, and blocks are merged when they are freed: what a page costs the system
 * grows with the number of pages, and blocks that are merged later, at some other call, are charged to that one. Neither
 * is a property of the library. */
class KeptMemory {
  public:
    KeptMemory();
    ~KeptMemory();
    KeptMemory(const KeptMemory &) = delete;
    KeptMemory &operator=(const KeptMemory &) = delete;
};

} // namespace bench

#endif // KORV_BENCH_ALLOCATOR_H
