#include "line/model_options.h"

#include <CLI/CLI.hpp>

namespace inspect {
namespace {

constexpr size_t MAX_BASE_DIRS = 2; /* the library's */

ModuleKey ToModuleKey(const std::string &text)
{
    const size_t at = text.find('@');
    ModuleKey key = {text.substr(0, at), at == std::string::npos ? "" : text.substr(at + 1)};
    if (key.name.empty() || (at != std::string::npos && key.revision.empty()))
        throw CLI::ValidationError("'" + text + "' is not MODULE or MODULE@REVISION");
    if (key.name.find('/') != std::string::npos || text.ends_with(".yin"))
        throw CLI::ValidationError("'" + text +
                                   "' looks like a file: give the module's name, and its directory with -d");
    return key;
}

} // namespace

void ModelOptions::AddCommon(CLI::App *app)
{
    app->add_flag("-v,--verbose", request_.verbose, "Show the library's messages as they come");
    app->add_option("--load", loads_, "Load this module first; may be repeated")
        ->option_text("MODULE[@REVISION]")
        ->allow_extra_args(false);
    app->add_option("--install-path", request_.dirs.install, "Further directory of YIN files; may be repeated")
        ->option_text("DIR")
        ->allow_extra_args(false)
        ->check(CLI::ExistingDirectory);
}

void ModelOptions::AddModule(CLI::App *app)
{
    app->add_option("MODULE", module_, "The module")->option_text("[@REVISION]")->required();
}

void ModelOptions::AddModules(CLI::App *app, const char *description)
{
    app->add_option("MODULE", modules_, description)->option_text("[@REVISION] ...");
}

void ModelOptions::AddDirOption(CLI::App *app, const char *names, std::vector<std::string> *dirs,
                                const char *description)
{
    app->add_option(names, *dirs, description)
        ->option_text("DIR")
        ->allow_extra_args(false)
        ->required()
        ->check(CLI::ExistingDirectory);
}

void ModelOptions::AddDirs(CLI::App *app)
{
    AddDirOption(app, "-d,--dir", &request_.dirs.base, "Directory of YIN files; a second one may be given");
}

void ModelOptions::AddPath(CLI::App *app)
{
    app->add_option("PATH", path_, "Path of a node or leaf")->option_text(" ")->required();
}

void ModelOptions::AddFormats(CLI::App *app, const std::vector<std::string> &formats)
{
    std::string text;
    for (const std::string &format : formats)
        text += (text.empty() ? "" : "|") + format;
    app->add_option("--format", format_, "How to write the result (text)")
        ->option_text(text)
        ->check(CLI::IsMember(formats));
}

void ModelOptions::CheckDirs(const std::vector<std::string> &dirs)
{
    if (dirs.size() > MAX_BASE_DIRS)
        throw CLI::ValidationError("the library has two base directories: give further ones with --install-path");
}

void ModelOptions::Understand()
{
    for (const std::string &text : loads_)
        request_.loads.push_back(ToModuleKey(text));
    if (!module_.empty())
        modules_.push_back(module_);
    for (const std::string &text : modules_)
        request_.modules.push_back(ToModuleKey(text));
    CheckDirs(request_.dirs.base);
}

Format ModelOptions::OutputFormat() const
{
    if (format_ == "json")
        return Format::JSON;
    if (format_ == "csv")
        return Format::CSV;
    return format_ == "dot" ? Format::DOT : Format::TEXT;
}

} // namespace inspect
