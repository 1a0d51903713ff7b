#include "files/search_path.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <set>
#include <utility>

#include "base/text.h"
#include "files/own_models.h"
#include "files/source.h"

namespace qxyang {

namespace {

/* The first of them is preferred where one directory has a file of each. */
constexpr std::string_view SUFFIXES[] = {YIN_SUFFIX, COMPACT_SUFFIX};

/* The name of a module file without its suffix; empty if the file is no module file. */
std::string_view StemOf(std::string_view file)
{
    for (std::string_view suffix : SUFFIXES)
        if (file.ends_with(suffix))
            return file.substr(0, file.size() - suffix.size());
    return {};
}

/* True if the name ends in one of the suffixes when capital letters count as small ones, ".YANG" say. */
bool EndsInOtherLetters(std::string_view file)
{
    auto isSame = [](char small, char found) { return small == found || (small != '.' && small - 'a' + 'A' == found); };
    return std::any_of(std::begin(SUFFIXES), std::end(SUFFIXES), [&](std::string_view suffix) {
        return file.size() > suffix.size() &&
               std::equal(suffix.begin(), suffix.end(), file.end() - static_cast<std::ptrdiff_t>(suffix.size()),
                          isSame);
    });
}

std::string CurrentDirectory()
{
    std::string path(256, '\0');
    while (::getcwd(path.data(), path.size()) == nullptr) {
        if (errno != ERANGE)
            return {};
        path.resize(path.size() * 2);
    }
    path.resize(path.find('\0'));
    return path;
}

/* Absolute, without empty and "." components and without a slash at its end. */
std::string AbsolutePath(std::string_view directory)
{
    std::string joined;
    if (directory.front() != '/')
        joined = CurrentDirectory();
    joined.append("/").append(directory);
    std::string path;
    for (size_t begin = 0; begin < joined.size();) {
        size_t end = std::min(joined.find('/', begin), joined.size());
        std::string_view component = std::string_view(joined).substr(begin, end - begin);
        if (!component.empty() && component != ".")
            path.append("/").append(component);
        begin = end + 1;
    }
    return path.empty() ? "/" : path;
}

std::string FileIn(const std::string &directory, std::string_view file)
{
    std::string path = directory;
    if (path.back() != '/')
        path += '/';
    return path.append(file);
}

/* True for a loop of symbolic links as well: opening it fails and says why. */
bool Exists(const std::string &path)
{
    return ::access(path.c_str(), F_OK) == 0 || errno == ELOOP;
}

std::string Because(const char *what, int error)
{
    char buffer[128];
    return std::string(" (") + what + ": " + ::strerror_r(error, buffer, sizeof buffer) + ")";
}

/* Adds the directory's file of that name in the syntax that is preferred, if there is one. */
void AddFile(const std::string &directory, const std::string &stem, std::vector<std::string> &found)
{
    for (std::string_view suffix : SUFFIXES) {
        std::string path = FileIn(directory, stem).append(suffix);
        if (!Exists(path))
            continue;
        found.push_back(std::move(path));
        return;
    }
}

struct DirectoryClose {
    void operator()(DIR *directory) const { ::closedir(directory); }
};

} // namespace

void SearchPath::Add(std::string_view directory)
{
    std::string path = PlaceOf(directory);
    if (directory.front() != '/')
        places_.emplace(directory, path);
    if (std::find(directories_.begin(), directories_.end(), path) == directories_.end())
        directories_.push_back(std::move(path));
}

void SearchPath::Remove(std::string_view directory)
{
    std::erase(directories_, PlaceOf(directory));
    places_.erase(std::string(directory));
}

std::string SearchPath::PlaceOf(std::string_view directory) const
{
    auto place = places_.find(std::string(directory));
    return place != places_.end() ? place->second : AbsolutePath(directory);
}

namespace {

Listings::Directory ReadDirectory(const std::string &directory)
{
    Listings::Directory read;
    std::unique_ptr<DIR, DirectoryClose> open(::opendir(directory.c_str()));
    if (open == nullptr) {
        read.error = errno;
        return read;
    }
    while (const dirent *file = ::readdir(open.get())) {
        std::string_view name = file->d_name;
        if (!StemOf(name).empty())
            read.files.emplace_back(name);
        else if (EndsInOtherLetters(name))
            read.misses.emplace_back(name);
    }
    std::sort(read.files.begin(), read.files.end());
    std::sort(read.misses.begin(), read.misses.end());
    return read;
}

} // namespace

const Listings::Directory &Listings::Of(const std::string &directory)
{
    auto known = directories_.find(directory);
    if (known == directories_.end())
        known = directories_.emplace(directory, ReadDirectory(directory)).first;
    return known->second;
}

std::string_view ModuleOfFile(std::string_view file)
{
    std::string_view stem = StemOf(file);
    return stem.substr(0, stem.find('@'));
}

std::string FileFinder::WhyUnseen(const std::string &directory)
{
    if (int error = Read(directory).error; error != 0)
        return Because("cannot be listed", error);
    return ::access(directory.c_str(), X_OK) == 0 ? std::string() : Because("cannot be entered", errno);
}

template <class Visit>
void FileFinder::ForEachRevision(std::string_view name, Visit &&visit)
{
    std::string beginning = std::string(name) + "@";
    for (const std::string &directory : path_.Directories()) {
        const std::vector<std::string> &files = Listing(directory);
        for (auto file = std::lower_bound(files.begin(), files.end(), beginning);
             file != files.end() && file->starts_with(beginning); ++file) {
            std::string_view revision = StemOf(*file).substr(beginning.size());
            if (IsDate(revision))
                visit(directory, *file, revision);
        }
    }
}

std::string FileFinder::NewestRevision(std::string_view name)
{
    std::string_view newest;
    const std::string *holder = nullptr; // the first directory that has it
    ForEachRevision(name, [&](const std::string &directory, const std::string &, std::string_view revision) {
        if (revision <= newest)
            return;
        newest = revision;
        holder = &directory;
    });
    std::vector<std::string> found;
    if (holder != nullptr)
        AddFile(*holder, std::string(name).append("@").append(newest), found);
    return found.empty() ? std::string() : found.front();
}

std::string FileFinder::OtherRevisions(std::string_view name, std::string_view wanted)
{
    if (wanted.empty())
        return {};
    std::set<std::string_view> files; // the revisions of one name in the order of their dates
    ForEachRevision(name, [&](const std::string &, const std::string &file, std::string_view revision) {
        if (revision != wanted)
            files.insert(file);
    });
    std::string text;
    for (std::string_view file : files)
        text.append(text.empty() ? "; there is " : ", ").append(Quoted(file));
    return text;
}

void FileFinder::AddOwnFile(const std::string &name, std::vector<std::string> &found)
{
    if (!isOwnKnown_)
        own_ = OwnModelDirectory();
    isOwnKnown_ = true;
    if (!own_.empty())
        AddFile(own_, name, found);
}

std::vector<std::string> FileFinder::Candidates(std::string_view name, std::string_view revision)
{
    std::string plain(name);
    std::string dated = plain + "@" + std::string(revision);
    std::vector<std::string> found;
    if (!revision.empty())
        for (const std::string &directory : path_.Directories())
            AddFile(directory, dated, found);
    for (const std::string &directory : path_.Directories())
        AddFile(directory, plain, found);
    if (revision.empty() && found.empty())
        if (std::string path = NewestRevision(name); !path.empty())
            found.push_back(std::move(path));
    if (revision.empty() && found.size() > 1)
        found.resize(1);
    if (found.empty() || !revision.empty())
        AddOwnFile(plain, found);
    return found;
}

std::string FileFinder::Missing(std::string_view name, std::string_view revision)
{
    if (path_.Directories().empty())
        return "no directory to look for it is registered";
    std::string dated = std::string(name) + "@" + std::string(revision.empty() ? "REVISION" : revision) + ".yin";
    std::string text =
        "no file " + Quoted(std::string(name) + ".yin") + " or " + Quoted(dated) + ", nor with '.yang' instead, in ";
    const char *separator = "";
    for (const std::string &directory : path_.Directories()) {
        text.append(separator).append(Quoted(directory)).append(WhyUnseen(directory));
        separator = ", ";
    }
    if (std::string others = OtherRevisions(name, revision); !others.empty())
        return text + others;
    NearestName nearest(names_, name);
    if (nearest.IsOpen())
        ForEachName([&nearest](std::string_view candidate) { nearest.Offer(candidate); });
    return text + nearest.Hint();
}

} // namespace qxyang
