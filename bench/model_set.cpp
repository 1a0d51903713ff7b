#include "model_set.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "model_generator.h"

namespace bench {
namespace {

std::string TextOf(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

constexpr uint32_t BASES = 8;
constexpr uint32_t LISTS = 250;
constexpr uint32_t EXTENSIONS_A_BASE = 7;
constexpr uint32_t AUGMENTS = 4;

/* The name without a revision. */
std::string ModuleOf(const std::filesystem::path &path)
{
    const std::string stem = path.stem().string();
    return stem.substr(0, stem.find('@'));
}

} // namespace

ModelSet::ModelSet(const std::string &from) : dir(from)
{
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(dir)) {
        if (entry.path().extension() == ".yin")
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    for (const auto &path : files) {
        texts.push_back(TextOf(path));
        const std::string name = ModuleOf(path);
        if (texts.back().find("<submodule") == std::string::npos && (modules.empty() || modules.back() != name))
            modules.push_back(name);
    }
    if (modules.empty())
        Fail("no modules in " + dir);
}

void ModelSet::LoadInto(const Instance &instance) const
{
    for (const std::string &module : modules)
        instance.Load(module);
}

void WriteSet(const ModelFiles &files)
{
    for (uint32_t i = 0; i < BASES; ++i) {
        const std::string base = "bench-set-" + std::to_string(i);
        (void)files.Add(base, TreeModule(base, LISTS));
        for (uint32_t j = 0; j < EXTENSIONS_A_BASE; ++j) {
            const std::string extension = base + "-extension-" + std::to_string(j);
            (void)files.Add(extension, ExtendingModule(extension, base, AUGMENTS));
        }
    }
}

} // namespace bench
