#include "diff/git_folders.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "base/failure.h"

namespace inspect::diff {
namespace {

/* As git writes them. */
constexpr std::string_view FOLDER_MODE = "040000";
constexpr std::string_view FILE_MODES = "100"; /* their first digits */

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

/* Why git has failed, without its warnings and hints. */
std::string ReasonOf(const Finished &git)
{
    size_t fatal = git.err.find("fatal: ");
    std::string_view reason = std::string_view(git.err).substr(fatal != std::string::npos ? fatal : 0);
    return std::string(reason.substr(0, reason.find('\n')));
}

Failure Unreadable(const std::string &dir, const Finished &git)
{
    return Failure("git cannot read the repository of '" + dir + "': git: " + ReasonOf(git), EXIT_NOT_LOADED);
}

void MakeFolder(const std::filesystem::path &path)
{
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error)
        throw Failure("cannot write to " + path.string() + ": " + error.message(), EXIT_NOT_LOADED);
}

} // namespace

GitRevision GitRevision::Parse(const std::string &text)
{
    size_t colon = text.find(':');
    GitRevision revision = {text.substr(0, colon), colon != std::string::npos ? Plain(text.substr(colon + 1)) : ""};
    if (revision.ref.empty() || revision.ref.starts_with('-') || revision.ref.starts_with('^'))
        throw Failure("'" + text + "' is no revision of git's: REF or REF:FOLDER is needed", EXIT_USAGE);
    return revision;
}

Finished GitFolders::Run(const std::string &dir, std::vector<std::string> words, const std::string &input)
{
    words.insert(words.begin(), {"git", "-C", dir, "--literal-pathspecs"});
    Finished finished = RunProgram(words, input, temporary_.Make());
    if (finished.startError == ENOENT)
        throw Failure("--against needs git, which is not found", EXIT_NOT_LOADED);
    if (finished.startError != 0)
        throw Failure(std::string("git cannot be run: ") + std::strerror(finished.startError), EXIT_NOT_LOADED);
    if (finished.signal != 0)
        throw Failure("git has been ended by signal " + std::to_string(finished.signal) + " (" +
                          ::strsignal(finished.signal) + ")",
                      EXIT_NOT_LOADED);
    return finished;
}

/* What git prints when it works in that directory. */
std::string GitFolders::Git(const std::string &dir, std::vector<std::string> words, const std::string &input)
{
    Finished finished = Run(dir, std::move(words), input);
    if (finished.exitCode != 0)
        throw Unreadable(dir, finished);
    return finished.out;
}

/* The directory's path from the top of its repository. */
std::string GitFolders::FolderOf(const std::string &dir)
{
    Finished finished = Run(dir, {"rev-parse", "--show-prefix"});
    if (finished.exitCode == 0)
        return Plain(WithoutLineEnd(finished.out));
    if (ReasonOf(finished).starts_with("fatal: not a git repository ("))
        throw Failure("'" + dir + "' is in no git repository", EXIT_USAGE);
    throw Unreadable(dir, finished);
}

std::string GitFolders::CommitIn(const std::string &dir)
{
    Finished finished = Run(dir, {"rev-parse", "--verify", "--quiet", revision_.ref + "^{commit}"});
    if (finished.exitCode != 0)
        throw Failure("the repository of '" + dir + "' has no revision '" + revision_.ref + "'" +
                          (finished.err.empty() ? "" : " (git: " + ReasonOf(finished) + ")"),
                      EXIT_USAGE);
    return WithoutLineEnd(finished.out);
}

std::vector<GitFolders::Entry> GitFolders::List(const std::string &dir, std::vector<std::string> words)
{
    words.insert(words.begin(), {"ls-tree", "-z", "--full-tree"});
    std::string listed = Git(dir, std::move(words));
    std::vector<Entry> entries;
    for (size_t at = 0; at < listed.size();) {
        size_t end = std::min(listed.find('\0', at), listed.size());
        std::string line = listed.substr(at, end - at); /* MODE TYPE OBJECT<tab>PATH */
        at = end + 1;
        size_t tab = line.find('\t');
        if (tab == std::string::npos)
            continue;
        size_t object = line.rfind(' ', tab) + 1;
        entries.push_back({line.substr(0, line.find(' ')), line.substr(object, tab - object), line.substr(tab + 1)});
    }
    return entries;
}

/* The module files in a folder of the revision. Links and modules of git's are passed over. */
std::vector<GitFolders::Entry> GitFolders::ModuleFiles(const std::string &dir, const std::string &folder, bool below)
{
    std::string tree = CommitIn(dir);
    if (!folder.empty()) {
        std::vector<Entry> found = List(dir, {tree, "--", folder});
        bool isThere = !found.empty() && found.front().mode == FOLDER_MODE;
        if (!isThere && missing_ == Missing::IsEmpty && revision_.folder.empty())
            return {};
        if (!isThere)
            throw Failure("revision '" + revision_.ref + "' of the repository has no folder '" + folder + "'",
                          EXIT_USAGE);
        tree = found.front().object;
    }
    std::vector<std::string> words = {tree};
    if (below)
        words.insert(words.begin(), "-r");
    std::vector<Entry> entries = List(dir, words);
    std::erase_if(entries, [](const Entry &entry) {
        return !entry.mode.starts_with(FILE_MODES) || !IsModuleFile(entry.path) || !StaysWithin(entry.path);
    });
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
        if (!line.starts_with(entry.object + " blob ") || lineEnd + 1 + size >= blobs.size())
            throw Failure("git does not tell what is in " + shown + entry.path, EXIT_NOT_LOADED);
        MakeFolder(file.parent_path());
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
    std::vector<Entry> entries = ModuleFiles(dir, folder, below);
    std::string objects;
    for (const Entry &entry : entries)
        objects += entry.object + "\n";
    std::string blobs = entries.empty() ? "" : Git(dir, {"cat-file", "--batch"}, objects);
    std::string target = temporary_.Make() / std::to_string(taken_++);
    MakeFolder(target);
    shown_[target] = revision_.ref + ":" + folder;
    Write(blobs, entries, target, revision_.ref + ":" + (folder.empty() ? "" : folder + "/"));
    return target;
}

} // namespace inspect::diff
