/* The arguments and options by which commands name modules and directories: the same words everywhere. */
#pragma once

#include <string>
#include <vector>

#include "base/model_request.h"
#include "base/paint.h"
#include "line/given_files.h"

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace inspect {

enum class Format {
    Text,
    Json,
    Csv,
    Dot,
    Svg,
};

/* For CLI::Option::check: "" if the value is not empty, or what is wrong with it. */
std::string NotEmpty(const std::string &value);

class ModelOptions {
  public:
    /* Of every command: --verbose, --load, --install-path, --recursive, --color. */
    void AddCommon(CLI::App *app);

    /* A module by name or file, or several; with them come -d and --as. */
    void AddModule(CLI::App *app);
    void AddModules(CLI::App *app, const char *description, bool required = false);

    /* Words of which a command takes out what is no module before it calls Understand. */
    void AddWords(CLI::App *app, const char *name, const char *text, const char *description);
    std::vector<std::string> &Words() { return modules_; }

    void AddPath(CLI::App *app);
    void AddFormats(CLI::App *app, const std::vector<std::string> &formats);

    /* An option of a command's own that names directories. */
    static void AddDirOption(CLI::App *app, const char *names, std::vector<std::string> *dirs, const char *description);

    void Understand();

    /* What "MODULE[@REVISION]|FILE" means; a file only for a command that takes files. */
    ModuleKey ToModuleKey(const std::string &text);

    const ModelRequest &Request() const { return request_; }
    bool TakesStandardInput() const;
    /* The directories of -d, as they were given. */
    const std::vector<std::string> &Dirs() const { return dirs_; }
    bool IsRecursive() const { return recursive_; }
    const ModuleKey &Module() const { return request_.modules.front(); }
    const std::string &Path() const { return path_; }
    Format OutputFormat() const;
    const std::string &FormatName() const { return format_; }
    const Paint &Colors() const { return paint_; }

    /* The request with these directories in front of those of --install-path and the environment. */
    ModelRequest RequestWith(const std::vector<std::string> &dirs) const;

  private:
    void AddDirs(CLI::App *app);
    std::vector<std::string> Expanded(const std::vector<std::string> &dirs) const;

    ModelRequest request_;
    GivenFiles files_;
    std::string module_; /* of a command that takes one */
    std::vector<std::string> modules_;
    std::vector<std::string> loads_;
    std::vector<std::string> dirs_;
    std::vector<std::string> installPaths_;
    std::string inputName_; /* of the module on standard input */
    std::string path_;
    std::string format_ = "text";
    std::string color_ = "auto";
    Paint paint_;
    bool takesOne_ = false;
    bool takesFiles_ = false;
    bool recursive_ = false;
};

} // namespace inspect
