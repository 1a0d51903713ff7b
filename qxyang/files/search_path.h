/* Where module files are looked for, and which file a name stands for. */
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/text.h"

namespace qxyang {

/* The registered directories, absolute, in the order of their registration. */
class SearchPath {
  public:
    void Add(std::string_view directory);
    void Remove(std::string_view directory);
    void Clear() { directories_.clear(); }

    const std::vector<std::string> &Directories() const { return directories_; }

  private:
    std::vector<std::string> directories_;
};

/* Finds files during one load call, in which a directory's listing is read at most once. */
class FileFinder {
  public:
    /* The budget pays for the names that are offered to whoever misses a file. */
    FileFinder(const SearchPath &path, NameBudget &names) : path_(path), names_(names) {}

    /* Files to try, the best first. Without a revision: NAME.yin of the first directory that has it, else the newest
     * NAME@REVISION.yin of all directories. With one: NAME@REVISION.yin, then every NAME.yin, which has to say the
     * revision itself. A file that ends in ".yang" instead counts likewise, unless its twin that ends in ".yin" stands
     * in the same directory. NAME.yin of the models that are installed with this layer comes last. */
    std::vector<std::string> Candidates(std::string_view name, std::string_view revision);

    /* Offers the module names of all files to whoever looks for a near one. */
    template <class Offer>
    void ForEachName(Offer &&offer)
    {
        for (const std::string &directory : path_.Directories())
            for (const std::string &file : Listing(directory))
                offer(std::string_view(file).substr(0, file.find_first_of("@.")));
    }

    /* "no file 'x.yin' or 'x@REVISION.yin', nor with '.yang' instead, in '/a', '/b'", and what there is instead. */
    std::string Missing(std::string_view name, std::string_view revision);

    /* "; there is 'x@2020-01-01.yin'": the files of that name with other revisions than the one that is wanted, or
     * nothing. */
    std::string OtherRevisions(std::string_view name, std::string_view wanted);

  private:
    struct Directory {
        std::vector<std::string> files; /* names of module files in the order of the alphabet */
        int error = 0;                  /* why there are none to be seen, or 0 */
    };

    const Directory &Read(const std::string &directory);
    const std::vector<std::string> &Listing(const std::string &directory) { return Read(directory).files; }

    /* " (cannot be listed: Permission denied)" and the like; empty when the directory can be listed and entered. */
    std::string WhyUnseen(const std::string &directory);
    std::string NewestRevision(std::string_view name);
    void AddOwnFile(const std::string &name, std::vector<std::string> &found);

    /* Visits the files NAME@REVISION.yin and NAME@REVISION.yang with their revisions: visit(directory, file,
     * revision). */
    template <class Visit>
    void ForEachRevision(std::string_view name, Visit &&visit);

    const SearchPath &path_;
    NameBudget &names_;
    std::unordered_map<std::string, Directory> listings_;
    std::string own_;         /* directory of this layer's own models, once it was asked for */
    bool isOwnKnown_ = false; /* it was */
};

} // namespace qxyang
