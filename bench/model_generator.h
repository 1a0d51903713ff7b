/* Modules of any size for the benchmarks. */
#ifndef KORV_BENCH_MODEL_GENERATOR_H
#define KORV_BENCH_MODEL_GENERATOR_H

#include <cstdint>
#include <string>

namespace bench {

/* A module of about that many schema nodes: two levels of classes (lists in a container, each with an inner list), leaves
 * of mixed types, three extension statements a leaf. */
std::string MixedModule(const std::string &name, uint32_t nodes);

/* The extension module that the generated ones import. */
std::string ExtensionModule();

} // namespace bench

#endif // KORV_BENCH_MODEL_GENERATOR_H
