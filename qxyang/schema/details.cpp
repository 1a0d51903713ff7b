#include "schema/details.h"

#include "schema/model.h"

namespace qxyang {

uint32_t Details::AddFile(const QY_MOD &module, std::string_view name, std::string_view path, std::string_view text)
{
    files_.push_back(std::make_unique<KeptFile>(
        KeptFile{&module, std::string(name), std::string(path), std::string(text), nullptr}));
    return static_cast<uint32_t>(files_.size() - 1);
}

KeptFile *Details::FileNamed(std::string_view name)
{
    KeptFile *found = nullptr;
    for (const auto &file : files_)
        if (file != nullptr && file->name == name && (found == nullptr || !found->module->byName))
            found = file.get();
    return found;
}

KeptFile *Details::FileOf(const QY_MOD &module)
{
    for (const auto &file : files_)
        if (file != nullptr && file->module == &module && file->name == module.name)
            return file.get();
    return nullptr;
}

void Details::ForgetDying() noexcept
{
    for (auto &file : files_)
        if (file != nullptr && file->module->dying)
            file.reset();
}

} // namespace qxyang
