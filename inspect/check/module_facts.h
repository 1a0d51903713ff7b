/* What the statements of a loaded module say about it as a whole. */
#pragma once

#include <qxyang.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "model/instance.h"

namespace inspect {

/* Of the module's file or a submodule's. */
struct FileHeader {
    QXYANG_ORIGIN_S root;
    std::string revision = {};      /* the newest, or "" */
    QXYANG_ORIGIN_S statement = {}; /* that one's */
};

struct ModuleFacts {
    std::vector<FileHeader> headers; /* submodules' files first */
    std::vector<std::string> submodules;
    std::set<std::string> imports; /* names; submodules say these, too */
    std::set<std::string> dated;   /* "NAME@REVISION" that an import or include asks for */
    std::set<std::string> changes; /* names of other modules to which it adds nodes, or whose nodes it changes */
};

/* The facts of a module of the instance. */
ModuleFacts FactsOf(const Instance &instance, QY_MOD *module);

} // namespace inspect
