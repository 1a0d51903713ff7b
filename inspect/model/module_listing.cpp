#include "model/module_listing.h"

#include <new>

namespace inspect {
namespace {

using Folders = std::vector<ModuleListing::Folder>;
using Modules = std::map<std::string, std::string>;

uint32_t AddFile(uint32_t dir, const char *file, int32_t error, void *cookie)
try {
    ModuleListing::Folder &folder = static_cast<Folders *>(cookie)->at(dir);
    if (file != nullptr)
        folder.files.emplace_back(file);
    folder.error = error;
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

uint32_t AddModule(const char *name, const char *path, uint32_t, void *cookie)
try {
    static_cast<Modules *>(cookie)->emplace(name, path);
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

} // namespace

ModuleListing::ModuleListing(const SearchDirs &dirs)
{
    std::vector<const char *> names;
    if (!dirs.first.empty()) {
        names.push_back(dirs.first.c_str());
        folders_.push_back({dirs.first, {}});
    }
    for (const std::string &dir : dirs.dirs) {
        names.push_back(dir.c_str());
        folders_.push_back({dir, {}});
    }
    handle_.reset(QXYANG_OpenListings(names.data(), static_cast<uint32_t>(names.size())));
    if (handle_ == nullptr || QXYANG_ScanListedFiles(Handle(), AddFile, &folders_) != 0 ||
        QXYANG_ScanListedModules(Handle(), AddModule, &modules_) != 0)
        throw std::bad_alloc();
    if (!dirs.first.empty())
        folders_.erase(folders_.begin());
}

} // namespace inspect
