/* Modules of any size for the benchmarks. */
#ifndef KORV_BENCH_MODEL_GENERATOR_H
#define KORV_BENCH_MODEL_GENERATOR_H

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/* A module of about that many schema nodes: two levels of classes (lists in a container, each with an inner list), leaves
 * of mixed types, three extension statements a leaf. */
std::string MixedModule(const std::string &name, uint32_t nodes);

/* The schema nodes that such a module needs for that many tree nodes. */
constexpr uint32_t MixedNodes(uint32_t treeNodes)
{
    return treeNodes * 9 + 1;
}

/* One container with that many child containers, each a class. */
std::string WideModule(const std::string &name, uint32_t children);

/* Chains of nested lists below one container; every list is a class with one key leaf. */
std::string DeepModule(const std::string &name, uint32_t chains, uint32_t levels);

/* Containers nested that deep, of which each level has eight; the fifth one goes on. */
std::string NestModule(const std::string &name, uint32_t levels);
/* A module that adds the container "added" to that node of the module. */
std::string AugmentModule(const std::string &name, const std::string &module, const std::string &target);
/* One container with that many leaves, each an attribute. */
std::string FlatModule(const std::string &name, uint32_t leaves);
/* The name of such a module, one of many. */
std::string FlatName(uint32_t number);
/* The names on the way down. */
std::vector<std::string> NestPath(uint32_t levels);

/* One container with that many lists, each a class with four leaves that are described in words; each tenth list holds the
 * nine that follow it. */
std::string TreeModule(const std::string &name, uint32_t lists);
/* A module with several augments of such a module's container; each adds a class with two leaves. */
std::string ExtendingModule(const std::string &name, const std::string &module, uint32_t augments);

/* The extension module that the generated ones import. */
std::string ExtensionModule();

} // namespace bench

#endif // KORV_BENCH_MODEL_GENERATOR_H
