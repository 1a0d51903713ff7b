/* What names mean in the files of a schema: prefixes, and the identities that they lead to. */
#pragma once

#include <qxyang.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace inspect {

/* A name with its prefix, which is empty when there is none. */
struct PrefixedName {
    std::string_view prefix;
    std::string_view name;
};
PrefixedName SplitName(std::string_view text);

/* What a module's or submodule's file says of itself. */
struct FileNames {
    std::string module; /* of a submodule: the one that it belongs to */
    bool isVersion11 = false;
    std::unordered_map<std::string, std::string> modules; /* by prefix */

    /* The module that the prefix stands for in the file, the file's own for an empty one; "" if it stands for none. */
    std::string ModuleOf(std::string_view prefix) const;
};

class FileNameTable {
  public:
    const FileNames &Of(const QXYANG_FILE *file);

  private:
    std::unordered_map<const QXYANG_FILE *, FileNames> files_;
};

struct Identity {
    std::vector<std::string> bases; /* "module:name" */
    bool isConditional = false;     /* has an if-feature */
};

/* The identities of the modules of a schema that keeps details. A module is read when somebody asks for one of its own. */
class Identities {
  public:
    Identities(const QY_CTX *schema, FileNameTable *files) : schema_(schema), files_(files) {}

    /* The identity of that module, or null. */
    const Identity *Find(const std::string &module, std::string_view name);

    /* True if the one leads to the other over one base or more. Both are "module:name". */
    bool IsDerived(const std::string &identity, const std::string &base);

  private:
    void ReadFile(const std::string &name);
    void AddIdentity(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &statement);

    const QY_CTX *schema_;
    FileNameTable *files_;
    std::unordered_set<std::string> read_;                      /* modules and submodules */
    std::unordered_map<std::string, Identity> identities_ = {}; /* by "module:name" */
};

} // namespace inspect
