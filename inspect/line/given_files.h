/* Module files that the command line names, standard input among them: makes sure that the schema library finds the very
 * file that is meant. */
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/model_request.h"
#include "base/temporary_folder.h"

namespace inspect {

/* True if a person who writes this means a file, not a module: "-", or with a directory or the ending of a module file. */
bool LooksLikeFile(const std::string &text);

/* All of standard input. Throws Failure. */
std::string ReadStandardInput();

/* The ending of a file that holds this text: YIN is XML, and nothing else begins with "<". */
const char *EndingFor(const std::string &text);

class GivenFiles {
  public:
    /* Takes a file, or for "-" what standard input holds, and returns the name of the module in it. `name` is the one that
     * standard input should hold, or "". Throws Failure when the file cannot be read or holds a submodule, when standard
     * input holds no module, and when two files are of one module. A note says when a file has another name than its module. */
    std::string Take(const std::string &file, const std::string &name, const Notes &notes);

    /* Puts the files' directories before the others. A file that would not be found there first, by its module's name
     * alone, gets a link in a directory of its own, which is searched before all of them. */
    void AddTo(SearchDirs *dirs);

  private:
    struct File {
        std::string module;
        std::string shown; /* as it was given */
        std::filesystem::path path;
    };

    void TakeStandardInput(File *given);
    static void TakeFile(File *given, const Notes &notes);
    bool IsInFolder(const File &file) const;
    bool IsFoundFirst(const File &file, const std::string &firstDir) const;
    void Link(const File &file, SearchDirs *dirs);

    std::vector<File> files_;
    TemporaryFolder folder_;
};

} // namespace inspect
