#include "search_path.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <memory>

#include "text.h"

namespace qxyang {

namespace {

constexpr std::string_view kSuffix = ".yin";

std::string currentDirectory()
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
std::string absolutePath(std::string_view directory)
{
    std::string joined;
    if (directory.front() != '/')
        joined = currentDirectory();
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

std::string fileIn(const std::string &directory, std::string_view file)
{
    std::string path = directory;
    if (path.back() != '/')
        path += '/';
    return path.append(file);
}

bool exists(const std::string &path)
{
    return ::access(path.c_str(), F_OK) == 0;
}

struct DirectoryClose {
    void operator()(DIR *directory) const { ::closedir(directory); }
};

}  // namespace

void SearchPath::add(std::string_view directory)
{
    std::string path = absolutePath(directory);
    if (std::find(directories_.begin(), directories_.end(), path) == directories_.end())
        directories_.push_back(std::move(path));
}

void SearchPath::remove(std::string_view directory)
{
    std::erase(directories_, absolutePath(directory));
}

const std::vector<std::string> &FileFinder::listing(const std::string &directory)
{
    auto [entry, isNew] = listings_.try_emplace(directory);
    if (!isNew)
        return entry->second;
    std::unique_ptr<DIR, DirectoryClose> open(::opendir(directory.c_str()));
    if (open == nullptr)
        return entry->second;
    while (const dirent *file = ::readdir(open.get())) {
        std::string_view name = file->d_name;
        if (name.size() > kSuffix.size() && name.ends_with(kSuffix))
            entry->second.emplace_back(name);
    }
    return entry->second;
}

std::string FileFinder::newestRevision(std::string_view name)
{
    std::string newest;
    std::string path;
    for (const std::string &directory : path_.directories()) {
        for (std::string_view file : listing(directory)) {
            if (!file.starts_with(name) || file.size() <= name.size() + 1 || file[name.size()] != '@')
                continue;
            std::string_view revision = file.substr(name.size() + 1);
            revision.remove_suffix(kSuffix.size());
            if (!isDate(revision) || revision <= newest)
                continue;
            newest = revision;
            path = fileIn(directory, file);
        }
    }
    return path;
}

std::vector<std::string> FileFinder::candidates(std::string_view name, std::string_view revision)
{
    std::string plain = std::string(name).append(kSuffix);
    std::string dated = std::string(name).append("@").append(revision).append(kSuffix);
    std::vector<std::string> found;
    if (!revision.empty())
        for (const std::string &directory : path_.directories())
            if (std::string path = fileIn(directory, dated); exists(path))
                found.push_back(std::move(path));
    for (const std::string &directory : path_.directories())
        if (std::string path = fileIn(directory, plain); exists(path))
            found.push_back(std::move(path));
    if (revision.empty() && found.empty())
        if (std::string path = newestRevision(name); !path.empty())
            found.push_back(std::move(path));
    if (revision.empty() && found.size() > 1)
        found.resize(1);
    return found;
}

std::string FileFinder::missing(std::string_view name, std::string_view revision)
{
    if (path_.directories().empty())
        return "no directory to look for it is registered";
    std::string dated = std::string(name) + "@" + std::string(revision.empty() ? "REVISION" : revision) + ".yin";
    std::string text = "no file " + quoted(std::string(name) + ".yin") + " or " + quoted(dated) + " in ";
    const char *separator = "";
    for (const std::string &directory : path_.directories()) {
        text.append(separator).append(quoted(directory));
        separator = ", ";
    }
    NearestName nearest(name);
    forEachName([&nearest](std::string_view candidate) { nearest.offer(candidate); });
    return text + nearest.hint();
}

}  // namespace qxyang
