#include "arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>

#include "commands.h"
#include "failure.h"
#include "help_texts.h"
#include "korv_lib_yang.h"
#include "text.h"

namespace inspect {
namespace {

constexpr size_t MAX_BASE_DIRS = 2; /* the library's */

/* The texts of the options, before they are understood. */
struct RawArguments {
    std::string module; /* of a command that takes one */
    std::vector<std::string> modules;
    std::vector<std::string> loads;
    std::string format = "text";
    int64_t augment = -1;
    bool target = false;
};

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

Format ToFormat(const std::string &text)
{
    if (text == "json")
        return Format::JSON;
    if (text == "csv")
        return Format::CSV;
    return text == "dot" ? Format::DOT : Format::TEXT;
}

std::string LibraryVersion()
{
    const uint32_t version = YANGLIB_GetLibVersion();
    return std::to_string(version / 10000) + "." + std::to_string(version / 100 % 100) + "." +
           std::to_string(version % 100);
}

/* The library may be newer than the program. */
std::string VersionText()
{
    return "korv-inspect " KORV_LIB_YANG_VERSION " with libkorv_libyang " + LibraryVersion();
}

/* Names in the usage line what a command cannot do without. */
class HelpFormatter : public CLI::Formatter {
  public:
    std::string make_usage(const CLI::App *app, std::string name) const override
    {
        std::string usage = "Usage: " + name;
        for (const CLI::Option *option : app->get_options())
            usage += option->get_positional() ? " " + make_option_usage(option) : "";
        for (const CLI::Option *option : app->get_options()) {
            if (option->get_required() && !option->get_positional())
                usage += " " + ShortName(*option) + " " + option->get_option_text();
        }
        return usage + (app->get_require_subcommand_min() != 0 ? " COMMAND ..." : " [OPTIONS]") + "\n";
    }

  private:
    static std::string ShortName(const CLI::Option &option)
    {
        return option.get_snames().empty() ? "--" + option.get_lnames().front() : "-" + option.get_snames().front();
    }
};

/* Builds the commands' options into one record; a command's own additions stand in its function. */
class CommandLine {
  public:
    explicit CommandLine(Arguments *args) : args_(args)
    {
        app_.name("korv-inspect");
        app_.description("Shows what a device makes of YANG modules: classes, attributes and keys.");
        app_.footer(HELP_PROGRAM);
        app_.formatter(std::make_shared<HelpFormatter>());
        app_.set_version_flag("--version", VersionText());
        app_.require_subcommand(1);
        AddTree();
        AddFind();
        AddWalk();
        AddDump();
        AddEnums();
        AddModules();
        AddCheck();
        AddDiff();
    }

    std::optional<int> Parse(int argc, char **argv)
    try {
        if (argc < 2) {
            std::fputs(app_.help().c_str(), stderr);
            return EXIT_USAGE;
        }
        if (argv[1][0] != '-')
            CheckCommand(argv[1]);
        app_.parse(argc, argv);
        Understand();
        return std::nullopt;
    } catch (const CLI::ParseError &error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            app_.exit(error);
            return EXIT_OK;
        }
        const std::string unknown = UnknownOption();
        std::fprintf(stderr, "korv-inspect: %s\n", Printable(unknown.empty() ? error.what() : unknown).c_str());
        const std::vector<CLI::App *> chosen = app_.get_subcommands();
        std::fprintf(stderr, "'korv-inspect %s--help' says more.\n",
                     chosen.empty() ? "" : (chosen.front()->get_name() + " ").c_str());
        return EXIT_USAGE;
    }

  private:
    /* About the first option that there is not, whatever else is wrong; "" when all are known. */
    std::string UnknownOption()
    {
        for (const std::string &text : app_.remaining(true)) {
            if (text.size() < 2 || text[0] != '-')
                continue;
            const std::string name = text.substr(0, text.find('='));
            NearestName nearest(name);
            for (CLI::App *command : app_.get_subcommands()) {
                for (const CLI::Option *option : command->get_options()) {
                    for (const std::string &known : option->get_lnames())
                        nearest.Offer("--" + known);
                }
            }
            return "there is no option '" + name + "'" + nearest.Hint();
        }
        return "";
    }

    void CheckCommand(const std::string &name)
    {
        NearestName nearest(name);
        for (const CLI::App *command : app_.get_subcommands(nullptr)) {
            if (command->get_name() == name)
                return;
            nearest.Offer(command->get_name());
        }
        throw CLI::ValidationError("there is no command '" + name + "'" + nearest.Hint());
    }

    CLI::App *AddCommand(const char *name, const char *description, const char *footer, Command command)
    {
        CLI::App *app = app_.add_subcommand(name, description);
        app->group("Commands")->footer(footer);
        app->callback([this, command] { args_->command = command; });
        app->add_flag("-v,--verbose", args_->verbose, "Show the library's messages as they come");
        app->add_option("--load", raw_.loads, "Load this module first; may be repeated")
            ->option_text("MODULE[@REVISION]")
            ->allow_extra_args(false);
        app->add_option("--install-path", args_->dirs.install, "Further directory of YIN files; may be repeated")
            ->option_text("DIR")
            ->allow_extra_args(false)
            ->check(CLI::ExistingDirectory);
        return app;
    }

    void AddDirs(CLI::App *app, const char *names, std::vector<std::string> *dirs, const char *description)
    {
        app->add_option(names, *dirs, description)
            ->option_text("DIR")
            ->allow_extra_args(false)
            ->required()
            ->check(CLI::ExistingDirectory);
    }

    void AddModelDirs(CLI::App *app)
    {
        AddDirs(app, "-d,--dir", &args_->dirs.base, "Directory of YIN files; a second one may be given");
    }

    void AddModule(CLI::App *app)
    {
        app->add_option("MODULE", raw_.module, "The module")->option_text("[@REVISION]")->required();
    }

    void AddModuleList(CLI::App *app, const char *description)
    {
        app->add_option("MODULE", raw_.modules, description)->option_text("[@REVISION] ...");
    }

    void AddPath(CLI::App *app)
    {
        app->add_option("PATH", args_->path, "Path of a node or leaf")->option_text(" ")->required();
    }

    void AddFormats(CLI::App *app, const std::vector<std::string> &formats)
    {
        std::string text;
        for (const std::string &format : formats)
            text += (text.empty() ? "" : "|") + format;
        app->add_option("--format", raw_.format, "How to write the result (text)")
            ->option_text(text)
            ->check(CLI::IsMember(formats));
    }

    void AddTree()
    {
        CLI::App *app = AddCommand("tree", "Show a module's class trees", HELP_TREE, RunTree);
        AddModule(app);
        AddModelDirs(app);
        app->add_option("--path", args_->path, "Show this node and what is below it")->option_text("PATH");
        app->add_option("--depth", args_->depth, "Show this many levels of nodes")
            ->option_text("N")
            ->check(CLI::Range(1U, 1000U));
        app->add_flag("--full", args_->full, "Show the whole target tree of each augment");
        AddFormats(app, {"text", "json", "dot"});
    }

    void AddFind()
    {
        CLI::App *app = AddCommand("find", "Look up a node or leaf", HELP_FIND, RunFind);
        AddModule(app);
        AddPath(app);
        AddModelDirs(app);
        AddFormats(app, {"text", "json"});
    }

    void AddWalk()
    {
        CLI::App *app = AddCommand("walk", "Travel from a node as a host does", HELP_WALK, RunWalk);
        AddModule(app);
        AddPath(app);
        AddModelDirs(app);
        AddFormats(app, {"text", "json"});
    }

    void AddDump()
    {
        CLI::App *app = AddCommand("dump", "Show a tree as the flat records of a dump", HELP_DUMP, RunDump);
        AddModule(app);
        AddModelDirs(app);
        app->add_option("--augment", raw_.augment, "Dump this augment's target tree, the first is 0")
            ->option_text("N")
            ->check(CLI::Range(int64_t{0}, int64_t{KORV_AUGMENT_NUM} - 1));
        app->add_flag("--self", args_->self, "With --augment: the augment's self tree");
        app->add_flag("--target", raw_.target, "With --augment: its target tree, as without this");
        AddFormats(app, {"text", "json", "csv"});
    }

    void AddEnums()
    {
        CLI::App *app = AddCommand("enums", "List names and values of an enumeration leaf", HELP_ENUMS, RunEnums);
        AddModule(app);
        AddPath(app);
        AddModelDirs(app);
        AddFormats(app, {"text", "json"});
    }

    void AddModules()
    {
        CLI::App *app = AddCommand("modules", "List what is loaded", HELP_MODULES, RunModules);
        AddModuleList(app, "Modules to load");
        AddModelDirs(app);
        AddFormats(app, {"text", "json"});
    }

    void AddCheck()
    {
        CLI::App *app = AddCommand("check", "Report what a device would trip over", HELP_CHECK, RunCheck);
        AddModuleList(app, "Modules to check");
        app->add_flag("--all", args_->all, "Check every module of the directories");
        AddModelDirs(app);
        AddFormats(app, {"text", "json"});
    }

    void AddDiff()
    {
        CLI::App *app = AddCommand("diff", "Compare two versions of a module", HELP_DIFF, RunDiff);
        AddModule(app);
        AddDirs(app, "--old", &args_->oldDirs, "Directory of the old version; a second one may be given");
        AddDirs(app, "--new", &args_->newDirs, "Directory of the new version; a second one may be given");
        AddFormats(app, {"text", "json"});
    }

    void Understand()
    {
        for (const std::string &text : raw_.loads)
            args_->loads.push_back(ToModuleKey(text));
        if (!raw_.module.empty())
            raw_.modules.push_back(raw_.module);
        for (const std::string &text : raw_.modules)
            args_->modules.push_back(ToModuleKey(text));
        args_->format = ToFormat(raw_.format);
        if (raw_.augment >= 0)
            args_->augment = static_cast<uint32_t>(raw_.augment);
        for (const auto *dirs : {&args_->dirs.base, &args_->oldDirs, &args_->newDirs}) {
            if (dirs->size() > MAX_BASE_DIRS)
                throw CLI::ValidationError(
                    "the library has two base directories: give further ones with --install-path");
        }
        if ((args_->self || raw_.target) && raw_.augment < 0)
            throw CLI::ValidationError("--self and --target say which tree of an augment: give --augment N, too");
        if (args_->self && raw_.target)
            throw CLI::ValidationError("give --self or --target, not both");
        if (args_->command == RunCheck && args_->all != args_->modules.empty())
            throw CLI::ValidationError("name the modules to check, or give --all");
        if (args_->command == RunModules && args_->modules.empty() && args_->loads.empty())
            throw CLI::ValidationError("name a module to load");
    }

    Arguments *args_;
    RawArguments raw_;
    CLI::App app_;
};

} // namespace

std::optional<int> ParseArguments(int argc, char **argv, Arguments *args)
{
    return CommandLine(args).Parse(argc, argv);
}

} // namespace inspect
