#include "line/completion.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>

#include "base/text.h"
#include "check/rules.h"
#include "line/given_files.h"
#include "line/search_dirs.h"
#include "model/module_search.h"
#include "model/schema_scan.h"
#include "model/trees.h"
#include "paths/path_rows.h"

namespace inspect {
namespace {

namespace fs = std::filesystem;

using Words = std::vector<std::string>;

bool TakesValue(const CLI::Option &option)
{
    return option.get_expected_max() > 0;
}

/* The line up to the word that is completed. */
class Line {
  public:
    Line(const CLI::App &app, const Words &words) : app_(app), current_(words.empty() ? "" : words.back())
    {
        for (size_t i = 0; i + 1 < words.size(); ++i)
            Take(words[i]);
        size_t equals = current_.find('=');
        if (pending_ != nullptr || !current_.starts_with("--") || equals == std::string::npos)
            return;
        before_ = current_.substr(0, equals + 1);
        pending_ = Find(current_.substr(0, equals));
        current_ = current_.substr(equals + 1);
    }

    const CLI::App *Command() const { return command_; }
    const std::string &Current() const { return current_; }
    const std::string &Before() const { return before_; }   /* "--format=" in front of the current word */
    const CLI::Option *Pending() const { return pending_; } /* whose value is completed, or null */
    const Words &Arguments() const { return arguments_; }
    bool IsHelp() const { return isHelp_; }
    bool IsUnknown() const { return isUnknown_; } /* the word in the command's place is none */

    Words Values(const std::string &text) const
    {
        auto found = values_.find(text);
        return found != values_.end() ? found->second : Words();
    }

    /* The positional option that the current word belongs to, or null. */
    const CLI::Option *Positional() const
    {
        const CLI::Option *last = nullptr;
        size_t left = arguments_.size() + 1;
        for (const CLI::Option *option : command_->get_options()) {
            if (option->get_positional() && left > 0) {
                last = option;
                --left;
            }
        }
        return last;
    }

    /* Where modules are looked for. */
    SearchDirs Dirs() const
    {
        SearchDirs dirs;
        Words given = Values("DIR");
        if (given.empty())
            given.emplace_back(".");
        Words more = DirsOfEnvironment();
        given.insert(given.end(), more.begin(), more.end());
        for (const std::string &dir : given) {
            Words below = isRecursive_ ? WithFoldersBelow(dir) : Words{dir};
            dirs.dirs.insert(dirs.dirs.end(), below.begin(), below.end());
        }
        return dirs;
    }

  private:
    const CLI::Option *Find(const std::string &name) const
    {
        for (const CLI::App *app : {command_, &app_})
            if (app != nullptr)
                for (const CLI::Option *option : app->get_options())
                    if (option->check_name(name))
                        return option;
        return nullptr;
    }

    void Take(const std::string &word)
    {
        if (pending_ != nullptr) {
            values_[pending_->get_option_text()].push_back(word);
            pending_ = nullptr;
        } else if (word.size() > 1 && word.front() == '-') {
            TakeOption(word);
        } else if (command_ == nullptr && !isHelp_) {
            isHelp_ = word == "help";
            for (const CLI::App *command : app_.get_subcommands({}))
                command_ = command->get_name() == word ? command : command_;
            isUnknown_ = command_ == nullptr && !isHelp_;
        } else {
            arguments_.push_back(word);
        }
    }

    void TakeOption(const std::string &word)
    {
        size_t equals = word.find('=');
        const CLI::Option *option = Find(word.substr(0, equals));
        isRecursive_ = isRecursive_ || word == "-r" || word == "--recursive";
        if (option == nullptr || !TakesValue(*option))
            return;
        if (equals != std::string::npos)
            values_[option->get_option_text()].push_back(word.substr(equals + 1));
        else
            pending_ = option;
    }

    const CLI::App &app_;
    const CLI::App *command_ = nullptr;
    bool isHelp_ = false;
    bool isUnknown_ = false;
    bool isRecursive_ = false;
    Words arguments_;
    std::map<std::string, Words> values_; /* of options, by the texts that the help has for these */
    const CLI::Option *pending_ = nullptr;
    std::string current_;
    std::string before_;
};

/* What fits the current word. */
class Offers {
  public:
    explicit Offers(const std::string &current) : current_(current) {}

    void Add(const std::string &word, const std::string &description = "")
    {
        if (word.starts_with(current_) && known_.insert(word).second)
            offers_.push_back({word, description});
    }

    std::vector<Candidate> Take() { return std::move(offers_); }

  private:
    std::string current_;
    std::set<std::string> known_;
    std::vector<Candidate> offers_;
};

enum class Files {
    None,
    Models,
    All
};

/* Folders, and files of that kind, of the folder that the word names up to its last "/". */
void OfferFiles(const std::string &current, Files kind, Offers *offers)
{
    std::string shown = current.substr(0, current.rfind('/') + 1); /* npos + 1 is 0 */
    fs::path folder = shown.empty() ? "." : shown;
    const char *home = std::getenv("HOME");
    if (shown.starts_with("~/") && home != nullptr)
        folder = fs::path(home) / shown.substr(2);
    std::set<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        std::string name = entry->path().filename().string();
        std::error_code ignored;
        bool isModel = name.ends_with(".yin") || name.ends_with(".yang");
        if (name.starts_with('.') && current.size() == shown.size())
            continue;
        if (entry->is_directory(ignored))
            names.insert(name + "/");
        else if (kind == Files::All || (kind == Files::Models && isModel))
            names.insert(name);
    }
    for (const std::string &name : names)
        offers->Add(shown + name);
}

void OfferModules(const Line &line, Offers *offers)
{
    for (const std::string &name : ModuleNames(line.Dirs()))
        offers->Add(name);
    if (LooksLikeFile(line.Current()))
        OfferFiles(line.Current(), Files::Models, offers);
}

/* Calls visit(node) for the nodes of the line's module, or of all modules, whose paths fit the pattern; null: for all. */
void ForEachPath(const Line &line, const PathPattern *pattern, const PathWalk::Visitor &visit)
{
    SearchDirs dirs = line.Dirs();
    Words names = line.Values("MODULE[@REVISION]|FILE");
    Words modules = line.Arguments().empty() ? ModuleNames(dirs) : Words{line.Arguments().front()};
    names.insert(names.end(), modules.begin(), modules.end());
    GivenFiles files;
    for (std::string &name : names)
        if (LooksLikeFile(name) && name != "-")
            name = files.Take(name, "", Notes());
        else
            name.resize(std::min(name.find('@'), name.size()));
    files.AddTo(&dirs);
    Instance instance(dirs, false);
    for (const std::string &name : names)
        if (instance.Find({name, ""}) == nullptr)
            (void)instance.Load({name, ""});
    PathWalk walk(instance, pattern);
    for (const ModuleFile *file : instance.Registered())
        walk.Walk(*file, visit);
}

/* The next step of a path. */
void OfferPaths(const Line &line, Offers *offers)
{
    std::string above = line.Current().substr(0, line.Current().find_last_of("/:") + 1); /* a step's prefix included */
    if (!above.starts_with("/"))
        above = "/";
    PathPattern pattern(above + "*");
    ForEachPath(line, &pattern, [&](const PathNode &node) {
        offers->Add(above + NameOf(node.node) + (node.IsLeaf() ? "" : "/"), KindOf(node.node));
    });
}

/* Classes; behind a point, attributes of one. */
void OfferIds(const Line &line, bool areSamples, Offers *offers)
{
    std::string current = line.Current();
    ForEachPath(line, nullptr, [&](const PathNode &node) {
        uint32_t id = areSamples ? node.SampleId() : node.ClassId();
        if (id == 0)
            return;
        std::string text = Hex(id);
        if (!node.IsLeaf())
            offers->Add(text, node.path);
        else if (node.FieldId() && current.starts_with(text + "."))
            offers->Add(text + "." + std::to_string(*node.FieldId()), node.path);
    });
}

/* "a,b,c": the last of the names. */
void OfferColumns(const std::string &current, Offers *offers)
{
    std::string before = current.substr(0, current.rfind(',') + 1);
    for (const PathColumn *column : AllColumns())
        offers->Add(before + column->name);
}

/* "text|json" and the like. */
void OfferChoices(const std::string &text, Offers *offers)
{
    for (size_t begin = 0; begin <= text.size();) {
        size_t end = std::min(text.find('|', begin), text.size());
        offers->Add(text.substr(begin, end - begin));
        begin = end + 1;
    }
}

/* By the text that the help has for the value. */
void OfferValues(const Line &line, Offers *offers)
{
    std::string text = line.Pending()->get_option_text();
    if (text == "DIR")
        OfferFiles(line.Current(), Files::None, offers);
    else if (text == "FILE" || text == "FILE|DIR")
        OfferFiles(line.Current(), Files::All, offers);
    else if (text.starts_with("RULE"))
        ForEachRule([offers](const RuleRow &rule) { offers->Add(rule.name, rule.purpose); });
    else if (text == "ID")
        OfferIds(line, line.Pending()->check_lname("sample"), offers);
    else if (text == "PATH")
        OfferPaths(line, offers);
    else if (text == "NAME,...")
        OfferColumns(line.Current(), offers);
    else if (text == "TYPE")
        for (uint32_t type = QY_TYPE_BINARY; type <= QY_TYPE_UNION; ++type)
            offers->Add(TypeName(type));
    else if (text == "NAME" || text.starts_with("MODULE"))
        OfferModules(line, offers);
    else if (text.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-|") == std::string::npos)
        OfferChoices(text, offers);
}

void OfferArguments(const Line &line, Offers *offers)
{
    const CLI::Option *option = line.Positional();
    std::string name = option != nullptr ? option->get_name() : "";
    const std::string &current = line.Current();
    bool isPath = current.starts_with("/") && (name == "WHAT" || line.Command()->get_name() == "paths");
    if (name == "FILE")
        OfferFiles(current, Files::Models, offers);
    else if (name == "PATH" || isPath)
        OfferPaths(line, offers);
    else if (name == "WHAT" && !current.empty() && current[0] >= '0' && current[0] <= '9')
        OfferIds(line, false, offers);
    else if (name == "ACTION")
        OfferChoices(option->get_option_text(), offers);
    else if (name == "MODULE" || name == "WHAT")
        OfferModules(line, offers);
    if (isPath && line.Arguments().empty()) // which may be a file's as well
        OfferFiles(current, Files::Models, offers);
}

void OfferOptions(const CLI::App &app, Offers *offers)
{
    for (const CLI::Option *option : app.get_options())
        for (const std::string &name : option->get_lnames())
            offers->Add("--" + name, option->get_description());
}

void OfferCommands(const CLI::App &app, Offers *offers)
{
    for (const CLI::App *command : app.get_subcommands({}))
        offers->Add(command->get_name(), command->get_description());
}

} // namespace

std::vector<Candidate> Complete(const CLI::App &app, const std::vector<std::string> &words)
{
    Line line(app, words);
    Offers offers(line.Current());
    if (line.Pending() != nullptr) {
        OfferValues(line, &offers);
    } else if (line.Current().starts_with("-")) {
        if (line.Command() != nullptr)
            OfferOptions(*line.Command(), &offers);
        OfferOptions(app, &offers);
    } else if (line.Command() != nullptr) {
        OfferArguments(line, &offers);
    } else if (!line.IsUnknown()) {
        OfferCommands(app, &offers);
        if (!line.IsHelp())
            offers.Add("help", "Say more about a command");
    }
    std::vector<Candidate> candidates = offers.Take();
    for (Candidate &candidate : candidates)
        candidate.word.insert(0, line.Before());
    return candidates;
}

} // namespace inspect
