/* What YIN needs to know of other modules: their namespaces, and how the arguments of their extensions are written. */
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "model/model_file.h"

namespace inspect {

struct Extension {
    std::string argument;   /* name of the attribute or element; "" when the extension takes no argument */
    bool inElement = false; /* the argument is an element */
};

/* The module that an extension statement is of, and the prefix that the file has for it. Both empty: none is known. */
struct ExtensionHome {
    std::string module;
    std::string prefix;
};

/* Finds modules for one file that is converted. */
class Extensions {
  public:
    /* The directories are those in which modules are looked for, in their order. */
    Extensions(const ModelFile &file, std::vector<std::string> dirs);

    /* The module's namespace, which a submodule has from the module that it belongs to; "" when no file of it is found. */
    std::string NamespaceOf(const std::string &module);

    /* True if a file of the module is found. */
    bool IsFound(const std::string &module) { return Load(module) != nullptr; }

    /* The extension, or null. */
    const Extension *Find(const std::string &module, const std::string &name);

    /* Where the extension of a statement comes from: in compact syntax as its prefix says. In YIN the module of the element's
     * namespace; when no file of it is found, the one that the file alone tells. */
    const ExtensionHome &HomeOf(const QXYANG_STATEMENT_S &statement);

    /* Prefixes of the file and the modules that they mean, in the order of the file. */
    const std::vector<std::pair<std::string, std::string>> &Prefixes() const { return prefixes_; }

  private:
    struct Module {
        std::string space;
        std::vector<std::string> submodules;
        std::map<std::string, Extension, std::less<>> extensions;
    };

    void ReadPrefixes(const ModelFile &file);
    ExtensionHome FindHome(const QXYANG_STATEMENT_S &statement);
    const Module *Load(const std::string &name);
    std::optional<Module> ReadFirst(const std::string &name, const std::string &revision) const;
    static Module Describe(const ModelFile &file);

    std::vector<std::string> dirs_;
    std::string own_;       /* name of the file's module or submodule */
    std::string belongsTo_; /* module of the file when that is a submodule, else "" */
    std::vector<std::pair<std::string, std::string>> prefixes_;
    std::map<std::string, std::string> revisions_; /* that imports and includes ask for */
    std::map<std::string, std::optional<Module>> modules_;
    std::map<std::pair<std::string, std::string>, ExtensionHome> homes_; /* of elements, by namespace and prefix */
};

} // namespace inspect
