#include "schema/details.h"

#include "schema/model.h"

namespace qxyang {

uint32_t Details::AddFile(const QY_MOD &module, std::string_view name, std::string_view path, std::string_view text)
{
    files_.emplace(nextFile_, KeptFile{&module, std::string(name), std::string(path), std::string(text), nullptr});
    return nextFile_++;
}

KeptFile *Details::FileNamed(std::string_view name)
{
    KeptFile *found = nullptr;
    for (auto &[number, file] : files_)
        if (file.name == name && (found == nullptr || !found->module->byName))
            found = &file;
    return found;
}

KeptFile *Details::FileOf(const QY_MOD &module)
{
    for (auto &[number, file] : files_)
        if (file.module == &module && file.name == module.name)
            return &file;
    return nullptr;
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
    std::erase_if(files_, [](const auto &file) { return file.second.module->dying; });
}

} // namespace qxyang
