/* A library instance as this program runs it: its hooks, its directories, its modules. */
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <korv_lib_yang.h>
#include <qxyang.h>
#include "base/model_request.h"

namespace inspect {

/* One failure that the schema library recorded. */
struct LoadProblem {
    std::string module;
    std::string file; /* as the schema library names it; empty: in no file */
    uint32_t line;
    uint32_t column;
    std::string text; /* without the place */
};

struct LoadReport {
    bool loaded;
    std::vector<LoadProblem> problems; /* of the module, or of its deviation module while `loaded` */
    std::vector<std::string> errors;   /* what the library said at level 0, innermost first */
};

using ModuleFile = TELMYANG_YANG_FILE_INFO_S;

class Instance {
  public:
    /* With listings, which the run has read, the directories are not read again. */
    Instance(const SearchDirs &dirs, bool verbose, QXYANG_LISTINGS *listings = nullptr);
    ~Instance();
    Instance(const Instance &) = delete;
    Instance &operator=(const Instance &) = delete;

    TELMYANG_LOCAL_DATA_S *Local() const { return local_; }
    QY_CTX *Schema() const { return local_->pstYangCtx->pSchemaCtx; }

    LoadReport Load(const ModuleKey &key);

    /* The registry entry of a module that was loaded under this key, or null. */
    const ModuleFile *Find(const ModuleKey &key) const;
    std::vector<const ModuleFile *> Registered() const;

    /* The revision that the module's file says, or null. */
    const char *Revision(const std::string &module) const;

  private:
    void SearchFirst(const SearchDirs &dirs);
    static uint32_t IsOpen(uint64_t instance, uint32_t level);
    static void Print(uint64_t instance, uint32_t level, const char *reserved, const char *text);

    TELMYANG_LOCAL_DATA_S *local_ = nullptr;
    bool verbose_;
    std::string firstListed_; /* as a list of searched directories has the first one, which nobody is to see; or "" */
    std::vector<std::pair<std::string, std::string>> renamed_; /* directories that stand for others, in quotes */
    std::vector<std::string> errors_;
};

/* A file's path as the command line has it: the file that it names, or a file in a directory that it names. */
std::string ShownPath(const SearchDirs &dirs, const std::string &file);

/* The task that a device's module belongs to; 0: none. */
uint32_t TaskId(const ModuleFile &file);

/* The registry entry of a module that was loaded. */
const ModuleFile &Loaded(const Instance &instance, const ModuleKey &key);

} // namespace inspect
