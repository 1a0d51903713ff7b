/* What the files of the directories ask for, whoever reads them: imports and includes. */
#pragma once

#include <set>
#include <string>

#include "model/module_listing.h"

namespace inspect {

/* Reads all module files of the directories when it is asked for the first time. */
class FileRequests {
  public:
    explicit FileRequests(const ModuleListing &listing) : listing_(listing) {}

    /* True if an import or include asks for "NAME@REVISION". */
    bool AskFor(const std::string &revision);

    /* True if a module includes the submodule, or a submodule that one does. */
    bool Include(const std::string &submodule);

  private:
    void Read();

    const ModuleListing &listing_;
    bool isRead_ = false;
    std::set<std::string> revisions_;
    std::set<std::string> includes_;
};

} // namespace inspect
