#include "model/yin_files.h"

#include <filesystem>
#include <set>

namespace inspect {
namespace {

constexpr std::string_view SUFFIX = ".yin";

template <typename Visit>
void ForEachYinFile(const std::vector<std::string> &dirs, Visit visit)
{
    for (const std::string &dir : dirs) {
        std::error_code error;
        for (const auto &entry : std::filesystem::directory_iterator(dir, error)) {
            const std::string file = entry.path().filename().string();
            if (file.size() > SUFFIX.size() && file.ends_with(SUFFIX))
                visit(std::string_view(file).substr(0, file.size() - SUFFIX.size()), entry.path().string());
        }
    }
}

} // namespace

std::string YinFiles::PathOf(std::string_view name) const
{
    for (const std::string &dir : dirs_.dirs) {
        const auto path = std::filesystem::path(dir) / (std::string(name) += SUFFIX);
        std::error_code error;
        if (std::filesystem::exists(path, error))
            return path.string();
    }
    std::string newest;
    std::string newestPath;
    ForEachYinFile(dirs_.dirs, [&](std::string_view stem, const std::string &path) {
        if (!stem.starts_with(name) || stem.size() <= name.size() + 1 || stem[name.size()] != '@')
            return;
        const std::string_view revision = stem.substr(name.size() + 1);
        if (revision > newest) {
            newest = revision;
            newestPath = path;
        }
    });
    return newestPath;
}

const YinFile *YinFiles::Find(std::string_view name)
{
    const auto known = files_.find(name);
    if (known != files_.end())
        return known->second.get();
    const std::string path = PathOf(name);
    std::unique_ptr<YinFile> file = path.empty() ? nullptr : YinFile::Read(path);
    if (file != nullptr && file->Module().argument != name)
        file.reset();
    return files_.emplace(name, std::move(file)).first->second.get();
}

std::string YinFiles::PrefixOf(std::string_view module)
{
    const YinFile *file = Find(module);
    const std::string_view prefix = file != nullptr ? file->Prefix() : "";
    return std::string(prefix.empty() ? module : prefix);
}

std::vector<std::string> YinFiles::Names() const
{
    std::set<std::string> names;
    ForEachYinFile(dirs_.dirs,
                   [&](std::string_view stem, const std::string &) { names.emplace(stem.substr(0, stem.find('@'))); });
    return {names.begin(), names.end()};
}

} // namespace inspect
