/* The fuzzer's seed as a source of choices. */
#ifndef KORV_FUZZ_RANDOM_H
#define KORV_FUZZ_RANDOM_H

#include <cstddef>
#include <cstdint>
#include <random>

namespace fuzz {

class Random {
  public:
    explicit Random(unsigned seed) : m_engine(seed) {}

    /* 0 to count - 1; 0 for none. */
    size_t Below(size_t count) { return count < 2 ? 0 : m_engine() % count; }
    bool OneIn(size_t count) { return Below(count) == 0; }

    /* An element of something that is not empty. */
    template <class T>
    auto &Of(T &items)
    {
        return items[Below(std::size(items))];
    }

  private:
    std::mt19937 m_engine;
};

} // namespace fuzz

#endif // KORV_FUZZ_RANDOM_H
