#include "files/own_models.h"

#include <dlfcn.h>

#include <filesystem>

namespace qxyang {

std::string OwnModelDirectory()
{
    Dl_info library{};
    if (::dladdr(reinterpret_cast<const void *>(&OwnModelDirectory), &library) == 0 || library.dli_fname == nullptr)
        return {};
    std::error_code error;
    std::filesystem::path file = std::filesystem::canonical(library.dli_fname, error);
    if (error)
        return {};
    std::filesystem::path directory = std::filesystem::canonical(file.parent_path() / KORV_MODELS_FROM_LIBDIR, error);
    return error ? std::string() : directory.string();
}

} // namespace qxyang
