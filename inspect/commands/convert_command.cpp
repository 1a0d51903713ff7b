/* convert: model files in the other syntax. */
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "base/cause.h"
#include "base/failure.h"
#include "base/output_file.h"
#include "base/text.h"
#include "commands/commands.h"
#include "convert/conversion.h"
#include "line/given_files.h"
#include "line/search_dirs.h"

namespace inspect {
namespace {

namespace fs = std::filesystem;

constexpr const char *HELP = R"(A .yang file becomes YIN and a .yin file compact syntax. The result has the same
statements and arguments, and the comments that its syntax can hold. -o names a file, or a
directory, which gets a file of each module's name. When one file cannot be converted, none
is written.

YIN writes an extension's argument as the extension says: the module that defines it is
looked for in the file's directory, then in those of -d and of KORV_MODEL_PATH.

Examples:
  korv-inspect convert examples/yin/example-qos.yin
  korv-inspect convert examples/yin/*.yin -o /tmp/)";

constexpr const char *STANDARD_INPUT = "-";
constexpr const char *YIN = ".yin";
constexpr const char *COMPACT = ".yang";

class ConvertCommand final : public Command {
  public:
    void AddTo(CLI::App *app) override
    {
        app->add_option("FILE", files_, "Model files, or - for standard input")->option_text("...")->required();
        app->add_option("-o,--output", output_, "Where to write the result (standard output)")->option_text("FILE|DIR");
        app->add_option("--to", syntax_, "Syntax of the result (the other one)")
            ->option_text("yin|yang")
            ->check(CLI::IsMember({"yin", "yang"}));
        app->add_option("-d,--dir", dirs_, "Directory of imported modules (.); may be repeated")
            ->option_text("DIR")
            ->allow_extra_args(false)
            ->check(CLI::ExistingDirectory);
        app->add_flag("-r,--recursive", recursive_, "Search the folders below the directories as well");
    }

    void Understand() override;
    int Run() override;

  private:
    struct Result {
        std::string path; /* "" for standard output */
        Written written;
    };

    bool IsToYin(const ModelFile &file) const;
    std::vector<std::string> DirsOf(const std::string &path) const;
    std::string PathFor(const std::string &path, const ModelFile &file, bool toYin) const;
    void RequireOwnPath(const std::string &path) const;
    ExitCode ConvertOne(const std::string &path);

    std::vector<std::string> files_;
    std::string output_;
    std::string syntax_;
    std::vector<std::string> dirs_;
    bool recursive_ = false;
    bool intoDirectory_ = false;
    std::vector<Result> results_;
};

std::string Shown(const std::string &path)
{
    return path == STANDARD_INPUT ? "standard input" : path;
}

ExitCode Report(const Cause &cause, ExitCode code)
{
    std::fprintf(stderr, "%s%s\n", Printable(PlaceText(cause, "")).c_str(), Printable(cause.text).c_str());
    return code;
}

ModelFile ReadModel(const std::string &path)
{
    if (path != STANDARD_INPUT)
        return ModelFile::Read(path, path, true);
    std::string text = ReadStandardInput();
    return ModelFile::ReadText(text, EndingFor(text) == std::string_view(COMPACT), Shown(path));
}

void ConvertCommand::Understand()
{
    std::error_code ignored;
    intoDirectory_ = output_.ends_with('/') || fs::is_directory(output_, ignored);
    if (files_.size() > 1 && !intoDirectory_)
        throw CLI::ValidationError("several files need a directory: give it with -o");
    if (intoDirectory_ && !fs::is_directory(output_, ignored))
        throw CLI::ValidationError("Directory does not exist: " + output_);
    if (dirs_.empty())
        dirs_.emplace_back(".");
    std::vector<std::string> more = DirsOfEnvironment();
    dirs_.insert(dirs_.end(), more.begin(), more.end());
    if (!recursive_)
        return;
    std::vector<std::string> all;
    for (const std::string &dir : dirs_) {
        std::vector<std::string> below = WithFoldersBelow(dir);
        all.insert(all.end(), below.begin(), below.end());
    }
    dirs_ = all;
}

/* As --to says, else the name of the result, else the other syntax. */
bool ConvertCommand::IsToYin(const ModelFile &file) const
{
    if (!syntax_.empty())
        return syntax_ == "yin";
    if (!intoDirectory_ && (output_.ends_with(YIN) || output_.ends_with(COMPACT)))
        return output_.ends_with(YIN);
    return file.IsCompact();
}

std::vector<std::string> ConvertCommand::DirsOf(const std::string &path) const
{
    std::vector<std::string> dirs = dirs_;
    fs::path parent = fs::path(path).parent_path();
    if (path != STANDARD_INPUT)
        dirs.insert(dirs.begin(), parent.empty() ? "." : parent.string());
    return dirs;
}

/* In a directory, the module's name with the revision that the file's own name has. */
std::string ConvertCommand::PathFor(const std::string &path, const ModelFile &file, bool toYin) const
{
    if (!intoDirectory_)
        return output_;
    QXYANG_STATEMENT_S root = file.Root();
    std::string name = root.pcArgument != nullptr ? root.pcArgument : "";
    if (name.empty() || name.front() == '.' || name.find('/') != std::string::npos)
        throw ConvertError(root.stPlace.uiLine, root.stPlace.uiColumn, "'" + name + "' is no name of a file");
    std::string stem = path == STANDARD_INPUT ? "" : fs::path(path).stem().string();
    if (const size_t at = stem.find('@'); at != std::string::npos)
        name += stem.substr(at);
    return (fs::path(output_) / (name + (toYin ? YIN : COMPACT))).string();
}

/* A result must not take the place of a file that is converted, nor of another result. */
void ConvertCommand::RequireOwnPath(const std::string &path) const
{
    for (const std::string &file : files_) {
        std::error_code ignored;
        if (fs::equivalent(file, path, ignored))
            throw Failure("'" + path + "' is a file that is converted: name another with -o", EXIT_USAGE);
    }
    bool isTaken = std::any_of(results_.begin(), results_.end(),
                               [&](const Result &other) { return !path.empty() && other.path == path; });
    if (isTaken)
        throw Failure("two of the files would become '" + path + "'", EXIT_USAGE);
}

ExitCode ConvertCommand::ConvertOne(const std::string &path)
{
    ModelFile file = ReadModel(path);
    ExitCode code = EXIT_OK;
    for (const Cause &fault : file.Faults())
        code = Report(fault, EXIT_NOT_LOADED);
    if (code != EXIT_OK)
        return code;
    try {
        bool toYin = IsToYin(file);
        std::string target = PathFor(path, file, toYin);
        RequireOwnPath(target);
        Result result = {target, Convert(file, toYin, DirsOf(path))};
        if (result.written.lostComments > 0)
            std::fprintf(stderr, "%s: YIN cannot hold %s with two hyphens in a row\n", Printable(Shown(path)).c_str(),
                         Count(result.written.lostComments, "comment").c_str());
        results_.push_back(std::move(result));
        return EXIT_OK;
    } catch (const ConvertError &error) {
        return Report({Shown(path), error.line, error.column, error.what()}, EXIT_NEGATIVE);
    }
}

int ConvertCommand::Run()
{
    ExitCode code = EXIT_OK;
    for (const std::string &path : files_)
        code = std::max(code, ConvertOne(path));
    if (code != EXIT_OK)
        throw Failure("nothing is written", code);
    for (const Result &result : results_)
        if (result.path.empty())
            std::fwrite(result.written.text.data(), 1, result.written.text.size(), stdout);
        else
            WriteOutputFile(result.path, result.written.text);
    return EXIT_OK;
}

} // namespace

const CommandEntry CONVERT_COMMAND = {"convert", "Write model files in the other syntax", HELP, Make<ConvertCommand>};

} // namespace inspect
