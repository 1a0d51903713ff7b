/* The rules of `check` for files and directories: which of them a device reads. */
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "check/file_requests.h"
#include "check/findings.h"
#include "model/module_listing.h"

namespace inspect {

class FileRules {
  public:
    /* What is known of the files of the modules that were loaded. */
    struct Uses {
        std::set<std::string> modules; /* that were checked, and their submodules */
        std::set<std::string> dated;   /* "NAME@REVISION" that an import or include asks for */
        std::set<std::string> orphans; /* submodules that --all names, and none of these modules includes */
        bool all;                      /* whether these are all modules of the directories of -d */
    };

    FileRules(const SearchDirs &dirs, const ModuleListing &listing);

    /* Throws Failure when one of the directories of -d has no module file, or cannot be listed. */
    void RequireFiles() const;

    /* Names of the modules and submodules that the directories of -d have a file of. */
    std::set<std::string> OwnModules() const;

    /* Deviation files that no device loads, by the name of the module in them. */
    const std::set<std::string> &UnreadDeviations() const { return unreadDeviations_; }

    /* The findings about the files of the modules, or about all files in the directories of -d. Files in other directories
     * than the ones that are read are left alone: whoever names a module knows of them. */
    std::vector<Finding> Check(Uses uses);

  private:
    struct File {
        size_t folder;
        std::string name;   /* of the file */
        std::string shown;  /* as a person names it */
        std::string module; /* before "@" and the ending */
        std::string stem;   /* before the ending */
        bool isOwn;         /* in a directory of -d */
    };

    const ModuleListing::Folder *FolderAt(const std::string &dir) const;
    void FindDeviations();
    std::string WhyNoDevice(const File &file, const std::string &base, const std::string &taken) const;
    std::string FirstDeviation(const std::string &base) const;
    void CheckFolders(std::vector<Finding> *findings) const;
    void CheckFile(const File &file, const Uses &uses, std::vector<Finding> *findings);
    bool IsGiven(const std::string &module) const;
    bool IsAsked(const File &file, const Uses &uses);
    std::string WhyUnread(const File &file);
    std::string Winner(const std::string &module);

    const SearchDirs &dirs_;
    const ModuleListing &listing_;
    FileRequests requests_;
    std::vector<File> files_;
    std::map<std::string, std::string> winners_; /* shown paths by module */
    std::set<std::string> unreadDeviations_;
    std::vector<std::pair<const File *, std::string>> deviations_; /* unread ones and why they are */
};

} // namespace inspect
