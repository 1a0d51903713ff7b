#include "model/module_search.h"

#include <qxyang.h>

#include <filesystem>
#include <new>

#include "model/model_file.h"

namespace inspect {
namespace {

using Texts = std::vector<std::string>;

uint32_t AddText(const char *text, void *texts)
try {
    static_cast<Texts *>(texts)->emplace_back(text);
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

uint32_t AddFile(const char *name, const char *path, uint32_t, void *files)
try {
    static_cast<std::vector<LoadedFile> *>(files)->push_back({name, path});
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

std::vector<const char *> Pointers(const SearchDirs &dirs)
{
    std::vector<const char *> pointers;
    if (!dirs.first.empty())
        pointers.push_back(dirs.first.c_str());
    for (const std::string &dir : dirs.dirs)
        pointers.push_back(dir.c_str());
    return pointers;
}

} // namespace

std::vector<std::string> ModuleNames(const SearchDirs &dirs)
{
    Texts names;
    std::vector<const char *> pointers = Pointers(dirs);
    if (QXYANG_ScanModuleNames(pointers.data(), static_cast<uint32_t>(pointers.size()), AddText, &names) != 0)
        throw std::bad_alloc();
    return names;
}

std::vector<std::string> OwnModuleNames(const SearchDirs &dirs)
{
    SearchDirs own;
    for (const std::vector<std::string> &group : dirs.own)
        own.dirs.insert(own.dirs.end(), group.begin(), group.end());
    return ModuleNames(own);
}

std::string ModulePath(const SearchDirs &dirs, const std::string &name)
{
    Texts paths;
    std::vector<const char *> pointers = Pointers(dirs);
    if (QXYANG_ScanModulePaths(pointers.data(), static_cast<uint32_t>(pointers.size()), name.c_str(), nullptr, AddText,
                               &paths) != 0)
        throw std::bad_alloc();
    return paths.empty() ? "" : paths.front();
}

std::vector<LoadedFile> FilesOf(const QY_MOD *module)
{
    std::vector<LoadedFile> files;
    if (QXYANG_ScanModuleFiles(module, AddFile, &files) != 0)
        throw std::bad_alloc();
    return files;
}

bool HoldsSubmodule(const std::string &path)
{
    ModelFile file = ModelFile::Read(path, path);
    return file.HasRoot() && IsYang(file.Root(), "submodule");
}

std::string TwinOf(const std::string &path)
{
    std::filesystem::path twin = path;
    twin.replace_extension(path.ends_with(".yin") ? ".yang" : ".yin");
    std::error_code ignored;
    return std::filesystem::is_regular_file(twin, ignored) ? twin.string() : "";
}

} // namespace inspect
