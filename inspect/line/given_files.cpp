#include "line/given_files.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <utility>

#include "base/failure.h"
#include "model/model_file.h"

namespace inspect {
namespace {

constexpr const char *STANDARD_INPUT = "-";

/* "acme" of "models/acme@2026-01-01.yin". */
std::string NameOfFile(const std::filesystem::path &file)
{
    std::string stem = file.stem().string();
    return stem.substr(0, stem.find('@'));
}

bool IsNameOfFile(const std::string &name)
{
    return !name.empty() && name.front() != '.' && name.find('/') == std::string::npos;
}

/* The name of the module in the file; "" when it holds none that a file could have the name of. */
std::string ModuleIn(const ModelFile &file)
{
    if (!file.HasRoot())
        return "";
    QXYANG_STATEMENT_S root = file.Root();
    std::string name = root.pcArgument != nullptr ? root.pcArgument : "";
    if (IsYang(root, "submodule"))
        throw Failure(file.Shown() + " holds submodule '" + name + "' of module '" +
                          file.ArgumentIn(root, "belongs-to") + "': name the module or its file",
                      EXIT_NOT_LOADED);
    return IsYang(root, "module") && IsNameOfFile(name) ? name : "";
}

} // namespace

/* Byte order marks, and the zeros of UTF-16, which YIN may be written in. */
const char *EndingFor(const std::string &text)
{
    constexpr std::string_view PASSED_OVER("\0 \t\r\n\xEF\xBB\xBF\xFE\xFF", 10);
    size_t first = text.find_first_not_of(PASSED_OVER);
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

std::string GivenFiles::Take(const std::string &file, const std::string &name, const Notes &notes)
{
    File given = {name, file, file};
    if (file == STANDARD_INPUT)
        TakeStandardInput(&given);
    else
        TakeFile(&given, notes);
    for (const File &other : files_) {
        if (other.module == given.module)
            throw Failure("'" + other.shown + "' and '" + given.shown + "' are both of module '" + given.module + "'",
                          EXIT_USAGE);
    }
    files_.push_back(given);
    return given.module;
}

void GivenFiles::TakeStandardInput(File *given)
{
    std::string text = ReadStandardInput();
    std::string ending = EndingFor(text);
    given->shown = "standard input";
    ModelFile file = ModelFile::ReadText(text, ending == ".yang", given->shown);
    std::string module = ModuleIn(file);
    std::string wanted = std::exchange(given->module, module.empty() ? given->module : module);
    if (!wanted.empty() && wanted != given->module)
        throw Failure("standard input holds module '" + module + "', not '" + wanted + "'", EXIT_USAGE);
    if (!IsNameOfFile(given->module))
        throw Failure("standard input holds no module", EXIT_NOT_LOADED, file.Faults());
    given->path = folder_.Make() / (given->module + ending);
    if (!(std::ofstream(given->path, std::ios::binary) << text).flush())
        throw Failure("standard input cannot be kept in " + folder_.Path().string(), EXIT_NOT_LOADED);
}

/* A file in which no module is found counts as that of its own name: the load says what is wrong with it. */
void GivenFiles::TakeFile(File *given, const Notes &notes)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(given->path, error))
        throw Failure(given->shown + ": " + (error ? error.message() : "no regular file"), EXIT_NOT_LOADED);
    std::string named = NameOfFile(given->path);
    given->module = ModuleIn(ModelFile::Read(given->path.string(), given->shown));
    if (given->module.empty())
        given->module = named;
    else if (given->module != named)
        notes.Say(given->shown + " holds module '" + given->module +
                  "': a load by name finds it only in a file of that name");
}

void GivenFiles::AddTo(SearchDirs *dirs)
{
    std::vector<std::string> own;
    for (const File &file : files_) {
        std::string dir = file.path.has_parent_path() ? file.path.parent_path().string() : ".";
        if (!IsInFolder(file) && std::find(own.begin(), own.end(), dir) == own.end())
            own.push_back(dir);
    }
    for (const File &file : files_)
        if (!IsFoundFirst(file, own.empty() ? "" : own.front()))
            Link(file, dirs);
    dirs->first = folder_.Path().string();
    own.insert(own.end(), dirs->dirs.begin(), dirs->dirs.end());
    dirs->dirs = own;
}

bool GivenFiles::IsInFolder(const File &file) const
{
    return !folder_.Path().empty() && file.path.parent_path() == folder_.Path();
}

bool GivenFiles::IsFoundFirst(const File &file, const std::string &firstDir) const
{
    std::filesystem::path dir = file.path.has_parent_path() ? file.path.parent_path() : ".";
    if (dir != firstDir || file.path.stem() != file.module)
        return false;
    std::error_code ignored;
    return file.path.extension() == ".yin" || !std::filesystem::exists(dir / (file.module + ".yin"), ignored);
}

void GivenFiles::Link(const File &file, SearchDirs *dirs)
{
    std::filesystem::path link = file.path;
    if (!IsInFolder(file)) {
        link = folder_.Make() / (file.module + file.path.extension().string());
        std::error_code error;
        std::filesystem::path target = std::filesystem::absolute(file.path, error);
        if (!error)
            std::filesystem::create_symlink(target, link, error);
        if (error)
            throw Failure(file.shown + " cannot be linked to from " + folder_.Path().string() + ": " + error.message(),
                          EXIT_NOT_LOADED);
    }
    dirs->shown.emplace(link.string(), file.shown);
}

} // namespace inspect
