/* What a context keeps for tools that asked before its first load: the texts of its files, and which of their statements
 * made nodes, typedefs and extension instances. A context that nobody asked has none of it. */
#pragma once

#include <korv_platform.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct QXYANG_FILE;

namespace qxyang {

/* A statement in a file that the context keeps. */
struct Spot {
    static constexpr uint32_t NO_FILE = UINT32_MAX;

    uint32_t file = NO_FILE; /* number of the file in the context */
    uint32_t offset = 0;     /* where the statement begins, in bytes */
};

/* The statements that made a node what it is. */
struct NodeOrigin {
    Spot statement;
    Spot uses;                 /* outermost one that brought the node, if any */
    std::vector<Spot> changes; /* its refine and deviate statements, in the order in which they apply */
};

/* Goes with its module. */
struct ModuleDetails {
    std::unordered_map<const QY_NODE *, NodeOrigin> nodes;
    std::vector<const QY_TYPE *> typedefs; /* types that its typedefs made */
    std::vector<const QY_NODE *> changed;  /* nodes of other modules that its deviations changed */
    uint32_t firstFile = 0;                /* its files have this number and those that follow */
    uint32_t fileCount = 0;

    bool IsInFiles(Spot spot) const { return spot.file - firstFile < fileCount; }
};

/* A file as it was loaded. */
struct KeptFile {
    const QY_MOD *module; /* whose text this is */
    std::string name;     /* of the module or submodule */
    std::string path;
    std::string text;
    std::shared_ptr<QXYANG_FILE> statements; /* once somebody asked for them; then the text is theirs */
};

/* Files keep their numbers, and no number comes again. Those of a module that was released answer no more: what still refers
 * to them has no place. */
class Details {
  public:
    /* All files of a module are added one after the other. */
    uint32_t AddFile(const QY_MOD &module, std::string_view name, std::string_view path, std::string_view text);

    /* The file of that number, or null. */
    KeptFile *File(uint32_t number)
    {
        auto found = files_.find(number);
        return found != files_.end() ? &found->second : nullptr;
    }

    /* The file of a module or submodule of that name, or null: of several, that of a module that is loaded by name, else the
     * latest. */
    KeptFile *FileNamed(std::string_view name);

    /* The module's own file, or null. */
    KeptFile *FileOf(const QY_MOD &module);

    /* Forgets the files of the modules that are dying, `first` and those that nextDying links to it, their typedefs, and
     * their changes of nodes that stay. */
    void ForgetDying(const QY_MOD *first) noexcept;

    std::unordered_map<const QY_TYPE *, Spot> typedefs; /* what made the type, of all modules */

  private:
    void ForgetFiles(const ModuleDetails &module) noexcept;

    /* Calls visit(file) for the files of that name, in the order in which they came. */
    template <class Visit>
    void ForEachNamed(std::string_view name, Visit visit)
    {
        auto numbers = byName_.find(name);
        if (numbers == byName_.end())
            return;
        for (uint32_t number : numbers->second)
            if (KeptFile *file = File(number))
                visit(*file);
    }

    std::unordered_map<uint32_t, KeptFile> files_; /* by number */
    std::map<std::string, std::vector<uint32_t>, std::less<>> byName_;
    uint32_t nextFile_ = 0;
};

} // namespace qxyang
