/* Folders as a revision of a git repository has them. Git's own program reads them. */
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/child_process.h"
#include "base/model_request.h"
#include "base/temporary_folder.h"

namespace inspect::diff {

/* "REF" or "REF:FOLDER". */
struct GitRevision {
    std::string ref;
    std::string folder; /* from the repository's top; "" for the one that a directory names */

    /* Throws Failure of usage for what git could take for an option, and for an empty text. */
    static GitRevision Parse(const std::string &text);
};

/* What becomes of a folder that the revision does not have. */
enum class Missing : uint8_t {
    Fails,
    IsEmpty /* unless the revision names it */
};

/* Module files of revisions, in a temporary folder that goes with the object. */
class GitFolders {
  public:
    GitFolders(GitRevision revision, Missing missing) : revision_(std::move(revision)), missing_(missing) {}

    /* Writes the module files of the folder that the directory is, or of the one that the revision names in the directory's
     * repository. Returns the directory in which they are now. `below`: those of the folders below it as well.
     * Throws Failure when git is missing or fails, the directory in no repository, or when there is no such revision or
     * folder. */
    std::string Take(const std::string &dir, bool below);

    /* True if the revision names its folder. */
    bool HasOneFolder() const { return !revision_.folder.empty(); }

    /* Names the files and directories as git does: "REF:folder/file". */
    void ShowIn(SearchDirs *dirs) const { dirs->shown.insert(shown_.begin(), shown_.end()); }

  private:
    struct Entry {
        std::string mode;
        std::string object;
        std::string path; /* below the folder */
    };

    Finished Run(const std::string &dir, std::vector<std::string> words, const std::string &input = "");
    std::string Git(const std::string &dir, std::vector<std::string> words, const std::string &input = "");
    std::string FolderOf(const std::string &dir);
    std::string CommitIn(const std::string &dir);
    std::vector<Entry> List(const std::string &dir, std::vector<std::string> words);
    std::vector<Entry> ModuleFiles(const std::string &dir, const std::string &folder, bool below);
    void Write(const std::string &blobs, const std::vector<Entry> &entries, const std::string &target,
               const std::string &shown);

    GitRevision revision_;
    Missing missing_;
    TemporaryFolder temporary_;
    size_t taken_ = 0;
    std::map<std::string, std::string> shown_;
};

} // namespace inspect::diff
