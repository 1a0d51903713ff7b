#include "ids/assign/file_changes.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <utility>

#include "base/failure.h"
#include "model/instance.h"

namespace inspect::ids {
namespace {

namespace fs = std::filesystem;

/* What one file gets, by statement. */
struct FilePlan {
    std::map<uint32_t, std::vector<NewStatement>> statements;
    std::map<uint32_t, std::vector<Refinement>> refinements;
};

/* A file beside another one; it goes unless it has taken that one's name. */
class NewFile {
  public:
    explicit NewFile(const FileChange &change) : change_(change), name_(change.path + ".XXXXXX") {}
    NewFile(NewFile &&other) noexcept
        : change_(other.change_), name_(std::move(other.name_)), isMade_(std::exchange(other.isMade_, false))
    {
    }
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;
    ~NewFile()
    {
        if (isMade_)
            std::remove(name_.c_str());
    }

    void Write(const std::string &text)
    {
        struct stat status = {};
        int descriptor = ::stat(change_.path.c_str(), &status) == 0 ? ::mkstemp(name_.data()) : -1;
        if (descriptor < 0)
            Fail();
        isMade_ = true;
        FILE *file = ::fdopen(descriptor, "wb");
        if (file == nullptr) {
            ::close(descriptor);
            Fail();
        }
        bool isWritten = std::fwrite(text.data(), 1, text.size(), file) == text.size() &&
                         ::fchmod(descriptor, status.st_mode & 07777) == 0;
        if (std::fclose(file) != 0 || !isWritten)
            Fail();
    }

    /* Not for a file that nobody may write: a new one in its place would go round that. */
    void RequireWritable() const
    {
        if (::access(change_.path.c_str(), W_OK) != 0)
            Fail();
    }

    bool TakeName()
    {
        isMade_ = std::rename(name_.c_str(), change_.path.c_str()) != 0;
        return !isMade_;
    }

    [[noreturn]] void Fail() const
    {
        throw Failure("cannot write '" + change_.shown + "': " + std::strerror(errno) + "; nothing is written");
    }

  private:
    const FileChange &change_;
    std::string name_;
    bool isMade_ = false;
};

void RequireUnchanged(const FileChange &change)
{
    std::ifstream file(change.path, std::ios::binary);
    std::string now{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file.good() && !file.eof())
        throw Failure("cannot read '" + change.shown + "' again: nothing is written");
    if (now != change.before)
        throw Failure("'" + change.shown + "' has changed while it was read: nothing is written");
}

std::string Resolved(const std::string &path)
{
    std::error_code error;
    fs::path resolved = fs::canonical(path, error); /* a link stays a link */
    return error ? path : resolved.string();
}

} // namespace

std::vector<FileChange> ChangesOf(const Survey &survey, const Placement &placement, const Plan &plan)
{
    std::map<const QXYANG_FILE *, FilePlan> plans;
    for (const auto &[node, statements] : plan.statements) {
        std::optional<Target> target = placement.Of(node);
        if (!target || statements.empty())
            continue;
        FilePlan *file = &plans[target->spot.file];
        if (target->refine.empty())
            file->statements[target->spot.statement] = statements;
        else
            file->refinements[target->spot.statement].push_back({target->refine, statements});
    }
    std::vector<FileChange> changes;
    for (const LoadedModule &module : survey.Models().Modules())
        for (const SourceFile &source : module.files) {
            auto found = plans.find(source.file);
            if (found == plans.end())
                continue;
            std::string shown = ShownPath(survey.Models().Dirs(), source.path);
            SourceEditor editor(source.file, shown);
            for (const auto &[statement, added] : found->second.statements)
                editor.Insert(statement, added);
            for (const auto &[uses, refinements] : found->second.refinements)
                editor.Refine(uses, refinements);
            changes.push_back({Resolved(source.path), shown, std::string(editor.Text().Bytes()), editor.Finish()});
        }
    return changes;
}

void WriteChanges(const std::vector<FileChange> &changes)
{
    std::vector<NewFile> files;
    files.reserve(changes.size());
    for (const FileChange &change : changes) {
        files.emplace_back(change);
        files.back().RequireWritable();
        files.back().Write(change.After());
    }
    for (const FileChange &change : changes)
        RequireUnchanged(change);
    for (size_t i = 0; i < files.size(); ++i) {
        if (files[i].TakeName())
            continue;
        int why = errno;
        for (size_t done = 0; done < i; ++done) {
            NewFile old(changes[done]);
            old.Write(changes[done].before);
            (void)old.TakeName();
        }
        errno = why;
        files[i].Fail();
    }
}

} // namespace inspect::ids
