#include "line/config_file.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <sstream>

#include "base/text.h"
#include "line/given_files.h"

namespace inspect {
namespace {

namespace fs = std::filesystem;

/* The line up to a comment that no quotes hold, without blanks around it. `open` counts the brackets of lists that begin and
 * do not end in it. */
std::string Content(const std::string &line, int *open = nullptr)
{
    char quote = '\0';
    size_t end = 0;
    for (; end < line.size() && (quote != '\0' || line[end] != '#'); ++end) {
        char character = line[end];
        if (quote == '"' && character == '\\')
            ++end;
        else if (quote != '\0')
            quote = character == quote ? '\0' : quote;
        else if (character == '"' || character == '\'')
            quote = character;
        else if (open != nullptr && (character == '[' || character == ']'))
            *open += character == '[' ? 1 : -1;
    }
    std::string content = line.substr(0, std::min(end, line.size()));
    return CLI::detail::trim(content);
}

/* True if the line of TOML gives the key a value. */
bool HasKey(const std::string &line, const std::string &key)
{
    std::string name = line.substr(0, line.find('='));
    CLI::detail::trim(name);
    return CLI::detail::remove_quotes(name) == key;
}

/* The path as it is seen from the current directory: `folder` is that of the file that has it. */
std::string Moved(const std::string &path, const fs::path &folder)
{
    if (folder.empty() || path.empty() || fs::path(path).is_absolute())
        return path;
    return (folder / path).lexically_normal().string();
}

/* The value with its path moved; the option's text in the help says where it has one. */
std::string MovedValue(const CLI::Option &option, const std::string &value, const fs::path &folder)
{
    std::string text = option.get_option_text();
    if (text == "DIR" || text == "FILE" || (text.ends_with("|FILE") && LooksLikeFile(value)))
        return Moved(value, folder);
    size_t colon = value.find(':');
    if (!text.ends_with("[:PATH]") || value.find('/', std::min(colon, value.size())) == std::string::npos)
        return value;
    return value.substr(0, colon + 1) + Moved(value.substr(colon + 1), folder);
}

} // namespace

struct ConfigFile::Source {
    std::string path;
    std::string text;

    /* "FILE:LINE: " of the key, or of the section when the key is empty. */
    std::string Place(const std::string &section, const std::string &key) const
    {
        std::istringstream lines(text);
        bool isIn = section.empty();
        size_t number = 0;
        for (std::string line; std::getline(lines, line);) {
            ++number;
            std::string content = Content(line);
            if (content.starts_with("[") && content.ends_with("]")) {
                isIn = content == "[" + section + "]";
                if (isIn && key.empty())
                    break;
            } else if (isIn && !key.empty() && HasKey(content, key)) {
                break;
            }
        }
        return path + ":" + std::to_string(number) + ": ";
    }

    /* The text without comments, and each list on one line: CLI11 reads no others. */
    std::string Plain() const
    {
        std::istringstream lines(text);
        std::string plain;
        size_t number = 0;
        size_t begin = 0;
        int open = 0;
        for (std::string line; std::getline(lines, line);) {
            ++number;
            begin = open == 0 ? number : begin;
            plain += Content(line, &open);
            open = std::max(open, 0);
            plain += open > 0 ? ' ' : '\n';
        }
        if (open > 0)
            throw CLI::ValidationError(path + ":" + std::to_string(begin) + ": this list has no end");
        return plain;
    }

    [[noreturn]] void Fail(const CLI::ConfigItem &item, const std::string &what) const
    {
        bool isMark = item.name == "++" || item.name == "--"; // the begin or end of a section
        throw CLI::ValidationError(Place(CLI::detail::join(item.parents, "."), isMark ? "" : item.name) + what);
    }
};

std::string FindConfigFile()
{
    std::error_code error;
    fs::path folder = fs::current_path(error);
    std::string up;
    while (!error) {
        if (fs::is_regular_file(folder / CONFIG_FILE_NAME, error))
            return up + CONFIG_FILE_NAME;
        error.clear();
        if (folder == folder.root_path())
            return "";
        folder = folder.parent_path();
        up += "../";
    }
    return "";
}

/* The command of the section that the item stands in. */
const CLI::App *ConfigFile::Section(const Source &source, const CLI::ConfigItem &item) const
{
    if (item.parents.empty())
        source.Fail(item, "'" + item.name + "' stands in no section: '[check]' begins that of a command");
    std::string name = CLI::detail::join(item.parents, ".");
    NearestName nearest(name);
    for (const CLI::App *command : app_->get_subcommands(nullptr)) {
        if (command->get_name() == name)
            return command;
        nearest.Offer(command->get_name());
    }
    source.Fail(item, "there is no command '" + name + "'" + nearest.Hint());
}

CLI::Option *ConfigFile::OptionOf(const Source &source, const CLI::App *command, const CLI::ConfigItem &item)
{
    NearestName nearest(item.name);
    for (const CLI::Option *option : command->get_options()) {
        const std::vector<std::string> &names = option->get_lnames();
        if (option == command->get_help_ptr())
            continue;
        if (std::find(names.begin(), names.end(), item.name) != names.end())
            return const_cast<CLI::App *>(command)->get_option("--" + item.name);
        for (const std::string &known : names)
            nearest.Offer(known);
    }
    source.Fail(item, command->get_name() + " has no option '" + item.name + "'" + nearest.Hint());
}

/* Looks at the number of values, and at those of flags. False: the item leaves the option as it is. */
bool ConfigFile::IsSet(const Source &source, const CLI::Option &option, CLI::ConfigItem *item)
{
    if (option.get_expected_max() == 0) {
        std::string value = item->inputs.size() == 1 ? item->inputs.front() : "";
        if (value != "true" && value != "false")
            source.Fail(*item, "'" + item->name + "' is true or false");
        return value == "true";
    }
    if (item->inputs.size() > 1 && option.get_expected_max() == 1)
        source.Fail(*item, "'" + item->name + "' takes one value");
    return !item->inputs.empty();
}

std::vector<CLI::ConfigItem> ConfigFile::from_config(std::istream &input) const
{
    std::vector<CLI::App *> chosen = const_cast<CLI::App *>(app_)->get_subcommands();
    bool isWanted =
        !chosen.empty() && app_->get_option("--no-config")->empty() && chosen.front()->get_help_ptr()->empty();
    if (!isWanted)
        return {};
    Source source = {app_->get_config_ptr()->as<std::string>(),
                     std::string(std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>())};
    fs::path folder = fs::path(source.path).parent_path();
    std::istringstream text(source.Plain());
    std::vector<CLI::ConfigItem> wantedItems;
    for (CLI::ConfigItem &item : CLI::ConfigTOML::from_config(text)) {
        const CLI::App *command = Section(source, item);
        if (item.name == "++" || item.name == "--")
            continue;
        CLI::Option *option = OptionOf(source, command, item);
        if (!IsSet(source, *option, &item) || command != chosen.front())
            continue;
        for (std::string &value : item.inputs)
            value = MovedValue(*option, value, folder);
        if (option->empty())
            places_["--" + item.name] = source.Place(command->get_name(), item.name);
        wantedItems.push_back(std::move(item));
    }
    return wantedItems;
}

std::string ConfigFile::PlaceOf(const std::string &error) const
{
    auto place = places_.find(error.substr(0, error.find(':')));
    return place != places_.end() ? place->second : "";
}

} // namespace inspect
