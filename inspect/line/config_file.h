/* The configuration file: what stands in it counts as if it stood on the command line, in front of all else. It has a section
 * for each command, and the keys in it are the command's long options. */
#pragma once

#include <CLI/CLI.hpp>

#include <istream>
#include <map>
#include <string>
#include <vector>

namespace inspect {

constexpr const char *CONFIG_FILE_NAME = "korv-inspect.toml";

/* The path of the nearest file of that name in the current directory or one above it; "" when there is none. */
std::string FindConfigFile();

class ConfigFile : public CLI::ConfigTOML {
  public:
    /* Of a program with these commands; the option that names the file, and the flag that there is to be none. */
    explicit ConfigFile(const CLI::App *app) : app_(app) { comment('\x01'); } /* comments are taken out before */

    /* The values for the command that the line names, paths as seen from the current directory. Throws
     * CLI::ValidationError, with file and line, for what is no section, no option or no value for it. */
    std::vector<CLI::ConfigItem> from_config(std::istream &input) const override;

    /* "FILE:LINE: " when what CLI11 says is about a value of the file, else "". */
    std::string PlaceOf(const std::string &error) const;

  private:
    struct Source; /* the file that is being read */

    const CLI::App *Section(const Source &source, const CLI::ConfigItem &item) const;
    static CLI::Option *OptionOf(const Source &source, const CLI::App *command, const CLI::ConfigItem &item);
    static bool IsSet(const Source &source, const CLI::Option &option, CLI::ConfigItem *item);

    const CLI::App *app_;
    mutable std::map<std::string, std::string> places_; /* "FILE:LINE: " of the values that were given on, by option */
};

} // namespace inspect
