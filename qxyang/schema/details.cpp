#include "schema/details.h"

#include <algorithm>

#include "schema/model.h"

namespace qxyang {

uint32_t Details::AddFile(const QY_MOD &module, std::string_view name, std::string_view path, std::string_view text)
{
    files_.emplace(nextFile_, KeptFile{&module, std::string(name), std::string(path), std::string(text), nullptr});
    if (module.details->fileCount++ == 0)
        module.details->firstFile = nextFile_;
    byName_[std::string(name)].push_back(nextFile_);
    return nextFile_++;
}

KeptFile *Details::FileNamed(std::string_view name)
{
    KeptFile *found = nullptr;
    ForEachNamed(name, [&found](KeptFile &file) {
        if (found == nullptr || !found->module->byName)
            found = &file;
    });
    return found;
}

KeptFile *Details::FileOf(const QY_MOD &module)
{
    KeptFile *found = nullptr;
    ForEachNamed(module.name, [&](KeptFile &file) {
        if (file.module == &module)
            found = &file;
    });
    return found;
}

void Details::ForgetDying(const QY_MOD *first) noexcept
{
    for (const QY_MOD *module = first; module != nullptr; module = module->nextDying) {
        ModuleDetails *going = module->details.get();
        if (going == nullptr) // the load failed before it was built
            continue;
        for (const QY_TYPE *type : going->typedefs)
            typedefs.erase(type);
        std::sort(going->changed.begin(), going->changed.end()); // each node's changes are read once
        auto end = std::unique(going->changed.begin(), going->changed.end());
        going->changed.erase(end, going->changed.end());
        for (const QY_NODE *node : going->changed)
            if (!node->module->dying)
                std::erase_if(node->module->details->nodes.find(node)->second.changes,
                              [going](Spot change) { return going->IsInFiles(change); });
        ForgetFiles(*going);
    }
}

void Details::ForgetFiles(const ModuleDetails &module) noexcept
{
    for (uint32_t i = 0; i < module.fileCount; ++i) {
        auto file = files_.find(module.firstFile + i);
        if (auto named = byName_.find(file->second.name); named != byName_.end())
            std::erase(named->second, file->first);
        files_.erase(file);
    }
}

} // namespace qxyang
