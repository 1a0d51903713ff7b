#include "line/model_options.h"

#include <CLI/CLI.hpp>

#include <algorithm>

#include "line/search_dirs.h"

namespace inspect {
namespace {

CLI::Option *AddDirList(CLI::App *app, const char *names, std::vector<std::string> *dirs, const char *description)
{
    return app->add_option(names, *dirs, description)
        ->option_text("DIR")
        ->allow_extra_args(false)
        ->check(CLI::ExistingDirectory);
}

} // namespace

std::string NotEmpty(const std::string &value)
{
    return value.empty() ? "the value is empty" : "";
}

void ModelOptions::AddCommon(CLI::App *app)
{
    app->add_flag("-v,--verbose", request_.verbose, "Show the library's messages as they come");
    app->add_option("--load", loads_, "Load this module first; may be repeated")
        ->option_text("MODULE[@REVISION]|FILE")
        ->allow_extra_args(false);
    AddDirList(app, "--install-path", &installPaths_, "Directory searched after all others; may be repeated");
    app->add_flag("-r,--recursive", recursive_, "Search the folders below the directories as well");
    app->add_option("--color", color_, "Paint text (auto: on terminals, unless NO_COLOR is set)")
        ->option_text("auto|always|never")
        ->check(CLI::IsMember({"auto", "always", "never"}));
}

void ModelOptions::AddDirs(CLI::App *app)
{
    takesFiles_ = true;
    AddDirList(app, "-d,--dir", &dirs_, "Directory of module files (.); may be repeated");
    app->add_option("--as", inputName_, "The module that standard input must hold")->option_text("MODULE");
}

void ModelOptions::AddModule(CLI::App *app)
{
    takesOne_ = true;
    app->add_option("MODULE", module_, "The module, its file, or - for standard input")
        ->option_text("[@REVISION]|FILE")
        ->required();
    AddDirs(app);
}

void ModelOptions::AddModules(CLI::App *app, const char *description, bool required)
{
    app->add_option("MODULE", modules_, description)->option_text("[@REVISION]|FILE ...")->required(required);
    AddDirs(app);
}

void ModelOptions::AddWords(CLI::App *app, const char *name, const char *text, const char *description)
{
    app->add_option(name, modules_, description)->option_text(text);
    AddDirs(app);
}

void ModelOptions::AddDirOption(CLI::App *app, const char *names, std::vector<std::string> *dirs,
                                const char *description)
{
    AddDirList(app, names, dirs, description);
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

ModuleKey ModelOptions::ToModuleKey(const std::string &text)
{
    if (LooksLikeFile(text)) {
        if (!takesFiles_)
            throw CLI::ValidationError("'" + text + "' looks like a file: give the module's name");
        return {files_.Take(text, text == "-" ? inputName_ : "", request_.notes), ""};
    }
    size_t at = text.find('@');
    ModuleKey key = {text.substr(0, at), at == std::string::npos ? "" : text.substr(at + 1)};
    if (key.name.empty() || (at != std::string::npos && key.revision.empty()))
        throw CLI::ValidationError("'" + text + "' is not MODULE or MODULE@REVISION");
    return key;
}

std::vector<std::string> ModelOptions::Expanded(const std::vector<std::string> &dirs) const
{
    if (!recursive_)
        return dirs;
    std::vector<std::string> all;
    for (const std::string &dir : dirs) {
        std::vector<std::string> below = WithFoldersBelow(dir);
        all.insert(all.end(), below.begin(), below.end());
    }
    return all;
}

void ModelOptions::Understand()
{
    request_.notes = Notes(OutputFormat() == Format::Json);
    paint_ = Paint(color_);
    if (takesFiles_ && dirs_.empty())
        dirs_.emplace_back(".");
    for (const std::string &dir : dirs_) {
        request_.dirs.own.push_back(Expanded({dir}));
        const std::vector<std::string> &all = request_.dirs.own.back();
        request_.dirs.dirs.insert(request_.dirs.dirs.end(), all.begin(), all.end());
    }
    for (const std::vector<std::string> &more : {Expanded(DirsOfEnvironment()), Expanded(installPaths_)})
        request_.dirs.dirs.insert(request_.dirs.dirs.end(), more.begin(), more.end());
    for (const std::string &text : loads_)
        request_.loads.push_back(ToModuleKey(text));
    if (takesOne_) // an empty name as well: it is refused like any other that is no module's
        modules_.push_back(module_);
    for (const std::string &text : modules_)
        request_.modules.push_back(ToModuleKey(text));
    files_.AddTo(&request_.dirs);
}

bool ModelOptions::TakesStandardInput() const
{
    return std::find(modules_.begin(), modules_.end(), "-") != modules_.end();
}

ModelRequest ModelOptions::RequestWith(const std::vector<std::string> &dirs) const
{
    ModelRequest request = request_;
    std::vector<std::string> all = Expanded(dirs);
    request.dirs.dirs.insert(request.dirs.dirs.begin(), all.begin(), all.end());
    return request;
}

Format ModelOptions::OutputFormat() const
{
    if (format_ == "json" || format_ == "jsonl")
        return Format::Json;
    if (format_ == "csv")
        return Format::Csv;
    if (format_ == "svg")
        return Format::Svg;
    return format_ == "dot" ? Format::Dot : Format::Text;
}

} // namespace inspect
