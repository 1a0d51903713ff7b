/* The modules of a run in one schema context, without the library's trees: what gets ids need not load on a device yet. */
#pragma once

#include <qxyang.h>

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/model_request.h"
#include "ids/assign/file_facts.h"

namespace inspect::ids {

/* A file of a module or of one of its submodules. */
struct SourceFile {
    const QXYANG_FILE *file;
    std::string path;
};

struct LoadedModule {
    QY_MOD *module;
    std::string name;
    bool isWanted; /* its nodes are to get ids */
    std::vector<SourceFile> files;
};

class ModelSet {
  public:
    /* Loads the modules of the request, or with `all` those of the directories, and makes known what they import, and what
     * other modules of the directories add to them. Throws Failure for one that cannot be loaded. */
    ModelSet(const ModelRequest &request, bool all);

    const SearchDirs &Dirs() const { return request_.dirs; }
    QY_CTX *Schema() const { return schema_.get(); }

    /* The wanted ones first, in the order of the request. */
    const std::vector<LoadedModule> &Modules() const { return modules_; }

    /* The index of a module of the context. */
    size_t IndexOf(QY_MOD *module) const;

    /* Class ids that stand in files of the directories that no loaded module is in. */
    const std::vector<uint32_t> &ClassIdsElsewhere() const { return elsewhere_; }

  private:
    struct Delete {
        void operator()(QY_CTX *schema) const { QY_CTX_Delete(schema); }
    };

    std::vector<ModuleKey> Wanted(bool all);
    const FileFacts &FactsOf(const std::string &name);
    bool IsLoaded(const std::string &name) const;
    bool Load(const ModuleKey &key, bool isWanted);
    void LoadImports(size_t index);
    void LoadOthers();
    void FailForLoad(const std::string &name) const;

    const ModelRequest &request_;
    std::unique_ptr<QY_CTX, Delete> schema_;
    std::vector<LoadedModule> modules_;
    std::map<std::string, FileFacts> facts_; /* of files, by name of the module or submodule */
    std::vector<uint32_t> elsewhere_;
    std::unordered_map<QY_MOD *, size_t> indexes_;
};

} // namespace inspect::ids
