/* Where module files are looked for, and which file a name stands for. */
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/text.h"

namespace qxyang {

/* The registered directories, absolute, in the order of their registration. A relative directory means the place that it
 * named when it came first, wherever the process works later, until it is removed by its name. */
class SearchPath {
  public:
    void Add(std::string_view directory);
    void Remove(std::string_view directory);
    void Clear() { directories_.clear(); }

    const std::vector<std::string> &Directories() const { return directories_; }

    /* The absolute path that the directory stands for. */
    std::string PlaceOf(std::string_view directory) const;

  private:
    std::vector<std::string> directories_;
    std::unordered_map<std::string, std::string> places_; /* of relative directories */
};

/* What directories held when they were read: each is read once at most. */
class Listings {
  public:
    struct Directory {
        std::vector<std::string> files;  /* names of module files in the order of the alphabet */
        std::vector<std::string> misses; /* names that no load reads, since they end in ".YANG" or the like */
        int error = 0;                   /* why the directory cannot be listed, or 0 */
    };

    /* Nothing is kept of a directory whose reading ran out of memory. */
    const Directory &Of(const std::string &directory);

  private:
    std::unordered_map<std::string, Directory> directories_;
};

/* The module or submodule that a file of that name is looked up for: "m" of "m.yin" and "m@2020-01-01.yang". */
std::string_view ModuleOfFile(std::string_view file);

/* Finds files. */
class FileFinder {
  public:
    /* The budget pays for the names that are compared with the name of a missing file. Without listings to share with
     * others, the finder reads its own. */
    FileFinder(const SearchPath &path, NameBudget &names, Listings *shared = nullptr)
        : path_(path), names_(names), shared_(shared)
    {
    }

    /* Files to try, the best first: RFC 7950, 5.2. Without a revision: NAME.yin of the first directory that has it,
     * else the newest NAME@REVISION.yin of all directories. With one: NAME@REVISION.yin, then every NAME.yin, which
     * has to say the revision itself. A file that ends in ".yang" counts likewise, unless its twin that ends in
     * ".yin" stands in the same directory. NAME.yin of the models that are installed with this layer comes last. */
    std::vector<std::string> Candidates(std::string_view name, std::string_view revision);

    /* Calls offer(name) with the module name of each file. */
    template <class Offer>
    void ForEachName(Offer &&offer)
    {
        for (const std::string &directory : path_.Directories())
            for (const std::string &file : Listing(directory))
                offer(ModuleOfFile(file));
    }

    /* "no file 'x.yin' or 'x@REVISION.yin', nor with '.yang' instead, in '/a', '/b'", then other revisions or a near
     * name. */
    std::string Missing(std::string_view name, std::string_view revision);

    /* "; there is 'x@2020-01-01.yin'": the files of that name that have another revision than the wanted one. Empty if
     * there are none. */
    std::string OtherRevisions(std::string_view name, std::string_view wanted);

  private:
    const Listings::Directory &Read(const std::string &directory)
    {
        return (shared_ != nullptr ? *shared_ : ownListings_).Of(directory);
    }
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
    Listings *shared_;
    Listings ownListings_;
    std::string own_; /* directory of this layer's own models, if isOwnKnown_ */
    bool isOwnKnown_ = false;
};

} // namespace qxyang
