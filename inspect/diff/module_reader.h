/* From a loaded module to its model. */
#pragma once

#include <utility>
#include <vector>

#include "diff/model.h"
#include "diff/node_facts.h"
#include "model/instance.h"

namespace inspect::diff {

/* Which nodes are compared. */
enum class Scope : uint8_t {
    OwnTree, /* all nodes of the module's own tree, and what its augments add to others */
    OwnNodes /* the module's own nodes, wherever they stand */
};

/* Reads the modules of one instance. */
class ModuleReader {
  public:
    ModuleReader(const Instance &instance, const SearchDirs &dirs, Version *version)
        : instance_(instance), files_(dirs, version), types_(instance.Schema(), &files_, version)
    {
    }

    /* A module that the instance has loaded by this name. */
    std::unique_ptr<ModuleModel> Read(const ModuleKey &key, Scope scope);

  private:
    void ReadFiles(QY_MOD *module, ModuleModel *model);
    void ReadFile(const QXYANG_FILE *file, const char *path, ModuleModel *model);
    void ReadStatement(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &statement, ModuleModel *model);
    void ReadUnusedTypedefs(ModuleModel *model);

    const Instance &instance_;
    FileNames files_;
    TypeReader types_;
    std::vector<std::pair<size_t, StatementRef>> typedefs_; /* of the module, with their places in `definitions` */
};

} // namespace inspect::diff
