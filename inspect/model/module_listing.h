/* The module files of a run's directories. Each directory is read once, however many modules and instances there are. */
#pragma once

#include <qxyang.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/model_request.h"

namespace inspect {

class ModuleListing {
  public:
    /* A directory as the command line has it. */
    struct Folder {
        std::string dir;
        std::vector<std::string> files; /* names of module files in the order of the alphabet */
        int error = 0;                  /* errno value that says why it cannot be listed, or 0 */
    };

    explicit ModuleListing(const SearchDirs &dirs);

    /* For instances. */
    QXYANG_LISTINGS *Handle() const { return handle_.get(); }

    /* The directories in the order in which they are searched, but for the one that is never shown. */
    const std::vector<Folder> &Folders() const { return folders_; }

    /* The names of all modules and submodules that a load finds a file for, each with that file. */
    const std::map<std::string, std::string> &Modules() const { return modules_; }

  private:
    struct Close {
        void operator()(QXYANG_LISTINGS *handle) const { QXYANG_CloseListings(handle); }
    };

    std::unique_ptr<QXYANG_LISTINGS, Close> handle_;
    std::vector<Folder> folders_;
    std::map<std::string, std::string> modules_;
};

} // namespace inspect
