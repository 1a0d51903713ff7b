/* The rules of `check` for files and directories: which of them a device reads. */
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "check/findings.h"
#include "model/module_listing.h"

namespace inspect {

class FileRules {
  public:
    FileRules(const SearchDirs &dirs, const ModuleListing &listing);

    /* Deviation files that no device loads, by the name of the module in them. */
    const std::set<std::string> &UnreadDeviations() const { return unreadDeviations_; }

    /* The findings about the files of these modules and submodules. `dated` has those that an import or include asks for by
     * their revision, as "NAME@REVISION". Unless all directories are asked for, files in other directories than the ones that
     * are read are left alone: whoever names a file knows of it. */
    std::vector<Finding> Check(const std::set<std::string> &modules, const std::set<std::string> &dated, bool all);

  private:
    struct File {
        size_t folder;
        std::string name;   /* of the file */
        std::string shown;  /* as a person names it */
        std::string module; /* before "@" and the ending */
        std::string stem;   /* before the ending */
    };

    void FindDeviations();
    void CheckDeviation(const File &file, const std::string &base, const std::string &taken);
    std::string FirstDeviation(const std::string &base) const;
    void CheckFolders(std::vector<Finding> *findings) const;
    void CheckFile(const File &file, bool isDated, std::vector<Finding> *findings);
    std::string Winner(const std::string &module);

    const SearchDirs &dirs_;
    const ModuleListing &listing_;
    std::vector<File> files_;
    std::map<std::string, std::string> winners_; /* shown paths by module */
    std::set<std::string> unreadDeviations_;
    std::vector<std::pair<const File *, std::string>> deviations_; /* unread ones and why they are */
};

} // namespace inspect
