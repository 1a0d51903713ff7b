#include "line/search_dirs.h"

#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>

namespace inspect {

std::vector<std::string> WithFoldersBelow(const std::string &dir)
{
    using Walk = std::filesystem::recursive_directory_iterator;
    std::set<std::string> below;
    std::error_code error;
    for (Walk entry(dir, std::filesystem::directory_options::skip_permission_denied, error); !error && entry != Walk();
         entry.increment(error)) {
        const std::filesystem::path &path = entry->path();
        if (entry->is_directory(error) && path.filename().string().starts_with('.'))
            entry.disable_recursion_pending();
        if (path.extension() == ".yin" || path.extension() == ".yang")
            below.insert(path.parent_path().string());
    }
    below.erase(std::filesystem::path(dir).string());
    std::vector<std::string> dirs = {dir};
    dirs.insert(dirs.end(), below.begin(), below.end());
    return dirs;
}

std::vector<std::string> DirsOfEnvironment()
{
    const char *text = std::getenv("KORV_MODEL_PATH");
    std::vector<std::string> dirs;
    std::istringstream rest(text != nullptr ? text : "");
    for (std::string dir; std::getline(rest, dir, ':');) {
        std::error_code error;
        if (std::filesystem::is_directory(dir, error))
            dirs.push_back(dir);
    }
    return dirs;
}

} // namespace inspect
