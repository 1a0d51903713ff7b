#include "line/command_line.h"

#include <korv_lib_yang.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <map>
#include <new>
#include <string_view>

#include "base/failure.h"
#include "base/notes.h"
#include "base/text.h"
#include "line/completion.h"
#include "line/config_file.h"
#include "line/help.h"
#include "line/manual.h"
#include "line/pager.h"

namespace inspect {
namespace {

/* What --help says behind the options. */
std::string Footer()
{
    return std::string("Examples:\n") + EXAMPLES + "\n\n'korv-inspect help COMMAND' says more about a command.\n\n" +
           GENERAL + "\n\nEnvironment:\n" + ENVIRONMENT + "\n\nExit status: " + EXIT_STATUS;
}

std::string LibraryVersion()
{
    uint32_t version = YANGLIB_GetLibVersion();
    return std::to_string(version / 10000) + "." + std::to_string(version / 100 % 100) + "." +
           std::to_string(version % 100);
}

/* The library may be newer than the program. */
std::string VersionText()
{
    return "korv-inspect " KORV_LIB_YANG_VERSION " with libkorv_libyang " + LibraryVersion();
}

class HelpFormatter : public CLI::Formatter {
  public:
    std::string make_usage(const CLI::App *app, std::string name) const override
    {
        return "Usage: " + UsageOf(*app, name) + "\n";
    }
};

/* Wrong usage that the help of a command, or with "" the program's own, explains. */
class WrongUsage : public Failure {
  public:
    WrongUsage(const std::string &text, const std::string &command)
        : Failure(text, EXIT_USAGE),
          hint("'korv-inspect " + (command.empty() ? "" : command + " ") + "--help' says more.")
    {
    }

    const std::string hint;
};

/* True if the line asks for JSON, right or wrong as it may be otherwise. */
bool AsksForJson(std::span<char *const> words)
{
    for (size_t i = 1; i < words.size(); ++i) {
        std::string_view word = words[i];
        bool isFormat = word.starts_with("--format=") || std::string_view(words[i - 1]) == "--format";
        word.remove_prefix(word.starts_with("--format=") ? word.find('=') + 1 : 0);
        if (isFormat && (word == "json" || word == "jsonl"))
            return true;
    }
    return false;
}

/* A result that could not be written is no success. */
void FlushOutput()
{
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        throw BrokenRun("cannot write to standard output");
}

/* Who has seen enough of a result ends the pager: it is a success without a reader as well. */
int RunPaged(Command *command)
{
    Pager pager;
    int exitCode = command->Run();
    if (!pager.IsOn())
        FlushOutput();
    return exitCode;
}

class CommandLine {
  public:
    explicit CommandLine(std::span<const CommandEntry *const> commands)
    {
        app_.name("korv-inspect");
        app_.description("Shows what a device makes of YANG modules: classes, attributes and keys.");
        app_.footer(Footer());
        app_.formatter(std::make_shared<HelpFormatter>());
        app_.set_version_flag("--version", VersionText());
        app_.require_subcommand(1);
        app_.set_config("--config", FindConfigFile(), "Options of the commands (korv-inspect.toml, here or above)")
            ->option_text("FILE");
        app_.add_flag("--no-config", noConfig_, "Look for no such file");
        app_.config_formatter(config_);
        for (const CommandEntry *entry : commands)
            Add(*entry);
    }

    /* The command, or null when the run is over: `exitCode` says how. Throws a Failure for wrong usage. */
    Command *Parse(int argc, char **argv, int *exitCode)
    try {
        if (argc < 2) {
            std::fputs(app_.help().c_str(), stderr);
            *exitCode = EXIT_USAGE;
            return nullptr;
        }
        if (IsServed({argv + 1, static_cast<size_t>(argc) - 1}))
            return nullptr;
        if (argv[1][0] != '-')
            CheckCommand(argv[1]);
        app_.parse(argc, argv);
        Command *command = commands_.at(app_.get_subcommands().front()).get();
        command->Understand();
        return command;
    } catch (const CLI::ParseError &error) {
        *exitCode = Report(error);
        return nullptr;
    }

  private:
    void Add(const CommandEntry &entry)
    {
        CLI::App *app = app_.add_subcommand(entry.name, entry.summary);
        app->group("Commands")->footer(entry.help)->fallthrough();
        std::unique_ptr<Command> command = entry.make();
        command->AddTo(app);
        commands_.emplace(app, std::move(command));
    }

    /* True if the words are for no command: they ask for help, or a shell or the build asks. */
    bool IsServed(std::span<char *const> words)
    {
        std::string_view first = words.front();
        std::string text;
        if (first == "help") {
            if (words.size() > 1)
                CheckCommand(words[1]);
            text = words.size() > 1 ? app_.get_subcommand(words[1])->help(PROGRAM) : app_.help();
        } else if (first == "complete") {
            for (const Candidate &candidate : Complete(app_, {words.begin() + 1, words.end()}))
                text += candidate.word + (candidate.description.empty() ? "" : "\t" + candidate.description) + "\n";
        } else if (first == "manual") {
            text = ManualPage(app_);
        } else {
            return false;
        }
        std::fputs(text.c_str(), stdout);
        return true;
    }

    int Report(const CLI::ParseError &error)
    {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            app_.exit(error);
            return EXIT_OK;
        }
        std::string text = UnknownOption();
        if (text.empty())
            text = config_->PlaceOf(error.what()) + error.what();
        std::vector<CLI::App *> chosen = app_.get_subcommands();
        throw WrongUsage(text, chosen.empty() ? "" : chosen.front()->get_name());
    }

    /* What is wrong with the first unknown option; "" when all options are known. */
    std::string UnknownOption()
    {
        for (const std::string &text : app_.remaining(true)) {
            if (text.size() < 2 || text[0] != '-')
                continue;
            std::string name = text.substr(0, text.find('='));
            NearestName nearest(name);
            OfferOptions(app_, &nearest);
            for (const CLI::App *command : app_.get_subcommands())
                OfferOptions(*command, &nearest);
            return "there is no option '" + name + "'" + nearest.Hint();
        }
        return "";
    }

    static void OfferOptions(const CLI::App &command, NearestName *nearest)
    {
        for (const CLI::Option *option : command.get_options())
            for (const std::string &known : option->get_lnames())
                nearest->Offer("--" + known);
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

    std::map<const CLI::App *, std::unique_ptr<Command>> commands_; /* outlive the options that refer to them */
    CLI::App app_;
    bool noConfig_ = false;
    std::shared_ptr<ConfigFile> config_ = std::make_shared<ConfigFile>(&app_);
};

} // namespace

int RunCommandLine(int argc, char **argv, std::span<const CommandEntry *const> commands)
{
    Notes notes(AsksForJson({argv, static_cast<size_t>(argc)}));
    try {
        CommandLine line(commands);
        int exitCode = EXIT_OK;
        if (Command *command = line.Parse(argc, argv, &exitCode))
            return RunPaged(command);
        FlushOutput();
        return exitCode;
    } catch (const WrongUsage &failure) {
        notes.End(failure);
        if (!notes.AreJson())
            std::fprintf(stderr, "%s\n", failure.hint.c_str());
        return failure.exitCode;
    } catch (const Failure &failure) {
        std::fflush(stdout);
        return notes.End(failure);
    } catch (const std::bad_alloc &) {
        return notes.End(BrokenRun("out of memory"));
    } catch (const std::exception &error) {
        return notes.End(BrokenRun(error.what()));
    }
}

} // namespace inspect
