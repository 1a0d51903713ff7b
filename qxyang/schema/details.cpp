#include "schema/details.h"

#include "schema/model.h"

namespace qxyang {

uint32_t Details::AddFile(const QY_MOD &module, std::string_view name, std::string_view path, std::string_view text)
{
    files_.emplace(nextFile_, KeptFile{&module, std::string(name), std::string(path), std::string(text), nullptr});
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

bool Details::IsOfDying(Spot spot) const
{
    auto file = files_.find(spot.file);
    return file != files_.end() && file->second.module->dying;
}

void Details::ForgetDying(const QY_MOD *first) noexcept
{
    for (const QY_MOD *module = first; module != nullptr; module = module->nextDying) {
        if (module->details == nullptr) // the load failed before it was built
            continue;
        for (const QY_TYPE *type : module->details->typedefs)
            typedefs.erase(type);
        for (const QY_NODE *node : module->details->changed)
            if (!node->module->dying)
                std::erase_if(node->module->details->nodes.find(node)->second.changes,
                              [this](Spot change) { return IsOfDying(change); });
    }
    std::erase_if(files_, [this](const auto &file) {
        bool isDying = file.second.module->dying;
        if (auto named = byName_.find(file.second.name); isDying && named != byName_.end())
            std::erase(named->second, file.first);
        return isDying;
    });
}

} // namespace qxyang
