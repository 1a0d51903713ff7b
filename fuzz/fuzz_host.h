/* What the fuzz targets share: a directory in memory for model files, and an instance that formats all of its messages. */
#ifndef KORV_FUZZ_HOST_H
#define KORV_FUZZ_HOST_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "korv_lib_yang.h"

namespace fuzz {

/* A directory of this process, with the example models one level beside it. */
const std::string &ModelDir();
std::string ExamplesDir();

/* Writes a file into the directory. */
void WriteModel(const std::string &fileName, const std::string &text);

/* An instance over the directory and the examples; every level is open, its lines go nowhere. */
class Instance {
  public:
    Instance();
    ~Instance();
    Instance(const Instance &) = delete;
    Instance &operator=(const Instance &) = delete;

    TELMYANG_LOCAL_DATA_S *Local() const { return m_local; }
    bool Load(const char *module) const { return YANGLIB_LoadYangModule(m_local, module, nullptr) == 0; }

  private:
    TELMYANG_LOCAL_DATA_S *m_local;
};

/* Begins with ten seconds of processor time; when they are used up while it lives, the process ends with SIGABRT. The fuzzer's own limit
 * goes by the clock, which says nothing on a busy machine. */
class ProcessorTimeLimit {
  public:
    ProcessorTimeLimit();
    ~ProcessorTimeLimit();
    ProcessorTimeLimit(const ProcessorTimeLimit &) = delete;
    ProcessorTimeLimit &operator=(const ProcessorTimeLimit &) = delete;
};

/* Loads the module "fuzz" from the directory and uses it in every way; ends the process when a failed load has changed the
 * registry. */
void LoadAndUse();

} // namespace fuzz

#endif // KORV_FUZZ_HOST_H
