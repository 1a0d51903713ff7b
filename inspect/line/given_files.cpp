#include "line/given_files.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "base/failure.h"

namespace inspect {
namespace {

constexpr const char *STANDARD_INPUT = "-";

/* "acme" of "models/acme@2026-01-01.yin". */
std::string ModuleOf(const std::filesystem::path &file)
{
    const std::string stem = file.stem().string();
    return stem.substr(0, stem.find('@'));
}

} // namespace

const char *EndingFor(const std::string &text)
{
    const size_t first = text.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
    return first != std::string::npos && text[first] == '<' ? ".yin" : ".yang";
}

std::string ReadStandardInput()
{
    std::string text;
    char part[65536];
    while (const size_t count = std::fread(part, 1, sizeof part, stdin))
        text.append(part, count);
    if (std::ferror(stdin) != 0)
        throw Failure("standard input cannot be read", EXIT_NOT_LOADED);
    return text;
}

bool LooksLikeFile(const std::string &text)
{
    return text == STANDARD_INPUT || text.find('/') != std::string::npos || text.ends_with(".yin") ||
           text.ends_with(".yang");
}

GivenFiles::~GivenFiles()
{
    std::error_code ignored;
    if (!folder_.empty())
        std::filesystem::remove_all(folder_, ignored);
}

std::string GivenFiles::Take(const std::string &file, const std::string &name)
{
    File given = {name, file, file};
    if (file == STANDARD_INPUT) {
        if (name.empty())
            throw Failure("standard input has no name: give its module's with --as", EXIT_USAGE);
        const std::string text = ReadStandardInput();
        given.shown = "standard input";
        given.path = Folder() / (name + EndingFor(text));
        if (!(std::ofstream(given.path, std::ios::binary) << text))
            throw Failure("standard input cannot be kept in " + Folder().string(), EXIT_NOT_LOADED);
    } else {
        std::error_code error;
        if (!std::filesystem::is_regular_file(file, error))
            throw Failure(file + ": " + (error ? error.message() : "no regular file"), EXIT_NOT_LOADED);
        if (given.module.empty())
            given.module = ModuleOf(given.path);
    }
    for (const File &other : files_) {
        if (other.module == given.module)
            throw Failure("'" + other.shown + "' and '" + given.shown + "' are both of module '" + given.module + "'",
                          EXIT_USAGE);
    }
    files_.push_back(given);
    return given.module;
}

void GivenFiles::AddTo(SearchDirs *dirs)
{
    std::vector<std::string> own;
    for (const File &file : files_) {
        const std::string dir = file.path.has_parent_path() ? file.path.parent_path().string() : ".";
        if (file.path.parent_path() != folder_ && std::find(own.begin(), own.end(), dir) == own.end())
            own.push_back(dir);
    }
    for (const File &file : files_) {
        if (!IsFoundFirst(file, own.empty() ? "" : own.front()))
            Link(file, dirs);
    }
    if (!folder_.empty())
        own.insert(own.begin(), folder_.string());
    own.insert(own.end(), dirs->dirs.begin(), dirs->dirs.end());
    dirs->dirs = own;
}

bool GivenFiles::IsFoundFirst(const File &file, const std::string &firstDir) const
{
    const std::filesystem::path dir = file.path.has_parent_path() ? file.path.parent_path() : ".";
    if (dir != firstDir || file.path.stem() != file.module)
        return false;
    std::error_code ignored;
    return file.path.extension() == ".yin" || !std::filesystem::exists(dir / (file.module + ".yin"), ignored);
}

const std::filesystem::path &GivenFiles::Folder()
{
    if (!folder_.empty())
        return folder_;
    std::string name = (std::filesystem::temp_directory_path() / "korv-inspect-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw Failure("no directory can be made in " + std::filesystem::temp_directory_path().string(),
                      EXIT_NOT_LOADED);
    return folder_ = name;
}

void GivenFiles::Link(const File &file, SearchDirs *dirs)
{
    std::filesystem::path link = file.path;
    if (file.path.parent_path() != folder_ || folder_.empty()) {
        link = Folder() / (file.module + file.path.extension().string());
        std::filesystem::create_symlink(std::filesystem::absolute(file.path), link);
    }
    dirs->shown.emplace(link.string(), file.shown);
}

} // namespace inspect
