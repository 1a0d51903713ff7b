/* The arguments and options by which commands name modules and directories: the same words everywhere. */
#ifndef KORV_INSPECT_MODEL_OPTIONS_H
#define KORV_INSPECT_MODEL_OPTIONS_H

#include <cstdint>
#include <string>
#include <vector>

#include "base/model_request.h"

namespace CLI {
class App;
}

namespace inspect {

enum class Format {
    TEXT,
    JSON,
    CSV,
    DOT,
};

class ModelOptions {
  public:
    /* Of every command: --verbose, --load, --install-path. */
    void AddCommon(CLI::App *app);

    void AddModule(CLI::App *app);
    void AddModules(CLI::App *app, const char *description);
    void AddDirs(CLI::App *app);
    void AddPath(CLI::App *app);
    void AddFormats(CLI::App *app, const std::vector<std::string> &formats);

    /* An option of a command's own that names directories. */
    static void AddDirOption(CLI::App *app, const char *names, std::vector<std::string> *dirs, const char *description);

    /* Directories as the library takes them. Throws CLI::ValidationError for more than it takes. */
    static void CheckDirs(const std::vector<std::string> &dirs);

    void Understand();

    const ModelRequest &Request() const { return request_; }
    const ModuleKey &Module() const { return request_.modules.front(); }
    const std::string &Path() const { return path_; }
    Format OutputFormat() const;

  private:
    ModelRequest request_;
    std::string module_; /* of a command that takes one */
    std::vector<std::string> modules_;
    std::vector<std::string> loads_;
    std::string path_;
    std::string format_ = "text";
};

} // namespace inspect

#endif // KORV_INSPECT_MODEL_OPTIONS_H
