#include "diff/git_folders.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "base/failure.h"
#include "diff/child_process.h"

namespace inspect::diff {
namespace {

bool IsModuleFile(std::string_view path)
{
    return path.ends_with(".yin") || path.ends_with(".yang");
}

/* False for a path that would leave the folder that it is written to. */
bool StaysWithin(const std::string &path)
{
    for (const std::filesystem::path &step : std::filesystem::path(path))
        if (step == ".." || step == "/")
            return false;
    return true;
}

std::string WithoutLineEnd(std::string text)
{
    if (text.ends_with('\n'))
        text.pop_back();
    return text;
}

/* "models/ietf" of "models/ietf/" and "./models/ietf". */
std::string Plain(const std::string &folder)
{
    std::string plain = std::filesystem::path(folder).lexically_normal().generic_string();
    while (plain.ends_with('/'))
        plain.pop_back();
    return plain == "." ? "" : plain;
}

} // namespace

GitRevision GitRevision::Parse(const std::string &text)
{
    size_t colon = text.find(':');
    GitRevision revision = {text.substr(0, colon), colon != std::string::npos ? Plain(text.substr(colon + 1)) : ""};
    if (revision.ref.empty() || revision.ref.starts_with('-'))
        throw Failure("'" + text + "' is no revision of git's: REF or REF:FOLDER is needed", EXIT_USAGE);
    return revision;
}

GitFolders::~GitFolders()
{
    std::error_code ignored;
    if (!temporary_.empty())
        std::filesystem::remove_all(temporary_, ignored);
}

const std::string &GitFolders::Temporary()
{
    if (!temporary_.empty())
        return temporary_;
    std::string name = (std::filesystem::temp_directory_path() / "korv-inspect-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw Failure("no directory can be made in " + std::filesystem::temp_directory_path().string(),
                      EXIT_NOT_LOADED);
    return temporary_ = name;
}

/* What git prints when it works in that directory; `otherwise` says what is wrong when it fails. */
std::string GitFolders::Git(const std::string &dir, std::vector<std::string> words, const std::string &input,
                            const std::string &otherwise)
{
    words.insert(words.begin(), {"git", "-C", dir});
    std::optional<Finished> finished = RunProgram(words, input, Temporary());
    if (!finished)
        throw Failure("--against needs git, which is not found", EXIT_NOT_LOADED);
    if (finished->exitCode != 0)
        throw Failure(otherwise + (finished->err.empty() ? "" : " (git: " + finished->err + ")"), EXIT_USAGE);
    return finished->out;
}

/* The directory's path from the top of its repository. */
std::string GitFolders::FolderOf(const std::string &dir)
{
    return Plain(WithoutLineEnd(Git(dir, {"rev-parse", "--show-prefix"}, "", "'" + dir + "' is in no git repository")));
}

/* The module files of a tree. Links and modules of git's are passed over. */
std::vector<GitFolders::Entry> GitFolders::List(const std::string &dir, const std::string &tree,
                                                const std::string &folder, bool below)
{
    std::vector<std::string> words = {"ls-tree", "-z", "--full-tree"};
    if (below)
        words.emplace_back("-r");
    words.push_back(tree + ":" + folder);
    std::string listed =
        Git(dir, words, "", "revision '" + revision_.ref + "' of the repository has no folder '" + folder + "'");
    std::vector<Entry> entries;
    for (size_t at = 0; at < listed.size();) {
        size_t end = std::min(listed.find('\0', at), listed.size());
        std::string line = listed.substr(at, end - at); /* MODE TYPE OBJECT<tab>PATH */
        at = end + 1;
        size_t tab = line.find('\t');
        if (!line.starts_with("100") || tab == std::string::npos)
            continue;
        size_t object = line.rfind(' ', tab) + 1;
        Entry entry = {line.substr(object, tab - object), line.substr(tab + 1)};
        if (IsModuleFile(entry.path) && StaysWithin(entry.path))
            entries.push_back(std::move(entry));
    }
    return entries;
}

/* `blobs` holds, for each entry, a line "OBJECT blob SIZE", the file's bytes and a line end. */
void GitFolders::Write(const std::string &blobs, const std::vector<Entry> &entries, const std::string &target,
                       const std::string &shown)
{
    size_t at = 0;
    for (const Entry &entry : entries) {
        size_t lineEnd = blobs.find('\n', at);
        std::string line = blobs.substr(at, lineEnd == std::string::npos ? lineEnd : lineEnd - at);
        size_t size = std::strtoull(line.substr(line.rfind(' ') + 1).c_str(), nullptr, 10);
        std::filesystem::path file = std::filesystem::path(target) / entry.path;
        if (!line.starts_with(entry.object + " blob ") || lineEnd + 1 + size > blobs.size())
            throw Failure("git does not tell what is in " + shown + entry.path, EXIT_NOT_LOADED);
        std::filesystem::create_directories(file.parent_path());
        std::ofstream out(file, std::ios::binary);
        if (!out.write(blobs.data() + lineEnd + 1, static_cast<std::streamsize>(size)).flush())
            throw Failure("cannot write to " + target, EXIT_NOT_LOADED);
        shown_[file.string()] = shown + entry.path;
        if (size_t slash = entry.path.rfind('/'); slash != std::string::npos)
            shown_[file.parent_path().string()] = shown + entry.path.substr(0, slash);
        at = lineEnd + 1 + size + 1;
    }
}

std::string GitFolders::Take(const std::string &dir, bool below)
{
    std::string folder = FolderOf(dir);
    if (!revision_.folder.empty())
        folder = revision_.folder;
    std::string tree = WithoutLineEnd(Git(dir, {"rev-parse", "--verify", "--quiet", revision_.ref + "^{commit}"}, "",
                                          "the repository of '" + dir + "' has no revision '" + revision_.ref + "'"));
    std::vector<Entry> entries = List(dir, tree, folder, below);
    std::string objects;
    for (const Entry &entry : entries)
        objects += entry.object + "\n";
    std::string blobs = Git(dir, {"cat-file", "--batch"}, objects, "git cannot read revision '" + revision_.ref + "'");
    std::string target = Temporary() + "/" + std::to_string(taken_++);
    std::filesystem::create_directories(target);
    shown_[target] = revision_.ref + ":" + folder;
    Write(blobs, entries, target, revision_.ref + ":" + (folder.empty() ? "" : folder + "/"));
    return target;
}

} // namespace inspect::diff
