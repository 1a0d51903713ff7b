/* The benchmarks as a host of the library: closed log levels, and host services that count. */
#ifndef KORV_BENCH_HOST_H
#define KORV_BENCH_HOST_H

#include <cstdint>
#include <functional>
#include <string>

#include "korv_lib_yang.h"
#include "table.h"

namespace bench {

/* One library instance. Every function ends the program when the library refuses. */
class Instance {
  public:
    explicit Instance(const std::string &dir);
    ~Instance();
    Instance(const Instance &) = delete;
    Instance &operator=(const Instance &) = delete;

    TELMYANG_LOCAL_DATA_S *Local() const { return m_local; }

    void Load(const std::string &name) const;
    void Unload(const std::string &name) const;
    /* The schema layer's part of a load: what follows is the library's own. */
    void LoadSchema(const std::string &name) const;

    /* The module's record in the registry. */
    const TELMYANG_YANG_FILE_INFO_S &File(const std::string &name) const;
    /* First top node of the module's own tree. */
    KorvTreeNode *Tree(const std::string &name) const;
    /* Number of its nodes. */
    uint32_t TreeNodes(const std::string &name) const;

  private:
    TELMYANG_LOCAL_DATA_S *m_local;
};

/* Allocations and hook calls of one call. */
Counts CountsOf(const std::function<void()> &call);

[[noreturn]] void Fail(const std::string &what);

} // namespace bench

#endif // KORV_BENCH_HOST_H
